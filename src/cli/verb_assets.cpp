#include "cli/verb_assets.h"

#include <filesystem>
#include <ostream>
#include <system_error>

#include "assets/asset_index.h"
#include "assets/asset_scan.h"
#include "cli/shared_options.h"
#include "tools/backup.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

constexpr const char* kUsage =
    "ferrolund-cli: index-assets [FOLDER] [--rolling-stock] [--exclude-preload] [--default-folders] "
    "[--category C] [--zero-length] [--quick-drive] [--out FILE] [--append]\n";

}  // namespace

int IndexAssetsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    assets::ScanOptions options;
    std::string outFile;
    bool folderGiven = false, append = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--rolling-stock") {
            options.filter.rollingStockOnly = true;
        } else if (arg == "--exclude-preload") {
            options.filter.excludePreLoad = true;
        } else if (arg == "--default-folders") {
            options.filter.defaultFolders = true;
        } else if (arg == "--zero-length") {
            options.zeroLength = true;
        } else if (arg == "--quick-drive") {
            options.filter.quickDrive = true;
        } else if (arg == "--category" && i + 1 < args.size()) {
            options.filter.category = args[++i];
        } else if (arg == "--append") {
            append = true;
        } else if (arg == "--out" && i + 1 < args.size()) {
            outFile = args[++i];
        } else if (!folderGiven && arg.rfind("--", 0) != 0) {
            options.startFolder = arg;
            folderGiven = true;
        } else {
            err << kUsage;
            return kExitUsage;
        }
    }
    if (!folderGiven) {
        if (ctx.gameRoot().empty()) {
            err << "ferrolund-cli: no simulator folder known; name the folder or use --game-root\n";
            return kExitFailed;
        }
        options.startFolder = ctx.gameRoot() + "\\Assets";
    }
    if (!std::filesystem::is_directory(tools::HostPath(options.startFolder))) {
        err << "ferrolund-cli: no folder " << tools::ShownText(options.startFolder) << "\n";
        return kExitFailed;
    }
    // The box is only enabled while rolling stock alone is listed.
    if (!options.filter.rollingStockOnly) options.filter.defaultFolders = false;
    // A walk for empty files that starts afresh gives every file a plain row.
    if (options.zeroLength) options.readBlueprints = false;

    // Appended rows are numbered on from the index's last one.
    if (append) options.firstIndex = assets::LastRunningNumber(ctx);

    std::vector<assets::AssetRow> rows;
    const assets::ScanTotals totals = assets::ScanAssets(ctx, options, [&](std::vector<assets::AssetRow>& batch) {
        rows.insert(rows.end(), std::make_move_iterator(batch.begin()), std::make_move_iterator(batch.end()));
    });
    for (const assets::ScanProblem& problem : totals.problems) {
        err << tools::ShownText(problem.path) << ": " << tools::ShownText(problem.message) << "\n";
    }

    // After Ctrl+C the rows found so far are still given, but nothing is appended to the
    // index: an index holds whole lists.
    if (outFile.empty()) {
        out << assets::AssetIndexText(rows);
    } else {
        std::string backup;
        if (const base::Status failed = assets::SaveAssetIndex(outFile, rows, backup)) {
            err << "ferrolund-cli: cannot write " << tools::ShownText(outFile) << ": "
                << tools::ShownText(failed->description) << "\n";
            return kExitFailed;
        }
    }
    if (totals.aborted) {
        err << "ferrolund-cli: stopped by Ctrl+C after " << totals.rows << " rows; "
            << (append ? "nothing was appended to the index\n" : "the rows so far are given\n");
        return kExitFailed;
    }
    if (append) {
        std::string backup;
        if (const base::Status failed = assets::AppendToIndex(ctx, rows, backup)) {
            err << "ferrolund-cli: " << tools::ShownText(failed->description) << "\n";
            return kExitFailed;
        }
        err << rows.size() << " rows appended to " << tools::ShownText(assets::IndexFilePath(ctx));
        if (!backup.empty()) err << " (the old one kept as " << tools::ShownText(backup) << ")";
        err << "\n";
    }
    err << totals.rows << " rows from " << totals.files << " files";
    if (!totals.problems.empty()) err << ", " << totals.problems.size() << " problems";
    err << "\n";
    return kExitDone;
}

}  // namespace ferrolund::cli
