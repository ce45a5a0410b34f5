#include "reporting/model/clsHTML.h"

#include "core/DateText.h"
#include "platform/Err.h"
#include "platform/Platform.h"

#include <QFile>
#include <QStringEncoder>

namespace hv {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr QLatin1StringView kCrLf = "\r\n"_L1;
constexpr QLatin1StringView kNbsp = "&nbsp;"_L1;

// Collects the pieces and hands them to the file in large blocks, at the file's end.
class BufferedFile final : public HtmlPieces {
public:
    explicit BufferedFile(const QString& fileName) : m_file(fileName) {
        if (fileName.isEmpty())
            Err().Raise(errnum::BadFileNameOrNumber);
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
            Err().Raise(errnum::PathFileAccessError);
        m_buffer.reserve(kBlock + kBlock / 4);
    }
    ~BufferedFile() override = default;

    void Put(QLatin1StringView markup) override {
        m_buffer.append(markup.data(), markup.size());
        Flush_If_Full();
    }
    void Put(QStringView text) override {
        const qsizetype used = m_buffer.size();
        m_buffer.resize(used + text.size() * 3);
        char* end = m_encoder.appendToBuffer(m_buffer.data() + used, text);
        m_buffer.truncate(end - m_buffer.constData());
        Flush_If_Full();
    }
    void Close() {
        Write_Out();
        m_file.close();
    }

private:
    static constexpr qsizetype kBlock = 1 << 20;

    void Flush_If_Full() {
        if (m_buffer.size() >= kBlock)
            Write_Out();
    }
    void Write_Out() {
        if (!m_buffer.isEmpty() && m_file.write(m_buffer) != m_buffer.size())
            Err().Raise(errnum::PathFileAccessError);
        m_buffer.clear();
    }

    QFile m_file;
    QByteArray m_buffer;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
};

// One cell: the colour follows the row's number over the whole sheet; the white form has two blanks after
// "td", as the sheets have always been written.
void Cell(HtmlPieces& out, QStringView content, bool odd, bool bold) {
    out.Put(odd ? R"(<td bgcolor="#FFDBBF">)"_L1 : R"(<td  bgcolor="#FFFFFF">)"_L1);
    if (bold)
        out.Put("<b>"_L1);
    out.Put(content);
    out.Put(bold ? "</b></td>"_L1 : "</td>"_L1);
}

bool Blank_Only(const QString& text) {
    for (QChar c : text)
        if (c != u' ')
            return false;
    return true;
}

} // namespace

void clsHTML::Sheet_Pieces(const ReportSheet& list, const QString& takenAt, HtmlPieces& out) {
    out.Put(kCrLf);
    out.Put("<H2>&nbsp;</H2>"_L1);
    out.Put(kCrLf);
    out.Put(R"(<div align="left">)"_L1);
    out.Put(kCrLf);
    out.Put(
        R"(<table border="1" cellspacing="0" cellpadding="0" style="border-collapse: collapse; font-family: )"
        R"(Microsoft Sans Serif; font-size:10pt; padding-left:10; padding-right:5" bordercolor="#FFFFFF" )"
        R"(width="100%">)"_L1);
    // The end tag before the first row has always been there; the files are compared as they stand.
    out.Put(kCrLf);
    out.Put("</tr>"_L1);
    out.Put(kCrLf);

    const int rows = list.Rows();
    const int columns = list.Columns();
    for (int i = 1; i <= rows; ++i) {
        const bool odd = i % 2 == 1;
        const bool bold = list.Bold(i);
        out.Put(kCrLf);
        out.Put("<tr>"_L1);
        out.Put(kCrLf);
        // The row's own text is judged trimmed but written as it stands; a sub-item is empty or not.
        const QString text = list.Text(i);
        Cell(out, Blank_Only(text) ? QStringView(u"&nbsp;") : QStringView(text), odd, bold);
        for (int s = 1; s < columns; ++s) {
            const QString sub = list.Sub_Item(i, s);
            if (sub.isEmpty())
                Cell(out, u"&nbsp;", odd, bold);
            else
                Cell(out, sub, odd, bold);
        }
        out.Put(kCrLf);
        out.Put("</tr>"_L1);
    }

    // The time stamp row has one cell fewer than the sheet's rows.
    out.Put(kCrLf);
    out.Put("<tr>"_L1);
    for (int j = 1; j < columns; ++j) {
        if (j == 1) {
            out.Put("<td>Report Taken @ "_L1);
            out.Put(takenAt);
            out.Put("</td>"_L1);
        } else {
            out.Put("<td>"_L1);
            out.Put(kNbsp);
            out.Put("</td>"_L1);
        }
    }
    out.Put(kCrLf);
    out.Put("</tr>"_L1);
    out.Put(kCrLf);
    out.Put("</table>"_L1);
    out.Put(kCrLf);
    out.Put(kCrLf);
    out.Put("</div>"_L1);
}

void clsHTML::Footer_Pieces(HtmlPieces& out) {
    out.Put(kCrLf);
    out.Put("<H2>&nbsp;</H2>"_L1);
    out.Put(kCrLf);
    out.Put(R"(<div align="left">)"_L1);
    out.Put(kCrLf);
    out.Put(
        R"(<table border="0" cellspacing="0" cellpadding="0" style="border-collapse: collapse; font-family: )"
        R"(Arial; font-size:10pt; padding-left:10; padding-right:5" bordercolor="#CCCCCC" width="100%">)"_L1);
    out.Put(R"(<tr><td colspan="100%"></td></tr>)"_L1);
    out.Put(kCrLf);
    out.Put("<tr><td></td></tr>"_L1);
    out.Put(kCrLf);
    out.Put(kCrLf);
    out.Put("</table>"_L1);
    out.Put(kCrLf);
    out.Put(kCrLf);
    out.Put("</div>"_L1);
}

void clsHTML::SaveListViewToFile(const ReportSheet& list, const QString& fileName, const QString& title,
                                 const QString& format, const QString& tag) {
    (void)title;
    (void)format;
    (void)tag;
    BufferedFile file(fileName);
    Sheet_Pieces(list, General_Date(platform().Now()), file);
    file.Close();
}

void clsHTML::SaveReportFooter(const QString& fileName) {
    BufferedFile file(fileName);
    Footer_Pieces(file);
    file.Close();
}

} // namespace hv
