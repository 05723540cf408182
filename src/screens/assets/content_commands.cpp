// The main menu's commands of the content lists.
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/assets/frmAPConsists.h"
#include "screens/assets/frmContent.h"

namespace ferrolund::screens {

void RegisterContentCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    QWidget* window = &menu.window;
    menu.add("mnuCnt", [&ctx, window] { ShowContent(ctx, window); });
    menu.add("mnuAPCont", [&ctx, window] { ShowApConsists(ctx, window); });
}

}  // namespace ferrolund::screens
