#pragma once
// "Check Selected Route": every reference of a route's tiles tested against GameRoot\Assets,
// the lists that follow from it, and the optional texture and sound check.

#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/blueprint.h"
#include "routes/route_check.h"
#include "routes/route_textures.h"

namespace ferrolund::routes {

// The working folder a packed route is unpacked into.
inline constexpr const char* kUnpackFolder = "0000000F-0000-0000-0000-00000000FFFF";

struct CheckedRoute {
    std::string name;
    std::string folder;                        // below Content\Routes
    std::vector<std::string> scenarioFolders;  // the rows of the scenario grid
};

// A list for the report grid: its heading, the suffix of its save file, its rows.
struct ReportListing {
    std::string heading;
    std::string suffix;
    std::vector<std::vector<std::string>> rows;
    bool missingItems = false;     // every row is a missing item
    std::vector<bool> missingRows{};  // or, row for row, those that are
};

// Answers given in advance to the check's questions; an empty one is asked.
struct CheckAnswers {
    std::optional<base::Answer> unpack;  // Yes, No or Cancel
    std::optional<bool> listShapes;
    std::optional<bool> checkTextures;
    std::optional<bool> listTextures;
    std::optional<bool> listAudio;
};

struct RouteCheckOutcome {
    std::vector<ReportListing> lists;  // in the order they were shown
    std::string missingText;           // the notes box
    CheckRun run;
    std::vector<std::string> uniqueAssets;
    TextureCheck textures;
    bool unpacked = false;  // the route was unpacked into the working folder; nothing checked
    bool stopped = false;   // ended by a question, a message or "&Abort"
};

// `askPacked` false is "Command13": the same check without the question about a packed
// route. The lists are given in the outcome, for the report grid.
RouteCheckOutcome CheckSelectedRoute(app::AppContext& ctx, const CheckedRoute& route, const CheckAnswers& answers = {},
                                     bool askPacked = true);

// The texture check behind a list of assets (out.uniqueAssets): their geometry listed,
// the textures and sounds of it tested, the missing ones added to out.missingText, and
// the lists of textures and sounds offered. With a provider and product in the rule the
// terrain counts only when it is theirs, and an empty geometry list says so.
// The route's tile folders walked with CheckForFiles under the rule, into `out.run`, then
// its unique assets. False, with `out.stopped`, when "&Abort" ended the walk.
bool WalkRoute(app::AppContext& ctx, const CheckedRoute& route, const WalkRule& rule, RouteCheckOutcome& out);

void CheckTexturesOf(app::AppContext& ctx, const std::string& routePath, const CheckAnswers& answers,
                     const WalkRule& rule, RouteCheckOutcome& out);

// The unpack of a packed route: MainContent.ap into the working folder, then the index.
// False (after the message) when the route has no MainContent.ap.
bool UnpackRoute(app::AppContext& ctx, const std::string& routeFolder);

// The route template that a RouteProperties.xml text names: the Provider, Product and
// BlueprintID behind <InfrastructureModified. False when the text has no such element.
bool RouteTemplateOf(const std::string& properties, assets::BlueprintRef& ref);

// Saves a list as comma-separated text: AppRoot\Reports\<route name><suffix>. Gives the
// file's path, or empty when nothing could be written.
std::string SaveListing(app::AppContext& ctx, const std::string& routeName, const ReportListing& listing);

}  // namespace ferrolund::routes
