#pragma once
// The missing-asset workflow: a list of blueprints that a route or a user misses goes in
// as Reports\MissingAssets.csv, the files those blueprints use come out as a report the
// user saves as Reports\MissingFiles.txt, and those files are gathered under
// NewPackage\Assets for a package. The user's own files are only read.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_filter.h"
#include "assets/asset_row.h"

namespace ferrolund::assets {

// One blueprint named in MissingAssets.csv: the folder scanned and the file's name.
struct MissingAssetJob {
    std::string folder;
    std::string fileName;
};

// The lines of AppRoot\Reports\MissingAssets.csv, empty ones skipped. Without the file:
// the message that says where it must be saved, and nothing.
std::optional<std::vector<MissingAssetJob>> ReadMissingAssets(app::AppContext& ctx);

// The rows of one job.
using JobScan = std::function<std::vector<AssetRow>(app::AppContext&, const MissingAssetJob&)>;
// The asset list's scan of the job's folder with the screen's filters, limited to the
// job's file name, blueprints read, its running numbers from 1.
JobScan ListScan(AssetFilter filter = {});

struct MissingAssetsOutcome {
    std::vector<AssetRow> rows;  // every row found, in the order of the file, numbered per line
    std::string report;          // what GetAssetBits lists for them, ended by "+++"
    bool noFile = false;
    bool aborted = false;
};
// "Process Missing Assets File": scans each job's folder, then lists the files of every
// row found. AbortFlag is tested between jobs.
MissingAssetsOutcome ProcessMissingAssets(app::AppContext& ctx, const JobScan& scan = ListScan());

// Saves the report as AppRoot\Reports\MissingFiles.txt (the folder made when missing).
// Gives the file's path, or empty when it could not be written.
std::string SaveMissingFiles(app::AppContext& ctx, const std::string& report);

struct PackageOutcome {
    std::vector<std::string> copied;    // files now under NewPackage\Assets
    std::vector<std::string> problems;  // lines that could not be packed, with the reason
    bool noFile = false;
    bool aborted = false;
};
// "Package Missing Assets": each line of Reports\MissingFiles.txt up to "+++" is copied
// to AppRoot\NewPackage\Assets\<its folder below Assets>, a texture with its "_Au",
// "_Sp" and "_Wi" siblings. A line that cannot be packed goes to the error log and the
// packing goes on.
PackageOutcome PackageMissingAssets(app::AppContext& ctx);

}  // namespace ferrolund::assets
