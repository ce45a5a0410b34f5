#include "platform/Platform.h"

#include "platform/Err.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace hv {

namespace {
Platform* g_platform = nullptr;
}

Platform& platform() {
    if (!g_platform)
        std::abort(); // installed by main, the driver and the test fixtures before anything runs
    return *g_platform;
}

void Set_Platform(Platform* p) {
    g_platform = p;
}

QString Host_Windows_Directory() {
    QString dir = qEnvironmentVariable("HALVENORTS_WINDIR");
    if (dir.isEmpty())
        dir = QStringLiteral("/var/lib/halvenorts");
    while (dir.size() > 1 && dir.endsWith(u'/'))
        dir.chop(1);
    return dir;
}

QString Host_User_Name() {
    QString name = qEnvironmentVariable("USER");
    if (name.isEmpty()) {
        if (const passwd* pw = ::getpwuid(::getuid()))
            name = QString::fromLocal8Bit(pw->pw_name);
    }
    return name;
}

MsgAnswer MsgBox(const QString& text, MsgStyle style, MsgButtons buttons, const QString& title) {
    return platform().MsgBox(text, style, buttons, title.isNull() ? kAppTitle : title);
}

} // namespace hv
