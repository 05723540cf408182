// The main menu's commands of the consists area.
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/consists/frmConsistBuilder.h"

namespace ferrolund::screens {

void RegisterConsistCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    QWidget* window = &menu.window;
    menu.add("mnuBuildCon", [&ctx, window] { ShowConsistBuilder(ctx, window); });
}

}  // namespace ferrolund::screens
