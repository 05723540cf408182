#pragma once
// Scenario management on "Select Route": class changes in bulk, the removal of empty
// consists, the return to a scenario's first back-up, the player's saved state
// CurrentSave.bin, the deletion of scenario folders and the list of scenarios the
// simulator cannot use. Scenario folders are system paths
// (GameRoot\Content\Routes\<route>\Scenarios\<scenario>). Every file that is replaced keeps its old self as a
// back-up beside it.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "base/run_error.h"

namespace ferrolund::scenarios {

// Which class "Make Selected ... Scenarios 'Standard'" turns into a standard one.
enum class StandardFrom { Career, Timetable };

// For each folder: a scenario of the chosen class gets eStandardScenarioClass, its old
// ScenarioProperties.xml kept as ScenarioProperties.bak (or .bak1 .. .bak50). Scenarios
// of the other classes are passed over. Ends with "All selected scenarios are now
// 'Standard'". Gives the number changed; failures are reported and the walk goes on.
int MakeScenariosStandard(app::AppContext& ctx, const std::vector<std::string>& folders, StandardFrom from);

// The consists of a scenario's XML with no vehicle taken out, in one pass.
struct ConsistCut {
    std::string xml;
    int removed = 0;
    int kept = 0;
};
ConsistCut CutEmptyConsists(std::string_view xml);

struct CleanOutcome {
    int removed = 0;
    std::string backup;  // the old Scenario.bin's new name; empty when nothing was replaced
    base::Status error;  // nothing changed on disk when set
};
// "Remove Empty Consists from selected Scenario": Scenario.bin converted, the empty
// consists cut, the text compiled to a scratch file in TempFiles and read back; only then
// is Scenario.bin replaced, the old one renamed to Scenario.bak (or .bak1 .. .bak50).
// With no empty consist the file is left alone.
CleanOutcome RemoveEmptyConsists(app::AppContext& ctx, const std::string& folder);
// The command: the removal, then what came of it told to the user.
void RemoveEmptyConsistsCommand(app::AppContext& ctx, const std::string& folder);

struct RevertOutcome {
    int backupsDeleted = 0;  // Scenario.bak1 .. .bak50
    int reverted = 0;        // scenarios whose Scenario.bak became Scenario.bin again
    base::Status error;      // the first failure; the walk goes on past it
};
// "Revert to Default for selected Scenario": Scenario.bak1 .. .bak50 deleted; when
// Scenario.bin and Scenario.bak both exist, Scenario.bak takes the place of Scenario.bin.
// ScenarioProperties.xml is not touched.
RevertOutcome RevertScenario(const std::string& folder);
// "Revert to Default for selected Route": every scenario folder of the route.
RevertOutcome RevertRoute(const app::AppContext& ctx, const std::string& routeFolder);

// "Save CurrentSave.bin As": a file chosen under the title "Save CurrentSave.bin as"
// (".bin" added when it has no ending) receives the scenario's CurrentSave.bin, and its
// name plus ".MD5" the CurrentSave.bin.MD5 when there is one. An existing target is kept
// as a back-up. Gives the name saved to, empty when nothing was saved.
std::string SaveCurrentSaveAs(app::AppContext& ctx, const std::string& folder);

// Puts `saveFile` (and its ".MD5", when there is one) in the place of the scenario's
// CurrentSave.bin and CurrentSave.bin.MD5, with no question. The old pair is renamed to
// back-ups, so the two files always travel together and nothing is lost.
base::Status ReplaceCurrentSave(const std::string& folder, const std::string& saveFile);
// "Overwrite CurrentSave.bin with Selected file": asks first. True when replaced.
bool OverwriteCurrentSave(app::AppContext& ctx, const std::string& folder, const std::string& saveFile);

// The simulator's Steam application id for the installation: 24000, 24010 for a folder
// "railworks beta", 24020 for "railworks dev".
std::string SimulatorAppId(std::string_view gameRoot);
// Starts the simulator with its Steam id; an error value when that cannot be done.
using SimulatorLauncher = std::function<base::Status(const std::string& appId)>;
// `steam -applaunch <id>`, started without waiting; an error when no steam is on the PATH.
base::Status LaunchWithSteam(const std::string& appId);
// "Run RailWorks using selected Save file": asks, puts the save in place, starts the
// simulator. True when it was started.
bool RunWithSave(app::AppContext& ctx, const std::string& folder, const std::string& saveFile,
                 const SimulatorLauncher& launch = LaunchWithSteam);

// "Delete Selected Scenario(s)": asks first, then removes each folder with all it holds.
// Gives the number deleted.
int DeleteScenarios(app::AppContext& ctx, const std::vector<std::string>& folders);

struct InvalidScenario {
    std::string folder;  // the scenario's folder name
    std::string reason;
};
// The scenarios of the route the simulator cannot use: ScenarioProperties.xml missing,
// not well-formed or without DisplayName or ScenarioClass; Scenario.bin missing or not
// convertible. Stops between two scenarios when AbortFlag is set.
std::vector<InvalidScenario> FindInvalidScenarios(app::AppContext& ctx, const std::string& routeFolder);

// "Saved Copies of Selected Scenario": the file names of the scenario's back-ups
// (*.bak, *.bak<n>) and saved states (*.bin other than the scenario's own files), sorted.
std::vector<std::string> SavedCopies(const std::string& folder);

}  // namespace ferrolund::scenarios
