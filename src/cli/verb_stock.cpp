#include "cli/verb_stock.h"

#include <functional>
#include <map>
#include <optional>
#include <ostream>

#include "assets/stock_edits.h"
#include "assets/stock_scenery.h"
#include "assets/stock_settings.h"
#include "cli/shared_options.h"
#include "tools/codepage.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

using Rows = std::vector<assets::AssetRow>;

constexpr const char* kUsage =
    "stock-transform (passengers | dead | conductor | mass | scenery | category | in-scenarios | english-only |\n"
    "                       zero-emissive | snow) FILE... [--mass M --capacity C]";

// A blueprint named as the index names it (Provider\Product\Path), or by its full path
// below the simulator's Assets folder.
std::optional<assets::AssetRow> RowOf(const app::AppContext& ctx, std::string file) {
    for (char& c : file)
        if (c == '/') c = '\\';
    std::string assets = ctx.gameRoot() + "\\Assets\\";
    for (char& c : assets)
        if (c == '/') c = '\\';
    if (file.size() > assets.size() && tools::EqualsIgnoreCase(file.substr(0, assets.size()), assets))
        file.erase(0, assets.size());
    const std::size_t first = file.find('\\'), second = first == std::string::npos ? first : file.find('\\', first + 1);
    if (second == std::string::npos || second + 1 == file.size()) return std::nullopt;
    assets::AssetRow row;
    row.provider = file.substr(0, first);
    row.product = file.substr(first + 1, second - first - 1);
    row.path = file.substr(second + 1);
    return row;
}

// The file beside the original takes the base name with the suffix; so does the name.
assets::SaveAsAsk Suffixed(const std::string& suffix) {
    return [suffix](const assets::AssetRow&, const std::string& base) -> std::optional<assets::SaveAsChoice> {
        return assets::SaveAsChoice{base + suffix, base + suffix};
    };
}

int Usage(std::ostream& err) {
    err << "ferrolund-cli: usage: " << kUsage << "\n";
    return kExitUsage;
}

}  // namespace

int StockTransformVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) return Usage(err);
    const std::string command = args[0];
    assets::MassCapacity mass;
    Rows rows;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--mass" || args[i] == "--capacity") {
            if (i + 1 == args.size()) return Usage(err);
            (args[i] == "--mass" ? mass.mass : mass.capacity) = args[i + 1];
            ++i;
            continue;
        }
        const std::optional<assets::AssetRow> row = RowOf(ctx, args[i]);
        if (!row) {
            err << "ferrolund-cli: " << tools::ShownText(args[i]) << " does not name Provider\\Product\\Path\n";
            return kExitUsage;
        }
        rows.push_back(*row);
    }
    if (rows.empty()) return Usage(err);

    const std::map<std::string, std::function<assets::TransformOutcome(const Rows&)>> transforms = {
        {"passengers", [&](const Rows& r) { return assets::AddPassengers(ctx, r, Suffixed("_MT")); }},
        {"dead", [&](const Rows& r) { return assets::MakeDead(ctx, r, Suffixed("_Dead")); }},
        {"conductor", [&](const Rows& r) { return assets::AddConductor(ctx, r); }},
        {"mass", [&](const Rows& r) { return assets::CorrectMassCapacity(ctx, r, mass); }},
        {"scenery", [&](const Rows& r) { return assets::ConvertToScenery(ctx, r); }},
        {"category", [&](const Rows& r) { return assets::ChangeCategory(ctx, r); }},
        {"in-scenarios", [&](const Rows& r) { return assets::UseInScenarios(ctx, r); }},
        {"english-only", [&](const Rows& r) { return assets::MakeEnglishOnly(ctx, r); }},
        {"zero-emissive", [&](const Rows& r) { return assets::ZeroEmissive(ctx, r); }},
    };
    if (command == "mass" && (mass.mass.empty() || mass.capacity.empty())) return Usage(err);
    if (command == "snow") {
        const assets::SnowOutcome snow = assets::MakeBetterSnow(ctx, rows);
        out << tools::ShownText(snow.report);
        return snow.ran && snow.written.size() == rows.size() ? kExitDone : kExitFailed;
    }
    const auto found = transforms.find(command);
    if (found == transforms.end()) return Usage(err);
    const assets::TransformOutcome outcome = found->second(rows);
    out << tools::ShownText(outcome.report);
    if (!outcome.ran || outcome.aborted) return kExitFailed;
    for (const assets::RowOutcome& row : outcome.rows)
        if (row.written.empty()) return kExitFailed;
    return kExitDone;
}

}  // namespace ferrolund::cli
