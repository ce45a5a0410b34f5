#include "core/LogSession.h"

#include "core/DateText.h"
#include "core/Version.h"
#include "core/clsLog.h"
#include "platform/Platform.h"

namespace hv {

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
