// ferrolund-cli stock-transform: the asset list's rolling-stock edits from the command line.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/assets/stock_fixture.h"
#include "support/cli_run.h"
#include "tools/tags.h"

namespace ferrolund {
namespace {

namespace fs = std::filesystem;
using assets::testing::CoachXml;
using assets::testing::Game;
using assets::testing::Upright;

const std::string kCoach = "Prov\\Prod\\RailVehicles\\Coach\\Mk1_BFK.bin";

testing::CliRun StockVerb(Game& game, std::vector<std::string> args) {
    args.insert(args.begin(), "stock-transform");
    args.insert(args.end(), {"--game-root", game.gameRoot()});
    return testing::Cli(args, game.ctx.appRoot);
}

TEST(StockTransformVerb, EditsTheNamedBlueprints) {
    Game game;
    game.useTemplates({"AddPassengers3.txt", "CargoDef.txt"});
    game.put(kCoach, CoachXml("Brake", {{"Driver", Upright("0.6", "1.5", "4")}}));

    const auto passengers = StockVerb(game, {"passengers", kCoach, "--yes"});
    EXPECT_EQ(passengers.code, 0) << passengers.err << passengers.out;
    EXPECT_NE(passengers.out.find(kCoach + "  Requested changes have been made."), std::string::npos) << passengers.out;
    const std::string made = game.xmlOf("Prov\\Prod\\RailVehicles\\Coach\\Mk1_BFK_MT.bin");
    EXPECT_NE(made.find(">Guard<"), std::string::npos);
    EXPECT_NE(made.find(">Mk1_BFK_MT</English>"), std::string::npos);

    // The full path below Assets names the same file.
    const auto mass = StockVerb(game, {"mass", game.gameRoot() + "\\Assets\\" + kCoach, "--mass", "30.5", "--capacity", "12", "--yes"});
    EXPECT_EQ(mass.code, 0) << mass.err;
    std::string value;
    long pos = 1;
    tools::GetDetail(game.xmlOf(kCoach), pos, "Mass", value);
    EXPECT_EQ(value, "30.5");
}

TEST(StockTransformVerb, WrongWordsAndRefusalsAreTold) {
    Game game;
    game.put(kCoach, CoachXml("Brake", {}));
    const std::string before = game.bytesOf(kCoach);
    struct Case {
        std::vector<std::string> args;
        int code;
    };
    const Case cases[] = {
        {{}, 2},
        {{"paint", kCoach, "--yes"}, 2},
        {{"dead", "Prov"}, 2},
        {{"mass", kCoach, "--mass", "3", "--yes"}, 2},
        {{"conductor", kCoach, "--no"}, 1},                // the warning refused
        {{"in-scenarios", "Prov\\Prod\\Gone.bin", "--yes"}, 1},
    };
    for (const Case& c : cases) {
        const auto run = StockVerb(game, c.args);
        EXPECT_EQ(run.code, c.code) << (c.args.empty() ? "" : c.args[0]) << run.err;
    }
    EXPECT_EQ(game.bytesOf(kCoach), before);
    EXPECT_EQ(fs::directory_iterator(game.onDisk(kCoach).parent_path())->path().filename(), "Mk1_BFK.bin");
}

}  // namespace
}  // namespace ferrolund
