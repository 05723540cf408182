#pragma once
// The editor's route list: the rows of the route index, and opening a file of a route.

#include <string>
#include <vector>

#include "app/app_context.h"
#include "editor/document.h"

namespace ferrolund::editor {

struct RouteRow {
    std::string name;
    std::string folder;
    std::string slot;
};

// "Load List": the rows of IndexFiles\RouteIndex.csv; none when the file is missing.
std::vector<RouteRow> LoadRouteList(const app::AppContext& ctx);

// "Save list as .CSV": asks for a name in AppRoot\Reports (made if missing) and saves the
// rows, headed by `headings`, as comma text or as an Excel file by the name's end.
void SaveRouteList(app::AppContext& ctx, const std::vector<RouteRow>& rows, const std::vector<std::string>& headings);

// The menu command that opens a file of this name from the list, by its ending
// (compared without case); empty for none.
std::string ListDispatchCommandFor(const std::string& file);

// "Open Selected Folder": asks for a file in the route's folder and names the menu
// command that opens it, with CommandFile and OpenFromList set so that command asks no
// more. Empty when the user gave up or the file's kind has no command.
std::string ChooseFileOfRoute(app::AppContext& ctx, EditorDocument& doc, const std::string& routeFolder);

}  // namespace ferrolund::editor
