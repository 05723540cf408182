#include "screens/routes/stock_commands.h"

#include <functional>
#include <memory>

#include "archives/report_grid.h"
#include "routes/route_stock.h"
#include "screens/routes/frmDelRoute.h"
#include "screens/routes/frmFindLoco.h"
#include "screens/routes/frmMissList.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmDelRoute";
// The commands' view of the screen.
class StockCommands {
public:
    explicit StockCommands(frmDelRoute& form) : form_(form), ctx_(form.context()) {}
    app::AppContext& context() const { return ctx_; }

    void allScenarios();
    void scenarioItems();
    void routeStock();
    void missingStock();
    void allRoutesStock();
    void wagonNumbers();
    void missingScreen();
    void findLoco();

private:
    bool route(routes::CheckedRoute& r) {
        if (form_.selectedRoute(r)) return true;
        ctx_.ui->message(ctx_.langText(157, {}, kModule), base::Icon::Exclamation);
        return false;
    }
    bool run(const std::function<void()>& work) { return form_.runLong(work); }
    void show(const routes::CheckedRoute& r, const routes::ReportListing& listing, int mode) {
        form_.showListing(r, listing, mode);
    }
    // What the loop left out, in the notes box.
    void tell(const routes::StockLoop& loop) {
        std::string note;
        if (loop.skipped > 0)
            note = std::to_string(loop.skipped) +
                   " scenario(s) without a readable Scenario.bin were left out: they may be held in an .ap file.";
        if (loop.aborted)
            note += (note.empty() ? "" : "\n") + std::string("Stopped by \"Abort\": the list is incomplete.");
        form_.showNotes(note);
    }
    std::vector<routes::StockScenario> scenariosOf(const routes::CheckedRoute& r) {
        const routes::ScenarioListing listing = routes::ListScenarios(ctx_.gameRoot(), r.folder, ctx_.prefs.language);
        return routes::StockScenarios(listing.rows, form_.listedRoutes());
    }

    frmDelRoute& form_;
    app::AppContext& ctx_;
    // The scenarios "List Scenarios in all routes" put in the lower grid, as route folder
    // and scenario folder; the grid may have been filled by another command since.
    std::vector<std::pair<std::string, std::string>> allRoutesListed_;
    std::vector<std::pair<std::string, std::string>> listedNow() const {
        std::vector<std::pair<std::string, std::string>> rows;
        for (const routes::ScenarioRow& row : form_.listedScenarios()) rows.emplace_back(row.routeFolder, row.folder);
        return rows;
    }
};

void StockCommands::allScenarios() {
    ctx_.currentRoutine = "Command24_Click";
    routes::ScenarioListing listing;
    if (!run([&] { listing = routes::ListAllScenarios(ctx_, form_.listedRoutes()); })) return;
    form_.showScenarios(listing);
    allRoutesListed_.clear();
    if (listing.rows.empty() || ctx_.abortFlag) return;
    allRoutesListed_ = listedNow();
    ctx_.ui->message(
        "All Scenarios now listed. Now click the button:-\n'List Stock missing in all Scenarios' to "
        "complete\nthis option.",
        base::Icon::Information);
}

void StockCommands::scenarioItems() {
    ctx_.currentRoutine = "Command3_Click";
    const std::vector<routes::ScenarioRow> selected = form_.selectedScenarios();
    if (selected.empty()) {
        ctx_.ui->message(ctx_.langText(156, {}, kModule), base::Icon::Exclamation);
        return;
    }
    std::vector<routes::ScenarioItemLists> found;
    run([&] {
        for (const routes::ScenarioRow& row : selected) {
            found.push_back(routes::ListScenarioItems(ctx_, row.routeFolder, {row}));
            if (found.back().stopped) break;
        }
    });
    routes::CheckedRoute r;
    form_.selectedRoute(r);
    for (const routes::ScenarioItemLists& lists : found) {
        for (const routes::ReportListing& l : lists.stock) show(r, l, archives::kModeScenarioStock);
        for (const routes::ReportListing& l : lists.assets) show(r, l, archives::kModeScenarioAssets);
    }
}

void StockCommands::routeStock() {
    ctx_.currentRoutine = "Command27_Click";
    routes::CheckedRoute r;
    if (!route(r)) return;
    routes::ReportListing listing;
    routes::StockLoop loop;
    if (!run([&] { listing = routes::ListRouteStock(ctx_, r.name, scenariosOf(r), &loop); })) return;
    tell(loop);
    form_.showStockCount(listing.rows.size());
    show(r, listing, archives::kModeScenarioStock);
}

void StockCommands::missingStock() {
    ctx_.currentRoutine = "Command15_Click";
    if (allRoutesListed_.empty() || listedNow() != allRoutesListed_) {
        ctx_.ui->message("Click 'List Scenarios in all routes' first: this option checks the scenarios it lists.",
                         base::Icon::Information);
        return;
    }
    const std::vector<routes::StockScenario> scenarios =
        routes::StockScenarios(form_.listedScenarios(), form_.listedRoutes());
    routes::ReportListing listing;
    routes::StockLoop loop;
    if (!run([&] { listing = routes::ListMissingStock(ctx_, scenarios, &loop); })) return;
    tell(loop);
    form_.showStockCount(listing.rows.size());
    show(routes::CheckedRoute{"All Routes", {}, {}}, listing, archives::kModeMissingInScenarios);
}

void StockCommands::allRoutesStock() {
    ctx_.currentRoutine = "Command21_Click";
    routes::ReportListing listing;
    routes::StockLoop loop;
    if (!run([&] { listing = routes::ListAllRoutesStock(ctx_, form_.listedRoutes(), &loop); })) return;
    tell(loop);
    form_.showStockCount(listing.rows.size());
    show(routes::CheckedRoute{"All Routes", {}, {}}, listing, archives::kModeAllStock);
}

void StockCommands::wagonNumbers() {
    ctx_.currentRoutine = "Command19_Click";
    routes::CheckedRoute r;
    if (!route(r)) return;
    routes::ReportListing listing;
    routes::StockLoop loop;
    if (!run([&] { listing = routes::ListWagonNumbers(ctx_, r.name, scenariosOf(r), &loop); })) return;
    tell(loop);
    form_.showStockCount(listing.rows.size());
    show(r, listing, archives::kModeWagonNumbers);
}

void StockCommands::missingScreen() {
    ctx_.currentRoutine = "Command28_Click";
    auto* screen = new frmMissList(ctx_, &form_);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
}

void StockCommands::findLoco() {
    auto* screen = new frmFindLoco(ctx_, form_.listedRoutes(), &form_);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
}

}  // namespace

void AddStockCommands(frmDelRoute& form) {
    // The buttons own the commands' state between clicks.
    auto commands = std::make_shared<StockCommands>(form);
    auto add = [&](const char* name, const std::string& caption, void (StockCommands::*run)()) {
        form.addCommand(
            name, caption, [commands, run] { ((*commands).*run)(); }, true);
    };
    auto lang = [&](int n) { return commands->context().langText(n, {}, kModule); };
    add("Command24", lang(121), &StockCommands::allScenarios);
    add("Command3", lang(124), &StockCommands::scenarioItems);
    add("Command27", lang(129), &StockCommands::routeStock);
    add("Command15", lang(130), &StockCommands::missingStock);
    add("Command21", lang(131), &StockCommands::allRoutesStock);
    add("Command19", lang(132), &StockCommands::wagonNumbers);
    add("Command28", lang(316), &StockCommands::missingScreen);
    add("FindLoco", "Find loco in routes", &StockCommands::findLoco);
}

}  // namespace ferrolund::screens
