// The list view: widths kept in twips, rows and their parts, selection as the pages walk it, check
// boxes, the in-place label edit with its two events, and what the views are told.
#include "TestSupport.h"
#include "platform/Err.h"
#include "platform/ScriptedPlatform.h"
#include "ui/Controls.h"
#include "ui/ListView.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QTreeView>
#include <gtest/gtest.h>

namespace {

using namespace hv::ui;

using hv::testing::Raised;

class KitListView : public ::testing::Test {
protected:
    void Fill(std::initializer_list<const char*> texts) {
        for (const char* t : texts)
            lvw.Add(QString::fromLatin1(t), QStringLiteral("Url"));
    }
    QStringList Texts() const {
        QStringList out;
        for (int i = 1; i <= lvw.Count(); ++i)
            out << lvw.Text(i);
        return out;
    }
    QStringList Selected_Texts() const {
        QStringList out;
        for (int i = 1; i <= lvw.Count(); ++i)
            if (lvw.Selected(i))
                out << lvw.Text(i);
        return out;
    }

    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    ListView lvw{QStringLiteral("lvwBlackList"), ListView::Report, nullptr};
};

// The pages narrow a column by 250 when a scroll bar comes and widen it back; the width in twips must
// come back exactly, although the screen only has whole pixels.
TEST_F(KitListView, ColumnWidthsReadBackExactlyInTwips) {
    lvw.Set_Size_Twips(5100, 4815);
    EXPECT_EQ(lvw.Width_Twips(), 5100);
    EXPECT_EQ(lvw.width(), 340);
    EXPECT_EQ(lvw.Add_Column(QStringLiteral("Black List URLs"), lvw.Width_Twips() - 20), 1);
    EXPECT_EQ(lvw.Add_Column(QStringLiteral("Other"), 7), 2);
    auto* header = static_cast<QTreeView*>(lvw.View_Widget())->header();
    int width = lvw.Column_Width(1);
    EXPECT_EQ(width, 5080);
    for (int step : {-250, -250, -250, +250, -250, +250, +250, +250}) {
        width += step;
        lvw.Set_Column_Width(1, lvw.Column_Width(1) + step);
        EXPECT_EQ(lvw.Column_Width(1), width);
        EXPECT_EQ(header->sectionSize(0), Twips_To_Pixels(width));
    }
    EXPECT_EQ(lvw.Column_Width(1), 5080);
    EXPECT_EQ(lvw.Column_Width(2), 7);
    lvw.Set_Column_Width(2, 0);
    EXPECT_EQ(lvw.Column_Width(2), 0);

    EXPECT_EQ(Raised([&] { lvw.Set_Column_Width(1, -1); }), hv::errnum::InvalidPropertyValue);
    EXPECT_EQ(lvw.Column_Width(1), 5080);
    EXPECT_EQ(Raised([&] { lvw.Add_Column(QStringLiteral("x"), -250); }), hv::errnum::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { lvw.Set_Column_Width(3, 10); }), hv::errnum::IndexOutOfBounds);
    EXPECT_EQ(Raised([&] { (void)lvw.Column_Width(0); }), hv::errnum::IndexOutOfBounds);

    // Emptying and refilling the list leaves the columns as they were.
    Fill({"a.com", "b.com"});
    lvw.Clear();
    QApplication::processEvents();
    EXPECT_EQ(header->sectionSize(0), Twips_To_Pixels(5080));
    EXPECT_EQ(lvw.Column_Caption(1), QStringLiteral("Black List URLs"));
}

