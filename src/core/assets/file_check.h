#pragma once
// The asset file check: which files the blueprints of selected rows need, and whether
// they are there. One walk over the rows serves every command of the "Check Assets" menu
// and the check on the report grid; the commands differ only in the parameters below.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"

namespace ferrolund::assets {

// What one command reports for a row.
enum class RowReport {
    MissingFiles,  // "Check Loco for missing files": only what is missing
    LocoFiles,     // "Show Files Used by Locos": every file, missing ones marked
    WagonFiles,    // "Show Files Used by Wagons": the shorter list of a wagon
    AssetFiles,    // "Show files used by Asset": animations, sounds, geometry, textures
    LoftFiles,     // "Show files used by Lofts": geometry or cross-section and textures
};

// How the walk takes its rows.
struct RowSource {
    // Said when no row is given; the first line of a two-line message is split at '\n'.
    std::string noSelection;
    // The report grid's twin: a geometry not found as ".GeoPcDx" is tried as ".geopcdx".
    bool geometryRetry = false;
};
// The frame of the asset list's commands (Lang(466), or the two lines of the
// commands that show a row's files).
RowSource AssetListRows(app::AppContext& ctx, RowReport report);
// The frame of the report grid's twin.
RowSource ReportGridRows();

// A file that a blueprint needs and that is not there.
struct MissingFile {
    std::string blueprint;
    std::string file;
};

struct CheckOutcome {
    std::string report;  // the text for the report screen, lines ended by CR LF
    std::vector<MissingFile> missing;
    std::size_t rowsChecked = 0;
    bool noRows = false;    // nothing selected: the message was shown, nothing done
    bool emptyRow = false;  // an empty row ended the walk (Lang(444) shown)
    bool aborted = false;   // AbortFlag ended the walk; the report holds what was found
};

// Walks the rows (already the selected ones, in order) with the progress bar
// "Processed n %", reads each blueprint in memory and reports as `report` says. A row
// with an empty Provider is passed over. An empty report reads "No errors found"; a walk
// stopped by AbortFlag says so instead.
// Nothing on disk is changed.
CheckOutcome CheckRows(app::AppContext& ctx, const std::vector<AssetRow>& rows, RowReport report,
                       const RowSource& source);

// A row of the report grid: its first column, a blueprint path that holds "Assets\" or
// starts at the Provider ("P\Q\...\x.xml"); a final "xml" reads as "bin".
AssetRow RowFromGridItem(std::string_view item);

// The missing files as comma text: a heading line, then blueprint and file a line,
// each field in double quotes.
std::string MissingFilesCsv(const std::vector<MissingFile>& missing);

}  // namespace ferrolund::assets
