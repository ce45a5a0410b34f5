#include "core/TimeOfDay.h"

namespace hv {

QTime Time_Of_Day(const QString& text) {
    const QString t = text.trimmed();
    for (const char* format : {"HH:mm", "H:mm", "HH:mm:ss", "H:mm:ss"}) {
        const QTime value = QTime::fromString(t, QLatin1String(format));
        if (value.isValid())
            return value;
    }
    return QTime();
}

QString Short_Time(const QString& stored) {
    const QTime t = Time_Of_Day(stored);
    return t.isValid() ? t.toString(QStringLiteral("HH:mm")) : stored;
}

} // namespace hv
