#pragma once
// The running program's version, from the build (HV_VERSION_MAJOR, _MINOR, _REVISION).
#include <QString>

namespace hv {

// "Version: 3.2 Revision: 17", as the log header, the status bar and the About form show it.
inline QString Version_Caption() {
    return QStringLiteral("Version: %1.%2 Revision: %3")
        .arg(HV_VERSION_MAJOR)
        .arg(HV_VERSION_MINOR)
        .arg(HV_VERSION_REVISION);
}

// "3.2.17", as the version service is asked with it and the update check names it.
inline QString Version_Text() {
    return QStringLiteral("%1.%2.%3").arg(HV_VERSION_MAJOR).arg(HV_VERSION_MINOR).arg(HV_VERSION_REVISION);
}

} // namespace hv