TEST_F(KitListView, RowsCarryTextSubItemsIconTagKeyAndBoldFlags) {
    lvw.Add_Column(QStringLiteral("Code"), 1000);
    lvw.Add_Column(QStringLiteral("Name"), 1000);
    lvw.Add_Column(QStringLiteral("Port"), 1000);
    EXPECT_EQ(lvw.Add(QString(), QStringLiteral("Port"), QStringLiteral("k1")), 1);
    lvw.Set_Sub_Item(1, 1, QStringLiteral("Odd"));
    lvw.Set_Sub_Item(1, 2, QStringLiteral("9000"));
    EXPECT_EQ(lvw.Add(QStringLiteral("URL REPORT")), 2);
    EXPECT_EQ(lvw.Row_Text(1), QStringLiteral("|Odd|9000"));
    EXPECT_EQ(lvw.Row_Text(2), QStringLiteral("URL REPORT||"));
    EXPECT_EQ(lvw.Icon_Key(1), QStringLiteral("Port"));
    EXPECT_EQ(lvw.Icon_Key(2), QString());
    lvw.Set_Icon_Key(2, QStringLiteral("Port"));
    EXPECT_EQ(lvw.Icon_Key(2), QStringLiteral("Port"));

    EXPECT_EQ(lvw.Key(1), QStringLiteral("k1"));
    EXPECT_EQ(lvw.Find_Key(QStringLiteral("k1")), 1);
    EXPECT_EQ(lvw.Find_Key(QStringLiteral("k2")), 0);
    EXPECT_EQ(Raised([&] { lvw.Add(QStringLiteral("dup"), QString(), QStringLiteral("k1")); }), 35602);
    EXPECT_EQ(lvw.Count(), 2);

    lvw.Set_Tag(2, QStringLiteral("17"));
    EXPECT_EQ(lvw.Tag(2), QStringLiteral("17"));
    EXPECT_EQ(lvw.Tag(1), QString());

    lvw.Set_Bold(2, true);
    lvw.Set_Sub_Item_Bold(1, 2, true);
    EXPECT_TRUE(lvw.Bold(2));
    EXPECT_FALSE(lvw.Bold(1));
    EXPECT_TRUE(lvw.Sub_Item_Bold(1, 2));
    EXPECT_FALSE(lvw.Sub_Item_Bold(1, 1));
    // What the view is given to draw.
    QAbstractItemModel* model = lvw.View_Widget()->model();
    EXPECT_TRUE(model->data(model->index(1, 0), Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(model->data(model->index(0, 0), Qt::FontRole).isValid());
    EXPECT_TRUE(model->data(model->index(0, 2), Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(model->data(model->index(0, 1), Qt::DisplayRole).toString(), QStringLiteral("Odd"));
    EXPECT_EQ(model->headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Port"));

    // Parts move with their rows when rows before them go.
    lvw.Remove(1);
    EXPECT_EQ(lvw.Tag(1), QStringLiteral("17"));
    EXPECT_TRUE(lvw.Bold(1));
    EXPECT_EQ(lvw.Find_Key(QStringLiteral("k1")), 0);
    EXPECT_EQ(lvw.Add(QStringLiteral("new"), QString(), QStringLiteral("k1")), 2);
    EXPECT_EQ(lvw.Sub_Item(2, 1), QString());

    for (auto bad : {0, 3, -1})
        EXPECT_EQ(Raised([&] { (void)lvw.Text(bad); }), hv::errnum::IndexOutOfBounds) << bad;
}

TEST_F(KitListView, RowsAddedOneByOneReachTheViewInOneBatch) {
    QAbstractItemModel* model = lvw.View_Widget()->model();
    int inserts = 0;
    QObject::connect(model, &QAbstractItemModel::rowsInserted, [&] { ++inserts; });
    for (int i = 0; i < 100; ++i)
        lvw.Add(QStringLiteral("row %1").arg(i));
    lvw.Set_Text(100, QStringLiteral("last")); // a change before the view knows the row
    EXPECT_EQ(lvw.Count(), 100);
    QApplication::processEvents();
    EXPECT_EQ(inserts, 1);
    EXPECT_EQ(model->rowCount(), 100);
    EXPECT_EQ(model->data(model->index(99, 0), Qt::DisplayRole).toString(), QStringLiteral("last"));

    QStringList texts{QStringLiteral("x"), QStringLiteral("y")};
    lvw.Add_Many(texts, QStringLiteral("Url"));
    texts[0] = QStringLiteral("changed by the caller");
    EXPECT_EQ(model->rowCount(), 102);
    EXPECT_EQ(lvw.Text(101), QStringLiteral("x"));
    EXPECT_EQ(lvw.Icon_Key(102), QStringLiteral("Url"));

    ListView fresh(QStringLiteral("lvwFresh"), ListView::Icons, nullptr);
    QStringList shared{QStringLiteral("p"), QStringLiteral("q")};
    fresh.Add_Many(shared, QString());
    shared[1] = QStringLiteral("changed");
    fresh.Set_Text(1, QStringLiteral("P"));
    EXPECT_EQ(fresh.Row_Text(1), QStringLiteral("P"));
    EXPECT_EQ(fresh.Text(2), QStringLiteral("q"));
    EXPECT_EQ(shared[0], QStringLiteral("p"));
}

// A page's Remove walks the rows and removes the selected ones, stepping back after each removal.
TEST_F(KitListView, SelectionAsThePagesWalkIt) {
    lvw.Set_Multi_Select(true);
    Fill({"a", "b", "c", "d", "e"});
    EXPECT_EQ(lvw.Selected_Item(), 0);
    lvw.User_Select({2, 3, 5});
    EXPECT_EQ(Selected_Texts(), (QStringList{QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("e")}));
    EXPECT_EQ(lvw.Selected_Item(), 5);

    int count = lvw.Count();
    for (int i = 1; i <= count; ++i) {
        if (lvw.Selected(i)) {
            lvw.Remove(i);
            --i;
            --count;
        }
    }
    EXPECT_EQ(Texts(), (QStringList{QStringLiteral("a"), QStringLiteral("d")}));
    EXPECT_EQ(Selected_Texts(), QStringList());
    EXPECT_EQ(lvw.Selected_Item(), 0);

    lvw.Set_Selected(1, true);
    lvw.Set_Selected(2, true);
    EXPECT_EQ(Selected_Texts(), (QStringList{QStringLiteral("a"), QStringLiteral("d")}));
    lvw.Set_Selected(1, false);
    EXPECT_EQ(lvw.Selected_Item(), 2);
    lvw.User_Select({});
    EXPECT_EQ(Selected_Texts(), QStringList());

    // Without multi-select a selection from code replaces the one before.
    lvw.Set_Multi_Select(false);
    lvw.Set_Selected(1, true);
    lvw.Set_Selected(2, true);
    EXPECT_EQ(Selected_Texts(), QStringList{QStringLiteral("d")});
    lvw.Set_Selected_Item(1);
    EXPECT_EQ(lvw.Selected_Item(), 1);
    EXPECT_EQ(Selected_Texts(), QStringList{QStringLiteral("a")});
    lvw.Clear();
    EXPECT_EQ(lvw.Selected_Item(), 0);
}

TEST_F(KitListView, UserClicksAndTicksRaiseTheirEvents) {
    lvw.Set_Checkboxes(true);
    Fill({"a", "b"});
    QStringList events;
    QObject::connect(&lvw, &ListView::ItemClick, [&](int i) { events << QStringLiteral("click %1").arg(i); });
    QObject::connect(&lvw, &ListView::DblClick, [&] { events << QStringLiteral("dbl"); });
    QObject::connect(&lvw, &ListView::ItemCheck, [&](int i) { events << QStringLiteral("check %1").arg(i); });
    lvw.User_Item_Click(2);
    EXPECT_EQ(lvw.Selected_Item(), 2);
    lvw.User_Dbl_Click(1);
    lvw.Set_Checked(2, true); // from code: no event
    lvw.User_Check(1, true);
    lvw.User_Check(1, true); // already ticked: nothing
    lvw.User_Check(2, false);
    EXPECT_EQ(events,
              (QStringList{QStringLiteral("click 2"), QStringLiteral("click 1"), QStringLiteral("dbl"),
                           QStringLiteral("check 1"), QStringLiteral("check 2")}));
    EXPECT_TRUE(lvw.Checked(1));
    EXPECT_FALSE(lvw.Checked(2));
    // A tick in the view itself comes the same way.
    QAbstractItemModel* model = lvw.View_Widget()->model();
    EXPECT_EQ(model->data(model->index(0, 0), Qt::CheckStateRole).toInt(), int(Qt::Checked));
    model->setData(model->index(1, 0), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(events.last(), QStringLiteral("check 2"));
    EXPECT_TRUE(lvw.Checked(2));
}

// The label edit as the pages use it: Before may refuse, After gets Cancel and NewString.
TEST_F(KitListView, LabelEditCancelAndCommit) {
    Fill({"old.com", "other.com"});
    int before = 0;
    int cancelBefore = 0;
    QStringList after;
    int cancelAfter = 0;
    QObject::connect(&lvw, &ListView::BeforeLabelEdit, [&](int& Cancel) {
        ++before;
        Cancel = cancelBefore;
    });
    QObject::connect(&lvw, &ListView::AfterLabelEdit, [&](int& Cancel, QString& NewString) {
        after << NewString + QStringLiteral(" / old ") + lvw.Text(lvw.Selected_Item());
        NewString = NewString.trimmed().toLower();
        Cancel = cancelAfter;
    });

    lvw.Start_Label_Edit(); // no selected item: nothing
    EXPECT_EQ(before, 0);
    EXPECT_FALSE(lvw.Label_Editing());

    lvw.Set_Selected_Item(1);
    cancelBefore = 1;
    lvw.Start_Label_Edit();
    EXPECT_EQ(before, 1);
    EXPECT_FALSE(lvw.Label_Editing());
    lvw.End_Label_Edit(QStringLiteral("ignored")); // no edit running: no event
    EXPECT_TRUE(after.isEmpty());

    cancelBefore = 0;
    lvw.Start_Label_Edit();
    EXPECT_TRUE(lvw.Label_Editing());
    lvw.Cancel_Label_Edit(); // Esc: no event, old text stays
    EXPECT_FALSE(lvw.Label_Editing());
    EXPECT_TRUE(after.isEmpty());
    EXPECT_EQ(lvw.Text(1), QStringLiteral("old.com"));

    lvw.Start_Label_Edit();
    cancelAfter = 1;
    lvw.End_Label_Edit(QStringLiteral(" Refused.COM "));
    EXPECT_EQ(lvw.Text(1), QStringLiteral("old.com"));
    EXPECT_FALSE(lvw.Label_Editing());

    lvw.Start_Label_Edit();
    cancelAfter = 0;
    lvw.End_Label_Edit(QStringLiteral(" New.COM "));
    EXPECT_EQ(lvw.Text(1), QStringLiteral("new.com"));
    EXPECT_EQ(lvw.Text(2), QStringLiteral("other.com"));
    EXPECT_EQ(after, (QStringList{QStringLiteral(" Refused.COM  / old old.com"),
                                  QStringLiteral(" New.COM  / old old.com")}));

    // The view's editor hands its text back through the same end.
    lvw.Set_Selected_Item(2);
    lvw.Start_Label_Edit();
    QAbstractItemModel* model = lvw.View_Widget()->model();
    EXPECT_TRUE(model->flags(model->index(1, 0)) & Qt::ItemIsEditable);
    EXPECT_FALSE(model->flags(model->index(0, 0)) & Qt::ItemIsEditable);
    model->setData(model->index(1, 0), QStringLiteral("EDITED.com"), Qt::EditRole);
    EXPECT_EQ(lvw.Text(2), QStringLiteral("edited.com"));
    EXPECT_FALSE(lvw.Label_Editing());
}

TEST_F(KitListView, DuplicateTestsLookAtWhatTheListShows) {
    EXPECT_FALSE(Is_Text_In_ListView(QString(), lvw));
    lvw.Add_Column(QStringLiteral("Port"), 1000);
    lvw.Add_Column(QStringLiteral("Type"), 1000);
    lvw.Add_Column(QStringLiteral("No"), 1000);
    Fill({"WWW.Example.com", ""});
    lvw.Set_Sub_Item(1, 2, QStringLiteral("8080"));
    lvw.Set_Sub_Item(2, 2, QStringLiteral("080"));
    const struct {
        const char* text;
        bool found;
    } texts[] = {{"www.example.com", true}, {"WWW.EXAMPLE.COM", true}, {"", true}, {"example.com", false}};
    for (const auto& c : texts)
        EXPECT_EQ(Is_Text_In_ListView(QString::fromLatin1(c.text), lvw), c.found) << c.text;
    const struct {
        long port;
        bool found;
    } ports[] = {{8080, true}, {80, false}, {808, false}};
    for (const auto& c : ports)
        EXPECT_EQ(Is_Port_In_ListView(c.port, lvw), c.found) << c.port;
}

} // namespace
