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

inline const char* const kAppInitKey = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Windows";
// The run time's default title for its own boxes: the project's name.
inline const char* const kRunTimeTitle = "halvenorts";

} // namespace hv
