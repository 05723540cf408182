#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "core/tools/testdata_file.h"
#include "scenarios/scenario_save.h"

namespace ferrolund::scenarios {
namespace {

const SaveTemplates kTemplates{
    "<StartLocation><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">aaaaaa</English>"
    "<Key d:type=\"cDeltaString\">bbbbbb</Key></Localisation-cUserLocalisedString></StartLocation>",
    "\t<iBlueprintLibrary-cBlueprintSetID d:id=\"xxxxxxxx\"><Provider>aaaaaa</Provider><Product>bbbbbb</Product>"
    "</iBlueprintLibrary-cBlueprintSetID>\n"};

std::size_t Count(const std::string& text, const std::string& piece) {
    std::size_t n = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) ++n;
    return n;
}

TEST(ScenarioEdits, TheTimeBoxTakesFourCharactersUpTo2400) {
    struct Case {
        const char* typed;
        bool passes;
        const char* seconds;
    } cases[] = {{"2400", true, "86400.0000"}, {"2401", false, ""}, {"900", false, ""},
                 {"0530", true, "19800.0000"}, {"0000", true, "00000.0000"}, {"05300", false, ""},
                 {"", false, ""}};
    for (const Case& c : cases) {
        const base::Status status = CheckStartTime(c.typed);
        EXPECT_EQ(!status, c.passes) << c.typed;
        if (status) {EXPECT_EQ(status->description, kTimeFormatMessage);}
        if (c.passes) {EXPECT_EQ(StartTimeSeconds(c.typed), c.seconds) << c.typed;}
    }
}

TEST(ScenarioEdits, LeavingTheTimeBoxGivesTheShiftOrTheMessage) {
    struct Case {
        const char* typed;
        const char* loaded;
        double seconds;
        const char* message;  // empty: no message
    } cases[] = {{"0600", "0530", 1800, ""},  {"0500", "0530", -1800, ""},
                 {"2400", "2330", 1800, ""},  {"2401", "0530", 0, kLateStartMessage},
                 {"930", "0530", 0, kTimeFormatMessage}};
    for (const Case& c : cases) {
        double seconds = -1;
        const base::Status status = StartTimeShift(c.typed, c.loaded, seconds);
        EXPECT_EQ(status ? status->description : "", c.message) << c.typed;
        EXPECT_DOUBLE_EQ(seconds, c.seconds) << c.typed;
    }
}

const char* const kConsists =
    "<r><cConsist d:id=\"1\"><x><StartTime d:type=\"sFloat32\">45300</StartTime></x></cConsist>\n"
    "<cConsist d:id=\"2\"><StartTime d:type=\"sFloat32\"> 100.5 </StartTime></cConsist>\n"
    "<cConsist d:id=\"3\"><StartTime>0</StartTime></cConsist></r>";

TEST(ScenarioEdits, AllConsistsMoveAndASecondEnterMovesThemAgain) {
    std::string text = kConsists;
    EXPECT_EQ(ShiftStartTimes(text, 60), 3);
    EXPECT_NE(text.find(">45360.0000</StartTime></x></cConsist>\n<cConsist"), std::string::npos) << text;
    EXPECT_NE(text.find(">00160.0000<"), std::string::npos) << text;  // 100.5 rounds to even first
    EXPECT_NE(text.find("<StartTime>00060.0000</StartTime></cConsist></r>"), std::string::npos) << text;
    EXPECT_EQ(ShiftStartTimes(text, 60), 3);
    EXPECT_NE(text.find(">45420.0000<"), std::string::npos) << text;

    std::string firstTwo = kConsists;
    EXPECT_EQ(ShiftStartTimes(firstTwo, -300, 2), 2);
    EXPECT_NE(firstTwo.find(">45000.0000<"), std::string::npos);
    EXPECT_NE(firstTwo.find("<StartTime>0</StartTime>"), std::string::npos);

    std::string none = "<r><cConsist d:id=\"1\"></cConsist></r>";
    EXPECT_EQ(ShiftStartTimes(none, 60), 0);
    EXPECT_EQ(none, "<r><cConsist d:id=\"1\"></cConsist></r>");
}

TEST(ScenarioEdits, TheRealScenarioChangesOnlyItsConsistStartTimes) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    std::string shifted = xml;
    const int changed = ShiftStartTimes(shifted, 1800);
    // Each consist moves the first start time behind its opening; a consist without one
    // passes its turn to the start time of a later consist, which moves once.
    std::set<std::size_t> firsts;
    for (std::size_t at = xml.find("<cConsist d"); at != std::string::npos; at = xml.find("<cConsist d", at + 1)) {
        const std::size_t time = xml.find("<StartTime", at);
        if (time != std::string::npos) firsts.insert(time);
    }
    ASSERT_GT(firsts.size(), 1u);
    EXPECT_EQ(static_cast<std::size_t>(changed), firsts.size());
    std::istringstream a(xml), b(shifted);
    std::string x, y;
    int differing = 0;
    while (std::getline(a, x) && std::getline(b, y)) {
        if (x == y) continue;
        ++differing;
        EXPECT_NE(y.find("<StartTime"), std::string::npos) << y;
    }
    EXPECT_EQ(differing, changed);
    EXPECT_NE(shifted.find(">47100.0000</StartTime>"), std::string::npos);  // 45300 + 1800
}

