#include "reporting/model/clsHTML.h"

#include "core/DateText.h"
#include "platform/Err.h"
#include "platform/Platform.h"

#include <QFile>
#include <QStringEncoder>

#include <cstring>
#include <vector>

namespace hv {

namespace {

using namespace Qt::Literals::StringLiterals;

// Collects the pieces and hands them to the file in large blocks, at the file's end. Texts are mostly
// ASCII, which is copied as it stands; the rest goes through the UTF-8 encoder.
class BufferedFile final : public HtmlPieces {
public:
    explicit BufferedFile(const QString& fileName) : m_file(fileName), m_buffer(size_t(kBlock)) {
        if (fileName.isEmpty())
            Err().Raise(errnum::BadFileNameOrNumber);
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
            Err().Raise(errnum::PathFileAccessError);
        m_pos = m_buffer.data();
    }
    ~BufferedFile() override = default;

    void Put(QLatin1StringView markup) override {
        char* out = Room(markup.size());
        std::memcpy(out, markup.data(), size_t(markup.size()));
        m_pos = out + markup.size();
    }
    void Put(QStringView text) override {
        const qsizetype n = text.size();
        char* out = Room(n * 3);
        const char16_t* in = text.utf16();
        qsizetype i = 0;
        for (; i < n && in[i] < 0x80; ++i)
            *out++ = char(in[i]);
        if (i < n)
            out = m_encoder.appendToBuffer(out, text.mid(i));
        m_pos = out;
    }
    void Close() {
        Write_Out();
        m_file.close();
    }

private:
    static constexpr qsizetype kBlock = 1 << 20;

    // Room for `size` more bytes at m_pos, writing the buffer out first when it is short of it.
    char* Room(qsizetype size) {
        if (m_buffer.data() + m_buffer.size() - m_pos >= size)
            return m_pos;
        Write_Out();
        if (qsizetype(m_buffer.size()) < size) {
            m_buffer.resize(size_t(size));
            m_pos = m_buffer.data();
        }
        return m_pos;
    }
    void Write_Out() {
        const qint64 used = m_pos - m_buffer.data();
        if (used > 0 && m_file.write(m_buffer.data(), used) != used)
            Err().Raise(errnum::PathFileAccessError);
        m_pos = m_buffer.data();
    }

    QFile m_file;
    std::vector<char> m_buffer;
    char* m_pos = nullptr;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
};

// One cell: the colour follows the row's number over the whole sheet; the white form has two blanks after
// "td", as the sheets have always been written.
void Cell(HtmlPieces& out, QStringView content, bool odd, bool bold) {
    if (bold) {
        out.Put(odd ? R"(<td bgcolor="#FFDBBF"><b>)"_L1 : R"(<td  bgcolor="#FFFFFF"><b>)"_L1);
        out.Put(content);
        out.Put("</b></td>"_L1);
    } else {
        out.Put(odd ? R"(<td bgcolor="#FFDBBF">)"_L1 : R"(<td  bgcolor="#FFFFFF">)"_L1);
        out.Put(content);
        out.Put("</td>"_L1);
    }
}

bool Blank_Only(const QString& text) {
    for (QChar c : text)
        if (c != u' ')
            return false;
    return true;
}

} // namespace

void clsHTML::Sheet_Pieces(const ReportSheet& list, const QString& takenAt, HtmlPieces& out) {
    out.Put("\r\n<H2>&nbsp;</H2>\r\n<div align=\"left\">\r\n"_L1);
    out.Put(
        R"(<table border="1" cellspacing="0" cellpadding="0" style="border-collapse: collapse; font-family: )"
        R"(Microsoft Sans Serif; font-size:10pt; padding-left:10; padding-right:5" bordercolor="#FFFFFF" )"
        R"(width="100%">)"_L1);
    // The end tag before the first row has always been there; the files are compared as they stand.
    out.Put("\r\n</tr>\r\n"_L1);

    const int rows = list.Rows();
    const int columns = list.Columns();
    const QStringView nbsp(u"&nbsp;");
    for (int i = 1; i <= rows; ++i) {
        const bool odd = i % 2 == 1;
        const SheetRow row = list.Row(i);
        out.Put("\r\n<tr>\r\n"_L1);
        // The row's own text is judged trimmed but written as it stands; a sub-item is empty or not.
        Cell(out, Blank_Only(*row.text) ? nbsp : QStringView(*row.text), odd, row.bold);
        const qsizetype subs = row.subItems ? row.subItems->size() : 0;
        for (int s = 1; s < columns; ++s) {
            const QString* sub = s <= subs ? &(*row.subItems)[s - 1] : nullptr;
            Cell(out, sub && !sub->isEmpty() ? QStringView(*sub) : nbsp, odd, row.bold);
        }
        out.Put("\r\n</tr>"_L1);
    }

    // The time stamp row has one cell fewer than the sheet's rows.
    out.Put("\r\n<tr>"_L1);
    for (int j = 1; j < columns; ++j) {
        if (j == 1) {
            out.Put("<td>Report Taken @ "_L1);
            out.Put(takenAt);
            out.Put("</td>"_L1);
        } else {
            out.Put("<td>&nbsp;</td>"_L1);
        }
    }
    out.Put("\r\n</tr>\r\n</table>\r\n\r\n</div>"_L1);
}

void clsHTML::Footer_Pieces(HtmlPieces& out) {
    out.Put("\r\n<H2>&nbsp;</H2>\r\n<div align=\"left\">\r\n"_L1);
    out.Put(
        R"(<table border="0" cellspacing="0" cellpadding="0" style="border-collapse: collapse; font-family: )"
        R"(Arial; font-size:10pt; padding-left:10; padding-right:5" bordercolor="#CCCCCC" width="100%">)"_L1);
    out.Put(R"(<tr><td colspan="100%"></td></tr>)"_L1);
    out.Put("\r\n<tr><td></td></tr>\r\n\r\n</table>\r\n\r\n</div>"_L1);
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
