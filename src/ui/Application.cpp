#include "ui/Application.h"

#include "core/clsLog.h"

namespace hv::ui {

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        Report_Failure();
        return false;
    }
}

} // namespace hv::ui
