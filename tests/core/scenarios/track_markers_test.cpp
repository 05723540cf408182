#include "scenarios/track_markers.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/sample/sample_fixture.h"
#include "core/tools/testdata_file.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/codepage.h"

namespace ferrolund::scenarios {
namespace {

constexpr const char* kSampleRoute = "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10";

struct Markers {
    testing::ScriptedUi ui;
    testing::TempFolder own;
    app::AppContext ctx;
    explicit Markers(const std::string& gameRoot) {
        ctx.prefs.gameRoot = gameRoot;
        ctx.appRoot = own.system() + "/Ferrolund-é";
        ctx.ui = &ui;
    }
    bool indexExists(const std::string& route) const {
        return std::filesystem::exists(own.path() / "Ferrolund-é" / "Index" / (route + ".txt"));
    }
};

TEST(TrackMarkers, TheSampleRouteIsIndexedOnceAfterTheQuestion) {
    Markers m(sample::SampleRoot().string());
    m.ui.answers = {base::Answer::Ok};
    MarkerIndex index;
    bool cancelled = true;
    ASSERT_FALSE(LoadMarkerIndex(m.ctx, kSampleRoute, index, cancelled));
    EXPECT_FALSE(cancelled);
    ASSERT_EQ(m.ui.shown.size(), 1u);
    EXPECT_EQ(m.ui.shown[0].text, "About to index this route's tracks.bin file.\nThis may take some time.");
    EXPECT_TRUE(m.ui.shown[0].question);
    ASSERT_EQ(index.devStrings.size(), 1u);
    EXPECT_EQ(index.markers[0], "Ostvale Platform 1 - Summit Sidings - North Portal");
    EXPECT_EQ(index.devStrings[0].size(), 36u);
    std::string names;
    EXPECT_TRUE(index.find(tools::UpperCp1252(index.devStrings[0]), names));
    EXPECT_EQ(names, index.markers[0]);
    EXPECT_FALSE(index.find("no-such-ribbon", names));
    EXPECT_TRUE(std::filesystem::exists(m.own.path() / "Ferrolund-é" / "TempFiles" / "Tracks.xml"));

    // A second load reads the file and asks nothing.
    MarkerIndex again;
    ASSERT_FALSE(LoadMarkerIndex(m.ctx, kSampleRoute, again, cancelled));
    EXPECT_EQ(m.ui.shown.size(), 1u);
    EXPECT_EQ(again.markers, index.markers);
}

TEST(TrackMarkers, CancelAbortAndMissingTracksMakeNoIndex) {
    struct Case {
        const char* what;
        std::string route;
        base::Answer answer;
        bool abort;
        bool cancelled, failed;
    } cases[] = {
        {"cancel", kSampleRoute, base::Answer::Cancel, false, true, false},
        {"abort", kSampleRoute, base::Answer::Ok, true, false, true},
        {"no such route", "no-such-route", base::Answer::Ok, false, false, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Markers m(sample::SampleRoot().string());
        m.ui.answers = {c.answer};
        m.ctx.abortFlag = c.abort;
        MarkerIndex index;
        index.devStrings = {"left over"};
        bool cancelled = false;
        const base::Status status = LoadMarkerIndex(m.ctx, c.route, index, cancelled);
        EXPECT_EQ(cancelled, c.cancelled);
        EXPECT_EQ(static_cast<bool>(status), c.failed);
        EXPECT_TRUE(index.devStrings.empty());
        EXPECT_FALSE(m.indexExists(c.route));
    }
}

TEST(TrackMarkers, TheRealRouteIsIndexedWithoutFailure) {
    FERROLUND_READ_TESTDATA(tracks, "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Networks/Tracks.bin");
    testing::TempFolder game;
    game.write("Content/Routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Networks/Tracks.bin", tracks);
    Markers m(game.system());
    m.ui.answers = {base::Answer::Ok};
    MarkerIndex index;
    bool cancelled = false;
    ASSERT_FALSE(LoadMarkerIndex(m.ctx, "ff1ebaa8-82f5-43ca-9816-859956f4d56c", index, cancelled));
    EXPECT_TRUE(m.indexExists("ff1ebaa8-82f5-43ca-9816-859956f4d56c"));
    EXPECT_EQ(index.devStrings.size(), index.markers.size());
    EXPECT_FALSE(m.ui.progressSteps.empty());
}

TEST(TrackMarkers, LinesFromMadeUpNetworks) {
    auto ribbon = [](const std::string& dev, const std::string& properties) {
        return "<Network-cTrackRibbon><RibbonID><cGUID><DevString>" + dev +
               "</DevString></cGUID></RibbonID><Properties><Network-cPropertyContainer><Property>" + properties +
               "</Property></Network-cPropertyContainer></Properties></Network-cTrackRibbon>";
    };
    auto marker = [](const std::string& kind, const std::string& component, const std::string& name) {
        return "<" + kind + "><Entity><cOwnedEntity><Component><" + component + "><DisplayName>" + name +
               "</DisplayName></" + component + "></Component></cOwnedEntity></Entity></" + kind + ">";
    };
    const std::string platform = marker("Network-cTrackMarkerProperty", "Network-cTrackMarkerComponent", "Gare &amp; Quai");
    const std::string portal = marker("Network-cPortalProperty", "Network-cTransferPointComponent", "Süd");
    const std::string wrong = marker("Network-cPortalProperty", "Network-cTrackMarkerComponent", "Wrong");
    struct Case {
        const char* what;
        std::string xml;
        std::string lines;
        bool failed;
    } cases[] = {
        {"marker and portal", "<r>" + ribbon("A", platform + portal) + "</r>", "A,Gare & Quai - Süd\r\n", false},
        {"a ribbon without markers writes no line", "<r>" + ribbon("B", "<Other/>") + ribbon("C", portal) + "</r>",
         "C,Süd\r\n", false},
        {"a portal read at the marker's path is passed over", "<r>" + ribbon("D", wrong) + "</r>", "", false},
        {"no ribbons", "<r/>", "", false},
        {"broken XML", "<r><Network-cTrackRibbon>", "", true},
        {"not XML at all", std::string("SERZ\0\x01", 6), "", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Markers m(".");
        std::string lines = "left over";
        const base::Status status = MarkerLinesFromXml(m.ctx, c.xml, lines);
        EXPECT_EQ(static_cast<bool>(status), c.failed);
        EXPECT_EQ(lines, c.lines);
    }
}

TEST(TrackMarkers, IndexTextIsCutAtTheFirstComma) {
    const MarkerIndex index = ParseMarkerIndex("a,One - Two\r\nb,Three, the third\n\r\nc\r\n");
    EXPECT_EQ(index.devStrings, (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(index.markers, (std::vector<std::string>{"One - Two", "Three, the third", ""}));
    EXPECT_TRUE(ParseMarkerIndex("").devStrings.empty());
}

}  // namespace
}  // namespace ferrolund::scenarios
