#include "screens/routes/maintenance_commands.h"

#include "routes/asset_folder.h"
#include "routes/route_maintenance.h"
#include "screens/routes/frmDelRoute.h"
#include "screens/routes/frmMix.h"
#include "tools/host_path.h"

#include <filesystem>

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmDelRoute";

// The selected route, or the box that says none is selected.
bool RouteOrSay(frmDelRoute& form, routes::CheckedRoute& route) {
    if (form.selectedRoute(route)) return true;
    form.context().ui->message(form.context().langText(157, {}, kModule), base::Icon::Exclamation);
    return false;
}

void CheckProperties(frmDelRoute& form) {
    app::AppContext& ctx = form.context();
    const std::vector<routes::ScenarioRow> scenarios = form.selectedScenarios();
    if (scenarios.empty()) {
        ctx.ui->message(ctx.langText(156, {}, kModule), base::Icon::Exclamation);
        return;
    }
    form.runLong([&] { routes::CheckScenarioProperties(ctx, scenarios); });
}

void CheckTemplate(frmDelRoute& form) {
    routes::CheckedRoute route;
    if (!RouteOrSay(form, route)) return;
    form.runLong([&] { routes::CheckRouteTemplate(form.context(), route.folder); });
}

void RemoveTerrainTextures(frmDelRoute& form) {
    app::AppContext& ctx = form.context();
    routes::CheckedRoute route;
    if (!RouteOrSay(form, route)) return;
    if (ctx.ui->ask("Do you really wish to remove terrain textures?", base::Buttons::YesNo, base::Icon::Question) !=
        base::Answer::Yes)
        return;
    const std::string folder = routes::MixMapFolder(ctx.gameRoot(), route.folder);
    std::error_code ec;
    if (!std::filesystem::is_directory(tools::HostPath(folder), ec)) {
        ctx.ui->message("The route has no MixMap folder:\n" + folder +
                            "\nIts terrain may be held in an .ap file; extract it first.",
                        base::Icon::Exclamation);
        return;
    }
    auto* screen = new frmMix(
        ctx, folder, [&form](const std::function<void()>& work) { return form.runLong(work); }, &form);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
}

void MakeAssetFolder(frmDelRoute& form) {
    routes::CheckedRoute route;
    if (!RouteOrSay(form, route)) return;
    form.runLong([&] { routes::MakeAssetFolder(form.context(), route.name); });
}

}  // namespace

void AddMaintenanceCommands(frmDelRoute& form) {
    app::AppContext& ctx = form.context();
    form.addCommand("Command18", ctx.langText(312, {}, kModule), [&form] { CheckProperties(form); });
    form.addCommand("Command25", ctx.langText(315, {}, kModule), [&form] { CheckTemplate(form); });
    form.addMiscCommand("mnuTex", ctx.langText(148, {}, kModule), [&form] { RemoveTerrainTextures(form); });
    form.addMiscCommand("mnuCRF", ctx.langText(149, {}, kModule), [&form] { MakeAssetFolder(form); });
}

}  // namespace ferrolund::screens
