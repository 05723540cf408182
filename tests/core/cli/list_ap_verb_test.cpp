// ferrolund-cli list-ap.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/archives/zip_fixture.h"
#include "core/sample/sample_fixture.h"
#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ferrolund::cli {
namespace {

namespace fs = std::filesystem;

using testing::Cli;
using testing::CliRun;

std::string Loose(const std::string& relative) {
    return sample::ReadBytes(sample::OnDisk(sample::SampleRoot(), "Assets\\Ostvale\\NorthernLines\\" + relative));
}

TEST(ListApVerb, ArchivesEntriesAndRows) {
    testing::TempFolder app;
    app.write("IndexFiles/index.csv", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\nP,Q,a,A,Yes,,,41\r\n");
    testing::TempFolder game;
    testing::MakeZip(game.path() / "Assets/Ostvale/Z\xC3\xBCge/Z\xC3\xBCge.ap",
                     {{"RailVehicles/Diesel/Class58/Engine/Class58.bin", Loose("RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin")},
                      {"RailVehicles/Bogies/TwoAxle.bin", Loose("RailVehicles\\Bogies\\TwoAxle.bin")},
                      {"RailVehicles/Diesel/Class58/class58.GeoPcDx", "geometry"}});
    game.write("Assets/Ostvale/Broken/Broken.ap", "not a zip");
    const std::string zuege = game.system() + "\\Assets\\Ostvale\\Z\xC3\xBCge\\Z\xC3\xBCge.ap";
    struct Case {
        const char* what;
        std::vector<std::string> args;
        int code;
        std::string out;
        std::string errHolds;
    };
    const Case cases[] = {
        {"the default mask", {"list-ap", game.system()}, 0,
         zuege + "\n\tRailVehicles\\Diesel\\Class58\\class58.GeoPcDx\n", "Broken.ap"},
        {"every entry of vehicles", {"list-ap", game.system(), "--filter", "*", "--rolling-stock"}, 0,
         zuege + "\n\tRailVehicles\\Diesel\\Class58\\Engine\\Class58.bin\n", "Broken.ap"},
        {"rows, numbered on from the index", {"list-ap", game.system(), "--rows"}, 0,
         "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\n"
         "Ostvale,Z\xC3\xBCge,RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin,Ostvale Class 58 Diesel,Yes,eDiesel,EngineBlueprint,42\n"
         "Ostvale,Z\xC3\xBCge,RailVehicles\\Bogies\\TwoAxle.bin,Two-axle bogie,No,,BogieBlueprint,43\n",
         "Broken.ap"},
        {"nothing readable", {"list-ap", game.system() + "\\Assets\\Ostvale\\Broken"}, 1, "", "Broken.ap"},
        {"no archives", {"list-ap", app.system()}, 1, "", "no .ap files under"},
        {"an unknown option", {"list-ap", game.system(), "--all"}, 2, "", "list-ap [FOLDER]"},
    };
    for (const auto& c : cases) {
        const CliRun run = Cli(c.args, app.system());
        EXPECT_EQ(run.code, c.code) << c.what << "\n" << run.err;
        EXPECT_EQ(run.out, c.out) << c.what;
        EXPECT_NE(run.err.find(c.errHolds), std::string::npos) << c.what << "\n" << run.err;
    }
}

TEST(ListApVerb, TheSampleInstallation) {
    testing::TempFolder app;
    const CliRun run = Cli({"--game-root", sample::SampleRoot().string(), "list-ap", "--filter", "*"}, app.system());
    ASSERT_EQ(run.code, 0) << run.err;
    for (const auto& line : sample::ManifestLines(sample::SampleRoot())) {
        if (line.fields.size() < 3 || line.fields[0] != "member") continue;
        std::string member = line.fields[2];
        for (char& c : member)
            if (c == '/') c = '\\';
        EXPECT_NE(run.out.find("\t" + member + "\n"), std::string::npos) << member;
    }
    EXPECT_EQ(run.err, "");
}

}  // namespace
}  // namespace ferrolund::cli
