// The controls' behaviour that the pages rely on: Click on a change made by code (and only on a real
// change), refused values raising 380, combo boxes that keep no selection until one is made, ItemData,
// the status bar's panels, timers that wait for the driver, and the tree's keys.
#include "TestSupport.h"
#include "platform/Err.h"
#include "platform/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/ListView.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace {

using namespace hv::ui;

class KitControls : public ::testing::Test {
protected:
    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
};

using hv::testing::Raised;

TEST_F(KitControls, CheckBoxClickRunsOnEveryRealChangeOfValueOnly) {
    CheckBox chk(QStringLiteral("chkEnable"), QStringLiteral("Enable"), nullptr);
    int clicks = 0;
    QObject::connect(&chk, &CheckBox::Click, [&] { ++clicks; });
    const struct {
        int value;
        int clicksAfter;
    } steps[] = {{0, 0}, {1, 1}, {1, 1}, {2, 2}, {2, 2}, {0, 3}};
    for (const auto& s : steps) {
        chk.Set_Value(s.value);
        EXPECT_EQ(chk.Value(), s.value);
        EXPECT_EQ(clicks, s.clicksAfter) << "after value " << s.value;
    }
    chk.click(); // a user's click: once, not twice
    EXPECT_EQ(chk.Value(), 1);
    EXPECT_EQ(clicks, 4);
    chk.Set_Value(2);
    chk.click(); // a grayed box becomes checked
    EXPECT_EQ(chk.Value(), 1);
    EXPECT_EQ(Raised([&] { chk.Set_Value(3); }), hv::errnum::InvalidPropertyValue);
}

