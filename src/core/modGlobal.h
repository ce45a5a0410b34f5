#pragma once
// Process-wide state shared by every page.
namespace hv {

// True when REMOTE_MODE of the settings row is not 0: the policy pages are then read-only. Read at the
// start of a session, rewritten by General Options.
extern bool Remote_Mode;

// The Tag an enable check box carries while code sets it, so that its Click saves nothing.
inline const char* const kDontSaveToDB = "DontSaveToDB";

} // namespace hv
