#include "platform/Platform.h"

#include "platform/Err.h"

#include <cstdlib>

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

MsgAnswer MsgBox(const QString& text, MsgStyle style, MsgButtons buttons, const QString& title) {
    return platform().MsgBox(text, style, buttons, title.isNull() ? kAppTitle : title);
}

} // namespace hv
