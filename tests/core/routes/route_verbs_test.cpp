// The route verbs of ferrolund-cli.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "cli/cli.h"
#include "support/cli_run.h"
#include "core/sample/sample_fixture.h"
#include "support/temp_folder.h"

namespace ferrolund::cli {
namespace {

namespace fs = std::filesystem;

using testing::Cli;
using testing::CliRun;

TEST(RouteVerbs, CheckRouteByNamePrintsEachMissingReferenceAndSavesTheLists) {
    testing::TempFolder app;
    const std::string game = sample::SampleRoot().string();
    const CliRun index = Cli({"--game-root", game, "index-routes"}, app.system());
    ASSERT_EQ(index.code, 0) << index.err;
    EXPECT_NE(index.out.find("Ostvale Valley- North Main Line\t3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10\n"),
              std::string::npos)
        << index.out;

    const fs::path csv = app.path() / "lists";
    fs::create_directories(csv);
    const CliRun check =
        Cli({"--game-root", game, "check-route", "Ostvale Valley- North Main Line", "--csv", csv.string()}, app.system());
    EXPECT_EQ(check.code, 3) << check.err;
    std::istringstream lines(check.out);
    std::string line;
    int missing = 0;
    while (std::getline(lines, line)) {
        if (line.rfind("Assets\\", 0) != 0) continue;
        ++missing;
        EXPECT_NE(line.find(" Item) on tile "), std::string::npos) << line;
    }
    EXPECT_GT(missing, 0);
    EXPECT_NE(check.out.find(std::to_string(missing) + " missing references\n"), std::string::npos) << check.out;
    EXPECT_TRUE(fs::exists(csv / "Ostvale Valley- North Main Line_Assets.csv"));
    EXPECT_TRUE(fs::exists(csv / "Ostvale Valley- North Main Line_Missing.csv"));
}

// The second route of the sample uses scenery of creators who write their names with
// accents (č, é, ü, ß, U+FFE9), installed under those names, and names one of them in
// another case. All of it is found; taken away, each shows as the person reads it.
TEST(RouteVerbs, AccentedAssetsAreFoundAndShownAsWritten) {
    testing::TempFolder app;
    testing::TempFolder game;
    fs::copy(sample::SampleRoot(), game.path(), fs::copy_options::recursive);
    const std::vector<std::string> check = {"check-route", "Brackenridge & le Sommet", "--game-root", game.system(),
                                            "--no"};
    const CliRun installed = Cli(check, app.system());
    EXPECT_EQ(installed.code, 0) << installed.out << installed.err;
    EXPECT_NE(installed.out.find(", 0 missing references\n"), std::string::npos) << installed.out;

    fs::remove_all(game.path() / "Assets" / "Caf\xC3\xA9Rail");
    fs::remove_all(game.path() / "Assets" / "\xC4\x8C" "esk\xC3\xA9" "Dr\xC3\xA1hy");
    const fs::path csv = app.path() / "lists";
    fs::create_directories(csv);
    std::vector<std::string> withLists = check;
    withLists.insert(withLists.end(), {"--csv", csv.string()});
    const CliRun missing = Cli(withLists, app.system());
    EXPECT_EQ(missing.code, 3) << missing.err;
    const std::string quai = "Assets\\Caf\xC3\xA9Rail\\Gare\\Scenery\\Quai\xEF\xBF\xA9.bin\t(Scenery Item)";
    const std::string budova = "Assets\\\xC4\x8C" "esk\xC3\xA9" "Dr\xC3\xA1hy\\N\xC3\xA1" "dra\xC5\xBE\xC3\xAD\\Scenery\\Budova.bin";
    const std::string budovaOtherCase = "Assets\\\xC4\x8D" "ESK\xC3\x89" "dR\xC3\x81HY\\N\xC3\x81" "DRA\xC5\xBD\xC3\x8D\\scenery\\BUDOVA.bin";
    for (const std::string& line : {quai, budova, budovaOtherCase}) {
        EXPECT_NE(missing.out.find(line), std::string::npos) << line << "\n" << missing.out;
    }
    EXPECT_EQ(missing.out.find("M\xC3\xBCller"), std::string::npos) << "still installed: " << missing.out;
    EXPECT_EQ(missing.out.find("\xC3\x83"), std::string::npos) << "read twice: " << missing.out;
    const std::string saved = app.read("lists/Brackenridge & le Sommet_Missing.csv");
    EXPECT_NE(saved.find("Quai\xEF\xBF\xA9.bin"), std::string::npos) << saved;
}

TEST(RouteVerbs, MistakesAreToldNotCrashed) {
    testing::TempFolder app;
    const std::string game = sample::SampleRoot().string();
    struct Case {
        std::vector<std::string> args;
        int code;
        std::string inErr;
    };
    const Case cases[] = {
        {{"--game-root", game, "check-route"}, 2, "needs a route"},
        {{"--game-root", game, "check-route", "No Such Route"}, 1, "no route \"No Such Route\""},
        {{"--game-root", game, "check-route", "a", "--bogus"}, 2, "check-route ROUTE"},
        {{"--game-root", game, "index-routes", "extra"}, 2, "takes no arguments"},
    };
    for (const Case& k : cases) {
        const CliRun run = Cli(k.args, app.system());
        EXPECT_EQ(run.code, k.code) << k.args.back();
        EXPECT_NE(run.err.find(k.inErr), std::string::npos) << run.err;
    }
}

}  // namespace
}  // namespace ferrolund::cli
