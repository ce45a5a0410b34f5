// The list view's rows with their sub-items at once and its removal of a run of rows, which the report
// sheet uses at a million rows, and the busy cursor around long work, however the work ends.
#include "testing/ScriptedPlatform.h"
#include "ui/BusyCursor.h"
#include "ui/ListView.h"

#include <QGuiApplication>
#include <QThread>
#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace hv::ui;

TEST(KitReportRows, AddRowIsAddWithSubItemsAndRemoveRangeIsRemoveRepeated) {
    ListView a(u"a"_s, ListView::Report, nullptr), b(u"b"_s, ListView::Report, nullptr);
    for (ListView* l : {&a, &b})
        for (int c = 0; c < 3; ++c)
            l->Add_Column(QString(), 1000);
    for (int i = 1; i <= 12; ++i) {
        const QString t = u"r%1"_s.arg(i);
        a.Add_Row(t, {t + u".1"_s, QString()});
        b.Add(t);
        b.Set_Sub_Item(i, 1, t + u".1"_s);
        b.Set_Sub_Item(i, 2, QString());
    }
    a.Set_Bold(9, true);
    b.Set_Bold(9, true);
    a.Set_Selected(10, true);
    b.Set_Selected(10, true);
    a.Remove_Range(4, 6);
    for (int k = 0; k < 6; ++k)
        b.Remove(4);
    ASSERT_EQ(a.Count(), b.Count());
    for (int i = 1; i <= a.Count(); ++i) {
        EXPECT_EQ(a.Row_Text(i), b.Row_Text(i));
        EXPECT_EQ(a.Bold(i), b.Bold(i));
        EXPECT_EQ(a.Selected(i), b.Selected(i));
    }
    EXPECT_EQ(a.Row_Text(4), u"r10|r10.1|"_s);
    EXPECT_EQ(a.Selected_Item(), 4);
    a.Remove_Range(1, 0); // nothing to remove
    EXPECT_EQ(a.Count(), 6);
}

TEST(KitReportRows, BusyCursorShowsWhileHeldAndLetsTheWindowPaint) {
    hv::ScriptedPlatform platform;
    hv::PlatformScope scope(platform);
    {
        BusyCursor outer;
        {
            BusyCursor inner;
            for (int i = 0; i < 10; ++i)
                inner.Let_Paint(4); // too soon to paint
            QThread::msleep(BusyCursor::kPaintIntervalMs + 10);
            for (int i = 0; i < 8; ++i)
                inner.Let_Paint(4); // once, and then too soon again
        }
        EXPECT_TRUE(BusyCursor::Active());
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    EXPECT_FALSE(BusyCursor::Active());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(platform.doEvents, 1);
    // Work that ends in an exception takes the cursor with it.
    EXPECT_THROW(
        {
            BusyCursor busy;
            throw std::runtime_error("failed");
        },
        std::runtime_error);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
