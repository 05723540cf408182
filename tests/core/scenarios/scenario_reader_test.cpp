#include "scenarios/scenario_reader.h"

#include <gtest/gtest.h>

#include "core/tools/testdata_file.h"
#include "support/scripted_ui.h"

namespace ferrolund::scenarios {
namespace {

// A vehicle as the game writes it: the tags the reader looks for stand before the Name.
std::string Vehicle(const std::string& name, const std::string& reskin = "<ReskinBlueprintID/>",
                    const std::string& extra = "<InitialLevel><e>1</e></InitialLevel>") {
    return "<cOwnedEntity d:id=\"1\"><Component><cWagon><Flipped d:type=\"bool\">1</Flipped>"
           "<UniqueNumber d:type=\"cDeltaString\">N-" + name + "</UniqueNumber></cWagon>" + extra +
           "<cCargoComponent><IsPreLoaded d:type=\"cDeltaString\">eTrue</IsPreLoaded></cCargoComponent></Component>"
           "<BlueprintID><iBlueprintLibrary-cAbsoluteBlueprintID><BlueprintSetID><iBlueprintLibrary-cBlueprintSetID>"
           "<Provider d:type=\"cDeltaString\">Prov</Provider><Product d:type=\"cDeltaString\">Prod</Product>"
           "</iBlueprintLibrary-cBlueprintSetID></BlueprintSetID><BlueprintID d:type=\"cDeltaString\">" + name +
           ".xml</BlueprintID></iBlueprintLibrary-cAbsoluteBlueprintID></BlueprintID>" + reskin +
           "<Name d:type=\"cDeltaString\">" + name + "</Name></cOwnedEntity>";
}

std::string Reskin(const std::string& blueprint) {
    return "<ReskinBlueprintID><iBlueprintLibrary-cAbsoluteBlueprintID><BlueprintSetID>"
           "<iBlueprintLibrary-cBlueprintSetID><Provider d:type=\"cDeltaString\">RProv</Provider>"
           "<Product d:type=\"cDeltaString\">RProd</Product></iBlueprintLibrary-cBlueprintSetID></BlueprintSetID>"
           "<BlueprintID d:type=\"cDeltaString\">" + blueprint + "</BlueprintID>"
           "</iBlueprintLibrary-cAbsoluteBlueprintID></ReskinBlueprintID>";
}

std::string Driver(const std::string& english, const std::string& french = "", const std::string& player = "0",
                   const std::string& destination = "Platform 1", int padding = 300) {
    return "<Driver><cDriver><FinalDestination><cDriverInstructionTarget><DisplayName d:type=\"cDeltaString\">" +
           destination + "</DisplayName>" + std::string(static_cast<std::size_t>(padding), ' ') +
           "</cDriverInstructionTarget></FinalDestination><PlayerDriver d:type=\"bool\">" + player +
           "</PlayerDriver><_dir d:type=\"cDeltaString\">backwards</_dir><ServiceName><Localisation-cUserLocalisedString>"
           "<English d:type=\"cDeltaString\">" + english + "</English><French d:type=\"cDeltaString\">" + french +
           "</French></Localisation-cUserLocalisedString></ServiceName>"
           "<StartTime d:type=\"sFloat32\">3725.5</StartTime><ServiceClass d:type=\"sInt32\">4</ServiceClass>"
           "</cDriver></Driver>";
}

std::string Consist(const std::string& vehicles, const std::string& driver = "<Driver/>") {
    return "<cConsist d:id=\"9\"><RailVehicles>" + vehicles + "</RailVehicles>" + driver +
           "<DriverEngineIndex d:type=\"sInt32\">0</DriverEngineIndex></cConsist>";
}

std::string Scenario(const std::string& consists) {
    return "<?xml version=\"1.0\"?><cRecordSet><Record>" + consists + "</Record></cRecordSet>";
}

TEST(ScenarioReader, TheSmallRealScenarioGivesItsConsistsAndVehicles) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    const ScenarioConsists read = ReadConsists(xml, "English");
    ASSERT_EQ(read.consists.size(), 4u);
    const ConsistRow& first = read.consists[0];
    EXPECT_FALSE(first.loose);
    EXPECT_EQ(first.serviceName, "Service1");
    EXPECT_EQ(first.serviceClass, "0");
    EXPECT_EQ(first.driverEngineIndex, "3");
    EXPECT_EQ(first.playerDriver, "0");
    ASSERT_EQ(first.vehicles.size(), 4u);
    EXPECT_EQ(first.vehicles[0].name, "JT Class 220 VT A (DMF)");
    EXPECT_EQ(first.vehicles[0].uniqueNumber, "22003260432");
    EXPECT_EQ(first.vehicles[0].flipped, "0");
    EXPECT_EQ(first.vehicles[3].flipped, "1");
    EXPECT_EQ(first.vehicles[3].name, "JT Class 220 VT F (DMSL)");
    EXPECT_FALSE(first.vehicles[0].provider.empty());
    EXPECT_EQ(xml.compare(static_cast<std::size_t>(first.vehicles[1].namePos - 1), 5, "<Name"), 0);
    std::size_t vehicles = 0;
    for (const ConsistRow& row : read.consists) vehicles += row.vehicles.size();
    EXPECT_EQ(vehicles, 19u);
}

TEST(ScenarioReader, TheGameScenarioAgreesWithItsOwnText) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    const ScenarioConsists read = ReadConsists(xml, "English");
    ASSERT_EQ(read.consists.size(), 21u);
    std::size_t vehicles = 0, services = 0;
    for (std::size_t k = 0; k < read.consists.size(); ++k) {
        const ConsistRow& row = read.consists[k];
        vehicles += row.vehicles.size();
        services += row.loose ? 0 : 1;
        EXPECT_EQ(row.loose, row.serviceName == kLooseConsist) << k;
        EXPECT_EQ(row.loose, row.dir.empty()) << k;
        EXPECT_EQ(row.startTime.size(), 4u) << k;
        // The block boundaries are the closing tags, and each vehicle's name lies in its block.
        EXPECT_EQ(xml.compare(static_cast<std::size_t>(row.blockEnd - 1), 11, "</cConsist>"), 0) << k;
        for (const VehicleRow& v : row.vehicles) {
            EXPECT_GT(v.namePos, row.blockStart);
            EXPECT_LT(v.namePos, row.blockEnd);
            EXPECT_TRUE(v.loadable == "True" || v.loadable == "False");
            EXPECT_FALSE(v.blueprintID.empty());
        }
    }
    EXPECT_EQ(vehicles, 126u);
    EXPECT_EQ(services, 5u);
}

