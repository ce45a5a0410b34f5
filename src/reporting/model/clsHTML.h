#pragma once
// Writes a report sheet as an HTML fragment behind whatever the file already holds: no html, head or body
// element, nothing escaped, the rows in alternating colours and the time of the export in a short last row.
// The file is UTF-8, this platform's code page, without a byte order mark.
//
// Every piece of mark-up and every cell goes to the file in order, as if each were written at the file's
// end by a write of its own; they travel through one buffer, so a sheet of a million rows costs a few
// hundred writes instead of tens of millions. A file that cannot be opened or written raises "Path/File
// access error" (75); an empty name raises "Bad file name or number" (52).
#include <QString>
#include <QStringList>
#include <QStringView>

namespace hv {

// One row of a sheet as it stands, read in place: a million-row export copies no cell.
struct SheetRow {
    const QString* text;
    const QStringList* subItems; // sub-item s at s-1; null or short where the row has fewer
    bool bold;
};

// What the writer reads of a sheet: rows numbered from 1, as the list view numbers them.
class ReportSheet {
public:
    virtual ~ReportSheet() = default;
    virtual int Rows() const = 0;
    virtual int Columns() const = 0;
    virtual SheetRow Row(int row) const = 0;
};

// Where the pieces go, in order.
class HtmlPieces {
public:
    virtual ~HtmlPieces() = default;
    virtual void Put(QLatin1StringView markup) = 0;
    virtual void Put(QStringView text) = 0;
};

class clsHTML final {
public:
    // The three texts after the file's name are taken for the callers' sake and change nothing.
    void SaveListViewToFile(const ReportSheet& list, const QString& fileName, const QString& title,
                            const QString& format, const QString& tag);
    void SaveReportFooter(const QString& fileName);

    // The pieces of a sheet's fragment, stamped with `takenAt` (the export's time, as text).
    static void Sheet_Pieces(const ReportSheet& list, const QString& takenAt, HtmlPieces& out);
    static void Footer_Pieces(HtmlPieces& out);
    // The same fragment in three steps, for a sheet that is streamed rather than held: the head, each row
    // numbered from 1 in order, and the stamp row with the end.
    static void Sheet_Begin(HtmlPieces& out);
    static void Sheet_Row(HtmlPieces& out, int number, const SheetRow& row, int columns);
    static void Sheet_End(HtmlPieces& out, int columns, const QString& takenAt);
};

} // namespace hv
