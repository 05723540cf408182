#pragma once
// Building the route index: the display name of every route under Content\Routes, read
// from its RouteProperties.xml, written to IndexFiles\RouteIndex.csv and loaded again.
// The commands that do this differ in a few rules; those are the parameters below.

#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/route_index.h"

namespace ferrolund::routes {

struct RouteIndexRule {
    // The language elements tried for the name, in order; each search starts afresh.
    std::vector<std::string> languages;
    // A route whose name stays empty gets no row; otherwise it gets one with an empty name.
    bool skipNameless = true;
    // A row longer than 240 characters with the routes folder's path is cut, losing the
    // end of its folder name; the slot number is added behind the cut.
    bool cutAt240 = true;
    // Loaded again with the first row in the second place, the first left empty.
    bool firstSlotEmpty = true;
};

// "Index Route Properties": eight languages, nameless routes skipped, the cut, the
// empty first place.
extern const RouteIndexRule kIndexRouteProperties;
// After extracting the properties from the archives: three languages, nameless routes
// kept, no cut, the first row in the first place.
extern const RouteIndexRule kExtractedRouteProperties;

// The sub-folders of GameRoot\Content\Routes in listing order (names compared without
// regard to case, as the simulator's own file system lists them).
std::vector<std::string> ListRouteFolders(const std::string& gameRoot);

// The display name in the text of a RouteProperties.xml or ScenarioProperties.xml: the
// first language always, the next ones while the name is still empty, each searched from
// the start, then passed through the entity repair. A language element that is missing
// leaves `name` as it was, so a caller that does not clear it between files carries the
// last name over.
void ReadPropertiesName(const std::string& xml, const std::vector<std::string>& languages, std::string& name);

// The text of RouteIndex.csv: one row a route, CR LF after each, one more CR LF at the end.
std::string BuildRouteIndexText(const std::string& gameRoot, const RouteIndexRule& rule);

// Loads the file's rows as the rule places them, into arrays of `arraySize` places at most.
RouteIndex ReloadRouteIndex(const std::string& fileText, const RouteIndexRule& rule, std::size_t arraySize);

// The command: rebuilds the file, reloads RouteIndex, tells the user, and sets the
// setting that stops the first-use notice.
void IndexRouteProperties(app::AppContext& ctx);

// IndexFiles\RouteIndex.csv as the route screens read it; false, with the index left
// empty, when the file is not there.
bool LoadRouteIndexFile(const app::AppContext& ctx, RouteIndex& index);

// Asks, unpacks the properties files of packed routes (never over one on disk), then
// indexes by the rule and tells so. Cancelled, it leaves at once, with the notice that an
// index will be made when `tellOnCancel`.
void ExtractAndIndexRoutes(app::AppContext& ctx, const RouteIndexRule& rule, bool tellOnCancel);

// "Extract RouteProperties.xml": asks, unpacks the properties files of packed routes
// (never over one on disk), then indexes by kExtractedRouteProperties. Leaves the setting
// of the first-use notice as it is.
void getRouteProperties(app::AppContext& ctx);

}  // namespace ferrolund::routes
