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