// A properties text in the game's order, with parts left out as each case needs.
std::string Properties(const std::string& cls, bool startLocation, const std::string& authorPart) {
    std::string t = "<cScenarioProperties>\n\t<DisplayName><Localisation-cUserLocalisedString>"
                    "<English d:type=\"cDeltaString\">Old</English><French d:type=\"cDeltaString\"></French>"
                    "</Localisation-cUserLocalisedString></DisplayName>\n"
                    "\t<Description><Localisation-cUserLocalisedString><English>OldD</English>"
                    "</Localisation-cUserLocalisedString></Description>\n"
                    "\t<Briefing><Localisation-cUserLocalisedString><English>OldB</English>"
                    "</Localisation-cUserLocalisedString></Briefing>\n";
    if (startLocation)
        t += "\t<StartLocation><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\"></English>"
             "</Localisation-cUserLocalisedString></StartLocation>\n";
    t += "\t<ScenarioClass d:type=\"cDeltaString\">" + cls + "</ScenarioClass>\n"
         "\t<StartTime d:type=\"sFloat32\">43200</StartTime>\n\t<DurationMins>60</DurationMins>\n"
         "\t<StartDD>1</StartDD>\n\t<StartMM>1</StartMM>\n\t<StartYYYY>2000</StartYYYY>\n"
         "\t<Season>SEASON_SUMMER</Season>\n"
         "\t<WeatherBlueprint><Provider>Kuju</Provider><Product>RailSimulator</Product>"
         "<BlueprintID>Weather\\RW_Clear.xml</BlueprintID></WeatherBlueprint>\n"
         "\t<WeatherExtensionBlueprint><Provider></Provider><Product></Product><BlueprintID></BlueprintID>"
         "</WeatherExtensionBlueprint>\n"
         "\t<SimulationTime d:type=\"sFloat32\">0</SimulationTime>\n" + authorPart +
         "\t<RBlueprintSetPreLoad/>\n</cScenarioProperties>";
    return t;
}

DetailEdits Edits(const std::string& cls) {
    DetailEdits e;
    e.displayName = "Bob's run";
    e.description = "Fahrt nach München";
    e.briefing = "B & B";
    e.startTime = "0530";
    e.durationMins = "90";
    e.startDD = "45";  // taken as typed
    e.startMM = "13";
    e.startYYYY = "1999";
    e.season = "SEASON_WINTER";
    e.weatherProvider = "DTG";
    e.weatherProduct = "Weather";
    e.weatherBlueprintID = "Weather\\Snow.xml";
    e.extensionProvider = "X";
    e.extensionProduct = "Y";
    e.extensionBlueprintID = "Z.xml";
    e.author = "Anna Čech";
    e.startLocation = "Höhe's Platz";
    e.scenarioClass = cls;
    return e;
}

