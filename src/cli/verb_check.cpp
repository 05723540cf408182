#include "cli/verb_check.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "assets/asset_index.h"
#include "assets/asset_scan.h"
#include "assets/blueprint.h"
#include "assets/file_check.h"
#include "cli/shared_options.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace fs = std::filesystem;

namespace {

constexpr const char* kUsage = "ferrolund-cli: check-assets (--index FILE | FOLDER) [--csv DIR] [--show]\n";

std::string Shown(const std::string& text) { return tools::ShownText(text); }

// Every .bin below the folder, as rows in the asset list's order: the list's own walk,
// without reading the files. False after Ctrl+C.
bool FolderRows(app::AppContext& ctx, const std::string& folder, std::vector<assets::AssetRow>& rows,
                std::ostream& err) {
    assets::ScanOptions options;
    options.startFolder = folder;
    options.readBlueprints = false;
    const assets::ScanTotals totals = assets::ScanAssets(
        ctx, options, [&rows](std::vector<assets::AssetRow>& batch) { rows.insert(rows.end(), batch.begin(), batch.end()); });
    for (const auto& problem : totals.problems) err << "ferrolund-cli: " << Shown(problem.path) << ": " << problem.message << "\n";
    if (totals.aborted) err << "ferrolund-cli: stopped by Ctrl+C while the folder was being listed\n";
    return !totals.aborted;
}

}  // namespace

int CheckAssetsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string index, folder, csvFolder;
    bool show = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--show") {
            show = true;
        } else if ((args[i] == "--csv" || args[i] == "--index") && i + 1 < args.size()) {
            (args[i] == "--csv" ? csvFolder : index) = args[i + 1];
            ++i;
        } else if (folder.empty() && args[i].rfind("--", 0) != 0) {
            folder = args[i];
        } else {
            err << kUsage;
            return kExitUsage;
        }
    }
    if (index.empty() == folder.empty()) {
        err << kUsage;
        return kExitUsage;
    }
    std::vector<assets::AssetRow> rows;
    if (!index.empty()) {
        if (!tools::FileExists(index)) {
            err << "ferrolund-cli: no index file " << Shown(index) << "\n";
            return kExitFailed;
        }
        const assets::LoadedIndex loaded = assets::LoadAssetIndex(index);
        for (const auto& problem : loaded.problems)
            err << "ferrolund-cli: " << Shown(index) << " line " << problem.line << ": " << Shown(problem.text) << "\n";
        for (const auto& row : loaded.rows) {
            if (!assets::IsHeadingRow(row)) rows.push_back(row);
        }
    } else {
        std::string given = folder;
        if (!fs::is_directory(tools::HostPath(given))) given = ctx.gameRoot() + "\\Assets\\" + folder;
        if (!fs::is_directory(tools::HostPath(given))) {
            err << "ferrolund-cli: no folder " << Shown(folder) << "\n";
            return kExitFailed;
        }
        if (!FolderRows(ctx, given, rows, err)) return kExitFailed;
    }
    if (rows.empty()) {
        err << "ferrolund-cli: no blueprints to check\n";
        return kExitFailed;
    }
    const assets::RowReport kind = show ? assets::RowReport::LocoFiles : assets::RowReport::MissingFiles;
    const assets::CheckOutcome outcome = assets::CheckRows(ctx, rows, kind, assets::AssetListRows(ctx, kind));
    out << Shown(outcome.report);
    if (!outcome.report.ends_with("\n")) out << "\n";
    out << outcome.rowsChecked << " blueprints checked, " << outcome.missing.size() << " missing files\n";
    if (!csvFolder.empty()) {
        tools::CreatePath(csvFolder);
        const std::string target = csvFolder + "/MissingFiles.csv";
        if (!tools::WriteTextFile(ctx, target, assets::MissingFilesCsv(outcome.missing))) {
            err << "ferrolund-cli: could not write " << Shown(target) << "\n";
            return kExitFailed;
        }
        out << "saved " << Shown(target) << "\n";
    }
    if (outcome.aborted || outcome.emptyRow) return kExitFailed;
    return outcome.missing.empty() ? kExitDone : kExitMissing;
}

}  // namespace ferrolund::cli
