// The main menu's commands of the scenarios area.
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/scenarios/frmKickStart.h"
#include "screens/scenarios/frmScenario.h"
#include "screens/scenarios/frmShowRoutes.h"
#include "screens/scenarios/frmWorkOrder.h"

namespace ferrolund::screens {

namespace {

// A scenario's folder (...\Content\Routes\<route>\Scenarios\<scenario>) as its route's
// folder name and its own.
std::pair<std::string, std::string> RouteAndScenario(const std::string& folder) {
    const std::size_t last = folder.find_last_of("\\/");
    const std::string scenario = last == std::string::npos ? folder : folder.substr(last + 1);
    const std::string scenarios = last == std::string::npos ? std::string() : folder.substr(0, last);
    const std::size_t routeEnd = scenarios.find_last_of("\\/");
    const std::string routePath = routeEnd == std::string::npos ? std::string() : scenarios.substr(0, routeEnd);
    const std::size_t routeStart = routePath.find_last_of("\\/");
    return {routeStart == std::string::npos ? routePath : routePath.substr(routeStart + 1), scenario};
}

}  // namespace

void RegisterScenarioCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    QWidget* window = &menu.window;
    menu.add("mnuKickstart", [&ctx, window] {
        ScenarioScreens screens;
        screens.edit = [&ctx, window](const std::string& folder) { ShowScenarioEditor(ctx, window, folder); };
        screens.details = [&ctx, window](const std::string& folder, bool loose) {
            const auto [route, scenario] = RouteAndScenario(folder);
            ShowScenarioDetails(ctx, window, route, scenario, loose);
        };
        screens.workOrder = [&ctx, window](const std::string& folder) {
            const auto [route, scenario] = RouteAndScenario(folder);
            ShowWorkOrder(ctx, window, route, scenario);
        };
        ShowShowRoutes(ctx, screens, window);
    });
}

}  // namespace ferrolund::screens
