#pragma once
// The route maintenance commands of the route browser: "Check ScenarioProperties",
// "Check Route Template", and in the "Miscellaneous" menu "Remove terrain textures" and
// "Make Asset Folder".

namespace ferrolund::screens {

class frmDelRoute;

// Adds the buttons Command18 and Command25 and the menu entries mnuTex and mnuCRF.
void AddMaintenanceCommands(frmDelRoute& form);

}  // namespace ferrolund::screens
