#pragma once
// The four kinds of usage report and their filters: what the selection page lists, the statement it
// composes, the sheet's criteria texts and columns, and the delete of the listed rows. The pages index
// these by the lists' positions, which is what the selection publishes in its tags.
#include "store/Sql.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

namespace hv::report {

struct Column {
    const char* key;
    const char* heading;
    double share; // of the list's width, over the filter's denominator
};

struct Filter {
    const char* entry;      // the entry of the filter list
    const char* basedOn;    // the sheet's "REPORT BASED ON" text
    QStringList sortBy;     // the sort list's captions, for the kinds whose sort list follows the filter
    QStringList sortTexts;  // the sheet's "SORT BY" text by the sort list's position
    const char* select;     // the statement's first piece, before the user id
    const char* upperBound; // the piece between the start and the end of the range
    const char* tail;       // the piece after the end of the range, before the sort column
    const char* deleteUser; // the delete's piece after the user id, before its start
    std::vector<Column> columns;
    double denominator;
};

struct Kind {
    const char* entry; // the report type list's entry
    const char* checkCaption;
    long bit; // of FEATURE_BITS: the enforcement side records this kind for the subject
    const char* title;
    const char* exportWord; // the default export name's ending
    const char* deleteFirst;
    const char* deleteUpper; // the delete's piece between its start and its end
    // The Application and Device kinds fill their sort list once for all their filters.
    QStringList sortBy;
    std::vector<Filter> filters;
};

// By the report type list's position, 0 to 3. A position outside the list raises "Subscript out of
// range" (9), as reading past an array does.
const Kind& Kind_At(int type);
const Filter& Filter_At(int type, int filter);
int Kind_Count();

// The sort column of a sort caption; a caption without a mapping is its own column ("URL").
QString Sort_Column(const QString& caption);

inline const char* const kTimeFormat = "yyyy-MM-dd HH:mm:ss";

// The report's statement. Its range runs from the start date's midnight, inclusive, to the midnight after
// the stop date, exclusive; `descending` picks DESC over ASC.
Sql Report_Query(int type, int filter, long userId, const QDate& start, const QDate& stop,
                 const QString& sortColumn, bool descending);
// The delete of the listed rows: its range ends at the stop date's own midnight, inclusive.
Sql Report_Delete(int type, int filter, long userId, const QDate& start, const QDate& stop);

// The sheet's criteria rows 3 to 6, before they are put in upper case.
QString Based_On_Text(int type, int filter);
QString Sort_Text(int type, int filter, int sort);
QString Order_Text(int order);
// The sheet's four criteria lines, upper case, as the report shows them under its title.
QStringList Criteria_Lines(int type, int filter, const QDate& start, const QDate& stop, int sort, int order);

} // namespace hv::report
