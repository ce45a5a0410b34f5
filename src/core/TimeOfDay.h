#pragma once
// Times of day as the schedules keep them: text "HH:mm", 24-hour. Rows written by other programs may carry
// seconds or a one-digit hour; they are read the same way everywhere.
#include <QString>
#include <QTime>

namespace hv {

// "HH:mm", "H:mm", or either with seconds, blanks around ignored; an invalid time for anything else.
QTime Time_Of_Day(const QString& text);
// The text as the lists show it, "HH:mm"; a text that is no time of day stays as it stands.
QString Short_Time(const QString& stored);

} // namespace hv
