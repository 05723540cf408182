#pragma once
// "Make Asset Folder": copies of every asset a route uses, gathered in a folder named
// after the route, in their provider and product folders. The lists come from the route
// check, saved in AppRoot\Reports as <route>_Sounds.csv, _Textures.csv, _GeoShapes.csv and
// _Assets.csv; each line becomes an xcopy line of a batch that the program's own batch
// interpreter runs.

#include <string>
#include <unordered_set>
#include <vector>

#include "app/app_context.h"
#include "tools/batch_interpreter.h"

namespace ferrolund::routes {

// The suffixes of the route check's saved lists that the asset folder is made from.
inline constexpr const char* kAssetListSuffixes[] = {"_Sounds.csv", "_Textures.csv", "_GeoShapes.csv", "_Assets.csv"};

// AppRoot\<route name>; characters a folder name cannot hold become '_'.
std::string AssetFolderPath(const app::AppContext& ctx, const std::string& routeName);

// The batch lines for one saved list's text: for each line the path up to the first ','
// and, behind its "\Assets\", the provider, product and folders that the copy goes into:
//   xcopy "<path>" "<target>\<provider>\<product>\<folders>\" /I /C /S
// Lines naming no file under an Assets folder are passed over; a line already in `seen`
// (compared without regard to case) is not repeated.
void AddAssetCopyLines(const std::string& listText, const std::string& target, std::vector<std::string>& lines,
                       std::unordered_set<std::string>& seen);

struct AssetFolderOutcome {
    bool cancelled = false;
    std::string folder;                    // where the copies went
    std::vector<std::string> listsRead;    // the saved lists found
    std::vector<std::string> listsAbsent;  // the saved lists not found
    std::string batchFile;                 // the batch as written, in TempFiles
    std::size_t lines = 0;                 // xcopy lines run
    tools::BatchOutcome batch;
};

// The whole command for the route named: the OK/Cancel question, the batch made and run
// line by line (progress and "&Abort" between lines), the closing box. When the folder
// is there from an earlier run, one question decides whether its copies are replaced
// (No ends the command with nothing changed).
AssetFolderOutcome MakeAssetFolder(app::AppContext& ctx, const std::string& routeName);

}  // namespace ferrolund::routes
