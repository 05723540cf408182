// The main menu's commands of the scenarios area.
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/scenarios/frmShowRoutes.h"

namespace ferrolund::screens {

void RegisterScenarioCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    QWidget* window = &menu.window;
    // The Scenario Editor, the details and the Work Order are handed to the screen here
    // once they exist; until then their buttons stay greyed.
    menu.add("mnuKickstart", [&ctx, window] { ShowShowRoutes(ctx, ScenarioScreens{}, window); });
}

}  // namespace ferrolund::screens
