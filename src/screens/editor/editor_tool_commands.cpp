// The editor's tools in the main menu: Find (dlgSearch), Find in Multiple Files
// (frmFolder5), the time converter (dlgTime), GUIDs (dlgGUID) and Identify Object (frmMain).

#include <QDialog>

#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/editor/SmallConverters.h"
#include "screens/editor/dlgSearch.h"
#include "screens/editor/frmFolder5.h"
#include "screens/editor/frmMain.h"

namespace ferrolund::screens {

namespace {

// A screen of its own, shown beside the window and gone when it is closed.
template <typename Screen, typename... Args>
void ShowScreen(frmEditor& window, Args&&... args) {
    auto* screen = new Screen(std::forward<Args>(args)..., &window);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
}

}  // namespace

void RegisterEditorToolCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    frmEditor& window = menu.window;
    menu.add("mnuFind", [&ctx, &window] { dlgSearch::ShowFor(ctx, window.textPane(), &window); });
    menu.add("mnuFindMult", [&ctx, &window] { ShowScreen<frmFolder5>(window, ctx); });
    menu.add("mnuTime", [&window] {
        dlgTime dialog(&window);
        dialog.exec();
    });
    menu.add("mnuUUID", [&window] {
        dlgGUID dialog(&window);
        dialog.exec();
    });
    menu.add("mnuIdent", [&ctx, &window] { ShowScreen<frmMain>(window, ctx); });
}

}  // namespace ferrolund::screens