TEST(ScenarioReader, EdgeCasesOfTheConsistWalk) {
    struct Case {
        const char* what;
        std::string xml;
        std::function<void(const ScenarioConsists&)> check;
    };
    const std::vector<Case> cases = {
        {"a consist without a service is loose and has no direction",
         Scenario(Consist(Vehicle("A"))),
         [](const ScenarioConsists& r) {
             ASSERT_EQ(r.consists.size(), 1u);
             EXPECT_TRUE(r.consists[0].loose);
             EXPECT_EQ(r.consists[0].serviceName, "Loose Consist");
             EXPECT_EQ(r.consists[0].dir, "");
             EXPECT_EQ(r.consists[0].destination, "Not Shown");
             EXPECT_EQ(r.consists[0].startTime, "0000");
             EXPECT_EQ(r.drivenConsist, -1);
         }},
        {"a consist without a Name has no vehicles",
         Scenario(Consist("") + Consist(Vehicle("B"))),
         [](const ScenarioConsists& r) {
             ASSERT_EQ(r.consists.size(), 2u);
             EXPECT_TRUE(r.consists[0].vehicles.empty());
             ASSERT_EQ(r.consists[1].vehicles.size(), 1u);
             EXPECT_EQ(r.consists[1].vehicles[0].name, "B");
         }},
        {"a vehicle without a reskin element takes the next one of the block",
         Scenario(Consist(Vehicle("C", "") + Vehicle("D", Reskin("Green.xml")))),
         [](const ScenarioConsists& r) {
             const auto& v = r.consists[0].vehicles;
             ASSERT_EQ(v.size(), 2u);
             EXPECT_EQ(v[0].reskinProvider, "RProv");
             EXPECT_EQ(v[0].reskinBlueprintID, "Green.xml");
             EXPECT_EQ(v[1].reskinProduct, "RProd");
             EXPECT_EQ(v[0].blueprintID, "C.xml");
             EXPECT_EQ(v[1].blueprintID, "D.xml");
         }},
        {"the empty reskin form reads on into the next vehicle's asset",
         Scenario(Consist(Vehicle("C") + Vehicle("D", Reskin("Green.xml")))),
         [](const ScenarioConsists& r) {
             const auto& v = r.consists[0].vehicles;
             ASSERT_EQ(v.size(), 2u);
             EXPECT_EQ(v[0].reskinProvider, "Prov");
             EXPECT_EQ(v[0].reskinBlueprintID, "D.xml");
             EXPECT_EQ(v[1].reskinProvider, "RProv");
         }},
        {"a vehicle that is no reskin and is last has no reskin values",
         Scenario(Consist(Vehicle("L", ""))),
         [](const ScenarioConsists& r) {
             const auto& v = r.consists[0].vehicles;
             ASSERT_EQ(v.size(), 1u);
             EXPECT_EQ(v[0].reskinProvider + v[0].reskinProduct + v[0].reskinBlueprintID, "");
         }},
        {"Name is found in any case",
         Scenario(Consist("<cOwnedEntity><name d:type=\"cDeltaString\">lower</NAME></cOwnedEntity>")),
         [](const ScenarioConsists& r) {
             ASSERT_EQ(r.consists[0].vehicles.size(), 1u);
             EXPECT_EQ(r.consists[0].vehicles[0].name, "lower");
         }},
        {"a tag that starts with Name is taken as one",
         Scenario(Consist(Vehicle("E") + "<NameTable>x</NameTable>")),
         [](const ScenarioConsists& r) {
             ASSERT_EQ(r.consists[0].vehicles.size(), 2u);
             EXPECT_EQ(r.consists[0].vehicles[1].name, "x");
         }},
        {"an empty service name in the language falls through to the next",
         Scenario(Consist(Vehicle("F"), Driver("", "Service du matin", "1"))),
         [](const ScenarioConsists& r) {
             const ConsistRow& c = r.consists[0];
             EXPECT_FALSE(c.loose);
             EXPECT_EQ(c.serviceName, "Service du matin");
             EXPECT_EQ(c.dir, "backwards");
             EXPECT_EQ(c.serviceClass, "4");
             EXPECT_EQ(ServiceClassWord(c.serviceClass), "Hight-speed Freight");
             EXPECT_EQ(c.startTime, "0102");
             EXPECT_TRUE(c.driven);
             EXPECT_EQ(r.drivenConsist, 0);
             EXPECT_TRUE(c.hasDestination);
             EXPECT_EQ(c.destination, "Platform 1");
         }},
        {"a short destination stretch is no destination of its own",
         Scenario(Consist(Vehicle("G"), Driver("S", "", "0", "Yard", 10))),
         [](const ScenarioConsists& r) {
             EXPECT_FALSE(r.consists[0].hasDestination);
             EXPECT_EQ(r.consists[0].destination, "Yard");
             EXPECT_FALSE(r.consists[0].driven);
         }},
        {"the empty InitialLevel marks a vehicle that cannot be loaded",
         Scenario(Consist(Vehicle("H", "<ReskinBlueprintID/>", "<InitialLevel/>") + Vehicle("I"))),
         [](const ScenarioConsists& r) {
             const auto& v = r.consists[0].vehicles;
             ASSERT_EQ(v.size(), 2u);
             EXPECT_EQ(v[0].loadable, "False");
             EXPECT_EQ(v[1].loadable, "True");
             EXPECT_EQ(v[1].flipped, "1");
             EXPECT_EQ(v[1].uniqueNumber, "N-I");
             EXPECT_EQ(v[1].isPreloaded, "eTrue");
         }},
        {"a text that is no scenario has no consists", "<cBlueprintLoader><Name>x</Name></cBlueprintLoader>",
         [](const ScenarioConsists& r) { EXPECT_TRUE(r.consists.empty()); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        c.check(ReadConsists(c.xml, "English"));
    }
}

TEST(ScenarioReader, ATruncatedScenarioReadsWhatItHolds) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    const std::size_t full = ReadConsists(xml, "English").consists.size();
    for (std::size_t cut : {std::size_t{0}, std::size_t{10}, xml.size() / 3, xml.size() / 2, xml.size() - 30}) {
        const std::string part = xml.substr(0, cut);
        const ScenarioConsists read = ReadConsists(part, "English");
        EXPECT_LE(read.consists.size(), full) << cut;
        EXPECT_EQ(read.consists.size(), ConsistBoundaries(part).size() - 1) << cut;
    }
}

TEST(ScenarioReader, ReadingStopsWhenTheProgressSaysSo) {
    const std::string xml = Scenario(Consist(Vehicle("A")) + Consist(Vehicle("B")) + Consist(Vehicle("C")));
    std::vector<std::size_t> seen;
    const ScenarioConsists read = ReadConsists(xml, "English", [&](std::size_t done, std::size_t total) {
        seen.push_back(done);
        EXPECT_EQ(total, 3u);
        return done < 2;
    });
    EXPECT_EQ(read.consists.size(), 2u);
    EXPECT_EQ(seen, (std::vector<std::size_t>{0, 1, 2}));
}

TEST(ScenarioReader, PositionsOfConsistsAndVehiclesAndTheSplice) {
    std::string xml = Scenario(Consist(Vehicle("A") + Vehicle("B")) + Consist(Vehicle("C")));
    const long second = ConsistPosition(xml, 1);
    ASSERT_GT(second, 0);
    EXPECT_EQ(xml.compare(static_cast<std::size_t>(second - 1), 11, "<cConsist d"), 0);
    EXPECT_EQ(ConsistPosition(xml, 2), 0);
    EXPECT_EQ(ConsistPosition(xml, -1), 0);
    const long b = VehiclePosition(xml, 0, 1);
    ASSERT_GT(b, 0);
    const long bEnd = StockBlockEnd(xml, b);
    const std::string block = xml.substr(static_cast<std::size_t>(b - 1), static_cast<std::size_t>(bEnd - b));
    EXPECT_TRUE(block.starts_with("<cOwnedEntity") && block.ends_with("</cOwnedEntity>"));
    EXPECT_NE(block.find(">B</Name>"), std::string::npos);
    // Vehicle j of a consist steps on into the next consist when the first has fewer.
    EXPECT_EQ(VehiclePosition(xml, 0, 2), VehiclePosition(xml, 1, 0));
    EXPECT_EQ(VehiclePosition(xml, 1, 1), 0);
    EXPECT_EQ(ConsistEnd(xml, second), static_cast<long>(xml.find("</Record>")) + 1);

    ASSERT_TRUE(SpliceText(xml, b, bEnd, Vehicle("Z")));
    const ScenarioConsists read = ReadConsists(xml, "English");
    ASSERT_EQ(read.consists[0].vehicles.size(), 2u);
    EXPECT_EQ(read.consists[0].vehicles[1].name, "Z");
    const std::string before = xml;
    for (auto [start, end] : {std::pair{0L, 3L}, std::pair{5L, 4L}, std::pair{1L, static_cast<long>(xml.size()) + 2}}) {
        EXPECT_FALSE(SpliceText(xml, start, end, "x"));
        EXPECT_EQ(xml, before);
    }
    EXPECT_TRUE(SpliceText(xml, static_cast<long>(xml.size()) + 1, static_cast<long>(xml.size()) + 1, "!"));
    EXPECT_EQ(xml.back(), '!');
}

TEST(ScenarioReader, ScenarioAndServiceClasses) {
    struct Case {
        const char* value;
        ScenarioClass kind;
        int option;
    } cases[] = {
        {"eStandardScenarioClass", ScenarioClass::Standard, 0}, {"efreeroamscenarioclass", ScenarioClass::FreeRoam, 1},
        {" eCareerScenarioClass ", ScenarioClass::Career, 2},   {"eTutorialScenarioClass", ScenarioClass::Tutorial, 3},
        {"ETIMETABLESCENARIOCLASS", ScenarioClass::Timetable, 4}, {"eTemplateScenarioClass", ScenarioClass::Template, -1},
        {"eWorkshopScenarioClass", ScenarioClass::Unknown, -1}, {"", ScenarioClass::Unknown, -1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ScenarioClassOf(c.value), c.kind) << c.value;
        const ScenarioClassInfo* info = ClassInfo(c.kind);
        EXPECT_EQ(info ? info->option : -1, c.option) << c.value;
        if (c.option >= 0) {
            EXPECT_EQ(ScenarioClassOf(ClassValueOfOption(c.option)), c.kind);
        }
    }
    EXPECT_EQ(ClassValueOfOption(5), "");
    EXPECT_EQ(ClassValueOfOption(-1), "");
    EXPECT_STREQ(ClassInfo(ScenarioClass::FreeRoam)->caption, "FreeRoam Scenario");

    struct Word {
        const char* value;
        const char* word;
    } words[] = {{"0", "Special"}, {"4", "Hight-speed Freight"}, {" 10 ", "International"}, {"11", ""},
                 {"-1", ""},       {"x", ""},                    {"", ""},                       {"007", ""}};
    for (const Word& w : words) EXPECT_EQ(ServiceClassWord(w.value), w.word) << w.value;
}

TEST(ScenarioReader, StartTimesAsHoursAndMinutes) {
    struct Case {
        const char* seconds;
        const char* hhmm;
    } cases[] = {{"0", "0000"},     {"43200", "1200"}, {"3725.9", "0102"}, {"86399", "2359"},
                 {" 600 ", "0010"}, {"junk", "0000"},  {"", "0000"},       {"-60", "0000"}};
    for (const Case& c : cases) EXPECT_EQ(SecondsToHHMM(c.seconds), c.hhmm) << c.seconds;
}

}  // namespace
}  // namespace ferrolund::scenarios
