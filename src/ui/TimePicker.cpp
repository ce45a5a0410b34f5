#include "ui/TimePicker.h"

#include "core/TimeOfDay.h"
#include "platform/Err.h"

namespace hv::ui {

namespace {
const QString kShown = QStringLiteral("HH:mm");
}

TimePicker::TimePicker(const QString& name, QWidget* parent) : QTimeEdit(parent) {
    setObjectName(name);
    setDisplayFormat(kShown);
    connect(this, &QTimeEdit::timeChanged, this, [this](const QTime&) { Q_EMIT Change(); });
}

void TimePicker::Set_Value(const QTime& t) {
    // Whole minutes only: a value with seconds would compare unlike what the picker shows.
    setTime(QTime(t.hour(), t.minute()));
}

QString TimePicker::Value_Text() const {
    return time().toString(kShown);
}

void TimePicker::Set_Value_Text(const QString& text) {
    const QTime value = Time_Of_Day(text);
    if (!value.isValid())
        Err().Raise(errnum::TypeMismatch);
    Set_Value(value);
}

} // namespace hv::ui
