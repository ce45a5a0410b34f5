#include "ui/BusyCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace hv::ui {

BusyCursor::BusyCursor() {
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

BusyCursor::~BusyCursor() {
    QGuiApplication::restoreOverrideCursor();
}

} // namespace hv::ui
