#pragma once
// The list view's own search for a text, as the users' lists use it: case is ignored, and a row counts
// when its text begins with the searched text as a whole word: "bob" finds "Bob Jones" and "Bob", but
// neither "bo" nor "bobby" finds "Bob Jones". An empty text finds nothing.
//
// A word is a run of letters, digits and underscores; the found part must end where the row's text ends
// or where a word ends or begins.
#include "store/modCommonFuns.h"

#include <QSet>
#include <QString>

namespace hv::ui {

class ListView;

// The rule itself lives with the store's helpers, where the command-line tool finds it too.
using hv::Begins_With_Whole_Word;

// The first row (1-based) whose text begins with `searched` as a whole word; 0 when none.
int Find_Whole_Word(const ListView& list, const QString& searched);

// The same search over many texts at once: every whole-word beginning of every text is kept, so a long
// run of searches and additions (an import of thousands of names) costs no walk over the list each time.
class WholeWordIndex final {
public:
    void Add_All(const ListView& list);
    void Add(const QString& text);
    bool Contains(const QString& searched) const;

private:
    QSet<QString> m_beginnings;
};

} // namespace hv::ui