TEST(ScenarioEdits, TheDetailsLandInTheirElements) {
    std::string text = Properties(kStandardClass, false, "\t<Author d:type=\"cDeltaString\">Old</Author>\n");
    DetailEdits edits = Edits(kStandardClass);
    ASSERT_FALSE(ApplyDetailEdits(text, edits, kTemplates));
    for (const char* expected :
         {"<English d:type=\"cDeltaString\">Bob&apos;s run</English><French d:type=\"cDeltaString\">Bob&apos;s run",
          "<English>Fahrt nach M\xC3\xBCnchen</English>", "<English>B &amp; B</English>",
          "<StartTime d:type=\"sFloat32\">19800.0000</StartTime>", "<DurationMins>90<", "<StartDD>45<",
          "<StartMM>13<", "<StartYYYY>1999<", "<Season>SEASON_WINTER<",
          "<WeatherBlueprint><Provider>DTG</Provider><Product>Weather</Product><BlueprintID>Weather\\Snow.xml<",
          "<WeatherExtensionBlueprint><Provider>X</Provider><Product>Y</Product><BlueprintID>Z.xml<",
          "<Author d:type=\"cDeltaString\">Anna Čech</Author>", "<RBlueprintSetPreLoad/>"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected << "\n" << text;
    }
    EXPECT_EQ(edits.displayName, "Bob&apos;s run");  // the repaired text goes back to the box
    EXPECT_EQ(text.find("StartLocation"), std::string::npos);

    // An empty weather blueprint box leaves the file's one.
    std::string kept = Properties(kStandardClass, false, "");
    edits = Edits(kStandardClass);
    edits.weatherBlueprintID.clear();
    ASSERT_FALSE(ApplyDetailEdits(kept, edits, kTemplates));
    EXPECT_NE(kept.find("<BlueprintID>Weather\\RW_Clear.xml<"), std::string::npos);
}

TEST(ScenarioEdits, ABadTimeChangesNothing) {
    const std::string before = Properties(kStandardClass, false, "");
    for (const char* typed : {"2401", "900", "12345"}) {
        std::string text = before;
        DetailEdits edits = Edits(kStandardClass);
        edits.startTime = typed;
        const base::Status status = ApplyDetailEdits(text, edits, kTemplates);
        ASSERT_TRUE(status) << typed;
        EXPECT_EQ(status->description, kTimeFormatMessage);
        EXPECT_EQ(text, before);
    }
}

TEST(ScenarioEdits, TheAuthorGoesWhereTheClassAndTheTextSay) {
    const std::string element = "<Author d:type=\"cDeltaString\">Anna Čech</Author>";
    struct Case {
        const char* name;
        std::string cls;
        std::string authorPart;
        std::string expected;  // empty: no author element at all
    } cases[] = {
        {"no language: right after the simulation time", kStandardClass, "",
         "</SimulationTime>\n" + element + "\n\t<RBlueprintSetPreLoad/>"},
        {"language: ahead of the next blueprint element", kStandardClass,
         "\t<AuthoredLanguage>en</AuthoredLanguage>\n", "</AuthoredLanguage>\n\t" + element + "\n<RBlueprintSetPreLoad/>"},
        {"an existing element is filled", kFreeRoamClass, "\t<Author d:type=\"cDeltaString\">x</Author>\n",
         "\t" + element + "\n"},
        {"a career scenario gets none", "eCareerScenarioClass", "", ""},
        {"a timetable scenario gets none", "eTimetableScenarioClass", "", ""},
    };
    for (const Case& c : cases) {
        std::string text = Properties(c.cls, false, c.authorPart);
        DetailEdits edits = Edits(c.cls);
        ASSERT_FALSE(ApplyDetailEdits(text, edits, kTemplates)) << c.name;
        if (c.expected.empty()) {
            EXPECT_EQ(text.find("<Author d"), std::string::npos) << c.name;
        } else {
            EXPECT_NE(text.find(c.expected), std::string::npos) << c.name << "\n" << text;
            EXPECT_EQ(Count(text, "<Author d"), 1u) << c.name;
        }
    }
    // With a language element and no blueprint element behind it, nothing is added.
    std::string text = Properties(kStandardClass, false, "\t<AuthoredLanguage>en</AuthoredLanguage>\n");
    text.replace(text.find("<RBlueprintSetPreLoad/>"), 23, "<NamedEntity/>");
    DetailEdits edits = Edits(kStandardClass);
    ASSERT_FALSE(ApplyDetailEdits(text, edits, kTemplates));
    EXPECT_EQ(text.find("<Author d"), std::string::npos);
}

TEST(ScenarioEdits, AFreeRoamStartIsWrittenOrInsertedFromTheTemplate) {
    std::string present = Properties(kFreeRoamClass, true, "");
    DetailEdits edits = Edits(kFreeRoamClass);
    ASSERT_FALSE(ApplyDetailEdits(present, edits, kTemplates));
    EXPECT_NE(present.find("<StartLocation><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">"
                           "H\xC3\xB6he&apos;s Platz</English>"),
              std::string::npos)
        << present;
    EXPECT_EQ(Count(present, "<StartLocation>"), 1u);

    std::string absent = Properties(kFreeRoamClass, false, "");
    edits = Edits(kFreeRoamClass);
    ASSERT_FALSE(ApplyDetailEdits(absent, edits, kTemplates));
    const std::regex inserted(
        "</Briefing><StartLocation><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">"
        "H\xC3\xB6he&apos;s Platz</English><Key d:type=\"cDeltaString\">"
        "[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}</Key>"
        "</Localisation-cUserLocalisedString></StartLocation>\n\n\t<ScenarioClass");
    EXPECT_TRUE(std::regex_search(absent, inserted)) << absent;
    EXPECT_NE(absent.find("</StartLocation>\n\n\t<ScenarioClass"), std::string::npos) << absent;
}

TEST(ScenarioEdits, ThePreloadSetHoldsEachAssetSetOnce) {
    struct Case {
        const char* name;
        std::vector<std::string> preload;
        std::vector<std::string> expected;  // Provider|Product in the order written
    } cases[] = {
        {"three times the same, in any case", {"DTG|Class 66", "dtg|class 66", "DTG|Class 66"}, {"DTG|Class 66"}},
        {"sorted, empty ones dropped", {"Kuju|B", "", "AP|A", ""}, {"AP|A", "Kuju|B"}},
        {"nothing to add", {"", ""}, {}},
    };
    for (const Case& c : cases) {
        std::string text = Properties("eCareerScenarioClass", false, "");
        ExtendPreloadSet(text, c.preload, kTemplates.provHeader);
        if (c.expected.empty()) {
            EXPECT_EQ(text.find("iBlueprintLibrary"), std::string::npos) << c.name;
            continue;
        }
        std::string want;
        for (const std::string& entry : c.expected) {
            const std::size_t bar = entry.find('|');
            want += "<Provider>" + entry.substr(0, bar) + "</Provider><Product>" + entry.substr(bar + 1) + "</Product>";
        }
        std::string got;
        for (std::size_t at = text.find("<Provider>", text.find("<RBlueprintSetPreLoad>")); at != std::string::npos;
             at = text.find("<Provider>", at + 1))
            got += text.substr(at, text.find("</Product>", at) + 10 - at);
        EXPECT_EQ(got, want) << c.name;
        EXPECT_TRUE(std::regex_search(text, std::regex("d:id=\"[1-2][0-9]{7}\""))) << c.name;
        EXPECT_NE(text.find("\t<RBlueprintSetPreLoad>\n\t<iBlueprintLibrary"), std::string::npos) << c.name << text;
        EXPECT_NE(text.find("</iBlueprintLibrary-cBlueprintSetID>\n\n</RBlueprintSetPreLoad>\n</cScenarioProperties>"),
                  std::string::npos)
            << c.name << text;
    }
    std::string without = "<cScenarioProperties><NamedEntity/></cScenarioProperties>";
    ExtendPreloadSet(without, {"DTG|X"}, kTemplates.provHeader);
    EXPECT_EQ(without, "<cScenarioProperties><NamedEntity/></cScenarioProperties>");
}

TEST(ScenarioEdits, TheRealFreeRoamPropertiesTakeTheEdits) {
    FERROLUND_READ_TESTDATA(
        text, "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Scenarios/b01bda98-a8d8-4615-ba62-1be3f3edb378/"
              "ScenarioProperties.xml");
    DetailEdits edits = Edits(kFreeRoamClass);
    edits.preload = {"DTG|Class 66"};
    ASSERT_FALSE(ApplyDetailEdits(text, edits, kTemplates));
    for (const char* expected : {"<English d:type=\"cDeltaString\">Bob&apos;s run</English>",
                                 "<English d:type=\"cDeltaString\">H\xC3\xB6he&apos;s Platz</English>",
                                 "<Author d:type=\"cDeltaString\">Anna Čech</Author>",
                                 ">19800.0000</StartTime>", "<Season d:type=\"cDeltaString\">SEASON_WINTER<",
                                 "<Provider>DTG</Provider><Product>Class 66</Product>"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected;
    }
    EXPECT_EQ(Count(text, "<StartLocation>"), 2u);  // the scenario's and the service's, none added
    EXPECT_EQ(text.find("<RBlueprintSetPreLoad/>"), std::string::npos);
}

TEST(ScenarioEdits, TheClassOptionsWriteTheirWord) {
    const char* words[] = {"eStandardScenarioClass", "eFreeRoamScenarioClass", "eCareerScenarioClass",
                           "eTutorialScenarioClass", "eTimetableScenarioClass"};
    for (int option = 0; option < 5; ++option) {
        std::string text = "<a><ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass></a>";
        ASSERT_TRUE(ChangeClass(text, ClassOfOption(option)));
        EXPECT_EQ(text, std::string("<a><ScenarioClass d:type=\"cDeltaString\">") + words[option] + "</ScenarioClass></a>");
    }
    EXPECT_EQ(ClassOfOption(5), "");
    EXPECT_EQ(ClassOfOption(-1), "");
    std::string none = "<a/>";
    EXPECT_FALSE(ChangeClass(none, kStandardClass));
    EXPECT_EQ(none, "<a/>");
}

TEST(ScenarioEdits, AChosenWeatherFileGivesItsBlueprintReference) {
    struct Case {
        const char* path;
        bool ok;
        WeatherChoice expected;
    } cases[] = {
        {"C:\\RW\\Assets\\Kuju\\RailSimulator\\Weather\\RW_Clear.bin", true,
         {"Kuju", "RailSimulator", "Weather\\RW_Clear.xml"}},
        {"/games/RailWorks/Assets/Ölwerk/Wetter é/Environment/Weather/Schnee.BIN", true,
         {"Ölwerk", "Wetter é", "Environment\\Weather\\Schnee.xml"}},
        {"C:\\RW\\Assets\\Kuju\\Clear.xml", false, {}},
        {"C:\\RW\\Content\\Kuju\\RailSimulator\\Clear.bin", false, {}},
    };
    for (const Case& c : cases) {
        WeatherChoice got;
        ASSERT_EQ(WeatherFromPath(c.path, got), c.ok) << c.path;
        if (!c.ok) continue;
        EXPECT_EQ(got.provider, c.expected.provider);
        EXPECT_EQ(got.product, c.expected.product);
        EXPECT_EQ(got.blueprintID, c.expected.blueprintID);
    }
}

TEST(ScenarioEdits, TheSimulatorsSteamIdFollowsItsFolder) {
    EXPECT_EQ(RailWorksAppId("/home/a/.steam/steamapps/common/RailWorks"), 24000);
    EXPECT_EQ(RailWorksAppId("C:\\Steam\\steamapps\\common\\RailWorks Beta"), 24010);
    EXPECT_EQ(RailWorksAppId("D:\\RAILWORKS DEV"), 24020);
}

}  // namespace
}  // namespace ferrolund::scenarios
