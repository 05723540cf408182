#include "simdata/physics_document.h"

#include "assets/blueprint.h"
#include "editor/document.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"

namespace ferrolund::simdata {

namespace {

// The file's XML, or the message why there is none.
std::optional<std::string> ReadXml(app::AppContext& ctx, const std::string& path, std::string& xml) {
    if (tools::FileLength(path) < 0) return "The file " + path + " does not exist.";
    if (base::Status failed = tools::SerzReadXml(ctx, path, xml)) {
        return path + " could not be read: " + failed->description;
    }
    if (xml.empty()) return path + " could not be read.";
    return std::nullopt;
}

}  // namespace

std::string SimulationFile(std::string_view blueprintText, const std::string& gameRoot) {
    const long at = FindElement(blueprintText, 1, "EngineSimulationContainer");
    if (at == 0) return {};
    const auto ref = assets::ReadTriple(blueprintText, at);
    return ref ? assets::BlueprintFile(gameRoot, *ref) : std::string();
}

bool IsSteamEngine(std::string_view blueprintText) {
    std::string type;
    long pos = 1;
    tools::GetDetail(blueprintText, pos, "EngineType", type, tools::kPhysicsTagOptions);
    return tools::EqualsIgnoreCase(type, "eSteam");
}

bool IsRailVehicle(std::string_view blueprintText) {
    const std::string word = assets::ClassWord(blueprintText);
    for (const char* vehicle : {"EngineBlueprint", "WagonBlueprint", "TenderBlueprint"}) {
        if (tools::EqualsIgnoreCase(word, vehicle)) return true;
    }
    return false;
}

std::optional<std::string> OpenPhysics(app::AppContext& ctx, const std::string& path, PhysicsDocument& doc) {
    ctx.currentRoutine = "Form_Load";
    std::string xml;
    if (auto problem = ReadXml(ctx, path, xml)) return problem;
    if (!IsRailVehicle(xml)) return path + " is not the blueprint of a rail vehicle.";
    PhysicsDocument opened;
    opened.blueprint.path = path;
    opened.blueprint.rows = ReadGrid(xml, GridKind::Blueprint, ctx.gameRoot()).rows;
    tools::GetName(xml, opened.name, ctx.prefs.language.empty() ? "English" : ctx.prefs.language);
    opened.steam = IsSteamEngine(xml);
    opened.simulation.path = SimulationFile(xml, ctx.gameRoot());
    opened.blueprint.text = std::move(xml);
    doc = std::move(opened);
    return std::nullopt;
}

std::optional<std::string> AddSimulation(app::AppContext& ctx, PhysicsDocument& doc) {
    ctx.currentRoutine = doc.steam ? "Command6_Click" : "Command2_Click";
    if (doc.simulation.path.empty()) return kNoSimulationFile;
    std::string xml;
    if (auto problem = ReadXml(ctx, doc.simulation.path, xml)) return problem;
    GridRead read = ReadGrid(xml, doc.steam ? GridKind::Steam : GridKind::Diesel, ctx.gameRoot());
    doc.simulation.text = std::move(xml);
    doc.simulation.rows = std::move(read.rows);
    doc.simulation.changed = false;
    doc.curves = read.curves;
    return std::nullopt;
}

EditOutcome EditPhysics(PhysicsDocument& doc, PhysicsGrid grid, std::size_t row, std::string_view typed) {
    PhysicsFile& file = doc.file(grid);
    EditOutcome outcome = EditRow(file.text, file.rows, row, typed);
    if (outcome.changed) file.changed = true;
    return outcome;
}

PhysicsSaved SavePhysics(app::AppContext& ctx, PhysicsDocument& doc, PhysicsGrid grid) {
    ctx.currentRoutine = grid == PhysicsGrid::Blueprint ? "Command4_Click" : "Command5_Click";
    PhysicsSaved saved;
    PhysicsFile& file = doc.file(grid);
    if (!file.loaded()) {
        saved.error = "There is nothing to save.";
        return saved;
    }
    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    const std::string scratch = temp + "\\" + editor::SplitDocumentName(file.path).baseName;
    if (base::Status failed = tools::SerzCompileText(ctx, file.text, scratch + "xml", scratch + "bin")) {
        saved.error = std::string(editor::kRecompressFailed) + "\n\n" + failed->description;
        return saved;
    }
    if (base::Status failed = tools::ReplaceWithBackup(scratch + "bin", file.path, tools::kUnlimitedBackupRule,
                                                       saved.backup)) {
        saved.error = failed->description + "\nThe original file has not been altered.";
        saved.backup.clear();
        return saved;
    }
    file.changed = false;
    return saved;
}

}  // namespace ferrolund::simdata
