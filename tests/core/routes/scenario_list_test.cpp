#include "routes/scenario_list.h"

#include <gtest/gtest.h>

#include <map>

#include "core/sample/sample_fixture.h"
#include "support/temp_folder.h"

namespace ferrolund::routes {
namespace {

std::string Properties(const std::string& body) {
    return "<cScenarioProperties>\r\n<ID><cGUID><DevString d:type=\"cDeltaString\">guid-1</DevString></cGUID></ID>\r\n"
           "<DisplayName><Localisation-cUserLocalisedString>\r\n" +
           body + "</Localisation-cUserLocalisedString></DisplayName>\r\n";
}

TEST(ScenarioClass, ByClassAndWorkshop) {
    struct Case {
        std::string text;
        ScenarioKind kind;
    };
    const Case cases[] = {
        {"<ScenarioClass d:type=\"cDeltaString\">eTemplateScenarioClass</ScenarioClass>", ScenarioKind::QuickDrive},
        {"<ScenarioClass d:type=\"cDeltaString\">eFreeRoamScenarioClass</ScenarioClass>", ScenarioKind::FreeRoam},
        {"<ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass>", ScenarioKind::Career},
        {"<ScenarioClass d:type=\"cDeltaString\">eTimetableScenarioClass</ScenarioClass>", ScenarioKind::Timetable},
        {"<ScenarioClass d:type=\"cDeltaString\">eStandardScenarioClass</ScenarioClass><WorkshopID>0</WorkshopID>",
         ScenarioKind::Standard},
        {"<ScenarioClass d:type=\"cDeltaString\">eStandardScenarioClass</ScenarioClass><WorkshopID></WorkshopID>",
         ScenarioKind::Standard},
        {"<ScenarioClass d:type=\"cDeltaString\">eStandardScenarioClass</ScenarioClass><WorkshopID>123</WorkshopID>",
         ScenarioKind::Workshop},
        {"<ScenarioClass d:type=\"cDeltaString\">estandardscenarioclass</ScenarioClass>", ScenarioKind::Other},
        {"no class", ScenarioKind::Other},
    };
    for (const Case& k : cases) EXPECT_EQ(ClassOf(k.text), k.kind) << k.text;
    EXPECT_EQ(LegendOf(ScenarioKind::Workshop)->rgb, 0x00FFFFu);
    EXPECT_STREQ(LegendOf(ScenarioKind::Timetable)->word, "Timetabled");
    EXPECT_EQ(LegendOf(ScenarioKind::Other), nullptr);
}

TEST(ScenarioListing, NamesNotesAndSkippedFolders) {
    testing::TempFolder root;
    const std::string game = root.system() + "/game";
    EXPECT_EQ(ListScenarios(game, "r1").note, "No Scenarios folder found");
    root.write("game/Content/Routes/r1/Scenarios/a/Scenario.bin", "x");
    EXPECT_EQ(ListScenarios(game, "r1").note, "No Scenarios found, could be in .ap file");

    root.write("game/Content/Routes/r1/Scenarios/b/ScenarioProperties.xml",
               Properties("<English></English><French>\tCoal, &amp; more</French>"));
    root.write("game/Content/Routes/r1/Scenarios/c/scenarioproperties.xml",
               Properties("<English>Alpha</English>") +
                   "<ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass>");
    root.write("game/Content/Routes/r1/Scenarios/d/ScenarioProperties.xml", "<English>No dev string</English>");
    root.write("game/Content/Routes/r1/Scenarios/e/ScenarioProperties.xml", Properties("<English></English>"));
    const ScenarioListing listing = ListScenarios(game, "r1");
    ASSERT_EQ(listing.rows.size(), 2u);
    EXPECT_EQ(listing.rows[0].name, "Alpha");
    EXPECT_EQ(listing.rows[0].kind, ScenarioKind::Career);
    EXPECT_EQ(listing.rows[1].name, "Coal- & more");
    EXPECT_EQ(listing.rows[1].devString, "guid-1");
    EXPECT_EQ(listing.rows[1].folder, "b");
    EXPECT_TRUE(listing.note.empty());
}

TEST(ScenarioListing, TheSampleRoutesScenariosAndClassTable) {
    const std::string game = sample::SampleRoot().string();
    const ScenarioListing listing = ListScenarios(game, "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10");
    std::map<std::string, std::string> classes;
    for (const auto& line : sample::ManifestLines(sample::SampleRoot()))
        if (line.fields[0] == "scenario" && line.fields[1] == "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10")
            classes[line.fields[2]] = line.fields[3];
    ASSERT_FALSE(listing.rows.empty());
    for (const ScenarioRow& row : listing.rows) {
        ASSERT_TRUE(classes.count(row.folder)) << row.folder;
        const ScenarioKind kind = row.kind;
        const std::string& expected = classes[row.folder];
        const std::map<std::string, ScenarioKind> kinds{{"eCareerScenarioClass", ScenarioKind::Career},
                                                        {"eTimetableScenarioClass", ScenarioKind::Timetable},
                                                        {"eFreeRoamScenarioClass", ScenarioKind::FreeRoam},
                                                        {"eTemplateScenarioClass", ScenarioKind::QuickDrive}};
        if (kinds.count(expected)) {
            EXPECT_EQ(kind, kinds.at(expected)) << row.name;
        }
        EXPECT_EQ(row.name.find(','), std::string::npos);
    }

    RouteIndex index;
    index.routeName = {std::string(60, 'N'), "Packed"};
    index.routeFolder = {"3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10", "d7e2b6a0-51c9-4f8d-a6e3-0b4c8f2917de"};
    index.routeSlot = {"0", "1"};
    const std::string table = ClassTable(game, index);
    EXPECT_TRUE(table.starts_with("Route Name" + std::string(40, ' ') + "Q.Drive\tCareer\tStandard\tFree Roam\tTimetabled\r\n"));
    EXPECT_NE(table.find("\r\n" + std::string(50, 'N') + "   "), std::string::npos);
    EXPECT_NE(table.find("Packed" + std::string(44, ' ') + "   0\t   0\t   0\t   0\t   0\r\n"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::routes
