#include "assets/asset_rows.h"

#include <algorithm>

#include "assets/blueprint_summary.h"
#include "tools/codepage.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace {

bool CategoryKept(const std::string& wanted, const std::string& category) {
    return wanted.empty() || tools::EqualsIgnoreCase(wanted, category);
}

}  // namespace

RowVerdict BuildBlueprintRow(std::string_view binary, std::string_view fullPath, const BlueprintRef& ref,
                             const AssetFilter& filter, AssetRow& row, std::string* failure) {
    BlueprintSummary summary;
    if (binary.empty()) {
        if (failure) *failure = "the file is empty";
        return RowVerdict::Unreadable;
    }
    if (!SummariseBlueprint(binary, filter.language, summary, failure)) return RowVerdict::Unreadable;
    if (filter.rollingStockOnly && !summary.rollingStock) return RowVerdict::Drop;
    if (summary.name == "No Name") return RowVerdict::Drop;

    const std::string wanted = filter.CategoryWanted();
    const std::string& category = summary.classification.category;
    if (summary.hasCategory) {
        // An empty category is shown only to the list that asks for none in particular.
        if (category.empty()) {
            if (!wanted.empty() && !tools::EqualsIgnoreCase(wanted, "No Category")) return RowVerdict::Drop;
        } else if (!CategoryKept(wanted, category)) {
            return RowVerdict::Drop;
        }
    } else if (!CategoryKept(wanted, category)) {
        return RowVerdict::Drop;
    }
    if (tools::InStr(fullPath, "\\Simulation") > 0) return RowVerdict::Counted;

    row = AssetRow{};
    row.provider = ref.provider;
    row.product = ref.product;
    row.path = ref.blueprintId;
    row.name = summary.name;
    row.name.erase(std::remove(row.name.begin(), row.name.end(), ','), row.name.end());
    row.inScene = summary.classification.inScene;
    row.category = category;
    row.blueprint = summary.classWord;
    return RowVerdict::Added;
}

AssetRow PlainRow(const BlueprintRef& ref) {
    AssetRow row;
    row.provider = ref.provider;
    row.product = ref.product;
    row.path = ref.blueprintId;
    return row;
}

}  // namespace ferrolund::assets
