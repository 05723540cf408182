#include "scenarios/scenario_report.h"

#include <gtest/gtest.h>

#include <map>

#include "core/tools/testdata_file.h"
#include "tools/tags.h"

namespace ferrolund::scenarios {
namespace {

// The report lines of one consist as "title=value" texts, for compact comparison.
std::vector<std::string> Flat(const ConsistReport& report) {
    std::vector<std::string> lines;
    for (const ReportLine& line : report.lines) lines.push_back(line.title + "=" + line.value);
    return lines;
}

std::string Localised(const std::string& english) {
    return "<Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">" + english +
           "</English><French d:type=\"cDeltaString\"></French></Localisation-cUserLocalisedString>";
}

std::string Target(const std::string& name, const std::string& due, const std::string& pickingUp,
                   const std::string& place = "") {
    return "<cDriverInstructionTarget d:id=\"7\"><DisplayName d:type=\"cDeltaString\">" + name +
           "</DisplayName><Timetabled d:type=\"bool\">0</Timetabled><PickingUp d:type=\"bool\">" + pickingUp +
           "</PickingUp><TickedTime d:type=\"sFloat32\">0</TickedTime><DueTime d:type=\"sFloat32\">" + due +
           "</DueTime><GroupName>" + Localised(place) + "</GroupName></cDriverInstructionTarget>";
}

struct ConsistShape {
    std::string service{};       // empty: a loose consist
    std::string start = "25200";
    std::string arrivalDue = "600";
    std::string instructions{};  // the DriverInstruction elements
    std::string ribbon = "aaaa-1111";
    std::string x = "12", z = "-34";  // empty: no far coordinate
};

// One consist element in the converter's form, in the order the game writes it.
std::string Consist(const ConsistShape& shape) {
    std::string xml = "<cConsist d:id=\"1\"><RailVehicles><cOwnedEntity d:id=\"2\">";
    if (!shape.x.empty())
        xml += "<X><cFarCoordinate><RouteCoordinate><cRouteCoordinate><Distance d:type=\"sInt32\">" + shape.x +
               "</Distance></cRouteCoordinate></RouteCoordinate></cFarCoordinate></X>"
               "<Z><cFarCoordinate><RouteCoordinate><cRouteCoordinate><Distance d:type=\"sInt32\">" + shape.z +
               "</Distance></cRouteCoordinate></RouteCoordinate></cFarCoordinate></Z>";
    xml += "<Name d:type=\"cDeltaString\">Wagon</Name></cOwnedEntity></RailVehicles>";
    xml += "<FrontFollower><Network-cTrackFollower><RibbonID><cGUID><DevString d:type=\"cDeltaString\">" +
           shape.ribbon + "</DevString></cGUID></RibbonID></Network-cTrackFollower></FrontFollower>";
    if (!shape.service.empty()) {
        xml += "<Driver><cDriver><FinalDestination>" + Target("Ostvale Yard", shape.arrivalDue, "0") +
               "</FinalDestination><PlayerDriver d:type=\"bool\">0</PlayerDriver><ServiceName>" +
               Localised(shape.service) + "</ServiceName><InitialRV><e d:type=\"cDeltaString\">1</e></InitialRV>"
               "<StartTime d:type=\"sFloat32\">" + shape.start + "</StartTime><ServiceClass d:type=\"sInt32\">3"
               "</ServiceClass><DriverInstructionContainer><cDriverInstructionContainer><DriverInstruction>" +
               shape.instructions + "</DriverInstruction></cDriverInstructionContainer></DriverInstructionContainer>"
               "</cDriver></Driver>";
    }
    return xml + "</cConsist>";
}

std::string Scenario(const std::vector<ConsistShape>& consists) {
    std::string xml = "<?xml version=\"1.0\"?><cRecordSet><Record>";
    for (const ConsistShape& shape : consists) xml += Consist(shape);
    return xml + "</Record></cRecordSet>";
}

std::string Instruction(const std::string& kind, const std::string& triggered, const std::string& display,
                        const std::string& targets) {
    return "<" + kind + " d:id=\"9\"><ActivationLevel d:type=\"sInt16\">0</ActivationLevel><TriggeredText>" +
           Localised(triggered) + "</TriggeredText><UntriggeredText>" + Localised("") +
           "</UntriggeredText><DisplayText>" + Localised(display) + "</DisplayText><DeltaTarget>" + targets +
           "</DeltaTarget></" + kind + ">";
}

TEST(ScenarioReport, ClockPlusCarriesMinutesAndRunsPastMidnight) {
    struct Case {
        const char* start;
        const char* span;
        const char* shown;
    } cases[] = {
        {"45300", "4136.07", "1343"},  // 12:35 plus 68 minutes
        {"85800", "1200", "2410"},     // 23:50 plus 20 minutes: past 2400, not wrapped
        {"3540", "60", "0100"},        // the minute carry
        {"3599.9", "0", "0059"},       // a fraction of the start is dropped
        {"0", "-59.9", "0000"},        // the sign of the span is ignored, whole seconds only
        {"3600", "-7200", "0300"},
        {"86399", "86400", "4759"},
        {"abc", "", "0000"},           // no number counts as 0
        {"-500", "120", "0002"},       // a negative start counts as midnight
    };
    for (const Case& c : cases) EXPECT_EQ(ClockPlus(c.start, c.span), c.shown) << c.start << " + " << c.span;
}

TEST(ScenarioReport, BuiltConsistsGiveTheirLinesInOrder) {
    const std::string stop = Instruction("cStopAtDestinations", "Stop at Ostvale", "Call at Brenn",
                                         Target("Brenn Platform 1", "1890", "1", "Brenn")) +
                             Instruction("cPickUpPassengers", "", "", Target("Kilmory", "3000", "0"));
    const std::string xml = Scenario({
        {.service = "1A01 Express", .start = "85800", .arrivalDue = "1200", .instructions = stop},
        {.service = "", .ribbon = "bbbb-2222"},  // loose, its ribbon has markers
        {.service = "2B02", .ribbon = "cccc-3333", .x = ""},  // ribbon unknown, no tile either
    });
    const std::map<std::string, std::string, std::less<>> index{{"aaaa-1111", "Ostvale - Yard Throat"},
                                                                {"bbbb-2222", "Siding 4"}};
    ReportOptions options;
    options.markers = [&](std::string_view ribbon) {
        const auto found = index.find(ribbon);
        return found == index.end() ? std::string() : found->second;
    };
    struct Case {
        bool loose;
        std::vector<std::vector<std::string>> consists;
    } cases[] = {
        {false,
         {{"Service Name=1A01 Express", "Service Class=Stopping Passenger", "Final Destination=Ostvale Yard",
           "Picking Up =No", "Origin=Ostvale - Yard Throat", "Start Time=2350", "Arrival Time =2410",
           "Triggered Instructions=Stop at Ostvale", "Drivers Instructions=Call at Brenn", "Location=Brenn",
           "Picking Up Here=Yes", "Departure Time =2421", "Location=Kilmory", "Picking Up Here=No",
           "Departure Time =2440"},
          {"Service Name=2B02", "Service Class=Stopping Passenger", "Final Destination=Ostvale Yard",
           "Picking Up =No", "Start Time=0700", "Arrival Time =0710"}}},
        {true,
         {{},
          {"Service Name=Loose Consist", "Final Destination=Not Shown", "Origin=Siding 4"},
          {}}},
    };
    for (const Case& c : cases) {
        options.includeLoose = c.loose;
        const std::vector<ConsistReport> report = ScenarioReport(xml, options);
        if (!c.loose) {
            ASSERT_EQ(report.size(), 2u);
            EXPECT_EQ(Flat(report[0]), c.consists[0]);
            EXPECT_EQ(Flat(report[1]), c.consists[1]);
            EXPECT_EQ(report[1].consist, 2);
        } else {
            ASSERT_EQ(report.size(), 3u);
            EXPECT_TRUE(report[1].loose);
            EXPECT_EQ(Flat(report[1]), c.consists[1]);
        }
    }
}

TEST(ScenarioReport, AnUnknownRibbonFallsBackToTheTile) {
    const std::string xml = Scenario({{.service = "3C03", .ribbon = "dddd"}, {.service = "4D04", .x = "-7", .z = "0"}});
    ReportOptions options;
    options.markers = [](std::string_view) { return std::string(); };
    const auto report = ScenarioReport(xml, options);
    ASSERT_EQ(report.size(), 2u);
    EXPECT_EQ(report[0].lines[4].title, "Origin");
    EXPECT_EQ(report[0].lines[4].value, "On Track in tile +000012 -000034");
    EXPECT_EQ(report[1].lines[4].value, "On Track in tile -000007 +000000");
    // Without an index at all the tile is shown as well.
    EXPECT_EQ(ScenarioReport(xml, {})[0].lines[4].value, "On Track in tile +000012 -000034");
}

TEST(ScenarioReport, TheGameScenarioReportsItsDrivenShuntingService) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    ReportOptions options;
    const auto services = ScenarioReport(xml, options);
    options.includeLoose = true;
    const auto all = ScenarioReport(xml, options);
    EXPECT_EQ(services.size(), 5u);
    EXPECT_EQ(all.size(), 21u);
    const auto driven = std::find_if(services.begin(), services.end(), [](const ConsistReport& r) {
        return r.lines[0].value == "6C58 10:45 Heathfield-St Blazey";
    });
    ASSERT_NE(driven, services.end());
    const std::vector<std::string> lines = Flat(*driven);
    ASSERT_GE(lines.size(), 7u);
    EXPECT_EQ(lines[1], "Service Class=Standard Freight");
    EXPECT_EQ(lines[2], "Final Destination=St Blazey Fowey Fuel Line ");
    EXPECT_EQ(lines[3], "Picking Up =Yes");
    EXPECT_EQ(lines[4].rfind("Origin=On Track in tile ", 0), 0u) << lines[4];
    EXPECT_EQ(lines[5], "Start Time=1235");
    EXPECT_EQ(lines[6], "Arrival Time =1343");
    EXPECT_NE(std::find(lines.begin(), lines.end(), "Location=St Blazey Fowey Main"), lines.end());
    for (const ConsistReport& consist : all) {
        if (!consist.loose) continue;
        for (const ReportLine& line : consist.lines) EXPECT_NE(line.title, "Start Time") << "a loose consist has no times";
    }
}

TEST(ScenarioReport, TheSmallScenarioHasFourServicesAtSeven) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    const auto report = ScenarioReport(xml, {});
    ASSERT_EQ(report.size(), 4u);
    EXPECT_EQ(report[0].lines[0].value, "Service1");
    for (const ConsistReport& consist : report) {
        const auto lines = Flat(consist);
        EXPECT_NE(std::find(lines.begin(), lines.end(), "Start Time=0700"), lines.end());
    }
    const auto rows = ReportRows(report);
    std::size_t lines = 0;
    for (const auto& consist : report) lines += consist.lines.size();
    EXPECT_EQ(rows.size(), lines + 3) << "one blank row between two consists";
}

