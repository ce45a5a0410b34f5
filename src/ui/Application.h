#pragma once
// The process's application object. Every event of every form passes through it, so it is the last
// error target: whatever a handler let through (memory running out included) is reported through the
// usual error path and the console goes on, instead of the process ending.
#include <QApplication>

namespace hv::ui {

class Application final : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace hv::ui
