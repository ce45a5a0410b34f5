// The list view: twips widths, row parts, selection, check boxes, the label edit, what the view is told.
#include "testing/ScriptedPlatform.h"
#include "testing/TestSupport.h"
#include "ui/Controls.h"
#include "ui/ListView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTreeView>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace hv::ui;
using hv::testing::Raised;

class KitListView : public ::testing::Test {
protected:
    void Fill(std::initializer_list<const char*> texts) {
        for (const char* t : texts)
            lvw.Add(t, "Url");
    }
    QStringList Texts(bool selectedOnly) const {
        QStringList out;
        for (int i = 1; i <= lvw.Count(); ++i)
            if (!selectedOnly || lvw.Selected(i))
                out << lvw.Text(i);
        return out;
    }
    QAbstractItemModel* Model() const { return lvw.View_Widget()->model(); }
    QVariant Data(int row, int col, int role) const { return Model()->data(Model()->index(row, col), role); }

    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    ListView lvw{"lvwBlackList", ListView::Report, nullptr};
};

// The design width is the list's inside: a column of the design width less 20 shows no horizontal scroll
// bar, and neither does one narrowed by 250 once the rows need the vertical one.
TEST_F(KitListView, TheDesignWidthIsTheViewportAndFittingColumnsNeedNoScrollBar) {
    lvw.Set_Size_Twips(5100, 1500);
    lvw.Add_Column("Black List URLs", lvw.Width_Twips() - 20);
    lvw.show();
    QApplication::processEvents();
    auto* view = static_cast<QTreeView*>(lvw.View_Widget());
    EXPECT_EQ(view->viewport()->width(), 340);
    EXPECT_FALSE(view->horizontalScrollBar()->isVisible());
    for (int i = 0; i < 40; ++i)
        lvw.Add(u"row%1.example"_s.arg(i), "Url");
    lvw.Set_Column_Width(1, lvw.Column_Width(1) - 250);
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
    EXPECT_TRUE(view->verticalScrollBar()->isVisible());
    EXPECT_FALSE(view->horizontalScrollBar()->isVisible());
}

// The pages narrow a column by 250 when a scroll bar comes and widen it back; the width in twips must
// come back exactly, although the screen only has whole pixels.
TEST_F(KitListView, ColumnWidthsReadBackExactlyInTwips) {
    lvw.Set_Size_Twips(5100, 4815);
    EXPECT_EQ(lvw.Add_Column("Black List URLs", lvw.Width_Twips() - 20), 1);
    EXPECT_EQ(lvw.Add_Column("Other", 7), 2);
    auto* header = static_cast<QTreeView*>(lvw.View_Widget())->header();
    int width = 5080;
    for (int step : {-250, -250, -250, +250, -250, +250, +250, +250}) {
        width += step;
        lvw.Set_Column_Width(1, lvw.Column_Width(1) + step);
        EXPECT_EQ(lvw.Column_Width(1), width);
        EXPECT_EQ(header->sectionSize(0), Twips_To_Pixels(width));
    }
    EXPECT_EQ(lvw.Column_Width(2), 7);

    EXPECT_EQ(Raised([&] { lvw.Set_Column_Width(1, -1); }), hv::errnum::InvalidPropertyValue);
    EXPECT_EQ(lvw.Column_Width(1), 5080);
    EXPECT_EQ(Raised([&] { lvw.Set_Column_Width(3, 10); }), hv::errnum::IndexOutOfBounds);

    // Emptying and refilling the list leaves the columns as they were.
    Fill({"a.com", "b.com"});
    lvw.Clear();
    QApplication::processEvents();
    EXPECT_EQ(header->sectionSize(0), Twips_To_Pixels(5080));
}

