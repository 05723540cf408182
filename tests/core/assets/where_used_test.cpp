#include "assets/where_used.h"

#include <gtest/gtest.h>

#include <array>

#include "asset_check_fixture.h"

namespace ferrolund::assets::checks {
namespace {

std::string Properties(const std::string& name) {
    return "<cScenarioProperties>\r\n" + Text("DevString", "guid") + "<DisplayName>\r\n" + Text("English", name) +
           "</DisplayName>\r\n</cScenarioProperties>\r\n";
}

std::string Consist(const std::vector<std::string>& ids) {
    std::string body = "<cConsistBlueprint>\r\n<Name>\r\n" + Text("English", "Coal train") + "</Name>\r\n";
    for (const auto& id : ids) body += "<cConsistEntry>\r\n" + Id("K", "P", id) + "</cConsistEntry>\r\n";
    return body + "</cConsistBlueprint>\r\n";
}

struct Used : Installation {
    Used() {
        const std::string scenarios = "game/Content/Routes/R1/Scenarios/";
        root.write(scenarios + "S1/ScenarioProperties.xml", Properties("Morning run"));
        root.write(scenarios + "S2/ScenarioProperties.xml", Properties("Br\xC3\xBC" "cke"));
        root.write(scenarios + "S3/ScenarioProperties.xml", Properties("Empty one"));
        std::string bin;
        const std::string scenario = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet>\r\n<cConsist>\r\n" +
                                     Id("K", "P", "Wagons\\HOPPER.XML") + Id("K", "P", "Loco\\Loco.xml") +
                                     "</cConsist>\r\n</cRecordSet>\r\n";
        EXPECT_FALSE(serz::XmlToBinary(scenario, bin));
        root.write(scenarios + "S1/Scenario.bin", bin);
        // A scenario left as loose XML.
        root.write(scenarios + "S2/Scenario.xml", "<cConsist>\r\n" + Id("k", "p", "wagons\\hopper.bin") + "</cConsist>\r\n");
        binary("K/P/PreLoad/Coal.bin", Consist({"Wagons\\Hopper.xml", "Loco\\Other.xml"}));
        binary("L/Q/PreLoad/Other.bin", Consist({"Loco\\Other.xml"}));
    }
};

TEST(WhereIsItUsed, ScenariosAndPreloadConsistsByAsset) {
    Used u;
    const std::vector<AssetRow> rows{Row("K", "P", "Wagons\\Hopper.bin"), Row("K", "P", "Loco\\Nowhere.bin"), Row("K", "P", "Loco\\Loco.bin")};
    const WhereUsedOutcome outcome = WhereIsItUsed(u.ctx, rows);
    EXPECT_EQ(outcome.scenariosRead, 2u);  // the third has no Scenario.bin nor Scenario.xml
    EXPECT_EQ(outcome.consistsRead, 2u);
    EXPECT_EQ(outcome.uses, 4u);
    EXPECT_EQ(Lines(outcome.report),
              (std::vector<std::string>{
                  "Where is it used? K\\P\\Wagons\\Hopper.bin",
                  "  Route: R1 - Scenario: Br\xFC" "cke (S2)",  // the name in the screen form of the scenario list
                  "  Route: R1 - Scenario: Morning run (S1)",
                  "  PreLoad consist: Coal train (" + u.asset("K\\P\\PreLoad\\Coal.bin") + ")",
                  "",
                  "Where is it used? K\\P\\Loco\\Nowhere.bin",
                  "  Not used in any scenario or PreLoad consist",
                  "",
                  "Where is it used? K\\P\\Loco\\Loco.bin",
                  "  Route: R1 - Scenario: Morning run (S1)",
                  "",
              }));
    EXPECT_FALSE(outcome.aborted);
}

TEST(WhereIsItUsed, RouteNamesFromTheIndexAndTheAbort) {
    Used u;
    u.ctx.routeIndex.routeName = {"Northern Line"};
    u.ctx.routeIndex.routeFolder = {"R1"};
    u.ctx.routeIndex.routeSlot = {"1"};
    const std::vector<AssetRow> rows{Row("K", "P", "Loco\\Loco.bin")};
    EXPECT_NE(WhereIsItUsed(u.ctx, rows).report.find("Route: Northern Line - Scenario: Morning run (S1)"), std::string::npos);
    const auto before = Snapshot(u.root.path());
    u.ctx.abortFlag = true;
    const WhereUsedOutcome stopped = WhereIsItUsed(u.ctx, rows);
    EXPECT_TRUE(stopped.aborted);
    EXPECT_EQ(stopped.scenariosRead, 0u);
    EXPECT_NE(stopped.report.find("stopped"), std::string::npos);
    EXPECT_EQ(Snapshot(u.root.path()), before);
}

TEST(ReferenceKey, CaseAccentsAndEnding) {
    struct Case { std::array<std::string, 3> a, b; bool same; };
    const Case cases[] = {
        {{"K", "P", "a\\B.xml"}, {"k", "p", "A\\b.BIN"}, true},
        {{"K", "Caf\xC3\xA9", "x.bin"}, {"K", "CAF\xC3\x89", "x.xml"}, true},
        {{"K", "Caf\xE9", "x.bin"}, {"K", "caf\xC3\xA9", "x.bin"}, true},  // Windows-1252 against UTF-8
        {{"K", "P", "a.bin"}, {"K", "P", "a2.bin"}, false},
        {{"K", "P", "a.bin"}, {"K", "Q", "a.bin"}, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ReferenceKey(c.a[0], c.a[1], c.a[2]) == ReferenceKey(c.b[0], c.b[1], c.b[2]), c.same) << c.a[2];
}

}  // namespace
}  // namespace ferrolund::assets::checks
