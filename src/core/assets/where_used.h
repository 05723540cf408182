#pragma once
// "Where is it used?": the scenarios and the Quick Drive (PreLoad) consists that name
// the blueprints of the selected rows.

#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"

namespace ferrolund::assets {

struct WhereUsedOutcome {
    std::string report;  // a block a row: the blueprint, then one line a place it is used
    std::size_t scenariosRead = 0;
    std::size_t consistsRead = 0;
    std::size_t uses = 0;
    bool aborted = false;  // AbortFlag ended the search; the report tells what was found
};

// The key under which two blueprint references are the same: Provider\Product\BlueprintID
// without regard to case and to the ".xml"/".bin" ending.
std::string ReferenceKey(const std::string& provider, const std::string& product, const std::string& blueprintId);

// Reads every scenario of every route (Scenario.bin, else a loose Scenario.xml) and every
// blueprint in Assets\<Provider>\<Product>\PreLoad, all in memory. The routes are those
// of the route index, else the folders under Content\Routes. Progress between files;
// AbortFlag stops the search.
WhereUsedOutcome WhereIsItUsed(app::AppContext& ctx, const std::vector<AssetRow>& rows);

}  // namespace ferrolund::assets