TEST_F(KitListView, RowPartsReachTheViewAndMoveWithTheirRows) {
    for (const char* caption : {"Code", "Name", "Port"})
        lvw.Add_Column(caption, 1000);
    EXPECT_EQ(lvw.Add("", "Port", "k1"), 1);
    lvw.Set_Sub_Item(1, 1, "Odd");
    lvw.Set_Sub_Item(1, 2, "9000");
    EXPECT_EQ(lvw.Add("URL REPORT"), 2);
    EXPECT_EQ(lvw.Row_Text(1), "|Odd|9000");
    EXPECT_EQ(lvw.Row_Text(2), "URL REPORT||");
    EXPECT_EQ(Raised([&] { lvw.Add("dup", "", "k1"); }), 35602);

    lvw.Set_Tag(2, "17");
    lvw.Set_Bold(2, true);
    lvw.Set_Sub_Item_Bold(1, 2, true);
    EXPECT_TRUE(Data(1, 0, Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(Data(0, 0, Qt::FontRole).isValid());
    EXPECT_TRUE(Data(0, 2, Qt::FontRole).value<QFont>().bold());

    lvw.Remove(1);
    EXPECT_EQ(lvw.Tag(1), "17");
    EXPECT_TRUE(lvw.Bold(1));
    EXPECT_EQ(lvw.Add("new", "", "k1"), 2); // the key went with its row
    EXPECT_EQ(lvw.Sub_Item(2, 1), "");
    for (auto bad : {0, 3, -1})
        EXPECT_EQ(Raised([&] { (void)lvw.Text(bad); }), hv::errnum::IndexOutOfBounds) << bad;
}

// A fill must reach the view in one batch, not row by row.
TEST_F(KitListView, RowsAddedOneByOneReachTheViewInOneBatch) {
    int inserts = 0;
    QObject::connect(Model(), &QAbstractItemModel::rowsInserted, [&] { ++inserts; });
    for (int i = 0; i < 100; ++i)
        lvw.Add(u"row %1"_s.arg(i));
    lvw.Set_Text(100, "last"); // a change before the view knows the row
    QApplication::processEvents();
    EXPECT_EQ(inserts, 1);
    EXPECT_EQ(Data(99, 0, Qt::DisplayRole).toString(), "last");
    lvw.Add_Many({"x", "y"}, "Url");
    EXPECT_EQ(Model()->rowCount(), 102);
    EXPECT_EQ(lvw.Text(101), "x");
}

// An import that lets the event loop turn every 500 rows: the views are told of the rows in a handful of
// growing batches, not at every turn (each announcement makes a view lay out every row it knows), and the
// last rows reach them once the rows stop coming, or at once when something needs the views to know them.
TEST_F(KitListView, LongRunsOfAddReachTheViewInGrowingBatches) {
    QList<int> batches;
    QObject::connect(Model(), &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex&, int first, int last) { batches << last - first + 1; });
    constexpr int kRows = 200000;
    for (int i = 0; i < kRows; ++i) {
        if (i % 500 == 0)
            QApplication::processEvents();
        lvw.Add(u"row %1"_s.arg(i));
    }
    QApplication::processEvents();
    // Eager while the list is short (40 turns), then each batch half as large as the rows shown at least.
    EXPECT_LE(batches.size(), 40 + 8);
    int shown = 0;
    for (int rows : batches) {
        if (shown >= 20000) {
            EXPECT_GE(rows, shown / 2);
        }
        shown += rows;
    }
    for (QElapsedTimer waited; Model()->rowCount() < kRows && waited.elapsed() < 2000;)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_EQ(Model()->rowCount(), kRows);

    lvw.Add("one more");
    lvw.Set_Selected(kRows + 1, true);
    EXPECT_EQ(Model()->rowCount(), kRows + 1);
    EXPECT_TRUE(lvw.View_Widget()->selectionModel()->isRowSelected(kRows, QModelIndex()));
}

// A selection survives the removal of the rows around it.
TEST_F(KitListView, SelectionAsThePagesWalkIt) {
    lvw.Set_Multi_Select(true);
    Fill({"a", "b", "c", "d", "e"});
    lvw.User_Select({2, 3, 5});
    EXPECT_EQ(Texts(true), (QStringList{"b", "c", "e"}));
    EXPECT_EQ(lvw.Selected_Item(), 5);
    lvw.Remove(2);
    EXPECT_EQ(Texts(true), (QStringList{"c", "e"}));
    lvw.Set_Selected(2, false);
    lvw.Remove(4);
    lvw.Remove(2);
    EXPECT_EQ(Texts(false), (QStringList{"a", "d"}));
    EXPECT_EQ(lvw.Selected_Item(), 0);

    lvw.Set_Selected(1, true);
    lvw.Set_Selected(2, true);
    EXPECT_EQ(Texts(true), (QStringList{"a", "d"}));

    // Without multi-select a selection from code replaces the one before.
    lvw.Set_Multi_Select(false);
    lvw.Set_Selected(1, true);
    lvw.Set_Selected(2, true);
    EXPECT_EQ(Texts(true), QStringList{"d"});
    lvw.Clear();
    EXPECT_EQ(lvw.Selected_Item(), 0);
}

TEST_F(KitListView, UserTicksRaiseItemCheckButCodeDoesNot) {
    lvw.Set_Checkboxes(true);
    Fill({"a", "b"});
    QList<int> checks;
    QObject::connect(&lvw, &ListView::ItemCheck, [&](int i) { checks << i; });
    lvw.Set_Checked(2, true);
    lvw.User_Check(1, true);
    lvw.User_Check(1, true); // already ticked: nothing
    lvw.User_Check(2, false);
    EXPECT_EQ(Data(0, 0, Qt::CheckStateRole).toInt(), int(Qt::Checked));
    Model()->setData(Model()->index(1, 0), Qt::Checked, Qt::CheckStateRole); // a tick in the view itself
    EXPECT_EQ(checks, (QList<int>{1, 2, 2}));
    EXPECT_TRUE(lvw.Checked(2));
}

// The label edit as the pages use it: Before may refuse, After gets Cancel and NewString.
TEST_F(KitListView, LabelEditCancelAndCommit) {
    Fill({"old.com", "other.com"});
    int cancelBefore = 1, cancelAfter = 0;
    QStringList events;
    QObject::connect(&lvw, &ListView::BeforeLabelEdit, [&](int& Cancel) {
        events << "before";
        Cancel = cancelBefore;
    });
    QObject::connect(&lvw, &ListView::AfterLabelEdit, [&](int& Cancel, QString& NewString) {
        events << NewString + " / old " + lvw.Text(lvw.Selected_Item());
        NewString = NewString.trimmed().toLower();
        Cancel = cancelAfter;
    });

    lvw.Start_Label_Edit(); // no selected item: nothing
    lvw.Set_Selected_Item(1);
    lvw.Start_Label_Edit();
    EXPECT_FALSE(lvw.Label_Editing());
    lvw.End_Label_Edit("ignored"); // no edit running: no event

    cancelBefore = 0;
    lvw.Start_Label_Edit();
    EXPECT_TRUE(lvw.Label_Editing());
    lvw.Cancel_Label_Edit(); // Esc: no event, old text stays
    EXPECT_FALSE(lvw.Label_Editing());

    lvw.Start_Label_Edit();
    cancelAfter = 1;
    lvw.End_Label_Edit(" Refused.COM ");
    EXPECT_EQ(lvw.Text(1), "old.com");
    EXPECT_FALSE(lvw.Label_Editing());

    lvw.Start_Label_Edit();
    cancelAfter = 0;
    lvw.End_Label_Edit(" New.COM ");
    EXPECT_EQ(Texts(false), (QStringList{"new.com", "other.com"}));

    // The view's editor hands its text back through the same end, on the edited row only.
    lvw.Set_Selected_Item(2);
    lvw.Start_Label_Edit();
    EXPECT_TRUE(Model()->flags(Model()->index(1, 0)) & Qt::ItemIsEditable);
    EXPECT_FALSE(Model()->flags(Model()->index(0, 0)) & Qt::ItemIsEditable);
    Model()->setData(Model()->index(1, 0), "EDITED.com", Qt::EditRole);
    EXPECT_EQ(lvw.Text(2), "edited.com");
    EXPECT_FALSE(lvw.Label_Editing());
    EXPECT_EQ(events, (QStringList{"before", "before", "before", " Refused.COM  / old old.com", "before",
                                   " New.COM  / old old.com", "before", "EDITED.com / old other.com"}));
}

// Duplicates are found case-blind on the text and by the decimal text of the port column.
TEST_F(KitListView, DuplicateTestsLookAtWhatTheListShows) {
    EXPECT_FALSE(Is_Text_In_ListView("", lvw));
    for (const char* caption : {"Port", "Type", "No"})
        lvw.Add_Column(caption, 1000);
    Fill({"WWW.Example.com", ""});
    lvw.Set_Sub_Item(1, 2, "8080");
    lvw.Set_Sub_Item(2, 2, "080");
    for (const char* found : {"www.example.com", ""})
        EXPECT_TRUE(Is_Text_In_ListView(found, lvw)) << found;
    EXPECT_FALSE(Is_Text_In_ListView("example.com", lvw));
    EXPECT_TRUE(Is_Port_In_ListView(8080, lvw));
    for (long port : {80, 808}) // "080" is not port 80: the column's text is compared
        EXPECT_FALSE(Is_Port_In_ListView(port, lvw)) << port;
}

} // namespace
