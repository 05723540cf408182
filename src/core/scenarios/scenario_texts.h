#pragma once
// A scenario as the program works on it: its folder under the route, and its two files
// held whole as text: ScenarioProperties.xml as it stands, Scenario.bin as the XML the
// converter makes of it. Everything shown is cut out of these texts and every change is
// a splice in them; nothing is parsed into a tree.

#include <string>

#include "app/app_context.h"
#include "base/run_error.h"

namespace ferrolund::scenarios {

// GameRoot\Content\Routes\<route>\Scenarios\<scenario>
std::string ScenarioFolderPath(const app::AppContext& ctx, const std::string& routeFolder,
                               const std::string& scenarioFolder);

struct ScenarioTexts {
    std::string folder;         // the scenario's folder, a system path
    std::string propertiesXml;  // ScenarioProperties.xml
    std::string scenarioXml;    // Scenario.bin as XML
};

// Reads both files of the scenario in `folder`. A missing folder or file, a properties
// file that is empty, or a Scenario.bin the converter cannot read gives an error value
// that names the file; the texts are then left empty.
base::Status LoadScenarioTexts(app::AppContext& ctx, const std::string& folder, ScenarioTexts& texts);

}  // namespace ferrolund::scenarios
