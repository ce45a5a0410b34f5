#pragma once
namespace hv {
// Opens the log (Start_Logging on the default path) and writes the session header: a row of 89
// hyphens, "Start Time: ", "Path: ", "Version: major.minor Revision: revision".
void Start_Log_Session();
// Writes the session footer: "Stop", then a row of 50 plus signs.
void Stop_Log_Session();
} // namespace hv
