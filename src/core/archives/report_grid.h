#pragma once
// The screen model of frmListRS, the report grid on which the lists of the program end:
// the rows, the mode the caller set, and the commands that work on the rows.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "services/report_table.h"

namespace ferrolund::archives {

// ReportMode values that change what the grid does.
inline constexpr int kModeRouteItems = 1;
inline constexpr int kModeLocations = 3;
inline constexpr int kModeRouteCheck = 4;
inline constexpr int kModeRemovals = 5;
inline constexpr int kModeScenarioStock = 6;
inline constexpr int kModeWagonNumbers = 7;
inline constexpr int kModeScenarioAssets = 9;
inline constexpr int kModeAllStock = 10;
inline constexpr int kModeApList = 11;
inline constexpr int kModeProviderItems = 12;  // "Items Used by Provider"
inline constexpr int kModeMissingInScenarios = 16;

class ReportGrid {
public:
    int mode = 0;
    std::string heading;            // ReportHeading
    // The route the list belongs to, for the commands that change the route's tiles:
    // its name, its folder below Content\Routes, and the scenario folders listed with it.
    std::string routeName;
    std::string routeFolder;
    std::vector<std::string> scenarioFolders;
    // Saved as a batch file: the first column of each row, a line each.
    bool saveAsBatch = false;
    bool duplicatesRemoved = false;
    long searchPosition = 0;        // the row where the next Find starts

    services::ReportTable table;
    std::vector<bool> missing;      // rows shown as missing items, one flag a row

    // Takes over ReportList: one row a line, fields separated by tabs.
    void takeList(const std::string& reportList);
    void setRows(std::vector<std::vector<std::string>> rows);
    std::size_t rowCount() const { return table.rows.size(); }
    const std::string& cell(std::size_t row, std::size_t column) const;

    // "Remove dupes from list": sorted on the first column, each first column kept once,
    // compared without regard to case; the rows keep their first two columns, then are
    // sorted again. The result of comparing every row with every later one, in n log n.
    // With `wholeRow` a row is a duplicate only when its second column is equal too: the
    // places of an asset in the location list.
    void removeDuplicates(bool wholeRow = false);
    // "Check for Missing Stock": a row whose blueprint (the first column with its last
    // three letters made "bin", below GameRoot\Assets) exists is removed, in mode 16 with
    // every other row of the same text; else it is tried again through FixEntities and
    // stays marked missing when that fails too. Gives the rows left.
    std::size_t checkMissingStock(app::AppContext& ctx);
    // "List Providers && Products Used": the Provider\Product behind "Assets\" of each row,
    // each once, replace the rows.
    void listProvidersAndProducts();
    // "Find": the next row from searchPosition whose first column holds the text, its
    // first letter in either case. Moves searchPosition behind it.
    std::optional<std::size_t> find(const std::string& text);
    // Sorts on a column, without regard to case, keeping the order of equal rows.
    void sortOn(std::size_t column);
    // "Select all MainContent.ap files": the rows whose first column holds that name.
    std::vector<std::size_t> mainContentRows() const;
    // "Clear Grid": the heading row alone.
    void clear();

    base::Status save(const std::string& path) const { return services::SaveReportTable(path, table); }
    // The grid saved as a batch file: the first column of each row, a line each (a row
    // the caller meant for deletion already begins with "DEL ").
    base::Status saveBatch(const std::string& path) const;
    // "Load CSV file": the file's rows replace the grid's.
    void loadCsv(const std::string& text);
    // A table read from a file replaces the grid's rows; its heading row, when it has one,
    // the grid's headings.
    void loadTable(services::ReportTable loaded);
    // A row as the clipboard gets it: its cells joined by tabs.
    std::string rowText(std::size_t row) const;
};

// What "Find .ap files" and the four find commands of the main menu list: every .ap below
// `folder` whose name matches `mask`, with name, folder, size and date; 11 is the mode.
struct ApSearch {
    std::string folder;
    std::string mask = "*.ap";
};
// Walks with cScanPath; events are let through and AbortFlag ends the walk. Archives over
// 2 gigabytes are listed in `overlength` as well.
ReportGrid FindArchives(app::AppContext& ctx, const ApSearch& search, std::vector<std::string>& overlength);

// The report grid's remembered geometry in twips, lines 28 to 31 of the settings, with
// the screen's own default when they hold nothing.
struct TwipsGeometry {
    int left = 2000, top = 4000, width = 19000, height = 11000;
};
TwipsGeometry ReportGeometry(const app::PreferenceSet& prefs);
void StoreReportGeometry(app::AppContext& ctx, const TwipsGeometry& geometry);

}  // namespace ferrolund::archives
