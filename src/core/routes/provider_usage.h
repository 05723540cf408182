#pragma once
// The providers and products a route loads, the items of one of them that the route's
// tiles use (with their geometry, textures and sounds), and the files of that product
// that nothing uses.

#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/route_check_command.h"

namespace ferrolund::routes {

struct ProviderProduct {
    std::string provider;
    std::string product;
};

// Command14, "Show Provider / Products used in selected route": each Provider and
// Product of the <RBlueprintSetPreLoad> block of the route's RouteProperties.xml, sorted
// without regard to case. Without the file the user is told, and there is no list.
std::optional<std::vector<ProviderProduct>> ProvidersOfRoute(app::AppContext& ctx, const std::string& routeFolder);

// Command22, "Display items used from selected P/P": the references of the route's tiles
// (those of its listed scenarios included) of this provider and product, compared
// without regard to case, sorted and each once; then their geometry, textures and
// sounds. The first list holds the items. A route whose Scenery folder is missing or
// empty says so in a row of that list.
RouteCheckOutcome ItemsOfProvider(app::AppContext& ctx, const CheckedRoute& route, const ProviderProduct& pp,
                                  const CheckAnswers& answers = {});

// Every file a run of ItemsOfProvider found in use: the items, their geometry, textures
// and sounds, upper-cased, each also as FixEntities repairs it.
std::vector<std::string> UsedFiles(const RouteCheckOutcome& items);

// Command23, "Display items NOT used": every file below GameRoot\Assets\<provider>\<product>
// whose upper-cased path is not among `used`. The user is asked whether each row should
// begin with "DEL " (`addDel` answers in advance); `withDel` tells what was chosen.
// Empty with `aborted` set when AbortFlag ended the walk.
struct UnusedFiles {
    ReportListing listing;
    bool withDel = false;
    bool aborted = false;
};
UnusedFiles ItemsNotUsed(app::AppContext& ctx, const ProviderProduct& pp, const std::vector<std::string>& used,
                         std::optional<bool> addDel = std::nullopt);

}  // namespace ferrolund::routes
