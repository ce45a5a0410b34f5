#pragma once
// Registration of the filter provider: in the WinSock catalogue (through the provider library, or its
// 64-bit companion program) and in the AppInit value. These also run from the installer switches, where
// there is no session log: a failure is shown in a plain box and goes nowhere else.
#include <QString>

namespace hv {

void Install_Providers();
void Uninstall_Providers();
// Writes "AppInit_DLLs" ("hvsock.dll" when on, empty when off) and, when on, "LoadAppInit_DLLs" = 1.
void Set_AppInit_Values(bool on);

// Looks for the provider's registrations: 0 all found, 1 not in the 32-bit WinSock catalogue, 2 not in
// the 64-bit one (looked at on a 64-bit system only), 3 not in AppInit. A failure of the registry reaches
// the caller as a run-time error.
long Check_Filters_Installed();

// What the start-up health check says for a result of Check_Filters_Installed, and whether it says it in
// a box as well as in the log.
struct Filter_Health {
    QString text;
    bool showBox = false;
};
Filter_Health Filter_Health_Report(long result);

// The shell's "open" on a document or program, shown normally.
bool Open_Document(const QString& path);

inline const char* const kAppInitKey = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Windows";
// The run time's default title for its own boxes: the project's name.
inline const char* const kRunTimeTitle = "halvenorts";

} // namespace hv
