#pragma once
// The commands of frmDelRoute about where a route's assets stand and which providers and
// products it uses: "Show Location of all Assets", "Show Provider / Products used in
// selected route", "Display items used from selected P/P" and "Display items NOT used".

namespace ferrolund::screens {

class frmDelRoute;

// Adds Command17, Command14, Command22 and Command23 to the screen. Command22 stays greyed
// until Command14 has listed the providers and products in the lower grid, Command23
// until Command22 has listed the items of one of them.
void AddAssetCommands(frmDelRoute& form);

}  // namespace ferrolund::screens
