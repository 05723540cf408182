#include "scenarios/work_order.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/tools/testdata_file.h"
#include "scenarios/scenario_texts.h"
#include "support/cli_run.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::scenarios {
namespace {

const std::string kProperties =
    "<cScenarioProperties><DisplayName><English>Clay Trip</English></DisplayName>"
    "<Description><English>Shunt the hoods</English></Description><Briefing><English>Go</English></Briefing>"
    "<ScenarioClass d:type=\"cDeltaString\">eStandardScenarioClass</ScenarioClass>"
    "<StartTime d:type=\"sInt32\">45300</StartTime><DurationMins d:type=\"sInt32\">90</DurationMins>"
    "<Season d:type=\"cDeltaString\">SEASON_AUTUMN</Season></cScenarioProperties>";

bool Holds(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::vector<std::string> Header(const std::string& route = "Cornish Clay") {
    return {"Route:- " + route, "Scenario:- Clay Trip", "Description: Shunt the hoods", "Briefing:Go",
            "Start Time: 1235",  "Duration: 90",         "Season: SEASON_AUTUMN",       ""};
}

TEST(WorkOrder, OperationWords) {
    struct Case {
        const char* operation;
        const char* words;
    } cases[] = {{"AddToBack", "Couple to back of train"},     {"addtofront", "Couple to Front of train"},
                 {" DropOffRailVehicle ", "Drop off wagon(s)"}, {"Default", ""},
                 {"Marshall", ""},                             {"", ""}};
    for (const Case& c : cases) EXPECT_EQ(OperationWords(c.operation), c.words) << c.operation;
}

TEST(WorkOrder, TheGameScenarioIsAShuntingJob) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    const std::vector<std::string> lines = WorkOrderLines("Cornish Clay", kProperties, xml);
    ASSERT_GT(lines.size(), 30u);
    const std::vector<std::string> header = Header();
    EXPECT_TRUE(std::equal(header.begin(), header.end(), lines.begin()));
    EXPECT_EQ(lines[8], "Service: 6C58 10:45 Heathfield-St Blazey");
    EXPECT_EQ(lines[9], "Initial Rolling Stock:-");
    EXPECT_EQ(lines[10].rfind("     37053;Config=", 0), 0u) << lines[10];
    EXPECT_EQ(lines[27], "     375120");
    // The first drop-off: where, what and which wagons.
    const auto at = std::find(lines.begin(), lines.end(), "Operation: Drop off wagon(s)");
    ASSERT_NE(at, lines.end());
    ASSERT_LT(at + 3, lines.end());
    EXPECT_EQ(at[-1], "At Location: St Blazey Fowey Main");
    EXPECT_EQ(at[1], "Wagon Numbers:- ");
    EXPECT_EQ(at[2], "     200332");
    EXPECT_EQ(lines[29].rfind("Instruction: Good afternoon, driver.", 0), 0u) << lines[29];
    EXPECT_EQ(lines[30], "At Location: Saltash Platform 1");
    EXPECT_TRUE(Holds(lines, "Pick Up"));
    EXPECT_EQ(lines.back(), "Final Destination: St Blazey Fowey Fuel Line ");
}

TEST(WorkOrder, ScenariosWithoutAShuntingJobGiveTheHeaderOrTheNotice) {
    FERROLUND_READ_TESTDATA(small, "serz/scenario-small.xml");
    FERROLUND_READ_TESTDATA(game, "serz/scenario-game.xml");
    std::string freeRoam = kProperties;
    freeRoam.replace(freeRoam.find("eStandard"), 9, "eFreeRoam");
    std::string timetable = kProperties;
    timetable.replace(timetable.find("Go</English>"), 2, "Keep the Timetable");
    std::vector<std::string> notice = Header();
    notice.push_back("There are no wagon numbers in this scenario, so no");
    notice.push_back("Work Order can be constructed.");
    std::string undriven = game;
    for (std::size_t at = 0; (at = undriven.find(">1</PlayerDriver>", at)) != std::string::npos;)
        undriven.replace(at, 2, ">0");
    struct Case {
        const char* what;
        std::string properties;
        std::string scenario;
        std::vector<std::string> lines;
    } cases[] = {
        {"no wagon numbers", kProperties, small, notice},
        {"no driven consist", kProperties, undriven, notice},
        {"free roam", freeRoam, game, Header()},
        {"timetable", timetable, game, {}},
        {"an empty scenario", kProperties, "", notice},
    };
    for (const Case& c : cases) {
        const std::vector<std::string> lines = WorkOrderLines("Cornish Clay", c.properties, c.scenario);
        if (c.lines.empty()) {
            EXPECT_EQ(lines.size(), Header().size()) << c.what;
        } else {
            EXPECT_EQ(lines, c.lines) << c.what;
        }
    }
}

TEST(WorkOrder, LoadedFromTheScenarioFolder) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-game.bin");
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ctx.prefs.gameRoot = game.system();
    ctx.appRoot = game.system();
    ctx.ui = &ui;
    ctx.routeIndex.routeName = {"Cornish Clay"};
    ctx.routeIndex.routeFolder = {"Route-\xC3\xA9"};
    ctx.routeIndex.routeSlot = {"1"};
    game.write("Content/Routes/Route-\xC3\xA9/Scenarios/Sc\xC3\xBC/ScenarioProperties.xml", kProperties);
    game.write("Content/Routes/Route-\xC3\xA9/Scenarios/Sc\xC3\xBC/Scenario.bin", binary);
    game.write("Content/Routes/Route-\xC3\xA9/Scenarios/Cut/ScenarioProperties.xml", kProperties);
    game.write("Content/Routes/Route-\xC3\xA9/Scenarios/Cut/Scenario.bin", binary.substr(0, 900));

