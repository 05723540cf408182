// "Process DCSV": a .dcsv gets back the values of the source .csv it was made from.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/app_context.h"
#include "core/simdata/dcsv_fixture.h"
#include "simdata/dcsv_process.h"
#include "support/locked_folder.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::simdata {
namespace {

namespace fs = std::filesystem;
using testing::DcsvText;

constexpr const char* kDone = "Precision of .DCSV files has been improved, a backup has been made.";

struct SourceCase {
    const char* dcsv;
    const char* csv;
};

class DcsvSource : public ::testing::TestWithParam<SourceCase> {};

TEST_P(DcsvSource, IsTheSamePathUnderSource) { EXPECT_EQ(SourceCsvOf(GetParam().dcsv), GetParam().csv); }

INSTANTIATE_TEST_SUITE_P(
    Cases, DcsvSource,
    ::testing::Values(SourceCase{"C:\\RW\\Assets\\Prov\\Prod\\Markers\\Valley.dcsv", "C:\\RW\\Source\\Prov\\Prod\\Markers\\Valley.csv"},
                      SourceCase{"C:\\RW\\assets\\P\\Q\\Zürich.Nord.DCSV", "C:\\RW\\Source\\P\\Q\\Zürich.Nord.csv"},
                      SourceCase{"/home/me/RailWorks/Assets/P/Q/m.dcsv", "/home/me/RailWorks/Source/P/Q/m.csv"},
                      SourceCase{"C:\\Assets\\RW\\Assets\\P\\m.dcsv", "C:\\Assets\\RW\\Source\\P\\m.csv"},
                      SourceCase{"C:\\RW\\Content\\m.dcsv", ""}));

TEST(DcsvProcess, ReadsTheSourceLinesItCanUse) {
    const std::vector<DcsvPoint> points = ReadSourceCsv(
        "X,Y\r\n"                      // a heading
        "-3.1234567,51.7654321\r\n"
        "\r\n"
        "1.5,2.5,9\n"                  // a third number is left over
        "Hartwell Jünction,4.25,5\r\n" // a named marker
        " 6 , 7 ");
    ASSERT_EQ(points.size(), 4u);
    EXPECT_EQ(points[0].x, "-3.1234567");
    EXPECT_EQ(points[0].y, "51.7654321");
    EXPECT_EQ(points[1].y, "2.5");
    EXPECT_EQ(points[2].x, "4.25");
    EXPECT_EQ(points[2].y, "5");
    EXPECT_EQ(points[3].x, "6");
}

struct ProcessFixture {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ProcessFixture() {
        fs::create_directories(root.path() / "app");
        ctx.appRoot = (root.path() / "app").string();
        ctx.ui = &ui;
    }
};

TEST(DcsvProcess, RestoresThePrecisionAndKeepsABackup) {
    ProcessFixture f;
    const std::string lost = DcsvText({{"-3.12346", "51.7654"}, {"-3.2", "51.8"}, {"-3.3", "51.9"}}, "Süd");
    const fs::path dcsv = f.root.write("RailWorks/Assets/Brackenridge/Scenery/Markers/Valley.dcsv", lost);
    f.root.write("RailWorks/Source/Brackenridge/Scenery/Markers/Valley.csv",
                 "-3.1234567,51.7654321\r\n-3.2000001,51.8000001\r\n");
    const ProcessOutcome outcome = ProcessDcsv(f.ctx, {dcsv.string()});
    EXPECT_EQ(outcome.improved, 1);
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{kDone});
    EXPECT_EQ(f.root.read("RailWorks/Assets/Brackenridge/Scenery/Markers/Valley.dcsv"),
              DcsvText({{"-3.1234567", "51.7654321"}, {"-3.2000001", "51.8000001"}, {"-3.3", "51.9"}}, "Süd"));
    EXPECT_EQ(f.root.read("RailWorks/Assets/Brackenridge/Scenery/Markers/Valley.dcsv.bak"), lost);
}

TEST(DcsvProcess, GoesOnPastAFileWithoutSource) {
    ProcessFixture f;
    const std::string text = DcsvText({{"1", "2"}});
    const fs::path lonely = f.root.write("RailWorks/Assets/P/Q/Lonely.dcsv", text);
    const fs::path other = f.root.write("RailWorks/Assets/P/Q/Other.dcsv", text);
    const fs::path broken = f.root.write("RailWorks/Assets/P/Q/Broken.dcsv", "<cCSVItem><X>1</X>");
    f.root.write("RailWorks/Source/P/Q/other.CSV", "5,6\n");
    f.root.write("RailWorks/Source/P/Q/Broken.csv", "5,6\n");
    const ProcessOutcome outcome = ProcessDcsv(f.ctx, {lonely.string(), broken.string(), other.string()});
    EXPECT_EQ(outcome.improved, 1);
    EXPECT_EQ(outcome.unfound, 1);
    EXPECT_EQ(outcome.failed, 1);
    EXPECT_EQ(f.ui.texts(), (std::vector<std::string>{"The original Source .csv for Lonely.dcsv could not be found",
                                                      "The .dcsv file is damaged: item 1 is not closed.", kDone}));
    EXPECT_EQ(f.root.read("RailWorks/Assets/P/Q/Lonely.dcsv"), text);
    EXPECT_EQ(f.root.read("RailWorks/Assets/P/Q/Broken.dcsv"), "<cCSVItem><X>1</X>");
    EXPECT_EQ(f.root.read("RailWorks/Assets/P/Q/Other.dcsv"), DcsvText({{"5", "6"}}));
    EXPECT_FALSE(fs::exists(f.root.path() / "RailWorks/Assets/P/Q/Lonely.dcsv.bak"));
    EXPECT_FALSE(fs::exists(f.root.path() / "RailWorks/Assets/P/Q/Broken.dcsv.bak"));
}

TEST(DcsvProcess, ALockedFolderKeepsTheFile) {
    ProcessFixture f;
    const std::string text = DcsvText({{"1", "2"}});
    const fs::path dcsv = f.root.write("RailWorks/Assets/P/Q/M.dcsv", text);
    f.root.write("RailWorks/Source/P/Q/M.csv", "1.25,2.5\n");
    testing::LockedFolder lock(dcsv.parent_path());
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    const ProcessOutcome outcome = ProcessDcsv(f.ctx, {dcsv.string()});
    EXPECT_EQ(outcome.failed, 1);
    EXPECT_EQ(f.root.read("RailWorks/Assets/P/Q/M.dcsv"), text);
}

}  // namespace
}  // namespace ferrolund::simdata
