#pragma once
// What the physics screen holds of one rail vehicle: the XML text of its blueprint and of
// its simulation blueprint, the grid rows cut out of them, and whether an edit is
// unsaved. The screen shows it; the command line prints it.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "simdata/physics_grid.h"

namespace ferrolund::simdata {

struct PhysicsFile {
    std::string path;           // the .bin, a system path
    std::string text;           // its XML, whole
    std::vector<GridRow> rows;  // its grid
    bool changed = false;       // an edit of this text is unsaved
    bool loaded() const { return !text.empty(); }
};

enum class PhysicsGrid { Blueprint, Simulation };

struct PhysicsDocument {
    PhysicsFile blueprint;
    // The file named by EngineSimulationContainer (path empty when none is named); its
    // text and rows come with AddSimulation.
    PhysicsFile simulation;
    std::string name;   // the vehicle's display name
    bool steam = false; // the blueprint's EngineType is steam
    CurveFiles curves;  // from the simulation grid's CsvFile rows

    bool changed() const { return blueprint.changed || simulation.changed; }
    PhysicsFile& file(PhysicsGrid grid) { return grid == PhysicsGrid::Blueprint ? blueprint : simulation; }
};

// The simulation blueprint's file: GameRoot\Assets\ + the Provider, Product and
// BlueprintID behind EngineSimulationContainer ("xml" made "bin"). Empty when the
// blueprint names none.
std::string SimulationFile(std::string_view blueprintText, const std::string& gameRoot);
// Whether the blueprint's EngineType is eSteam.
bool IsSteamEngine(std::string_view blueprintText);
// A rail vehicle's blueprint: an engine, a wagon or a tender.
bool IsRailVehicle(std::string_view blueprintText);

// Reads the blueprint at `path` (a system path) and fills its grid; finds the simulation
// file. Gives the message for the user when the file is missing, cannot be read or is no
// rail vehicle's blueprint; `doc` is then left as it was.
std::optional<std::string> OpenPhysics(app::AppContext& ctx, const std::string& path, PhysicsDocument& doc);

// The message when the blueprint names no simulation file.
inline constexpr const char* kNoSimulationFile = "This vehicle has no Simulation file named in its blueprint.";

// Reads the simulation file into the lower grid, with the curve files its CsvFile rows
// name; clears its unsaved edits. Gives the message when there is none or it cannot be
// read; the grid is then left as it was.
std::optional<std::string> AddSimulation(app::AppContext& ctx, PhysicsDocument& doc);

// The edit of one cell of a grid's data column (see EditRow); marks the file changed.
EditOutcome EditPhysics(PhysicsDocument& doc, PhysicsGrid grid, std::size_t row, std::string_view typed);

struct PhysicsSaved {
    std::string error;   // for the user; empty when saved
    std::string backup;  // the old file's new name
};

// Writes a grid's text back to its .bin: compiled in TempFiles and read back, then put in
// place with the old file renamed to .bak, or the first free .bak1, .bak2, ... A text the
// converter cannot compile, or does not give back, leaves the file untouched; so does a
// target that cannot be replaced.
PhysicsSaved SavePhysics(app::AppContext& ctx, PhysicsDocument& doc, PhysicsGrid grid);

}  // namespace ferrolund::simdata
