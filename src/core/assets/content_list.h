#pragma once
// The screen model of frmContent, "Build List of Content": the files under
// GameRoot\Content\Routes as a list of five columns, each row naming the route (and the
// scenario) a file belongs to by its display name, and the commands that fill, save and
// delete from it.

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::assets {

inline constexpr const char* kContentCaption = "Build List of Content";
inline constexpr std::size_t kContentColumns = 5;
inline constexpr std::array<std::string_view, kContentColumns> kContentHeadings{
    "Route Name", "Sub-Folder", "Sub-Folder2", "File Name", "Index!"};

struct ContentRow {
    // The route's display name; for a file of a scenario, " - " and the scenario's name
    // follow it.
    std::string routeName;
    // The first folder behind Content\Routes (the route's folder), or behind Assets or
    // Content for a file elsewhere.
    std::string subFolder;
    // The folders between that one and the file, joined by '\'; empty for a file that
    // lies in it directly.
    std::string subFolder2;
    std::string fileName;
    std::string index;  // running number within the walk, from 1
    // The file as the walk found it; empty for a row read from a saved list.
    std::string path;

    std::vector<std::string> Cells() const { return {routeName, subFolder, subFolder2, fileName, index}; }
    // Cells beyond the fifth are ignored; missing ones stay empty.
    static ContentRow FromCells(const std::vector<std::string>& cells);
};

// Where a file lies, cut as the list shows it.
struct ContentPlace {
    std::string routeFolder;     // the full path of the route's folder; empty outside Routes
    std::string scenarioFolder;  // the full path of the scenario's folder; empty outside one
    std::string subFolder;
    std::string subFolder2;
    std::string fileName;
};

// The place of a full path. The game root is passed over first, so that a folder above
// it whose name holds "Assets" or "Content" does no harm. Nothing when the path holds
// neither word, or fewer than two folders behind it.
std::optional<ContentPlace> PlaceOfContent(const std::string& gameRoot, const std::string& path);

// The file of a row read from a saved list: below GameRoot\Content\Routes, else
// GameRoot\Content, else GameRoot\Assets, the first that exists; the first when none does.
std::string ContentRowFile(const std::string& gameRoot, const ContentRow& row);

class ContentList {
public:
    std::vector<ContentRow> rows;
    // Set by "Find Zero Length Files", for "Delete Selected"; left by that command.
    bool zeroLengthMode = false;

    // Where the walk starts when the screen opens: GameRoot\Content\Routes\, or "C:"
    // when the game's folder is not known.
    static std::string StartFolder(const app::AppContext& ctx);

    // "Add to List": every file below the folder ("*.*") but those of a PreLoad folder
    // and the ".MD5" side files, a row each, appended to the rows. A path that cannot be
    // cut is told and the walk goes on. Ends with "Selected items have been added to the
    // grid." (or, `afterDelete`, "... removed from the grid.").
    void addToList(app::AppContext& ctx, const std::string& folder, bool afterDelete = false);
    // "Find Zero Length Files": the same walk letting only files of at most one byte
    // through; the list then is in zero-length mode.
    void findZeroLength(app::AppContext& ctx, const std::string& folder);
    // "Clear List".
    void clear();

    // "Delete Selected": after the warning, deletes the files of the selected rows (row
    // numbers from 0). In the normal mode the list is then walked again from `folder`; in
    // zero-length mode the mode ends and the list is only cleared. False when nothing was
    // done (cancelled, nothing selected).
    bool deleteSelected(app::AppContext& ctx, const std::vector<std::size_t>& selected, const std::string& folder);

    // "Save .bin grid": the rows as comma text, heading first, in
    // AppRoot\Reports\BIN-Index.csv (the folder made when missing).
    bool saveBinGrid(app::AppContext& ctx) const;

    // The file of a row: the path the walk found, else rebuilt from the cells.
    std::string rowFile(const std::string& gameRoot, std::size_t row) const;

private:
    void walk(app::AppContext& ctx, const std::string& folder, int maximumSize, bool afterDelete);
    // SZ_FileMatch: one file of the walk.
    void fileMatch(app::AppContext& ctx, const std::string& name, const std::string& folder);
    // The display name in a properties file, read once a walk.
    const std::string& propertiesName(const app::AppContext& ctx, const std::string& file);

    std::map<std::string, std::string> names_;
    long running_ = 0;
};

}  // namespace ferrolund::assets
