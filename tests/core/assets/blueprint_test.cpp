#include "assets/blueprint.h"

#include <gtest/gtest.h>

namespace ferrolund::assets {
namespace {

TEST(Blueprint, FileOfATriple) {
    struct Case { BlueprintRef ref; std::string file; };
    const Case cases[] = {
        {{"Kuju", "RailSimulator", "RailVehicles\\Diesel\\Class47.xml"}, "G\\Assets\\Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class47.bin"},
        {{"K", "P", "Scenery\\Hut.XML"}, "G\\Assets\\K\\P\\Scenery\\Hut.bin"},
        {{"K", "P", "Scenery\\Hut.bin"}, "G\\Assets\\K\\P\\Scenery\\Hut.bin"},
    };
    for (const auto& c : cases) EXPECT_EQ(BlueprintFile("G", c.ref), c.file);
}

TEST(Blueprint, SplittingAPath) {
    struct Case { std::string path; bool found; bool invalid; BlueprintRef ref; };
    const Case cases[] = {
        {"C:\\RW\\Assets\\Kuju\\RailSimulator\\Scenery\\Hut.bin", true, false, {"Kuju", "RailSimulator", "Scenery\\Hut.bin"}},
        {"/home/u/RailWorks\\assets\\K\\P\\a\\b.bin", true, false, {"K", "P", "a\\b.bin"}},
        {"C:\\RW\\Content\\Routes\\r1\\Scenery\\t.bin", true, false, {"Routes", "r1", "Scenery\\t.bin"}},
        {"C:\\RW\\Assets\\Kuju", false, true, {}},
        {"C:\\RW\\Other\\x.bin", false, false, {}},
    };
    for (const auto& c : cases) {
        bool invalid = false;
        const auto ref = SplitAssetPath(c.path, &invalid);
        EXPECT_EQ(ref.has_value(), c.found) << c.path;
        EXPECT_EQ(invalid, c.invalid) << c.path;
        if (ref) {
            EXPECT_EQ(ref->provider, c.ref.provider) << c.path;
            EXPECT_EQ(ref->product, c.ref.product) << c.path;
            EXPECT_EQ(ref->blueprintId, c.ref.blueprintId) << c.path;
        }
    }
    EXPECT_EQ(InvalidPathMessage("C:\\RW\\Assets\\Kuju"), "C:\\RW\\Assets\\Kuju is invalid and contains errors");
    EXPECT_EQ(JoinRowPath(" Kuju ", "RS", " a\\b.xml"), "Kuju\\RS\\a\\b.xml");
    EXPECT_EQ(JoinRowPath("", " ", ""), kEmptyRowPath);
}

TEST(Blueprint, Classification) {
    struct Case { std::string xml; std::string category; std::string inScene; };
    const Case cases[] = {
        {"<Category d:type=\"cDeltaString\">eScenery</Category><ValidInScenarios>eTrue</ValidInScenarios>", "Scenery", "Yes"},
        {"<Category>Scenery</Category>", "Scenery", "No"},
        {"<Category>elevators</Category><ValidInScenarios>eFalse</ValidInScenarios>", "levators", "No"},
        {"<EngineType>Diesel</EngineType><ValidInScenarios>eFalse</ValidInScenarios>", "Diesel", "Yes"},
        {"<cWagonBlueprint d:id=\"1\"><Name>Passenger coach</Name>", "Passenger", "Yes"},
        {"<cWagonBlueprint d:id=\"1\"><Name>Box van</Name>", "Freight Wagon", "Yes"},
        {"<cTenderBlueprint d:id=\"1\">", "Tender", "Yes"},
        {"<cTrackSectionBlueprint d:id=\"1\">", "Track Section", "No"},
        {"<cRoadSectionBlueprint d:id=\"1\">", "Road Section", "No"},
        {"<cLoftSectionBlueprint d:id=\"1\">", "Road Section", "No"},
        {"<cSceneryBlueprint><ValidInScenarios>eTrue</ValidInScenarios>", "", "Yes"},
        {"<cSceneryBlueprint><ValidInScenarios>eMaybe</ValidInScenarios>", "", "No"},
        {"<cSceneryBlueprint>", "", "No"},
    };
    for (const auto& c : cases) {
        const Classification got = Classify(c.xml);
        EXPECT_EQ(got.category, c.category) << c.xml;
        EXPECT_EQ(got.inScene, c.inScene) << c.xml;
    }
}

TEST(Blueprint, KindsAndClassWord) {
    EXPECT_TRUE(IsRollingStock("<RailVehicleComponent>"));
    EXPECT_TRUE(IsRollingStock("<cReskinBlueprint>"));
    EXPECT_FALSE(IsRollingStock("<cSceneryBlueprint>"));
    EXPECT_TRUE(IsReskin("<cReskinBlueprint>"));
    EXPECT_EQ(ClassWord("<Blueprint>\r\n\t<cEngineBlueprint d:id=\"12\">"), "EngineBlueprint d:id=\"12\"");
    EXPECT_EQ(ClassWord("<Blueprint><cWagonBlueprint>"), "WagonBlueprint");
    EXPECT_EQ(ClassWord("<NoBlueprint/>"), "");
}

TEST(Blueprint, MarkersAndParentSteps) {
    struct Marker { std::string in; std::string out; };
    for (const Marker& m : {Marker{"Kuju\\RS\\Geo\\[00]wheel", "Kuju\\RS\\Geo\\wheel"},
                            Marker{"Kuju\\RS\\Geo\\wh[01]eel", "Kuju\\RS\\Geo\\wheel"},
                            Marker{"Kuju\\[x]RS\\wheel", "Kuju\\[x]RS\\wheel"},  // only the last element
                            Marker{"plain", "plain"}, Marker{"open[only", "open[only"}}) {
        EXPECT_EQ(CutMarker(m.in), m.out) << m.in;
    }
    struct Steps { const char* value; int n; };
    for (const Steps& s : {Steps{"..\\..\\..\\..\\..\\..\\x", 5}, Steps{"..\\..\\x", 2}, Steps{"..\\x", 1},
                           Steps{"..x", 0}, Steps{"Textures\\x", 0}}) {
        EXPECT_EQ(CountParentSteps(s.value), s.n) << s.value;
    }
}

TEST(Blueprint, DependencyVocabulary) {
    const std::string xml =
        "<cEngineBlueprint>"
        "<GeometryID>Kuju\\RS\\RailVehicles\\Loco\\[01]Body</GeometryID>"
        "<CollisionGeometryID d:type=\"cDeltaString\">Kuju\\RS\\Coll</CollisionGeometryID>"
        "<AnimSet><AnimationName>Anims\\Doors</AnimationName><AnimationName>Wipers</AnimationName>"
        "<AnimationName></AnimationName><AnimationName>Never</AnimationName></AnimSet>"
        "<NumberingList><CsvFile>Kuju\\RS\\Numbers</CsvFile></NumberingList>"
        "<ScriptComponent><Name>Kuju\\RS\\Script</Name></ScriptComponent>"
        "<SoundComponent><ProxyName>Kuju\\RS\\Audio\\Engine</ProxyName></SoundComponent>"
        "<BogeyBlueprint><Provider>Kuju</Provider><Product>RS</Product><BlueprintID>Bogies\\B.xml</BlueprintID></BogeyBlueprint>"
        "<Children><ChildName d:type=\"x\">a</ChildName><Provider>K</Provider><Product>P</Product>"
        "<BlueprintID>Child.xml</BlueprintID></Children>"
        "<CargoBlueprintID><Provider></Provider><Product></Product><BlueprintID>Coal.xml</BlueprintID></CargoBlueprintID>"
        "</cEngineBlueprint>";
    const auto deps = BlueprintDependencies(xml, "G", "G\\Assets\\Kuju\\RS\\RailVehicles\\Loco");
    std::vector<std::string> files;
    for (const auto& d : deps) files.push_back(d.role + ": " + d.file);
    EXPECT_EQ(files, (std::vector<std::string>{
                         "geometry: G\\Assets\\Kuju\\RS\\RailVehicles\\Loco\\Body.GeoPcDx",
                         "collision geometry: G\\Assets\\Kuju\\RS\\Coll.geopcdx",
                         "animation: G\\Assets\\Kuju\\RS\\RailVehicles\\Loco\\Doors.ban",
                         "animation: G\\Assets\\Kuju\\RS\\RailVehicles\\Loco\\Wipers.ban",
                         "numbering list: G\\Assets\\Kuju\\RS\\Numbers.dcsv",
                         "script: G\\Assets\\Kuju\\RS\\Script.out",  // no .lua on disk
                         "sound proxy: G\\Assets\\Kuju\\RS\\Audio\\Engine.proxyxml",
                         "linked blueprint: G\\Assets\\Kuju\\RS\\Bogies\\B.bin",
                         "child: G\\Assets\\K\\P\\Child.bin",
                     }));  // the cargo has no provider: no file
}

}  // namespace
}  // namespace ferrolund::assets
