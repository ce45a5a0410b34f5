#pragma once
// The entry point of the console and the one end of a session.
#include <QString>

namespace hv {

// The single-instance test, the installer switches ("-ip", "-up", compared whole and exactly), then the
// session: the log, the remote-mode flag and the login form, shown not modal. Returns at once; from there
// the forms carry the process, which ends when the last form is gone.
void Main(const QString& commandLine);

// Main as the process runs it: a run-time failure that nothing in Main caught (a log file that cannot be
// opened) is told in the run time's box and ends the start.
void Run_Main(const QString& commandLine);

// The end of a session: "Application Closing", the session footer, and the logger released. frmMain runs
// it from its unload; frmLogin only when the login did not succeed.
void App_Closing();

// What a new process starts with: no logger, Remote_Mode false. For a host that plays several starts of
// the program in one process (the scenario driver).
void Reset_Process_State();

} // namespace hv
