#include "core/DateText.h"

#include <QLocale>

namespace hv {

QString Short_Date(const QDate& date) {
    return QLocale::c().toString(date, QStringLiteral("M/d/yyyy"));
}

QString General_Date(const QDateTime& t) {
    if (t.time() == QTime(0, 0))
        return Short_Date(t.date());
    return QLocale::c().toString(t, QStringLiteral("M/d/yyyy h:mm:ss AP"));
}

} // namespace hv
