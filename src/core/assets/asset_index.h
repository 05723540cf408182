#pragma once
// The asset index, AppRoot\IndexFiles\index.csv: the asset list saved as comma text, the
// heading row first. The rolling-stock screens (consist builder, Quick Drive, the index
// picker) read it, or another .csv of the same form, through LoadAssetIndex.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "base/run_error.h"

namespace ferrolund::assets {

// Told by the index picker and the Quick Drive screen when index.csv is absent.
inline constexpr const char* kNoIndexMessage = "You do not appear to have generated an Index.csv file.";
// The consist builder's words for the same.
inline constexpr const char* kNoIndexFileMessage = "You do not appear to have an index file named Index.csv.";

// AppRoot\IndexFiles, AppRoot\IndexFiles\index.csv and the scratch list of an append.
std::string IndexFolder(const base::RunContext& ctx);
std::string IndexFilePath(const base::RunContext& ctx);
std::string AppendListPath(const base::RunContext& ctx);

// A line of an index file that did not make a row.
struct IndexProblem {
    long line = 0;        // from 1
    std::string text;     // what is wrong with it
};

struct LoadedIndex {
    bool found = false;                 // the file exists
    std::vector<std::string> headings;  // the first line
    // The rows in file order. The heading line of an appended part stays as a row whose
    // name is "Name" (see IsHeadingRow).
    std::vector<AssetRow> rows;
    std::vector<IndexProblem> problems;  // lines with too few columns, skipped; an empty file
};

// Reads the text of an index: the first line is the heading row; a line with fewer than
// eight columns is skipped and named among the problems; cells beyond the eighth are
// dropped, which is named too.
LoadedIndex ParseAssetIndex(const std::string& text);
// The file whole (a system path); `found` is false when it is absent.
LoadedIndex LoadAssetIndex(const std::string& path);
// IndexFiles\index.csv; when it is absent the person is told `missingMessage`
// (kNoIndexMessage, or kNoIndexFileMessage for the consist builder).
LoadedIndex LoadMainIndex(app::AppContext& ctx, const char* missingMessage = kNoIndexMessage);

// frmIndex, "Rolling-stock index", on opening: asks whether to use the main index. Yes
// loads index.csv (telling kNoIndexMessage when it is absent); No lets the person choose
// another .csv in IndexFiles ("Get User Index File"), nothing chosen giving an index not
// found. The rows come sorted by Provider.
LoadedIndex OpenRollingStockIndex(app::AppContext& ctx);
// The picker's pick: the chosen rows (indices into `rows`; heading rows of an appended
// part left out), whose Provider, Product, Name, Category and Path the caller takes. With
// none chosen the person is told "You do not appear to have selected any rolling stock".
std::vector<AssetRow> PickRollingStock(app::AppContext& ctx, const std::vector<AssetRow>& rows,
                                       const std::vector<std::size_t>& chosen);

// The heading line of a part joined on by an append, read as a row. Readers skip it.
bool IsHeadingRow(const AssetRow& row);
// The index picker's order: by Provider, plain byte order, rows of one provider in file
// order.
void SortByProvider(std::vector<AssetRow>& rows);

// The comma text of an index: the headings, then a line a row, CR LF ends.
std::string AssetIndexText(const std::vector<AssetRow>& rows);

// Writes `rows` as the index file `path` (a system path). The text goes first to a
// scratch file beside it; an existing file is then replaced by the back-up rule
// (".bak", ".bak1" ... ".bak50", then overwritten without a back-up), so a failed write
// leaves the old index as it was. `backup` receives the old file's new name, or empty.
base::Status SaveAssetIndex(const std::string& path, const std::vector<AssetRow>& rows, std::string& backup);

// "Save Stock Index": asks whether the list was made as an index should be, then saves
// it as IndexFiles\index.csv (the folder made if absent). False when the person said no
// or the save failed (reported).
bool SaveStockIndex(app::AppContext& ctx, const std::vector<AssetRow>& rows);

// "Append to your Index.csv file": the rows go to IndexFiles\indextest.csv (an older one
// deleted first); then index.csv and that file are joined, the second keeping its
// heading line, and the result replaces index.csv by the back-up rule.
base::Status AppendToIndex(app::AppContext& ctx, const std::vector<AssetRow>& rows, std::string& backup);

// The running number of an index's last row: the number behind the text's last comma,
// 0 when there is none.
long LastRunningNumber(std::string_view indexText);
// The same of IndexFiles\index.csv; 0 when it is absent.
long LastRunningNumber(const base::RunContext& ctx);

// The person's index files: every *.csv in IndexFiles, as system paths, by name.
std::vector<std::string> IndexFiles(const base::RunContext& ctx);

}  // namespace ferrolund::assets
