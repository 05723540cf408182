#include "screens/routes/route_listing.h"

#include <gtest/gtest.h>

#include "route_screen_fixture.h"

namespace ferrolund::screens {
namespace {

std::string Class(const std::string& value) {
    return "<ScenarioClass d:type=\"cDeltaString\">" + value + "</ScenarioClass>";
}

TEST(PrintedRouteList, RoutesScenariosByNameAndTheTotal) {
    testing::RouteScreenFixture f;
    f.scenario("r1", "f-b", "Beta", Class("eCareerScenarioClass"));
    f.scenario("r1", "f-a", "Alpha", Class("eTemplateScenarioClass"));
    f.scenario("r1", "f-c", "Gamma", Class("eSomethingElse"));  // keeps the word above it
    f.scenario("r1", "f-d", std::string(69, 'L'), Class("eStandardScenarioClass") + "<WorkshopID>0</WorkshopID>");
    f.scenario("r1", "f-e", std::string(80, 'M'), Class("eStandardScenarioClass") + "<WorkshopID>5</WorkshopID>");
    f.scenario("r3", "f-t", "Timed", Class("eTimetableScenarioClass"));
    f.scenario("r3", "f-r", "Roam", Class("eFreeRoamScenarioClass"));
    f.game.write("Content/Routes/r4/Scenarios/empty/readme.txt", "x");
    routes::RouteIndex index;
    for (const auto& [name, folder] : {std::pair{"First Line", "r1"}, std::pair{"Packed Line", "r2"},
                                       std::pair{"Third Line", "r3"}, std::pair{"Bare Line", "r4"}}) {
        index.routeName.push_back(name);
        index.routeFolder.push_back(folder);
        index.routeSlot.push_back("1");
    }
    const std::string game = f.game.system();
    const std::string expected =
        "First Line - r1\r\n"
        "\tAlpha" + std::string(65, ' ') + "f-a  Quick Drive\r\n"
        "\tBeta" + std::string(66, ' ') + "f-b  Career\r\n"
        "\tGamma" + std::string(65, ' ') + "f-c  Career\r\n"
        "\t" + std::string(69, 'L') + "  f-d  Standard\r\n"
        "\t" + std::string(80, 'M') + "  f-e  Workshop\r\n" +
        game + "\\content\\Routes\\r2\\Scenarios - can't be found\r\n"
        "Third Line - r3\r\n"
        "\tRoam" + std::string(66, ' ') + "f-r  Free Roam\r\n"
        "\tTimed" + std::string(65, ' ') + "f-t  Timetabled\r\n"
        "Bare Line - r4\r\n"
        "\r\nTotal Scenarios = 7\r\n";
    EXPECT_EQ(PrintedRouteList(game, index), expected);
}

}  // namespace
}  // namespace ferrolund::screens
