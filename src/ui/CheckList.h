#pragma once
// A check list: a list view with check boxes that stands in for a combo box's own drop-down list. It is
// hidden at rest; Drop_Down places it directly under its combo box (in the form's coordinates, above the
// other controls), shows it and gives it the focus. What closes it again is the page's business: one page
// hides it when it loses the focus, another keeps it open.
#include "core/CheckList.h"
#include "ui/ListView.h"

namespace hv::ui {

class CheckListView final : public CheckList {
public:
    // Makes the list view, a child of `form` so it can lie over any frame, with one column as wide as the
    // list less 20 twips.
    CheckListView(const QString& name, QWidget* form, int widthTwips, int heightTwips);

    ListView* const lvw;

    void Drop_Down(const QWidget* combo);
    // A press on the combo box gives it the focus (its GotFocus drops this list down) instead of opening
    // the combo's own list.
    void Replace_List_Of(QWidget* combo);
    void Hide();
    bool Shown() const;

    int Item_Count() const override;
    QString Item_Text(int index) const override;
    bool Item_Checked(int index) const override;
    void Set_Item_Checked(int index, bool checked) override;
    void Add_Item(const QString& key, const QString& text) override;
};

} // namespace hv::ui
