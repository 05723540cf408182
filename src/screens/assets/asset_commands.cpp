// The main menu's commands of the assets area.
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/assets/frmAssets.h"
#include "screens/assets/frmIndex.h"

namespace ferrolund::screens {

void RegisterAssetCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    QWidget* window = &menu.window;
    menu.add("mnuAE", [&ctx, window] { ShowAssets(ctx, window); });
    menu.add("mnuRollingStock", [&ctx, window] { ShowStockIndex(ctx, window); });
}

}  // namespace ferrolund::screens
