// Click on a change made by code (and only on a real change) with the Tag protocol built on it, refused
// values raising 380, combo boxes that keep no selection until one is made.
#include "testing/TestSupport.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ListView.h"

#include <gtest/gtest.h>

namespace {

using namespace hv::ui;
using hv::testing::Raised;

// The "DontSaveToDB" protocol: code marks the box, sets the value (Click runs and sees the mark), clears
// the mark; a user's click then runs Click without it. Setting the value it already has runs nothing.
TEST(KitControls, CheckBoxClickOnCodeChangeCarriesTheTagProtocol) {
    CheckBox chk("chkEnable", "Enable", nullptr);
    QStringList seen;
    QObject::connect(&chk, &CheckBox::Click, [&] {
        seen << (Tag(&chk) == "DontSaveToDB" ? "silent " : "save ") + QString::number(chk.Value());
    });
    Set_Tag(&chk, "DontSaveToDB");
    for (int v : {0, 1, 1, 2, 2, 0, 1})
        chk.Set_Value(v);
    Set_Tag(&chk, "");
    chk.click(); // a user's click: once, not twice
    chk.Set_Value(2);
    chk.click(); // a grayed box becomes checked
    EXPECT_EQ(seen,
              (QStringList{"silent 1", "silent 2", "silent 0", "silent 1", "save 0", "save 2", "save 1"}));
    EXPECT_EQ(Raised([&] { chk.Set_Value(3); }), hv::errnum::InvalidPropertyValue);
    EXPECT_EQ(Tag(nullptr), "");
}

TEST(KitControls, ComboListIndexFromCodeRunsClickOnChangeAndRefusesBadIndexes) {
    ComboBox cbo("cboUsers", ComboBox::DropDownList, nullptr);
    int clicks = 0;
    QObject::connect(&cbo, &ComboBox::Click, [&] { ++clicks; });
    EXPECT_EQ(Raised([&] { cbo.Set_ListIndex(0); }), hv::errnum::InvalidPropertyValue); // empty list
    EXPECT_EQ(Find_In_Combo(cbo, "x"), 0);
    for (const char* name : {"[All Users...]", "alice", "Alice", "alice"})
        cbo.Add_Item(name);
    EXPECT_EQ(cbo.ListIndex(), -1); // adding entries selects none
    EXPECT_EQ(clicks, 0);
    cbo.Set_ListIndex(0); // from -1 to 0: a change
    cbo.Set_ListIndex(0);
    cbo.Set_ListIndex(2);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(cbo.Text(), "Alice");
    for (int bad : {4, -2})
        EXPECT_EQ(Raised([&] { cbo.Set_ListIndex(bad); }), hv::errnum::InvalidPropertyValue) << bad;
    EXPECT_EQ(cbo.ListIndex(), 2);
    cbo.User_Choose(2); // a user's pick of the same entry still clicks
    cbo.Set_ListIndex(-1);
    EXPECT_EQ(clicks, 4);

    cbo.Set_Item_Data(1, 42);
    EXPECT_EQ(cbo.Item_Data(1), 42);
    EXPECT_EQ(cbo.Item_Data(0), 0);
    EXPECT_NE(Raised([&] { (void)cbo.Item_Data(7); }), 0);

    // A miss and the first entry both give 0; the match is exact and case sensitive.
    for (auto [text, pos] : std::initializer_list<std::pair<const char*, int>>{
             {"[All Users...]", 0}, {"nobody", 0}, {"alice", 1}, {"Alice", 2}, {"ALICE", 0}})
        EXPECT_EQ(Find_In_Combo(cbo, text), pos) << text;

    cbo.Set_ListIndex(1);
    cbo.Remove_Item(1);
    EXPECT_EQ(cbo.ListIndex(), -1); // the selected entry went
}

TEST(KitControls, TypedTextChangesButDoesNotClick) {
    ComboBox cbo("cboEmailFilter", ComboBox::DropDownCombo, nullptr);
    TextBox txt("txtPassword", nullptr);
    int changes = 0, clicks = 0;
    QObject::connect(&cbo, &ComboBox::Change, [&] { ++changes; });
    QObject::connect(&cbo, &ComboBox::Click, [&] { ++clicks; });
    QObject::connect(&txt, &TextBox::Change, [&] { ++changes; });
    cbo.Set_Text("typed");
    txt.Set_Text("secret");
    txt.Set_Text("secret");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(clicks, 0);

    ComboBox list("cboList", ComboBox::DropDownList, nullptr);
    list.Add_Item("one");
    list.Set_Text("one");
    EXPECT_EQ(list.ListIndex(), 0);
    EXPECT_NE(Raised([&] { list.Set_Text("two"); }), 0);
}

} // namespace
