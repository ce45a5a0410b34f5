#pragma once
// A time picker: its value is a time of day, shown and taken as 24-hour "HH:mm". Change runs when the
// value changes, from code or from the user. A text that is no time of day raises "Type mismatch" (13).
#include <QTimeEdit>

namespace hv::ui {

class TimePicker final : public QTimeEdit {
    Q_OBJECT
public:
    TimePicker(const QString& name, QWidget* parent);
    QTime Value() const { return time(); }
    void Set_Value(const QTime& t);
    // The value as the schedules store and compare it.
    QString Value_Text() const;
    // Takes "HH:mm", "H:mm" or either with seconds; the seconds are dropped, as the picker shows none.
    void Set_Value_Text(const QString& text);
Q_SIGNALS:
    void Change();
};

} // namespace hv::ui
