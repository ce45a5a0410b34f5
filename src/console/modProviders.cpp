#include "console/modProviders.h"

#include "platform/Err.h"
#include "platform/Platform.h"
#include "platform/ProviderLibrary.h"
#include "platform/Registry.h"
#include "platform/WinSockCatalog.h"

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

namespace {

// The walk stops at the first entry that names the library.
bool Catalog_Holds_Provider(Registry& reg, bool wide64) {
    const QString key = Catalog_Key(wide64);
    for (const QString& entry : reg.Enum_Keys(key))
        if (Entry_Names_Provider(reg, key + u'\\' + entry))
            return true;
    return false;
}

} // namespace

long Check_Filters_Installed() {
    Registry& reg = platform().Registry_Root();
    if (!Catalog_Holds_Provider(reg, false))
        return 1;
    if (platform().Is_Wow64() && !Catalog_Holds_Provider(reg, true))
        return 2;
    // The check reads the value under the spelling "AppInit_Dlls"; names are found in any case.
    const QString appInit =
        reg.Get_String(QLatin1String(kAppInitKey), QStringLiteral("AppInit_Dlls")).value_or(QString());
    return appInit.contains(QLatin1String(kProviderLibraryName), Qt::CaseInsensitive) ? 0 : 3;
}

Filter_Health Filter_Health_Report(long result) {
    // The parts of the template by result. A missing 64-bit catalogue entry is worded "32-bit" as well.
    struct Row {
        long result;
        const char* filter;
        const char* bits;
    };
    static const Row kRows[] = {
        {1, "Internet", "32-bit"},
        {2, "Internet", "32-bit"},
        {3, "Application", "32-bit"},
        {4, "Application", "64-bit"},
    };
    if (result == 0)
        return {QStringLiteral("Filters are properly installed."), false};
    for (const Row& row : kRows) {
        if (row.result == result) {
            QString text = QStringLiteral("[PARAM1] filter for [PARAM2] applications not installed properly! "
                                          "Consider re-installing from 'Files->Register All Filters' menu!");
            text.replace(QStringLiteral("[PARAM1]"), QLatin1String(row.filter));
            text.replace(QStringLiteral("[PARAM2]"), QLatin1String(row.bits));
            return {text, true};
        }
    }
    return {QStringLiteral("Error while checking for installation of filters!"), false};
}

bool Open_Document(const QString& path) {
    return platform().Shell_Open(path);
}

void Set_AppInit_Values(bool on) {
    Registry& reg = platform().Registry_Root();
    const QString key = QLatin1String(kAppInitKey);
    // The old value is replaced whole: any other library named there is dropped.
    reg.Set_String(key, QStringLiteral("AppInit_DLLs"), on ? QLatin1String(kProviderLibraryName) : QString());
    if (on)
        reg.Set_Dword(key, QStringLiteral("LoadAppInit_DLLs"), 1);
}

} // namespace hv
