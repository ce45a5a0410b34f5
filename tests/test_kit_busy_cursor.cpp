// The hourglass stays for as long as the work does, also when the work ends in an exception, and
// nested uses leave the outer one in place.
#include "ui/BusyCursor.h"

#include <QCursor>
#include <QGuiApplication>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

Qt::CursorShape Shown() {
    const QCursor* c = QGuiApplication::overrideCursor();
    return c ? c->shape() : Qt::ArrowCursor;
}

TEST(KitBusyCursor, ShownWhileWorkRunsAndGoneAfterwardsHoweverItEnds) {
    ASSERT_EQ(QGuiApplication::overrideCursor(), nullptr);
    {
        hv::ui::BusyCursor outer;
        EXPECT_EQ(Shown(), Qt::WaitCursor);
        { hv::ui::BusyCursor inner; }
        EXPECT_EQ(Shown(), Qt::WaitCursor);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_THROW(
        {
            hv::ui::BusyCursor busy;
            throw std::runtime_error("failed");
        },
        std::runtime_error);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