    std::vector<std::string> lines;
    ASSERT_FALSE(LoadWorkOrder(ctx, "Route-\xC3\xA9", "Sc\xC3\xBC", lines));
    EXPECT_EQ(lines.front(), "Route:- Cornish Clay");
    EXPECT_TRUE(Holds(lines, "Operation: Drop off wagon(s)"));

    struct Bad {
        const char* scenario;
        const char* named;
    } bad[] = {{"Gone", "Gone"}, {"Cut", "Scenario.bin"}};
    for (const Bad& b : bad) {
        lines = {"left over"};
        const base::Status status = LoadWorkOrder(ctx, "Route-\xC3\xA9", b.scenario, lines);
        ASSERT_TRUE(status) << b.scenario;
        EXPECT_NE(status->description.find(b.named), std::string::npos) << status->description;
        EXPECT_TRUE(lines.empty());
    }
}

TEST(ScenarioDetailsVerb, ReportAndWorkOrderOnTheCommandLine) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-game.bin");
    testing::TempFolder app;
    testing::TempFolder game;
    game.write("Content/Routes/Route-\xC3\xA9/RouteProperties.xml", "<DisplayName><English>Cornish Clay</English>");
    game.write("Content/Routes/Route-\xC3\xA9/Scenarios/Sc\xC3\xBC/ScenarioProperties.xml", kProperties);
    game.write("Content/Routes/Route-\xC3\xA9/Scenarios/Sc\xC3\xBC/Scenario.bin", binary);
    const std::string root = game.system();
    struct Case {
        const char* what;
        std::vector<std::string> args;
        int code;
        std::string outHolds;
        std::string errHolds;
    } cases[] = {
        {"the report", {"scenario-details", "Route-\xC3\xA9", "Sc\xC3\xBC", "--game-root", root}, 0,
         "Service Name\t6C58 10:45 Heathfield-St Blazey\nService Class\tStandard Freight\n", ""},
        {"with loose consists", {"scenario-details", "Route-\xC3\xA9", "Sc\xC3\xBC", "--loose", "--game-root", root},
         0, "Service Name\tLoose Consist\n", ""},
        {"the work order", {"scenario-details", "Route-\xC3\xA9", "Sc\xC3\xBC", "--work-order", "--game-root", root},
         0, "Operation: Drop off wagon(s)\nWagon Numbers:- \n     200332\n", ""},
        {"the route named by its properties", {"scenario-details", "Route-\xC3\xA9", "Sc\xC3\xBC", "--work-order",
         "--game-root", root}, 0, "Route:- Cornish Clay\n", ""},
        {"no such scenario", {"scenario-details", "Route-\xC3\xA9", "Nope", "--game-root", root}, 1, "", "Nope"},
        {"no such route", {"scenario-details", "Nowhere", "Sc\xC3\xBC", "--game-root", root}, 1, "", "Nowhere"},
        {"a scenario missing", {"scenario-details", "Route-\xC3\xA9", "--game-root", root}, 2, "", "needs a route"},
        {"an unknown option", {"scenario-details", "Route-\xC3\xA9", "Sc\xC3\xBC", "--all", "--game-root", root}, 2,
         "", "scenario-details ROUTE"},
    };
    for (const Case& c : cases) {
        const testing::CliRun run = testing::Cli(c.args, app.system());
        EXPECT_EQ(run.code, c.code) << c.what << "\n" << run.err;
        EXPECT_NE(run.out.find(c.outHolds), std::string::npos) << c.what << "\n" << run.out.substr(0, 400);
        EXPECT_NE(run.err.find(c.errHolds), std::string::npos) << c.what << "\n" << run.err;
    }
}

}  // namespace
}  // namespace ferrolund::scenarios
