// .dcsv files: points cut out of the whole text, values put back with everything else
// left byte for byte, new files from the shipped templates, and writes that keep the old
// file whatever happens.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/app_context.h"
#include "core/simdata/dcsv_fixture.h"
#include "simdata/dcsv.h"
#include "simdata/graphs.h"
#include "support/locked_folder.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::simdata {
namespace {

namespace fs = std::filesystem;
using testing::DcsvText;

std::vector<DcsvPoint> Points(const testing::DcsvPairs& pairs) {
    std::vector<DcsvPoint> points;
    for (const auto& [x, y] : pairs) points.push_back({x, y});
    return points;
}

TEST(Dcsv, ReadsEveryItemsValuesAsText) {
    std::vector<DcsvPoint> points;
    ASSERT_EQ(ReadDcsvPoints(DcsvText({{"0", "0"}, {"0.125", "1250.5"}, {" 7 ", "abc"}}), points), "");
    ASSERT_EQ(points.size(), 3u);
    EXPECT_EQ(points[1].x, "0.125");
    EXPECT_EQ(points[1].y, "1250.5");
    EXPECT_EQ(points[2].x, " 7 ");
    EXPECT_EQ(DcsvNumber(points[2].y), 0);  // text that is not a number counts 0
    EXPECT_EQ(DcsvNumber("12.5e1"), 125);
    ASSERT_EQ(ReadDcsvPoints("<cCSVArray></cCSVArray>", points), "");
    EXPECT_TRUE(points.empty());
}

TEST(Dcsv, PutsValuesBackAndLeavesEveryOtherByte) {
    const std::string before = DcsvText({{"0", "0"}, {"0.5", "100"}, {"1", "200"}}, "Hartwell Jünction");
    std::string text = before;
    ASSERT_EQ(PutDcsvPoints(text, Points({{"0", "0"}, {" 0.4999999 ", "123456.75"}, {"1", "200"}})), "");
    std::string expected = before;
    expected.replace(expected.find(">0.5<") + 1, 3, "0.4999999");
    expected.replace(expected.find(">100<") + 1, 3, "123456.75");
    EXPECT_EQ(text, expected);
}

struct CountCase {
    const char* name;
    int items;
    std::vector<std::pair<std::string, std::string>> boxes;
    std::vector<std::pair<std::string, std::string>> expected;
};

class DcsvCounts : public ::testing::TestWithParam<CountCase> {};

TEST_P(DcsvCounts, LaterItemsKeepTheirValues) {
    const CountCase& c = GetParam();
    std::string text = DcsvText(testing::RisingPairs(c.items));
    ASSERT_EQ(PutDcsvPoints(text, Points(c.boxes)), "");
    EXPECT_EQ(text, DcsvText(c.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DcsvCounts,
    ::testing::Values(
        CountCase{"FewerBoxesThanItems", 4, {{"5", "6"}, {"7", "8"}}, {{"5", "6"}, {"7", "8"}, {"2", "20"}, {"3", "30"}}},
        CountCase{"MoreBoxesThanItems", 2, {{"5", "6"}, {"7", "8"}, {"9", "9"}}, {{"5", "6"}, {"7", "8"}}},
        CountCase{"StopsAtTheFirstEmptyX", 3, {{"5", "6"}, {"", "8"}, {"9", "9"}}, {{"5", "6"}, {"1", "10"}, {"2", "20"}}},
        CountCase{"AnEmptyYIsWritten", 2, {{"5", ""}}, {{"5", ""}, {"1", "10"}}}),
    [](const auto& info) { return std::string(info.param.name); });

struct BrokenCase {
    const char* name;
    std::string text;
    const char* message;
};

class DcsvBroken : public ::testing::TestWithParam<BrokenCase> {};

TEST_P(DcsvBroken, IsToldAndNothingChanges) {
    const BrokenCase& c = GetParam();
    std::vector<DcsvPoint> points;
    EXPECT_EQ(ReadDcsvPoints(c.text, points), c.message);
    EXPECT_TRUE(points.empty());
    std::string text = c.text;
    EXPECT_EQ(PutDcsvPoints(text, Points({{"9", "9"}, {"9", "9"}})), c.message);
    EXPECT_EQ(text, c.text);
}

const std::string kGood = testing::DcsvItem("1", "2", "", 0);

INSTANTIATE_TEST_SUITE_P(
    Cases, DcsvBroken,
    ::testing::Values(
        BrokenCase{"NoY", kGood + "<cCSVItem><X>1</X></cCSVItem>",
                   "The .dcsv file is damaged: item 2 has no <Y> element."},
        BrokenCase{"NoX", "<cCSVItem><Y>1</Y><Name>X</Name></cCSVItem>",
                   "The .dcsv file is damaged: item 1 has no <X> element."},
        BrokenCase{"UnclosedX", kGood + "<cCSVItem><X>1<Y>2</Y></cCSVItem>",
                   "The .dcsv file is damaged: item 2 has an unclosed <X> element."},
        BrokenCase{"UnclosedItem", "<cCSVItem><X>1</X><Y>2</Y>" + kGood,
                   "The .dcsv file is damaged: item 1 is not closed."},
        BrokenCase{"LastItemUnclosed", kGood + "<cCSVItem><X>1</X><Y>2</Y>",
                   "The .dcsv file is damaged: item 2 is not closed."}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(Dcsv, RefusesAValueThatWouldBreakTheFile) {
    const std::string before = DcsvText({{"1", "2"}});
    std::string text = before;
    EXPECT_EQ(PutDcsvPoints(text, Points({{"1</X><X>", "2"}})),
              "The value 1</X><X> cannot be written into a .dcsv file.");
    EXPECT_EQ(text, before);
}

TEST(Dcsv, FindMaxAndFindMin) {
    EXPECT_EQ(FindMax({3, -1, 7.5, 2}), 7.5);
    EXPECT_EQ(FindMin({3, -1, 7.5, 2}), -1);
    EXPECT_EQ(FindMax({}), 0);
    EXPECT_EQ(FindMin({}), 0);
}

TEST(Dcsv, NewFileFromTheShippedTemplatesReadsBack) {
    testing::TempFolder app;
    fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", app.path() / "Templates");
    app::AppContext ctx;
    ctx.appRoot = app.system();
    std::string header, body;
    ASSERT_FALSE(LoadDcsvTemplates(ctx, header, body));
    const std::string text = NewDcsvText(header, body, {{"-3.5", "51.25", "Bahnhof Süd"}, {"-3.4", "51.3", "aaaa"}});
    EXPECT_TRUE(text.ends_with("</Name>\r\n\t\t</cCSVItem>\r\n\t</CSVItem>\r\n</cCSVArray>\r\n")) << text;
    EXPECT_NE(text.find("d:id=\"1\""), std::string::npos);
    EXPECT_NE(text.find(">Bahnhof Süd</Name>"), std::string::npos);
    EXPECT_NE(text.find(">aaaa</Name>"), std::string::npos);  // a name is not a marker
    std::vector<DcsvPoint> points;
    ASSERT_EQ(ReadDcsvPoints(text, points), "");
    ASSERT_EQ(points.size(), 2u);
    EXPECT_EQ(points[0].x, "-3.5");
    EXPECT_EQ(points[1].y, "51.3");
    EXPECT_EQ(NewDcsvText(header, body, {}), header + "\t</CSVItem>\r\n</cCSVArray>\r\n");

    fs::remove(app.path() / "Templates" / "DCSVBody.txt");
    const base::Status missing = LoadDcsvTemplates(ctx, header, body);
    ASSERT_TRUE(missing);
    EXPECT_NE(missing->description.find("DCSVBody.txt"), std::string::npos);
}

TEST(Dcsv, EachWriteKeepsTheOldFileUnderTheFirstFreeBackupName) {
    testing::TempFolder folder;
    const fs::path file = folder.write("Lokomotivé/Curve.dcsv", "first");
    folder.write("Lokomotivé/Curve.dcsv.bak1", "someone else's");
    const std::string path = file.string();
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"Curve.dcsv.bak", "first"}, {"Curve.dcsv.bak2", "second"}, {"Curve.dcsv.bak3", "third"}};
    std::string backup;
    for (const char* text : {"second", "third", "fourth"}) ASSERT_FALSE(WriteDcsvText(path, text, backup));
    EXPECT_EQ(folder.read("Lokomotivé/Curve.dcsv"), "fourth");
    EXPECT_EQ(fs::path(backup).filename(), "Curve.dcsv.bak3");
    for (const auto& [name, text] : expected) EXPECT_EQ(folder.read("Lokomotivé/" + name), text) << name;
    EXPECT_EQ(folder.read("Lokomotivé/Curve.dcsv.bak1"), "someone else's");

    ASSERT_FALSE(WriteDcsvText((folder.path() / "Lokomotivé" / "New.dcsv").string(), "new", backup));
    EXPECT_EQ(backup, "");
    EXPECT_EQ(folder.read("Lokomotivé/New.dcsv"), "new");
}

TEST(Dcsv, AWriteIntoALockedFolderKeepsTheOriginal) {
    testing::TempFolder folder;
    const fs::path file = folder.write("Sim/Curve.dcsv", "original");
    testing::LockedFolder lock(folder.path() / "Sim");
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    std::string backup;
    EXPECT_TRUE(WriteDcsvText(file.string(), "new", backup));
    EXPECT_EQ(folder.read("Sim/Curve.dcsv"), "original");
    EXPECT_EQ(fs::directory_iterator(folder.path() / "Sim")->path().filename(), "Curve.dcsv");
}

// The graphs screen's model over real files.
struct GraphsFixture {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    CurveFiles files{};

    GraphsFixture() {
        ctx.appRoot = (root.path() / "app").string();
        fs::create_directories(root.path() / "app");
        ctx.ui = &ui;
    }
    std::string put(int curve, const std::string& text) {
        const std::string name = kCurves[static_cast<std::size_t>(curve)].file;
        files[static_cast<std::size_t>(curve)] = root.write("Assets/Prov/Lök/Simulation/" + name, text).string();
        return "Assets/Prov/Lök/Simulation/" + name;
    }
};

TEST(Graphs, ShowsTheFirst21ItemsAndSavesOnlyThose) {
    GraphsFixture f;
    const std::string file = f.put(2, DcsvText(testing::RisingPairs(25)));
    Graphs graphs("Class 58 Gärtner", false, f.files);
    EXPECT_EQ(graphs.shownCurves(), (std::array<int, 4>{0, 1, 2, 3}));
    ASSERT_TRUE(graphs.loadCurve(f.ctx, 2));
    EXPECT_EQ(graphs.label(), "TractiveEffortVsSpeed Data for Class 58 Gärtner");
    EXPECT_EQ(graphs.XValues[20], "20");
    EXPECT_EQ(graphs.picture().limits.XMax, 20);
    EXPECT_EQ(graphs.picture().limits.YMax, 200);
    graphs.YValues[0] = "5";
    ASSERT_TRUE(graphs.save(f.ctx));
    testing::DcsvPairs expected = testing::RisingPairs(25);
    expected[0].second = "5";
    EXPECT_EQ(f.root.read(file), DcsvText(expected));
    EXPECT_EQ(f.root.read(file + ".bak"), DcsvText(testing::RisingPairs(25)));
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(Graphs, AMissingFileIsToldByItsName) {
    GraphsFixture f;
    f.files[6] = (f.root.path() / "gone.dcsv").string();
    Graphs graphs("Hartwell 4-6-0", true, f.files);
    EXPECT_EQ(graphs.shownCurves(), (std::array<int, 4>{4, 5, 6, 7}));
    EXPECT_FALSE(graphs.loadCurve(f.ctx, 4));
    EXPECT_FALSE(graphs.loadCurve(f.ctx, 6));
    EXPECT_EQ(f.ui.texts(), (std::vector<std::string>{"No BurnRateVsSteamUsageRate.dcsv file found for this loco",
                                                      "No TractiveEffortLinearVsSpeed.dcsv file found for this loco"}));
    EXPECT_EQ(graphs.curve(), -1);
    EXPECT_FALSE(graphs.save(f.ctx));
}

TEST(Graphs, AMalformedValueWritesNothing) {
    GraphsFixture f;
    const std::string file = f.put(0, DcsvText(testing::RisingPairs(3)));
    Graphs graphs("Loco", false, f.files);
    ASSERT_TRUE(graphs.loadCurve(f.ctx, 0));
    graphs.XValues[1] = "<1>";
    EXPECT_FALSE(graphs.save(f.ctx));
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"The value <1> cannot be written into a .dcsv file."});
    EXPECT_EQ(f.root.read(file), DcsvText(testing::RisingPairs(3)));
    EXPECT_FALSE(fs::exists(f.root.path() / (file + ".bak")));
}

TEST(Graphs, RedrawDrawsTheRetypedCurveGreenOverTheFilesRed) {
    GraphsFixture f;
    f.put(0, DcsvText({{"0", "0"}, {"1", "1000"}}));
    Graphs graphs("Loco", false, f.files);
    ASSERT_TRUE(graphs.loadCurve(f.ctx, 0));
    graphs.XValues[2] = "2";
    graphs.YValues[2] = "abc";  // counts 0
    graphs.redraw();
    const PlotPicture& picture = graphs.picture();
    ASSERT_EQ(picture.curves.size(), 2u);
    EXPECT_EQ(picture.curves[0].red, 255);
    EXPECT_EQ(picture.curves[1].green, 255);
    EXPECT_EQ(picture.curves[1].xs, (std::vector<double>{0, 1, 2}));
    EXPECT_EQ(picture.curves[1].ys, (std::vector<double>{0, 1000, 0}));
    EXPECT_EQ(picture.limits.XMax, 2);

    graphs.XValues[0].clear();  // an empty first box: the frame alone
    graphs.redraw();
    EXPECT_TRUE(graphs.picture().curves.back().xs.empty());
    graphs.clear();
    EXPECT_EQ(graphs.label(), "");
    EXPECT_TRUE(graphs.picture().curves.empty());
    EXPECT_EQ(graphs.XValues[1], "");
}

}  // namespace
}  // namespace ferrolund::simdata
