#include "ui/BusyCursor.h"

#include "platform/Platform.h"

#include <QCursor>
#include <QGuiApplication>

namespace hv::ui {

namespace {
int g_holders = 0;
}

BusyCursor::BusyCursor() {
    ++g_holders;
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

BusyCursor::~BusyCursor() {
    QGuiApplication::restoreOverrideCursor();
    --g_holders;
}

bool BusyCursor::Active() {
    return g_holders > 0;
}

void BusyCursor::Let_Paint(int every) {
    if (++m_units >= every) {
        m_units = 0;
        platform().Do_Events();
    }
}

} // namespace hv::ui
