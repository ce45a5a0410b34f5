#include "reporting/model/clsHTML.h"

#include "core/BufferedFile.h"
#include "core/DateText.h"
#include "platform/Err.h"
#include "platform/Platform.h"

namespace hv {

namespace {

using namespace Qt::Literals::StringLiterals;

// The sheet's pieces go to a file through one buffer.
class FilePieces final : public HtmlPieces {
public:
    explicit FilePieces(const QString& fileName) : m_file(fileName, BufferedFile::Append) {}
    void Put(QLatin1StringView markup) override { m_file.Put(markup); }
    void Put(QStringView text) override { m_file.Put(text); }
    void Close() { m_file.Close(); }

private:
    BufferedFile m_file;
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

void clsHTML::Sheet_Begin(HtmlPieces& out) {
    out.Put("\r\n<H2>&nbsp;</H2>\r\n<div align=\"left\">\r\n"_L1);
    out.Put(
        R"(<table border="1" cellspacing="0" cellpadding="0" style="border-collapse: collapse; font-family: )"
        R"(Microsoft Sans Serif; font-size:10pt; padding-left:10; padding-right:5" bordercolor="#FFFFFF" )"
        R"(width="100%">)"_L1);
    // The end tag before the first row has always been there; the files are compared as they stand.
    out.Put("\r\n</tr>\r\n"_L1);
}

void clsHTML::Sheet_Row(HtmlPieces& out, int number, const SheetRow& row, int columns) {
    const bool odd = number % 2 == 1;
    const QStringView nbsp(u"&nbsp;");
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

void clsHTML::Sheet_End(HtmlPieces& out, int columns, const QString& takenAt) {
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

void clsHTML::Sheet_Pieces(const ReportSheet& list, const QString& takenAt, HtmlPieces& out) {
    Sheet_Begin(out);
    const int rows = list.Rows();
    const int columns = list.Columns();
    for (int i = 1; i <= rows; ++i)
        Sheet_Row(out, i, list.Row(i), columns);
    Sheet_End(out, columns, takenAt);
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
    FilePieces file(fileName);
    Sheet_Pieces(list, General_Date(platform().Now()), file);
    file.Close();
}

void clsHTML::SaveReportFooter(const QString& fileName) {
    FilePieces file(fileName);
    Footer_Pieces(file);
    file.Close();
}

} // namespace hv
