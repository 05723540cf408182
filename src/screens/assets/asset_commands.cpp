// The main menu's commands of the assets area.
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "editor/document.h"
#include "screens/assets/frmAssets.h"
#include "screens/assets/frmAssetsAP.h"
#include "screens/assets/frmIndex.h"
#include "tools/codepage.h"

namespace ferrolund::screens {

void RegisterAssetCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    frmEditor* window = &menu.window;
    // A file shown in the editor: XML as text, a game file through the converter.
    auto openInEditor = [&ctx, window](const std::string& file) {
        ctx.commandFile = file;
        window->document().openFromList = true;
        const bool xml = file.size() > 4 && tools::EqualsIgnoreCase(file.substr(file.size() - 4), ".xml");
        if (xml) editor::OpenXmlFile(ctx, window->document(), *window);
        else editor::OpenGameFile(ctx, window->document(), *window);
        window->raise();
        window->activateWindow();
    };
    menu.add("mnuAE", [&ctx, window] { ShowAssets(ctx, window); });
    menu.add("mnuAPEdit", [&ctx, window, openInEditor] { ShowAssetsAP(ctx, window, openInEditor); });
    menu.add("mnuRollingStock", [&ctx, window] { ShowStockIndex(ctx, window); });
}

}  // namespace ferrolund::screens
