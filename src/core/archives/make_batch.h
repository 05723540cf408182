#pragma once
// Bulk extraction: batch files made from the templates AppRoot\Templates\APBatch<n>.txt,
// whose marker "aaaaa" becomes a folder, written to AppRoot and run there by the batch
// interpreter, and the commands of the report grid and the main menu built on them.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "tools/batch_interpreter.h"

namespace ferrolund::archives {

inline constexpr const char* kTemplateMarker = "aaaaa";

// Reads Templates\<templateName>, replaces every marker by `folder`, writes the text to
// AppRoot\<batchName> and runs it with AppRoot as the working folder. A missing template
// gives an empty batch, which WriteTextFile warns about; the run then does nothing.
base::Status MakeBatch(app::AppContext& ctx, const std::string& templateName, const std::string& folder,
                      const std::string& batchName, tools::BatchOutcome& outcome);

// The commands that run one template over the whole installation.
enum class BulkKind {
    RollingStock,         // "Extract rolling-stock from all .ap files" (APBatch1)
    Scenarios,            // "Extract scenarios from all .ap files" (APBatch2)
    ScenarioProperties,   // getScenarioProperties (APBatch7)
    RouteProperties,      // the first half of getRouteProperties (APBatch9)
    RouteSignposts,       // "Extract RouteProperties.xml for all routes and add route name." (APBatch9)
};
// The confirmation the command asks before it runs, lines joined by CR LF.
std::string BulkQuestion(BulkKind kind);
// Asks, and on OK runs the template with GameRoot. Gives false when the person cancelled.
// The closing message is the caller's (getRouteProperties goes on with its index).
bool RunBulkExtraction(app::AppContext& ctx, BulkKind kind, tools::BatchOutcome& outcome);
// The whole command for the menu and the grid: asks, runs, tells the closing text, and
// names overlength archives through `showReport(caption, text)`.
void BulkExtractionCommand(app::AppContext& ctx, BulkKind kind,
                           const std::function<void(const std::string&, const std::string&)>& showReport);

// The commands that run a template once per selected archive.
enum class SelectedKind {
    RollingStock,  // Command17, APBatch3
    Scenarios,     // Command18, APBatch4
    LocoGeometry,  // Command20, APBatch6
    StockBinaries, // Command24, apbatch8
};
std::string SelectedQuestion(SelectedKind kind);
// Asks, then for each selected archive (system paths; empty rows are passed over) writes
// and runs the batch with the archive's folder. Ends with "All selected folders have been
// unpacked and files made read/write." Gives false when cancelled.
bool ExtractFromSelected(app::AppContext& ctx, SelectedKind kind, const std::vector<std::string>& archives,
                         tools::BatchOutcome& outcome);

// Command21: one APBatch7.bat for all selected archives, each giving two lines:
//   7za e -y -o"<f>" "<f>\MainContent.ap" "RouteProperties.xml"
//   ATTRIB -R "<f>\*.*" /s
std::string RoutePropertiesBatch(const std::vector<std::string>& archives);
bool RoutePropertiesFromSelected(app::AppContext& ctx, const std::vector<std::string>& archives,
                                 tools::BatchOutcome& outcome);

// Command13's second half: beside each route folder that holds a RouteProperties.xml, an
// empty sign-post folder "<folder>  <route name>" (colons removed, cut so that the path
// stays within 240 characters) when none exists. Gives the number made.
int MakeRouteSignposts(app::AppContext& ctx);

// The route's display name: the first of English, French and German that has a value,
// through FixEntitiesCopy.
std::string RouteDisplayName(const std::string& routePropertiesXml);

// Command14: asks, then unpacks each selected archive into its own folder, overwriting,
// and makes what it unpacked writable. Gives false when cancelled.
bool UnpackSelected(app::AppContext& ctx, const std::vector<std::string>& archives, tools::BatchOutcome& outcome);

// Command19: asks, writes AppRoot\APBatch5.bat with the listing line for the archive, runs
// it and gives the text of AppRoot\Tempfiles\List.txt (nothing when cancelled).
std::optional<std::string> ListArchive(app::AppContext& ctx, const std::string& archive);

// AP-Index.csv and BIN-Index.csv: "<file name>,<folder>" a line, no quotes.
struct IndexRow {
    std::string name;
    std::string folder;  // without a trailing backslash
};
std::string IndexCsvText(const std::vector<IndexRow>& rows);
// AppRoot\Data\AP-Index.csv and AppRoot\Reports\BIN-Index.csv, their folders made first.
bool WriteApIndex(app::AppContext& ctx, const std::vector<IndexRow>& rows);
bool WriteBinIndex(app::AppContext& ctx, const std::vector<IndexRow>& rows);

}  // namespace ferrolund::archives
