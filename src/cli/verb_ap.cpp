#include "cli/verb_ap.h"

#include <ostream>

#include "archives/overlength.h"
#include "assets/ap_assets.h"
#include "assets/asset_index.h"
#include "cli/shared_options.h"
#include "tools/codepage.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

constexpr const char* kUsage = "ferrolund-cli: list-ap [FOLDER] [--rolling-stock] [--filter MASK] [--rows]\n";

bool IsBlueprint(const std::string& name) {
    return name.size() >= 4 && tools::EqualsIgnoreCase(std::string_view(name).substr(name.size() - 4), ".bin");
}

}  // namespace

int ListApVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string folder;
    assets::ApEntryFilter filter;
    bool rows = false, maskGiven = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--rolling-stock") {
            filter.rollingStockOnly = true;
        } else if (args[i] == "--filter" && i + 1 < args.size()) {
            filter.mask = args[++i];
            maskGiven = true;
        } else if (args[i] == "--rows") {
            rows = true;
        } else if (folder.empty() && args[i].rfind("--", 0) != 0) {
            folder = args[i];
        } else {
            err << kUsage;
            return kExitUsage;
        }
    }
    // Rows come from blueprints, so that is what the list takes unless told otherwise.
    if (rows && !maskGiven) filter.mask = "*.bin";
    if (folder.empty()) folder = ctx.gameRoot();
    if (folder.empty()) {
        err << "ferrolund-cli: list-ap needs a FOLDER, or the simulator's folder (--game-root)\n";
        return kExitUsage;
    }

    assets::ApAssetList list;
    list.filter = filter;
    list.findApFiles(ctx, folder);
    if (!list.overlength().empty()) {
        err << tools::ShownText(archives::OverlengthReport(list.overlength())) << "\n";
    }
    if (list.apFiles().empty()) {
        if (list.overlength().empty()) err << "ferrolund-cli: no .ap files under " << tools::ShownText(folder) << "\n";
        return kExitFailed;
    }
    std::size_t read = 0;
    std::vector<assets::AssetRow> found;
    for (const std::string& path : list.apFiles()) {
        if (ctx.abortFlag) break;
        const assets::ApListing listing = assets::ListApEntries(path, filter);
        if (listing.error) {
            err << "ferrolund-cli: " << tools::ShownText(listing.error->description) << "\n";
            continue;
        }
        ++read;
        if (!rows) {
            out << tools::ShownText(path) << "\n";
            for (const auto& entry : listing.entries) out << "\t" << tools::ShownText(entry.stored) << "\n";
            continue;
        }
        std::vector<std::size_t> blueprints;
        for (const auto& entry : listing.entries)
            if (IsBlueprint(entry.name)) blueprints.push_back(entry.index);
        std::vector<std::string> problems;
        if (!list.chooseArchive(ctx, path)) continue;
        list.addEntries(ctx, blueprints, problems);
        for (const auto& problem : problems) err << "ferrolund-cli: " << tools::ShownText(problem) << "\n";
    }
    if (rows) {
        std::string text = tools::ShownText(assets::AssetIndexText(list.rows()));
        std::erase(text, '\r');
        out << text;
    }
    return read == 0 ? kExitFailed : kExitDone;
}

}  // namespace ferrolund::cli
