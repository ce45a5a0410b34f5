#include "ui/ListFind.h"

#include "store/modCommonFuns.h"
#include "ui/ListView.h"

namespace hv::ui {

namespace {

// Case folded one character at a time, so positions in the folded text are those of the original.
QString Fold(const QString& text) {
    QString folded(text.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        folded[i] = text[i].toCaseFolded();
    return folded;
}

} // namespace

int Find_Whole_Word(const ListView& list, const QString& searched) {
    const int count = list.Count();
    for (int i = 1; i <= count; ++i)
        if (Begins_With_Whole_Word(list.Text(i), searched))
            return i;
    return 0;
}

void WholeWordIndex::Add_All(const ListView& list) {
    m_beginnings.reserve(m_beginnings.size() + list.Count() * 2);
    for (int i = 1; i <= list.Count(); ++i)
        Add(list.Text(i));
}

void WholeWordIndex::Add(const QString& text) {
    const QString folded = Fold(text);
    for (qsizetype length = 1; length <= text.size(); ++length)
        if (Is_Whole_Word_End(text, length))
            m_beginnings.insert(folded.left(length));
}

bool WholeWordIndex::Contains(const QString& searched) const {
    return !searched.isEmpty() && m_beginnings.contains(Fold(searched));
}

} // namespace hv::ui
