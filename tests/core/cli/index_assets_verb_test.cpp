// ferrolund-cli index-assets: the asset list as comma text.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/interrupt.h"
#include "serz/codec.h"
#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ferrolund {
namespace {

using testing::Cli;

std::string Blueprint(const std::string& classTag, const std::string& name, const std::string& extra) {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\"><Blueprint><" + classTag + "><Name><Localisation-cUserLocalisedString>"
        "<English d:type=\"cDeltaString\">" + name + "</English></Localisation-cUserLocalisedString></Name>" + extra +
        "</" + classTag + "></Blueprint></cBlueprintLoader>";
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(xml, binary));
    return binary;
}

struct Game {
    testing::TempFolder app, game;
    Game() {
        game.write("Assets/Prov/Prod/RailVehicles/Freight/w.bin",
                   Blueprint("cWagonBlueprint", "Box, old", "<RailVehicleComponent/>"));
        game.write("Assets/Prov/Prod/Scenery/shed.bin",
                   Blueprint("cSceneryBlueprint", "Shed", "<Category d:type=\"cDeltaString\">eHouses</Category>"));
        game.write("Assets/Prov/Prod/Scenery/cut.bin", "SERZ\0\0\x01\0");
    }
    std::vector<std::string> Args(std::vector<std::string> args) const {
        args.insert(args.begin(), "index-assets");
        args.push_back("--game-root");
        args.push_back(game.system());
        return args;
    }
};

const std::string kHeading = "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n";

TEST(IndexAssetsVerb, ListsAsCommaText) {
    Game g;
    struct Case {
        const char* label;
        std::vector<std::string> args;
        int code;
        std::string out;
    };
    const std::string wagon = "Prov,Prod,RailVehicles\\Freight\\w.bin,Box old,Yes,Freight Wagon,WagonBlueprint,1\r\n";
    const std::vector<Case> cases = {
        {"whole Assets", {}, 0, kHeading + wagon + "Prov,Prod,Scenery\\shed.bin,Shed,No,Houses,SceneryBlueprint,2\r\n"},
        {"rolling stock", {"--rolling-stock"}, 0, kHeading + wagon},
        {"category Freight", {"--category", "Freight"}, 0, kHeading + wagon},
        {"a folder named", {g.game.system() + "/Assets/Prov/Prod/Scenery"}, 0,
         kHeading + "Prov,Prod,Scenery\\shed.bin,Shed,No,Houses,SceneryBlueprint,1\r\n"},
        {"zero length: none", {"--zero-length"}, 0, kHeading},
        {"missing folder", {g.game.system() + "/Nowhere"}, 1, ""},
        {"unknown option", {"--fast"}, 2, ""},
        {"category without its word", {"--category"}, 2, ""},
    };
    for (const Case& c : cases) {
        const auto run = Cli(g.Args(c.args), g.app.system());
        EXPECT_EQ(run.code, c.code) << c.label << "\n" << run.err;
        EXPECT_EQ(run.out, c.out) << c.label;
    }
    // The broken file is told, and the walk went on past it.
    const auto run = Cli(g.Args({}), g.app.system());
    EXPECT_NE(run.err.find("cut.bin"), std::string::npos) << run.err;
}

TEST(IndexAssetsVerb, OutFileKeepsTheOldOneAsBackup) {
    Game g;
    const std::string out = g.app.system() + "/list.csv";
    g.app.write("list.csv", "the old list\n");
    const auto run = Cli(g.Args({"--rolling-stock", "--out", out}), g.app.system());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(run.out.empty());
    EXPECT_EQ(g.app.read("list.csv").substr(0, kHeading.size()), kHeading);
    EXPECT_EQ(g.app.read("list.csv.bak"), "the old list\n");
    EXPECT_FALSE(std::filesystem::exists(g.app.path() / "list.csv.new"));

    // A target that cannot be written: a failure, and nothing of the old file lost.
    const auto blocked = Cli(g.Args({"--out", g.app.system() + "/NoFolder/list.csv"}), g.app.system());
    EXPECT_EQ(blocked.code, 1);
    EXPECT_EQ(g.app.read("list.csv.bak"), "the old list\n");
}

TEST(IndexAssetsVerb, CtrlCGivesTheRowsSoFarAndAppendsNothing) {
    Game g;
    g.app.write("IndexFiles/index.csv", kHeading + "A,B,c.bin,C,Yes,Diesel,EngineBlueprint,7\r\n");
    cli::RequestInterrupt();
    const auto run = Cli(g.Args({"--append"}), g.app.system());
    cli::ForgetInterrupt();
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out.substr(0, kHeading.size()), kHeading);
    EXPECT_NE(run.err.find("stopped by Ctrl+C"), std::string::npos) << run.err;
    EXPECT_EQ(g.app.read("IndexFiles/index.csv"), kHeading + "A,B,c.bin,C,Yes,Diesel,EngineBlueprint,7\r\n");
    EXPECT_FALSE(std::filesystem::exists(g.app.path() / "IndexFiles/index.csv.bak"));
}

}  // namespace
}  // namespace ferrolund
