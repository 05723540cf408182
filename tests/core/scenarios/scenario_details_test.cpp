#include <gtest/gtest.h>

#include "core/sample/sample_fixture.h"
#include "core/tools/testdata_file.h"
#include "scenarios/scenario_reader.h"
#include "support/scripted_ui.h"

namespace ferrolund::scenarios {
namespace {

constexpr const char* kRealProperties =
    "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Scenarios/b01bda98-a8d8-4615-ba62-1be3f3edb378/"
    "ScenarioProperties.xml";

std::string Names(const std::string& tag, const std::string& english, const std::string& german = "") {
    return "<" + tag + "><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">" + english +
           "</English><German d:type=\"cDeltaString\">" + german + "</German></Localisation-cUserLocalisedString></" +
           tag + ">";
}

std::string Triple(const std::string& tag, const std::string& provider, const std::string& blueprint) {
    return "<" + tag + "><iBlueprintLibrary-cAbsoluteBlueprintID><BlueprintSetID><iBlueprintLibrary-cBlueprintSetID>"
           "<Provider d:type=\"cDeltaString\">" + provider + "</Provider><Product d:type=\"cDeltaString\">P-" +
           provider + "</Product></iBlueprintLibrary-cBlueprintSetID></BlueprintSetID>"
           "<BlueprintID d:type=\"cDeltaString\">" + blueprint + "</BlueprintID>"
           "</iBlueprintLibrary-cAbsoluteBlueprintID></" + tag + ">";
}

std::string Properties(const std::string& weatherExtension, const std::string& author) {
    return "<cScenarioProperties>" + Names("DisplayName", "Morning &amp; evening", "Morgen") +
           Names("Description", "") + Names("Briefing", "Go.") + Names("StartLocation", "Here") +
           "<ScenarioClass d:type=\"cDeltaString\">eStandardScenarioClass</ScenarioClass>"
           "<StartTime d:type=\"sFloat32\">27000.5</StartTime><DurationMins d:type=\"sInt32\">45</DurationMins>"
           "<StartDD d:type=\"sInt32\">2</StartDD><StartMM d:type=\"sInt32\">11</StartMM>"
           "<StartYYYY d:type=\"sInt32\">1975</StartYYYY><Season d:type=\"cDeltaString\">SEASON_WINTER</Season>" +
           Triple("WeatherBlueprint", "Kuju", "Weather\\Snow.xml") + weatherExtension +
           "<FrontEndDriverList>" + Names("StartLocation", "Driver start") + "</FrontEndDriverList>"
           "<LocoAuthor d:type=\"cDeltaString\">Nobody</LocoAuthor>" + author + "</cScenarioProperties>";
}

TEST(ScenarioDetails, TheRealPropertiesInTheOrderOfTheRead) {
    FERROLUND_READ_TESTDATA(xml, kRealProperties);
    const ScenarioDetails d = ReadScenarioDetails(xml, "English");
    EXPECT_EQ(d.displayName, "Testiajot");
    EXPECT_EQ(d.description, "Testaa rataa");
    EXPECT_EQ(d.briefing, "&lt;supply briefing&gt;");  // raw: the screens decode it
    EXPECT_EQ(d.scenarioClass, "eFreeRoamScenarioClass");
    EXPECT_EQ(d.kind(), ScenarioClass::FreeRoam);
    EXPECT_EQ(d.startTime, "43200");
    EXPECT_EQ(SecondsToHHMM(d.startTime), "1200");
    EXPECT_EQ(d.durationMins, "0");
    EXPECT_EQ(d.startDD + "/" + d.startMM + "/" + d.startYYYY, "1/3/2017");
    EXPECT_EQ(d.season, "SEASON_SUMMER");
    EXPECT_EQ(d.weatherProvider + "/" + d.weatherProduct + "/" + d.weatherBlueprintID,
              "Kuju/RailSimulatorCore/Weather\\RW_Clear.xml");
    EXPECT_TRUE(d.hasWeatherExtension);
    EXPECT_EQ(d.extensionProvider + d.extensionProduct + d.extensionBlueprintID, "");
    EXPECT_TRUE(d.hasAuthor);
    EXPECT_EQ(d.author, "");
}

TEST(ScenarioDetails, MadeUpPropertiesAndTheirGaps) {
    struct Case {
        const char* what;
        std::string xml;
        std::string language;
        std::function<void(const ScenarioDetails&)> check;
    };
    const std::vector<Case> cases = {
        {"every tag present", Properties(Triple("WeatherExtensionBlueprint", "Ext", "Weather\\Fog.xml"),
                                         "<Author d:type=\"cDeltaString\">Zoë Müller</Author>"),
         "English",
         [](const ScenarioDetails& d) {
             EXPECT_EQ(d.displayName, "Morning &amp; evening");
             // An empty description reads on into the briefing's name, and the briefing,
             // searched from there, is not found.
             EXPECT_EQ(d.description, "Go.");
             EXPECT_EQ(d.briefing, "");
             EXPECT_EQ(d.startTime, "27000.5");
             EXPECT_EQ(d.durationMins, "45");
             EXPECT_EQ(d.season, "SEASON_WINTER");
             EXPECT_EQ(d.weatherProduct, "P-Kuju");
             EXPECT_TRUE(d.hasWeatherExtension);
             EXPECT_EQ(d.extensionProvider, "Ext");
             EXPECT_EQ(d.extensionBlueprintID, "Weather\\Fog.xml");
             // The start location is searched on from the weather: the driver's is found.
             EXPECT_EQ(d.startLocation, "Driver start");
             EXPECT_EQ(d.author, "Zoë Müller");
         }},
        {"no weather extension, no author", Properties("", ""), "English",
         [](const ScenarioDetails& d) {
             EXPECT_FALSE(d.hasWeatherExtension);
             EXPECT_EQ(d.extensionProvider, "");
             EXPECT_FALSE(d.hasAuthor);
             EXPECT_EQ(d.author, "");
             EXPECT_EQ(d.weatherBlueprintID, "Weather\\Snow.xml");
         }},
        {"the chosen language first", Properties("", ""), "German",
         [](const ScenarioDetails& d) {
             EXPECT_EQ(d.displayName, "Morgen");
             EXPECT_EQ(d.description, "Go.");  // empty in German and English: the next English
             EXPECT_EQ(d.season, "SEASON_WINTER");
         }},
        {"a text that is no scenario's properties", "<cBlueprintLoader/>", "English",
         [](const ScenarioDetails& d) {
             EXPECT_EQ(d.displayName + d.scenarioClass + d.startTime + d.season + d.author, "");
             EXPECT_EQ(d.kind(), ScenarioClass::Unknown);
         }},
        {"an empty text", "", "English", [](const ScenarioDetails& d) { EXPECT_FALSE(d.hasAuthor); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        c.check(ReadScenarioDetails(c.xml, c.language));
    }
}

TEST(ScenarioDetails, TheChecksOnOpening) {
    struct Case {
        std::string klass;
        bool career, quickDrive;
    } cases[] = {{"eStandardScenarioClass", false, false},
                 {"ecareerscenarioclass", true, false},
                 {"eTemplateScenarioClass", false, true},
                 {"eFreeRoamScenarioClass", false, false}};
    for (const Case& c : cases) {
        const std::string xml = "<cScenarioProperties><ScenarioClass d:type=\"cDeltaString\">" + c.klass +
                                "</ScenarioClass></cScenarioProperties>";
        testing::ScriptedUi ui;
        EXPECT_EQ(WarnIfCareer(ui, xml), c.career) << c.klass;
        EXPECT_EQ(RefuseQuickDrive(ui, ReadScenarioDetails(xml, "English")), c.quickDrive) << c.klass;
        std::vector<std::string> expected;
        if (c.career) expected.push_back(
            "This is a Career Scenario and may not work if edited.\nIf it is a cloned career scenario, you may "
            "edit\nit to change it to a Standard scenario.");
        if (c.quickDrive) expected.push_back("This is a Quick Drive scenario\nIt can't be edited by the user.");
        std::vector<std::string> shown;
        for (const auto& s : ui.shown) shown.push_back(s.text);
        EXPECT_EQ(shown, expected) << c.klass;
        if (c.quickDrive) {
            EXPECT_EQ(ui.shown.back().icon, base::Icon::Critical);
        }
        if (c.career) {
            EXPECT_EQ(ui.shown.front().icon, base::Icon::Exclamation);
        }
    }
}

TEST(ScenarioDetails, TheSampleScenarioOfEveryKind) {
    const auto root = sample::SampleRoot();
    const std::string folder =
        "Content\\Routes\\3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10\\Scenarios\\c4e8a1b2-9d3f-4a5e-b6c7-d8e9f0a1b2c3\\";
    std::string xml;
    for (const auto& file : sample::SampleMade().compiled) {
        if (file.path == folder + "Scenario.bin") xml = file.xml;
    }
    ASSERT_FALSE(xml.empty());
    const ScenarioDetails d =
        ReadScenarioDetails(sample::ReadBytes(sample::OnDisk(root, folder + "ScenarioProperties.xml")), "English");
    EXPECT_EQ(d.displayName, "A busy day in the valley");
    EXPECT_EQ(d.kind(), ScenarioClass::Standard);
    EXPECT_EQ(SecondsToHHMM(d.startTime), "0600");

    const ScenarioConsists read = ReadConsists(xml, "English");
    ASSERT_EQ(read.consists.size(), 6u);
    EXPECT_EQ(read.drivenConsist, 0);
    const char* services[] = {"6M000 Yard trip", "1A001 Merlin Express", "2S002 Valley stopper", "Loose Consist",
                              "Loose Consist", "4E005 Tank train"};
    for (std::size_t k = 0; k < 6; ++k) EXPECT_EQ(read.consists[k].serviceName, services[k]) << k;
    EXPECT_TRUE(read.consists[4].vehicles.empty());
    EXPECT_EQ(read.consists[0].vehicles.size(), 4u);
    EXPECT_EQ(read.consists[0].destination, "Summit Sidings");
    EXPECT_TRUE(read.consists[0].hasDestination);
    EXPECT_EQ(ServiceClassWord(read.consists[1].serviceClass), "Express Passenger");
    EXPECT_EQ(read.consists[1].vehicles[0].reskinBlueprintID, "RailVehicles\\Steam\\Merlin\\Reskins\\MerlinGreen.xml");
    EXPECT_EQ(read.consists[0].vehicles[1].isPreloaded, "eTrue");
    EXPECT_TRUE(sample::ReadBytes(sample::OnDisk(root, folder + "CurrentSave.bin")).starts_with("SERZ"));
    EXPECT_EQ(sample::ReadBytes(sample::OnDisk(root, folder + "CurrentSave.bin.MD5")).size(), 16u);
    EXPECT_NE(xml.find("<RailVehicleNumber>"), std::string::npos);
    EXPECT_NE(xml.find("DropOffRailVehicle"), std::string::npos);
    EXPECT_NE(xml.find("<TriggeredText>"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::scenarios
