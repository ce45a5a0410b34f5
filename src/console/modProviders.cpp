#include "console/modProviders.h"

#include "platform/Err.h"
#include "platform/Platform.h"
#include "platform/ProviderLibrary.h"
#include "platform/Registry.h"

namespace hv {

namespace {

QString Companion_Command(const char* sw) {
    return platform().App_Path() + QStringLiteral("/hvinstall64.exe ") + QLatin1String(sw);
}

// Without a logger to write to, the failure is told in the run time's own way and the operation ends.
void Show_Provider_Failure() {
    MsgBox(QString::number(Err().Number) + QStringLiteral(": ") + Err().Description, MsgStyle::Plain,
           MsgButtons::OK, QLatin1String(kRunTimeTitle));
    Err().Clear();
}

} // namespace

void Install_Providers() {
    try {
        if (platform().Is_Wow64()) {
            // The 64-bit side is registered by the companion program; it is started and not waited for.
            platform().Start_Program(Companion_Command("-ip"), true);
        } else {
            ProviderLibrary lib;
            lib.Install_Provider_Call();
        }
        Set_AppInit_Values(true);
    } catch (const RunTimeFailure&) {
        Show_Provider_Failure();
    }
}

void Uninstall_Providers() {
    try {
        if (platform().Is_Wow64())
            platform().Start_Program(Companion_Command("-up"), true);
        // The 32-bit provider is removed on a 64-bit system as well.
        ProviderLibrary lib;
        lib.Uninstall_Provider_Call();
        Set_AppInit_Values(false);
    } catch (const RunTimeFailure&) {
        Show_Provider_Failure();
    }
}

void Set_AppInit_Values(bool on) {
    Registry& reg = platform().Registry_Root();
    const QString key = QLatin1String(kAppInitKey);
    // The old value is replaced whole: any other library named there is dropped.
    reg.Set_String(key, QStringLiteral("AppInit_DLLs"), on ? QStringLiteral("hvsock.dll") : QString());
    if (on)
        reg.Set_Dword(key, QStringLiteral("LoadAppInit_DLLs"), 1);
}

} // namespace hv
