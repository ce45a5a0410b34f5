#include "core/LogSession.h"

#include "core/Version.h"
#include "core/clsLog.h"
#include "platform/Platform.h"

#include <QDateTime>
#include <QLocale>

namespace hv {

namespace {

// The general date format of an English system: the time is left out when it is exactly midnight.
QString General_Date(const QDateTime& t) {
    const QLocale c = QLocale::c();
    if (t.time() == QTime(0, 0))
        return c.toString(t.date(), QStringLiteral("M/d/yyyy"));
    return c.toString(t, QStringLiteral("M/d/yyyy h:mm:ss AP"));
}

} // namespace

void Start_Log_Session() {
    clsLog* log = Logger();
    if (!log)
        return;
    log->Start_Logging(log->strFileName);
    log->Log_Event(QString(89, u'-'), 0, false);
    log->Log_Event(QStringLiteral("Start Time: ") + General_Date(platform().Now()), 1, false);
    log->Log_Event(QStringLiteral("Path: ") + platform().App_Path(), 1, false);
    log->Log_Event(Version_Caption(), 1, false);
}

void Stop_Log_Session() {
    Log_Event(QStringLiteral("Stop"), 0, false);
    Log_Event(QString(50, u'+'), 0, false);
}

} // namespace hv
