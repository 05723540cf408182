#include "simdata/physics_document.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/tools/testdata_file.h"
#include "editor/document.h"
#include "physics_fixture.h"
#include "support/cli_run.h"
#include "support/locked_folder.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::simdata {
namespace {

namespace fs = std::filesystem;
using assets::testing::Game;
using testing::AssetFile;
using testing::PutLocomotives;

std::size_t RowOf(const PhysicsFile& file, const std::string& item, int nth = 0) {
    for (std::size_t i = 0; i < file.rows.size(); ++i)
        if (file.rows[i].item == item && nth-- == 0) return i;
    return file.rows.size();
}

std::vector<std::string> Names(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(PhysicsDocument, OpensALocomotiveUnderAccentedNamesWithItsSimulation) {
    Game game;
    const std::string diesel = PutLocomotives(game);
    PhysicsDocument doc;
    ASSERT_EQ(OpenPhysics(game.ctx, diesel, doc), std::nullopt);
    EXPECT_EQ(doc.name, testing::kLocoName);
    EXPECT_FALSE(doc.steam);
    EXPECT_EQ(doc.simulation.path, AssetFile(game, "RailVehicles\\BR218\\Simulation\\BR218Sim.bin"));
    EXPECT_FALSE(doc.simulation.loaded());
    ASSERT_EQ(AddSimulation(game.ctx, doc), std::nullopt);
    EXPECT_EQ(doc.simulation.rows.front().item, "cEngineSimBlueprint");
    EXPECT_TRUE(doc.curves[0].ends_with("\\Sim\\TractiveEffortVsThrottle.dcsv"));
    EXPECT_NE(doc.curves[0].find(testing::kProduct), std::string::npos);

    PhysicsDocument steam;
    ASSERT_EQ(OpenPhysics(game.ctx, AssetFile(game, testing::kSteamId), steam), std::nullopt);
    EXPECT_TRUE(steam.steam);
    ASSERT_EQ(AddSimulation(game.ctx, steam), std::nullopt);
    EXPECT_FALSE(steam.curves[4].empty());
    EXPECT_TRUE(steam.curves[0].empty());
}

TEST(PhysicsDocument, FilesThatCannotBeShownAreTold) {
    FERROLUND_READ_TESTDATA(scenery, "serz/scenery-item.bin");
    Game game;
    PutLocomotives(game);
    const fs::path sceneryFile = game.folder.write("game/Assets/P/Q/Shed.bin", scenery);
    game.folder.write("game/Assets/P/Q/Broken.bin", "SERZ\x00\x00\x01\x00garbage");
    game.put("P\\Q\\Wagon.bin", testing::Wrap("cWagonBlueprint", testing::S("Name", "Wagen")));
    game.put("P\\Q\\Lost.bin", testing::EngineXml("eDiesel", "Nowhere\\Sim.xml"));
    const std::string assets = game.gameRoot() + "\\Assets\\P\\Q\\";
    struct Case {
        std::string file;
        std::string message;     // of the open
        std::string simulation = {};  // of adding the simulation, when the open succeeds
    } cases[] = {
        {assets + "Missing.bin", "The file " + assets + "Missing.bin does not exist."},
        {assets + "Shed.bin", assets + "Shed.bin is not the blueprint of a rail vehicle."},
        {assets + "Broken.bin", assets + "Broken.bin could not be read: "},
        {assets + "Wagon.bin", "", kNoSimulationFile},
        {assets + "Lost.bin", "",
         "The file " + game.gameRoot() + "\\Assets\\" + testing::kProvider + "\\" + testing::kProduct +
             "\\Nowhere\\Sim.bin does not exist."},
    };
    for (const Case& c : cases) {
        PhysicsDocument doc;
        doc.name = "untouched";
        const auto problem = OpenPhysics(game.ctx, c.file, doc);
        if (!c.message.empty()) {
            ASSERT_TRUE(problem) << c.file;
            EXPECT_EQ(problem->substr(0, c.message.size()), c.message);
            EXPECT_EQ(doc.name, "untouched");
            continue;
        }
        ASSERT_EQ(problem, std::nullopt) << c.file;
        EXPECT_EQ(AddSimulation(game.ctx, doc), c.simulation);
        EXPECT_FALSE(doc.simulation.loaded());
    }
}

TEST(PhysicsDocument, SavesEachFileWithNumberedBackUps) {
    Game game;
    PutLocomotives(game);
    PhysicsDocument doc;
    ASSERT_EQ(OpenPhysics(game.ctx, AssetFile(game, testing::kDieselId), doc), std::nullopt);
    ASSERT_EQ(AddSimulation(game.ctx, doc), std::nullopt);
    const fs::path simFolder = game.onDisk(testing::kProvider + "\\" + testing::kProduct + "\\" + testing::kDieselSimId)
                                   .parent_path();
    const std::string original = tools::ReadTextFile(doc.simulation.path);

    for (const char* value : {"1900", "1950"}) {
        ASSERT_TRUE(EditPhysics(doc, PhysicsGrid::Simulation, RowOf(doc.simulation, "MaxPower"), value).changed);
        EXPECT_TRUE(doc.changed());
        const PhysicsSaved saved = SavePhysics(game.ctx, doc, PhysicsGrid::Simulation);
        ASSERT_EQ(saved.error, "");
        EXPECT_FALSE(doc.changed());
    }
    EXPECT_EQ(Names(simFolder), (std::vector<std::string>{"BR218Sim.bin", "BR218Sim.bin.bak", "BR218Sim.bin.bak1"}));
    EXPECT_EQ(tools::ReadTextFile(doc.simulation.path + ".bak"), original);
    PhysicsDocument again;
    ASSERT_EQ(OpenPhysics(game.ctx, AssetFile(game, testing::kDieselId), again), std::nullopt);
    ASSERT_EQ(AddSimulation(game.ctx, again), std::nullopt);
    EXPECT_EQ(again.simulation.rows[RowOf(again.simulation, "MaxPower")].data, "1950");
    EXPECT_EQ(again.simulation.rows[RowOf(again.simulation, "MaxForce", 1)].data, "150");
    // The blueprint is its own file: it was not touched.
    EXPECT_FALSE(fs::exists(tools::HostPath(doc.blueprint.path + ".bak")));
}

TEST(PhysicsDocument, AFailedSaveLeavesTheFileAsItWas) {
    struct Case {
        const char* name;
        std::string value;  // typed into DragCoefficient
        bool breakText;     // the text cut short
        bool lock;          // the folder made read-only
        std::string message;
    } cases[] = {
        {"a word in a float", "fast", false, false, editor::kRecompressFailed},
        {"broken text", "0.6", true, false, editor::kRecompressFailed},
        {"read-only folder", "0.6", false, true, "The original file has not been altered."},
    };
    for (const Case& c : cases) {
        Game game;
        PutLocomotives(game);
        PhysicsDocument doc;
        ASSERT_EQ(OpenPhysics(game.ctx, AssetFile(game, testing::kDieselId), doc), std::nullopt);
        ASSERT_TRUE(EditPhysics(doc, PhysicsGrid::Blueprint, RowOf(doc.blueprint, "DragCoefficient"), c.value).changed);
        if (c.breakText) doc.blueprint.text.resize(doc.blueprint.text.size() / 2);
        const fs::path folder = fs::path(tools::HostPath(doc.blueprint.path)).parent_path();
        const std::string before = tools::ReadTextFile(doc.blueprint.path);
        const auto namesBefore = Names(folder);
        PhysicsSaved saved;
        {
            std::optional<ferrolund::testing::LockedFolder> locked;
            if (c.lock) {
                locked.emplace(folder);
                if (!locked->locked()) GTEST_SKIP() << "the folder cannot be locked for this user";
            }
            saved = SavePhysics(game.ctx, doc, PhysicsGrid::Blueprint);
        }
        EXPECT_NE(saved.error.find(c.message), std::string::npos) << c.name << ": " << saved.error;
        EXPECT_EQ(saved.backup, "") << c.name;
        EXPECT_TRUE(doc.changed()) << c.name;  // the edit is still there to save
        EXPECT_EQ(tools::ReadTextFile(doc.blueprint.path), before) << c.name;
        EXPECT_EQ(Names(folder), namesBefore) << c.name;
    }
}

TEST(PhysicsVerb, PrintsBothGridsAndTellsWhatItCannotShow) {
    Game game;
    PutLocomotives(game);
    game.put("P\\Q\\Wagon.bin", testing::Wrap("cWagonBlueprint", testing::S("Name", "Wagen")));
    const std::string root = game.gameRoot();
    const std::string relative = testing::kProvider + "\\" + testing::kProduct + "\\RailVehicles\\BR218\\BR218.xml";
    // A game path (with the .xml of references) and a system path give the same.
    const auto byGamePath = ferrolund::testing::Cli({"physics", relative, "--game-root", root}, game.ctx.appRoot);
    const auto bySystemPath =
        ferrolund::testing::Cli({"--game-root", root, "physics", AssetFile(game, testing::kDieselId)}, game.ctx.appRoot);
    EXPECT_EQ(byGamePath.code, 0) << byGamePath.err;
    EXPECT_EQ(byGamePath.out, bySystemPath.out);
    const std::string& out = byGamePath.out;
    EXPECT_EQ(out.rfind("Stock being checked\t" + testing::kLocoName + "\n", 0), 0u) << out;
    for (const std::string line : {"cEngineBlueprint:\n", "\tMass\t80\n", "Bogey:\n", "\tBogeyPivotY\t-5.5\n",
                                   "cEngineSimBlueprint:\n", "\tMaxForce\t150\n", "\tMaxSpeed\t\n",
                                   "\tEnglish\tBR 218 Simulation\n"}) {
        EXPECT_NE(out.find(line), std::string::npos) << line;
    }
    EXPECT_LT(out.find("\tMass\t"), out.find("cEngineSimBlueprint:"));

    const auto wagon = ferrolund::testing::Cli({"physics", "P\\Q\\Wagon.bin", "--game-root", root}, game.ctx.appRoot);
    EXPECT_EQ(wagon.code, 0);
    EXPECT_NE(wagon.err.find(kNoSimulationFile), std::string::npos);
    const auto missing = ferrolund::testing::Cli({"physics", "P\\Q\\None.bin", "--game-root", root}, game.ctx.appRoot);
    EXPECT_EQ(missing.code, 1);
    EXPECT_NE(missing.err.find("no blueprint P\\Q\\None.bin"), std::string::npos);
    game.folder.write("game/Assets/P/Q/Text.bin", "not a binary");
    const auto text = ferrolund::testing::Cli({"physics", "P\\Q\\Text.bin", "--game-root", root}, game.ctx.appRoot);
    EXPECT_EQ(text.code, 1);
    EXPECT_NE(text.err.find("could not be read"), std::string::npos) << text.err;
    EXPECT_EQ(ferrolund::testing::Cli({"physics"}, game.ctx.appRoot).code, 2);
    EXPECT_EQ(ferrolund::testing::Cli({"physics", "a", "b"}, game.ctx.appRoot).code, 2);
}

}  // namespace
}  // namespace ferrolund::simdata
