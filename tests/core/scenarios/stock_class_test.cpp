#include "scenarios/stock_class.h"

#include <gtest/gtest.h>

#include "core/sample/sample_fixture.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::scenarios {
namespace {

struct SampleContext {
    testing::ScriptedUi ui;
    testing::TempFolder own;
    app::AppContext ctx;
    SampleContext() {
        ctx.prefs.gameRoot = sample::SampleRoot().string();
        ctx.appRoot = own.system();
        ctx.ui = &ui;
    }
    std::string asset(const std::string& below) const { return ctx.gameRoot() + "\\Assets\\" + below; }
};

TEST(StockClass, SampleBlueprintsAreToldApart) {
    SampleContext s;
    struct Case {
        const char* path;
        bool loco, wagon, tender;
        const char* name;
        const char* engineType;
    } cases[] = {
        {"Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin", true, false, false,
         "Ostvale Class 58 Diesel", "eDiesel"},
        {"Hartwell\\SteamHeritage\\RailVehicles\\Steam\\Merlin\\Engine\\merlin.XML", true, false, false,
         "Hartwell Merlin", "eSteam"},
        {"Ostvale\\NorthernLines\\RailVehicles\\Freight\\CoalHopper\\CoalHopper.bin", false, true, false, "Coal hopper",
         ""},
        {"Hartwell\\SteamHeritage\\RailVehicles\\Steam\\Merlin\\Tender\\MerlinTender.bin", false, false, true,
         "Merlin tender", ""},
        // A reskin holds no engine component: it is no locomotive by these tests.
        {"Hartwell\\SteamHeritage\\RailVehicles\\Steam\\Merlin\\Reskins\\MerlinGreen.bin", false, false, false, "", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        bool isLoco = true, isWagon = true, isTender = true;
        std::string locoName, wagonName, tenderName, engineType;
        EXPECT_FALSE(IsItALoco(s.ctx, s.asset(c.path), isLoco, locoName, engineType));
        EXPECT_FALSE(IsItAWagon(s.ctx, s.asset(c.path), isWagon, wagonName));
        EXPECT_FALSE(IsItATender(s.ctx, s.asset(c.path), isTender, tenderName));
        EXPECT_EQ(isLoco, c.loco);
        EXPECT_EQ(isWagon, c.wagon);
        EXPECT_EQ(isTender, c.tender);
        EXPECT_EQ(locoName + wagonName + tenderName, c.name);
        EXPECT_EQ(engineType, c.engineType);
    }
}

TEST(StockClass, AReskinTakesTheEngineTypeOfItsBase) {
    SampleContext s;
    const std::string reskin =
        "<cBlueprintLoader><cEngineBlueprint><Name d:type=\"cDeltaString\">Grün</Name>"
        "<ReskinAssetBpId><iBlueprintLibrary-cAbsoluteBlueprintID><BlueprintSetID><iBlueprintLibrary-cBlueprintSetID>"
        "<Provider d:type=\"cDeltaString\">Hartwell</Provider><Product d:type=\"cDeltaString\">SteamHeritage</Product>"
        "</iBlueprintLibrary-cBlueprintSetID></BlueprintSetID><BlueprintID d:type=\"cDeltaString\">"
        "RailVehicles\\Steam\\Merlin\\Engine\\Merlin.xml</BlueprintID></iBlueprintLibrary-cAbsoluteBlueprintID>"
        "</ReskinAssetBpId><Category>&gt;eLocomotoves&lt;</Category><X>&gt;</X><EngineType>eDiesel</EngineType>"
        "</cEngineBlueprint></cBlueprintLoader>";
    // The literal ">eLocomotoves<" decides; the own EngineType is passed over for the base's.
    std::string text = reskin;
    text.replace(text.find("&gt;eLocomotoves&lt;"), 20, ">eLocomotoves<");
    s.own.write("Grün/Reskin.xml", text);
    bool isLoco = false;
    std::string name, engineType;
    EXPECT_FALSE(IsItALoco(s.ctx, s.own.system() + "\\Grün\\reskin.xml", isLoco, name, engineType));
    EXPECT_TRUE(isLoco);
    EXPECT_EQ(name, "Grün");
    EXPECT_EQ(engineType, "eSteam");

    // A base that is not installed is an error value; the flag still says what was found.
    text.replace(text.find("Merlin.xml"), 10, "Gone.xml");
    s.own.write("Grün/Orphan.xml", text);
    const base::Status missing = IsItALoco(s.ctx, s.own.system() + "\\Grün\\Orphan.xml", isLoco, name, engineType);
    ASSERT_TRUE(missing);
    EXPECT_NE(missing->description.find("Gone.bin"), std::string::npos);
}

TEST(StockClass, BadBlueprintsGiveAnErrorAndNoFlag) {
    SampleContext s;
    s.own.write("cut.bin", std::string("SERZ\0\0\x01\0\xff\x41", 10));
    struct Case {
        std::string path;
    } cases[] = {{s.own.system() + "\\missing.bin"}, {s.own.system() + "\\cut.bin"}};
    for (const Case& c : cases) {
        bool flag = true;
        std::string name, engineType;
        EXPECT_TRUE(IsItALoco(s.ctx, c.path, flag, name, engineType)) << c.path;
        EXPECT_FALSE(flag);
        flag = true;
        EXPECT_TRUE(IsItAWagon(s.ctx, c.path, flag, name)) << c.path;
        EXPECT_FALSE(flag);
        StockDetails details;
        EXPECT_TRUE(GetStockDetails(s.ctx, c.path, details)) << c.path;
    }
}

TEST(StockClass, NamesFallThroughTheLanguages) {
    struct Case {
        const char* xml;
        const char* language;
        const char* name;
    } cases[] = {
        {"<DisplayName><English>E</English><French>F</French></DisplayName>", "French", "F"},
        {"<DisplayName><English>E</English><French></French></DisplayName>", "French", "E"},
        {"<DisplayName><English></English><German>G</German></DisplayName>", "English", "G"},
        {"<Name d:type=\"cDeltaString\">Plain</Name><DisplayName><English/></DisplayName>", "English", "Plain"},
        {"<cWagonBlueprint/>", "English", "Unnamed"},
    };
    for (const Case& c : cases) EXPECT_EQ(StockNameXml(c.xml, c.language), c.name) << c.xml;
    EXPECT_FALSE(IsLocoXml("<cEngineBlueprint><Category>eRailVehicle</Category></cEngineBlueprint>"));
    EXPECT_TRUE(IsLocoXml("<cengineComponentBlueprint>"));
}

TEST(StockClass, TheRunningNumberShortCut) {
    auto list = [](int names) {
        std::string xml = "<cCSVArray><CSVItem>";
        for (int i = 1; i <= names; ++i)
            xml += "<cCSVItem d:id=\"1\"><X>0</X><Name d:type=\"cDeltaString\">N" + std::to_string(i) + "</Name></cCSVItem>";
        return xml + "</CSVItem></cCSVArray>";
    };
    struct Case {
        int names;
        double draw;
        const char* number;
    } cases[] = {
        {1, 0.99, "N1"}, {2, 0.99, "N1"},   // one or two entries: r = 1 every time
        {4, 0.0, "N1"},  {4, 0.6, "N2"},    {4, 0.99, "N2"},
        // The draw scales a position near the head of the text, not an index: only the
        // first items of a long list are ever reached.
        {10, 0.99, "N4"}, {40, 0.99, "N8"}, {40, 0.5, "N4"},
        {0, 0.5, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(PickRunningNumber(list(c.names), [&] { return c.draw; }), c.number)
            << c.names << " names, draw " << c.draw;
    }
}

TEST(StockClass, StockDetailsOfASampleEngine) {
    SampleContext s;
    StockDetails details;
    ASSERT_FALSE(GetStockDetails(s.ctx, s.asset("Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin"),
                                 details, [] { return 0.99; }));
    EXPECT_EQ(details.mass, "126");
    EXPECT_TRUE(details.number == "58001" || details.number == "58017" || details.number == "58034")
        << details.number;
    EXPECT_EQ(details.fuelOrder, 0);
    EXPECT_NE(details.blueprintXml.find("<cEngineComponentBlueprint"), std::string::npos);

    struct Fuel {
        const char* xml;
        int order;
    } fuels[] = {{"<a>CoalFuel</a><b>WaterFuel</b>", 1}, {"<b>WaterFuel</b><a>CoalFuel</a>", 2},
                 {"<a>CoalFuel</a>", 2}, {"<b>WaterFuel</b>", 0}};
    for (const Fuel& f : fuels) {
        s.own.write("fuel.xml", f.xml);
        ASSERT_FALSE(GetStockDetails(s.ctx, s.own.system() + "\\fuel.xml", details));
        EXPECT_EQ(details.fuelOrder, f.order) << f.xml;
        EXPECT_EQ(details.number, "");
    }
}

}  // namespace
}  // namespace ferrolund::scenarios
