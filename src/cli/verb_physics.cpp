#include "cli/verb_physics.h"

#include <ostream>

#include "cli/shared_options.h"
#include "simdata/physics_document.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

std::string Shown(const std::string& text) { return tools::ShownText(text); }

// The blueprint a path names: a file as given, else below the game's Assets folder or
// its own folder, each also with a final "xml" read as "bin" (the form references use).
std::string FindBlueprint(const app::AppContext& ctx, const std::string& given) {
    std::vector<std::string> candidates{given};
    if (!ctx.gameRoot().empty()) {
        candidates.push_back(ctx.gameRoot() + "\\Assets\\" + given);
        candidates.push_back(ctx.gameRoot() + "\\" + given);
    }
    for (const std::string& candidate : candidates) {
        if (tools::FileLength(candidate) >= 0) return candidate;
        if (candidate.size() > 3 && tools::EqualsIgnoreCase(candidate.substr(candidate.size() - 3), "xml")) {
            const std::string binary = candidate.substr(0, candidate.size() - 3) + "bin";
            if (tools::FileLength(binary) >= 0) return binary;
        }
    }
    return {};
}

void PrintGrid(const simdata::PhysicsFile& file, std::ostream& out) {
    out << Shown(file.path) << "\n";
    for (const simdata::GridRow& row : file.rows) {
        if (row.heading()) {
            out << Shown(row.item) << ":\n";
        } else {
            out << "\t" << Shown(row.item) << "\t" << Shown(simdata::ShownData(row.data)) << "\n";
        }
    }
}

}  // namespace

int PhysicsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) {
        err << "ferrolund-cli: usage: physics BLUEPRINT\n";
        return kExitUsage;
    }
    const std::string file = FindBlueprint(ctx, args[0]);
    if (file.empty()) {
        err << "ferrolund-cli: no blueprint " << Shown(args[0]) << "\n";
        return kExitFailed;
    }
    simdata::PhysicsDocument doc;
    if (const auto problem = simdata::OpenPhysics(ctx, file, doc)) {
        err << "ferrolund-cli: " << Shown(*problem) << "\n";
        return kExitFailed;
    }
    out << "Stock being checked\t" << Shown(doc.name) << "\n";
    PrintGrid(doc.blueprint, out);
    if (doc.simulation.path.empty()) {
        err << "ferrolund-cli: " << simdata::kNoSimulationFile << "\n";
        return kExitDone;
    }
    if (const auto problem = simdata::AddSimulation(ctx, doc)) {
        err << "ferrolund-cli: " << Shown(*problem) << "\n";
        return kExitFailed;
    }
    out << "\n";
    PrintGrid(doc.simulation, out);
    return kExitDone;
}

}  // namespace ferrolund::cli
