// The main menu's commands of the routes area.
#include "routes/route_indexer.h"
#include "screens/app/dlgIndex.h"
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/routes/frmDelRoute.h"

namespace ferrolund::screens {

void RegisterRouteCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    QWidget* window = &menu.window;
    menu.add("mnuDelRoute", [&ctx, window] {
        // Until the routes have been indexed once, the notice offers the two commands first.
        if (!ctx.prefs.routesIndexed) {
            dlgIndex notice(
                ctx, [&ctx] { routes::getRouteProperties(ctx); }, [&ctx] { routes::IndexRouteProperties(ctx); },
                window);
            notice.exec();
        }
        ShowDelRoute(ctx, window);
    });
    menu.add("mnuERP", [&ctx] { routes::getRouteProperties(ctx); });
}

}  // namespace ferrolund::screens
