#include "screens/routes/asset_commands.h"

#include <QAbstractItemModel>
#include <QPushButton>
#include <QTableWidget>
#include <memory>

#include "archives/report_grid.h"
#include "routes/asset_locations.h"
#include "routes/provider_usage.h"
#include "screens/app/qt_text.h"
#include "screens/archives/frmListRS.h"
#include "screens/routes/frmDelRoute.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmDelRoute";

struct AssetCommands {
    frmDelRoute& form;
    app::AppContext& ctx;
    QPushButton* items = nullptr;   // Command22
    QPushButton* unused = nullptr;  // Command23
    // The providers and products in the lower grid, and the route they are of.
    routes::CheckedRoute route;
    std::vector<routes::ProviderProduct> pairs;
    bool listed = false;
    bool filling = false;
    // The last run of Command22: what Command23 compares with.
    routes::ProviderProduct chosen;
    routes::RouteCheckOutcome used;

    explicit AssetCommands(frmDelRoute& f) : form(f), ctx(f.context()) {}

    bool selectedRoute(routes::CheckedRoute& r) {
        if (form.selectedRoute(r)) return true;
        ctx.ui->message(ctx.langText(157, {}, kModule), base::Icon::Exclamation);
        return false;
    }

    void locations() {
        routes::CheckedRoute r;
        if (form.running() || !selectedRoute(r)) return;
        form.showNotes({});
        routes::LocationOutcome out;
        form.runLong([&] { out = routes::ShowAssetLocations(ctx, r); });
        form.showNotes(out.missingText);
        if (!out.stopped) form.showListing(r, out.listing, archives::kModeLocations);
    }

    void providers() {
        routes::CheckedRoute r;
        if (form.running() || !selectedRoute(r)) return;
        std::optional<std::vector<routes::ProviderProduct>> found = routes::ProvidersOfRoute(ctx, r.folder);
        if (!found) return;
        routes::ScenarioListing listing;
        for (const routes::ProviderProduct& pp : *found)
            listing.rows.push_back({pp.provider, pp.product, {}, {}, routes::ScenarioKind::Other});
        filling = true;
        form.showScenarios(listing);
        filling = false;
        form.scenarios()->setHorizontalHeaderLabels({"Provider", "Product"});
        route = std::move(r);
        pairs = std::move(*found);
        listed = true;
        items->setEnabled(true);
    }

    // The lower grid was given other rows: the providers are no longer there to choose.
    void lowerGridReplaced() {
        if (filling || !listed) return;
        listed = false;
        items->setEnabled(false);
        form.scenarios()->setHorizontalHeaderLabels(
            {ToQt(ctx.langText(118, {}, kModule)), ToQt(ctx.langText(119, {}, kModule))});
    }

    // The provider and product of the first selected row of the lower grid.
    bool selectedPair(routes::ProviderProduct& pp) const {
        const QList<QTableWidgetItem*> picked = form.scenarios()->selectedItems();
        int row = -1;
        for (const QTableWidgetItem* item : picked)
            if (row < 0 || item->row() < row) row = item->row();
        if (row < 0 || row >= static_cast<int>(pairs.size())) return false;
        pp = pairs[static_cast<std::size_t>(row)];
        return true;
    }

    void itemsOfProvider() {
        routes::ProviderProduct pp;
        if (form.running() || !listed) return;
        if (!selectedPair(pp)) {
            ctx.ui->message(ctx.langText(444, {}, kModule), base::Icon::Exclamation);
            return;
        }
        form.showNotes({});
        routes::RouteCheckOutcome out;
        form.runLong([&] { out = routes::ItemsOfProvider(ctx, route, pp); });
        form.showNotes(out.missingText);
        for (std::size_t i = 0; i < out.lists.size(); ++i)
            form.showListing(route, out.lists[i], i == 0 ? archives::kModeProviderItems : archives::kModeRouteItems);
        if (out.stopped) return;
        chosen = pp;
        used = std::move(out);
        unused->setEnabled(true);
    }

    void itemsNotUsed() {
        if (form.running()) return;
        routes::UnusedFiles out;
        form.runLong([&] { out = routes::ItemsNotUsed(ctx, chosen, routes::UsedFiles(used)); });
        if (out.aborted) return;
        frmListRS* grid = form.showListing(route, out.listing, archives::kModeProviderItems);
        if (grid) grid->grid().saveAsBatch = out.withDel;
    }
};

}  // namespace

void AddAssetCommands(frmDelRoute& form) {
    auto commands = std::make_shared<AssetCommands>(form);
    app::AppContext& ctx = commands->ctx;
    auto caption = [&](int n) { return ctx.langText(n, {}, kModule); };
    form.addCommand("Command17", caption(128), [commands] { commands->locations(); });
    form.addCommand("Command14", caption(125), [commands] { commands->providers(); });
    // Not locked by a run: their state is their own, and the end of a run does not enable them.
    commands->items = form.addCommand("Command22", caption(126), [commands] { commands->itemsOfProvider(); }, false);
    commands->unused = form.addCommand("Command23", caption(127), [commands] { commands->itemsNotUsed(); }, false);
    commands->items->setEnabled(false);
    commands->unused->setEnabled(false);
    QObject::connect(form.scenarios()->model(), &QAbstractItemModel::rowsRemoved, commands->items,
                     [commands] { commands->lowerGridReplaced(); });
}

}  // namespace ferrolund::screens
