#pragma once
// Dates and times as an English system writes them by default ("1/15/2026", "1/15/2026 10:00:00 AM"),
// for the texts that follow the regional settings: the log's start time, a report's period and its
// export's time stamp.
#include <QDate>
#include <QDateTime>
#include <QString>

namespace hv {

QString Short_Date(const QDate& date);
// The time is left out when it is exactly midnight.
QString General_Date(const QDateTime& t);

} // namespace hv