TEST(ScenarioReport, TimetabledFlagsAreSetThroughoutTheText) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    struct Case {
        const char* what;
        std::string text;
        int count;
    } cases[] = {
        {"the game scenario", xml, 18},
        {"padded values", "<a><Timetabled d:type=\"bool\"> 0 </Timetabled><TIMETABLED>1</TIMETABLED></a>", 2},
        {"none", "<a><Timetable>1</Timetable></a>", 0},
        {"an unclosed flag", "<Timetabled d:type=\"bool\">0</Timetabled><Timetabled>0", 1},
    };
    for (const Case& c : cases) {
        for (const bool on : {true, false}) {
            std::string mine = c.text;
            EXPECT_EQ(SetTimetabled(mine, on), c.count) << c.what;
            // The tag routine's loop over the whole text gives the same text.
            std::string looped = c.text;
            long pos = 1;
            while (pos > 0) tools::PutDetail(looped, pos, "Timetabled", on ? "1" : "0");
            EXPECT_EQ(mine, looped) << c.what;
        }
    }
    std::string text = xml;
    SetTimetabled(text, true);
    EXPECT_EQ(text.find("<Timetabled d:type=\"bool\">0<"), std::string::npos);
    EXPECT_EQ(text.size(), xml.size());
}

}  // namespace
}  // namespace ferrolund::scenarios
