#include "cli/verb_check_assets.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "assets/asset_index.h"
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

// Every .bin below the folder (a folder under the simulator's Assets), as rows in path order.
bool FolderRows(const std::string& folder, std::vector<assets::AssetRow>& rows, std::ostream& err) {
    std::vector<std::string> files;
    std::error_code ec;
    for (fs::recursive_directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec)) {
        if (it->is_regular_file(ec) && tools::NameKey(it->path().extension().string()) == ".bin")
            files.push_back(tools::SystemPath(it->path()));
    }
    std::sort(files.begin(), files.end());
    for (const std::string& file : files) {
        bool invalid = false;
        const auto ref = assets::SplitAssetPath(file, &invalid);
        if (!ref) {
            err << "ferrolund-cli: " << Shown(file) << " is not below an Assets folder\n";
            return false;
        }
        assets::AssetRow row;
        row.provider = ref->provider;
        row.product = ref->product;
        row.path = ref->blueprintId;
        std::replace(row.path.begin(), row.path.end(), '/', '\\');
        rows.push_back(std::move(row));
    }
    return true;
}

}  // namespace

std::vector<assets::AssetRow> ReadIndexRows(const std::string& file, std::ostream& err) {
    const assets::LoadedIndex index = assets::LoadAssetIndex(file);
    for (const assets::IndexProblem& problem : index.problems)
        err << "ferrolund-cli: " << Shown(file) << " line " << problem.line << ": " << Shown(problem.text) << "\n";
    std::vector<assets::AssetRow> rows;
    for (const assets::AssetRow& row : index.rows)
        if (!assets::IsHeadingRow(row)) rows.push_back(row);
    return rows;
}

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
        rows = ReadIndexRows(index, err);
    } else {
        std::string given = folder;
        if (!fs::is_directory(tools::HostPath(given))) given = ctx.gameRoot() + "\\Assets\\" + folder;
        if (!fs::is_directory(tools::HostPath(given))) {
            err << "ferrolund-cli: no folder " << Shown(folder) << "\n";
            return kExitFailed;
        }
        if (!FolderRows(given, rows, err)) return kExitFailed;
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
