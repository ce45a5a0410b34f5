#include "ui/BusyCursor.h"

#include "platform/Platform.h"

#include <QCursor>
#include <QGuiApplication>

#include <atomic>

namespace hv::ui {

namespace {
// Read by threads that wait for long work to end.
std::atomic<int> g_holders{0};
} // namespace

BusyCursor::BusyCursor() {
    ++g_holders;
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    m_sincePaint.start();
}

BusyCursor::~BusyCursor() {
    QGuiApplication::restoreOverrideCursor();
    --g_holders;
}

bool BusyCursor::Active() {
    return g_holders > 0;
}

void BusyCursor::Let_Paint(int every) {
    if (++m_units < every)
        return;
    m_units = 0;
    if (m_sincePaint.elapsed() >= kPaintIntervalMs) {
        platform().Do_Events();
        m_sincePaint.restart();
    }
}

} // namespace hv::ui
