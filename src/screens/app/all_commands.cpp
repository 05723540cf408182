// The one list of the areas whose commands stand in the main menu.
#include "screens/app/menu_commands.h"

namespace ferrolund::screens {

void RegisterEditorToolCommands(MenuCommands& menu);  // screens/editor/editor_tool_commands.cpp
void RegisterArchiveCommands(MenuCommands& menu);     // screens/archives/archive_commands.cpp
void RegisterRouteCommands(MenuCommands& menu);       // screens/routes/route_commands.cpp
void RegisterAssetCommands(MenuCommands& menu);       // screens/assets/asset_commands.cpp
void RegisterContentCommands(MenuCommands& menu);     // screens/assets/content_commands.cpp
void RegisterScenarioCommands(MenuCommands& menu);    // screens/scenarios/scenario_commands.cpp
void RegisterConsistCommands(MenuCommands& menu);     // screens/consists/consist_commands.cpp
void RegisterTextureCommands(MenuCommands& menu);     // screens/textures/texture_commands.cpp

void RegisterAllCommands(MenuCommands& menu) {
    RegisterOptionCommands(menu);
    RegisterDocumentCommands(menu);
    RegisterEditorToolCommands(menu);
    RegisterArchiveCommands(menu);
    RegisterRouteCommands(menu);
    RegisterAssetCommands(menu);
    RegisterContentCommands(menu);
    RegisterScenarioCommands(menu);
    RegisterConsistCommands(menu);
    RegisterTextureCommands(menu);
}

}  // namespace ferrolund::screens
