#pragma once
// What the rules over check lists need of one: its items' texts and check marks, and a way to fill it.
// The page kit's check list implements it, so those rules run and are tested without a window.
// Items are counted from 1.
#include <QString>

namespace hv {

class CheckList {
public:
    virtual ~CheckList() = default;
    virtual int Item_Count() const = 0;
    virtual QString Item_Text(int index) const = 0;
    virtual bool Item_Checked(int index) const = 0;
    virtual void Set_Item_Checked(int index, bool checked) = 0;
    virtual void Add_Item(const QString& key, const QString& text) = 0;
};

} // namespace hv
