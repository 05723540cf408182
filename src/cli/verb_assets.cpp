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

std::string CommaLine(const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) line += ',';
        line += cells[i];
    }
    return line + "\n";
}

// The list into FILE: written beside it first, then put in its place; an older FILE
// keeps a back-up.
bool SaveList(app::AppContext& ctx, const std::string& file, const std::string& text, std::ostream& err) {
    const std::string made = file + ".part";
    std::error_code ec;
    if (!tools::WriteTextFile(ctx, made, text)) {
        err << "ferrolund-cli: cannot write " << tools::ShownText(file) << "\n";
        return false;
    }
    if (tools::FileExists(file)) {
        std::string backup;
        if (const base::Status failed = tools::ReplaceWithBackup(made, file, tools::kBackupRule, backup)) {
            std::filesystem::remove(tools::HostPath(made), ec);
            err << "ferrolund-cli: " << tools::ShownText(failed->description) << "\n";
            return false;
        }
        std::filesystem::remove(tools::HostPath(made), ec);
        return true;
    }
    std::filesystem::rename(tools::HostPath(made), tools::HostPath(file), ec);
    if (ec) {
        std::filesystem::remove(tools::HostPath(made), ec);
        err << "ferrolund-cli: cannot write " << tools::ShownText(file) << "\n";
        return false;
    }
    tools::ForgetPath(file);
    return true;
}

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

    std::string text = CommaLine({assets::kAssetHeadings.begin(), assets::kAssetHeadings.end()});
    for (const assets::AssetRow& row : rows) text += CommaLine(row.Cells());
    if (outFile.empty()) {
        out << text;
    } else if (!SaveList(ctx, outFile, text, err)) {
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