TEST_F(KitControls, OptionButtonClickRunsWhenItBecomesTrue) {
    QWidget group;
    OptionButton a(QStringLiteral("optMode(0)"), QStringLiteral("A"), &group);
    OptionButton b(QStringLiteral("optMode(1)"), QStringLiteral("B"), &group);
    QStringList clicks;
    QObject::connect(&a, &OptionButton::Click, [&] { clicks << QStringLiteral("a"); });
    QObject::connect(&b, &OptionButton::Click, [&] { clicks << QStringLiteral("b"); });
    a.Set_Value(true);
    a.Set_Value(true);
    b.Set_Value(true);
    EXPECT_FALSE(a.Value());
    b.Set_Value(false); // code may clear the checked one of a group
    EXPECT_FALSE(b.Value());
    a.click();
    a.click();
    EXPECT_EQ(clicks, (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")}));
}

TEST_F(KitControls, ComboListIndexFromCodeRunsClickOnChangeAndRefusesBadIndexes) {
    ComboBox cbo(QStringLiteral("cboUsers"), ComboBox::DropDownList, nullptr);
    int clicks = 0;
    QObject::connect(&cbo, &ComboBox::Click, [&] { ++clicks; });
    EXPECT_EQ(Raised([&] { cbo.Set_ListIndex(0); }), hv::errnum::InvalidPropertyValue); // empty list
    for (const char* name : {"[All Users...]", "alice", "Bob"})
        cbo.Add_Item(QString::fromLatin1(name));
    EXPECT_EQ(cbo.ListIndex(), -1); // adding entries selects none
    EXPECT_EQ(cbo.Text(), QString());
    EXPECT_EQ(clicks, 0);
    cbo.Set_ListIndex(0); // from -1 to 0: a change
    cbo.Set_ListIndex(0);
    cbo.Set_ListIndex(2);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(cbo.Text(), QStringLiteral("Bob"));
    EXPECT_EQ(Raised([&] { cbo.Set_ListIndex(3); }), hv::errnum::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { cbo.Set_ListIndex(-2); }), hv::errnum::InvalidPropertyValue);
    EXPECT_EQ(cbo.ListIndex(), 2);
    cbo.User_Choose(2); // a user's pick of the same entry still clicks
    EXPECT_EQ(clicks, 3);
    cbo.Set_ListIndex(-1);
    EXPECT_EQ(clicks, 4);

    cbo.Set_Item_Data(1, 42);
    EXPECT_EQ(cbo.Item_Data(1), 42);
    EXPECT_EQ(cbo.Item_Data(0), 0);
    EXPECT_NE(Raised([&] { (void)cbo.Item_Data(7); }), 0);

    cbo.Set_ListIndex(1);
    cbo.Remove_Item(1);
    EXPECT_EQ(cbo.ListIndex(), -1); // the selected entry went
    cbo.Clear_Items();
    EXPECT_EQ(cbo.List_Count(), 0);
    cbo.Add_Item(QStringLiteral("again"));
    EXPECT_EQ(cbo.ListIndex(), -1);
}

TEST_F(KitControls, FindInComboCannotTellAMissFromTheFirstEntry) {
    ComboBox cbo(QStringLiteral("cboUsers"), ComboBox::DropDownList, nullptr);
    EXPECT_EQ(Find_In_Combo(cbo, QStringLiteral("x")), 0);
    for (const char* name : {"[All Users...]", "alice", "Alice", "alice"})
        cbo.Add_Item(QString::fromLatin1(name));
    const struct {
        const char* text;
        int pos;
    } cases[] = {{"[All Users...]", 0}, {"nobody", 0}, {"alice", 1}, {"Alice", 2}, {"ALICE", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(Find_In_Combo(cbo, QString::fromLatin1(c.text)), c.pos) << c.text;
}

TEST_F(KitControls, EditableComboTextAndChange) {
    ComboBox cbo(QStringLiteral("cboEmailFilter"), ComboBox::DropDownCombo, nullptr);
    int changes = 0, clicks = 0;
    QObject::connect(&cbo, &ComboBox::Change, [&] { ++changes; });
    QObject::connect(&cbo, &ComboBox::Click, [&] { ++clicks; });
    cbo.Set_Text(QStringLiteral("typed"));
    EXPECT_EQ(cbo.Text(), QStringLiteral("typed"));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(clicks, 0);

    ComboBox list(QStringLiteral("cboList"), ComboBox::DropDownList, nullptr);
    list.Add_Item(QStringLiteral("one"));
    list.Set_Text(QStringLiteral("one"));
    EXPECT_EQ(list.ListIndex(), 0);
    EXPECT_NE(Raised([&] { list.Set_Text(QStringLiteral("two")); }), 0);
}

TEST_F(KitControls, TextBoxChangeAndPasswordChar) {
    TextBox txt(QStringLiteral("txtPassword"), nullptr);
    int changes = 0;
    QObject::connect(&txt, &TextBox::Change, [&] { ++changes; });
    txt.Set_Text(QStringLiteral("secret"));
    txt.Set_Text(QStringLiteral("secret"));
    EXPECT_EQ(changes, 1);
    txt.Set_Password_Char(QLatin1Char('*'));
    EXPECT_EQ(txt.echoMode(), QLineEdit::Password);
    EXPECT_EQ(txt.Password_Char(), QLatin1Char('*'));
    txt.Set_Password_Char(QChar());
    EXPECT_EQ(txt.echoMode(), QLineEdit::Normal);
    EXPECT_EQ(Raised([&] { txt.Set_Max_Length(-1); }), hv::errnum::InvalidPropertyValue);
}

TEST_F(KitControls, StatusBarPanelsAreNamedLabelsAndReportTheirClicks) {
    StatusBar sbr(QStringLiteral("sbrMain"), nullptr);
    sbr.Add_Panel(QStringLiteral("Version"), QStringLiteral("Version: 3.2"));
    sbr.Add_Panel(QStringLiteral("WorkingMode"), QStringLiteral("Working Mode:"), true);
    sbr.Add_Panel(QStringLiteral("HomeSite"), QStringLiteral("home"));
    QList<int> clicked;
    QObject::connect(&sbr, &StatusBar::PanelClick, [&](int i) { clicked << i; });
    ASSERT_EQ(sbr.Panel_Count(), 3);
    EXPECT_EQ(sbr.Panel(2), sbr.Panel(QStringLiteral("WorkingMode")));
    EXPECT_EQ(sbr.findChild<Label*>(QStringLiteral("sbrMain(3)")), sbr.Panel(3));
    sbr.Panel(3)->Click_As_User();
    sbr.Panel(1)->Click_As_User();
    EXPECT_EQ(clicked, (QList<int>{3, 1}));
    EXPECT_EQ(Raised([&] { sbr.Panel(4); }), hv::errnum::IndexOutOfBounds);
}

TEST_F(KitControls, TimersWaitForTheDriverUnderTheScriptedPlatform) {
    Timer tmr(QStringLiteral("tmrMain"), 1, true, nullptr);
    int fired = 0;
    QObject::connect(&tmr, &Timer::Timer_Event, [&] { ++fired; });
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 30)
        QCoreApplication::processEvents();
    EXPECT_EQ(fired, 0);
    tmr.Set_Enabled(false);
    tmr.Fire();
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(tmr.Interval(), 1);
}

TEST_F(KitControls, TreeNodesByKey) {
    TreeView tvw(QStringLiteral("tvwReports"), nullptr);
    tvw.Add_Node(QString(), QStringLiteral("root"), QStringLiteral("Reports"));
    tvw.Add_Node(QStringLiteral("root"), QStringLiteral("url"), QStringLiteral("URL"));
    EXPECT_NE(Raised([&] { tvw.Add_Node(QString(), QStringLiteral("url"), QStringLiteral("again")); }), 0);
    EXPECT_NE(Raised([&] { tvw.Add_Node(QStringLiteral("none"), QStringLiteral("x"), QStringLiteral("x")); }),
              0);
    QStringList clicked;
    QObject::connect(&tvw, &TreeView::NodeClick, [&](const QString& key) { clicked << key; });
    tvw.Click_Node(QStringLiteral("url"));
    EXPECT_EQ(clicked, QStringList{QStringLiteral("url")});
    EXPECT_EQ(tvw.currentItem(), tvw.Node(QStringLiteral("url")));
    EXPECT_EQ(tvw.Node(QStringLiteral("url"))->parent(), tvw.Node(QStringLiteral("root")));
    tvw.Clear_Nodes();
    EXPECT_EQ(tvw.Node(QStringLiteral("url")), nullptr);
}

TEST_F(KitControls, DatePickerReportsChanges) {
    DatePicker dtpk(QStringLiteral("dtpkFrom"), DatePicker::Time, nullptr);
    int changes = 0;
    QObject::connect(&dtpk, &DatePicker::Change, [&] { ++changes; });
    dtpk.setTime(QTime(10, 30));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(dtpk.time().toString(QStringLiteral("HH:mm")), QStringLiteral("10:30"));
    EXPECT_EQ(Array_Name(QStringLiteral("lvwMain"), 2), QStringLiteral("lvwMain(2)"));
}

} // namespace
