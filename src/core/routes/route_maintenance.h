#pragma once
// Route maintenance of the route browser: the test of scenarios' ScenarioProperties.xml
// ("Check ScenarioProperties"), the look at a route's template ("Check Route Template"),
// the clearing of a route's MixMap tiles ("Remove terrain textures") and the gathering of
// a route's assets into a folder of its own ("Make Asset Folder", in asset_folder.h).

#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/scenario_list.h"

namespace ferrolund::routes {

// A ScenarioProperties.xml whose binary form is shorter than this holds a format error.
inline constexpr long long kSmallestPropertiesBinary = 1000;

struct PropertiesCheck {
    std::size_t checked = 0;
    std::vector<std::string> faulty;   // names of the scenarios with a format error
    std::vector<std::string> missing;  // paths of the ScenarioProperties.xml not found
    bool aborted = false;
};

// "Check ScenarioProperties" for the given scenarios: each file converted to binary in
// TempFiles; a failed conversion or a result under 1,000 bytes is a format error. Tells
// each fault and missing file as it comes, then the final box.
PropertiesCheck CheckScenarioProperties(app::AppContext& ctx, const std::vector<ScenarioRow>& scenarios);

// How "Check Route Template" ended.
enum class TemplateCheckEnd {
    NoProperties,     // the route has no RouteProperties.xml
    TemplateMissing,  // the template it names is not installed
    Unreadable,       // the template could not be converted
    LeftAsItIs,       // the template looked right and the user wanted no change
    NeedsEditor,      // the user wanted a change; editing needs the route template screen
};

// What the template needs, as the check found it.
enum class TemplateChange { None, AddBrowseFilter, UpdateBrowseFilter, Edit };

struct TemplateCheck {
    TemplateCheckEnd end = TemplateCheckEnd::NoProperties;
    TemplateChange change = TemplateChange::None;
    std::string templateFile;  // the template's .bin under GameRoot\Assets
    std::string xml;           // its text, when it was read
};

// "Check Route Template" of the route in Content\Routes\<routeFolder>: the template named
// in RouteProperties.xml read, its BrowseFiltering section looked at and the questions
// asked. The template is never changed here: the editing that would follow needs the
// route template screen, which this program does not have yet, and the user is told so.
TemplateCheck CheckRouteTemplate(app::AppContext& ctx, const std::string& routeFolder);

// GameRoot\Content\Routes\<routeFolder>\MixMap.
std::string MixMapFolder(const std::string& gameRoot, const std::string& routeFolder);

// The names of the files in a folder (not below it), sorted without regard to case.
std::vector<std::string> FolderFileNames(const std::string& folder);

struct MixMapClearing {
    std::vector<std::string> modified;  // names of the files replaced
    std::vector<std::string> failed;    // names of the .bin files left as they were
    bool aborted = false;
};

// "Process" of "Clear MixMap Files": each named .bin of `folder` converted to XML in
// TempFiles, the text in front of its <d:blob kept and Templates\BlankTerrain.txt put
// behind it, converted back, the old file renamed by the back-up rule and the new one
// copied in. Files not ending in .bin are passed over. Progress and "&Abort" between
// files; a file that fails is told and left as it was, and the run goes on.
MixMapClearing ClearMixMaps(app::AppContext& ctx, const std::string& folder, const std::vector<std::string>& names);

}  // namespace ferrolund::routes
