#pragma once
// Every page the console has, by name, so that a menu entry, a feature list entry or an outside entry
// point (the scenario driver's "show") can make it without depending on it. A page that has not been
// written yet is simply not in the catalogue, and what would open it stays without effect.
namespace hv {
// Also installs the console's session, through which the pages reach the main console.
void Register_All_Forms();
} // namespace hv
