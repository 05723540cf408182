#include "scenarios/scenario_texts.h"

#include <filesystem>

#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"

namespace ferrolund::scenarios {

std::string ScenarioFolderPath(const app::AppContext& ctx, const std::string& routeFolder,
                               const std::string& scenarioFolder) {
    return ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\Scenarios\\" + scenarioFolder;
}

base::Status LoadScenarioTexts(app::AppContext& ctx, const std::string& folder, ScenarioTexts& texts) {
    texts = ScenarioTexts{};
    std::error_code error;
    if (!std::filesystem::is_directory(tools::HostPath(folder), error)) return base::err::PathNotFound(folder);
    const std::string properties = folder + "\\ScenarioProperties.xml";
    if (!tools::FileExists(properties)) return base::err::FileNotFound(properties);
    std::string propertiesXml = tools::ReadTextFile(properties);
    if (propertiesXml.empty())
        return base::RunError{base::err::kInputPastEnd, properties + " is empty, so the scenario cannot be read."};
    const std::string binary = folder + "\\Scenario.bin";
    if (!tools::FileExists(binary)) return base::err::FileNotFound(binary);
    std::string scenarioXml;
    if (base::Status failed = tools::SerzReadXml(ctx, binary, scenarioXml)) {
        return base::RunError{failed->number, binary + " could not be converted: " + failed->description};
    }
    texts.folder = folder;
    texts.propertiesXml = std::move(propertiesXml);
    texts.scenarioXml = std::move(scenarioXml);
    return {};
}

}  // namespace ferrolund::scenarios
