// ferrolund-cli dcsv: the points of a curve, its chart as PNG and SVG, and the answers to
// wrong arguments and bad files.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/simdata/dcsv_fixture.h"
#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;
using ferrolund::testing::Cli;
using ferrolund::testing::DcsvText;

TEST(DcsvVerb, PrintsThePointsAsTheFileHoldsThem) {
    ferrolund::testing::TempFolder temp;
    const fs::path file = temp.write("Lök/TractiveEffortVsSpeed.dcsv",
                                     DcsvText({{"0", "300000"}, {"12.5", "250000.25"}}));
    const auto run = Cli({"dcsv", file.string()}, temp.system());
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "0,300000\n12.5,250000.25\n");
}

struct UsageCase {
    const char* name;
    std::vector<std::string> args;
    int code;
    const char* err;
};

class DcsvVerbFails : public ::testing::TestWithParam<UsageCase> {};

TEST_P(DcsvVerbFails, WithItsExitCode) {
    ferrolund::testing::TempFolder temp;
    temp.write("bad.dcsv", "<cCSVItem><Y>1</Y></cCSVItem>");
    temp.write("good.dcsv", DcsvText({{"1", "2"}}));
    std::vector<std::string> args{"dcsv"};
    // "@name" is a file of the test's folder.
    for (const std::string& arg : GetParam().args)
        args.push_back(arg.front() == '@' ? temp.system() + "/" + arg.substr(1) : arg);
    const auto run = Cli(args, temp.system());
    EXPECT_EQ(run.code, GetParam().code);
    EXPECT_NE(run.err.find(GetParam().err), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DcsvVerbFails,
    ::testing::Values(UsageCase{"NoFile", {}, 2, "usage: dcsv FILE"},
                      UsageCase{"TwoFiles", {"@good.dcsv", "@bad.dcsv"}, 2, "usage: dcsv FILE"},
                      UsageCase{"PngWithoutName", {"@good.dcsv", "--png"}, 2, "usage: dcsv FILE"},
                      UsageCase{"BadSize", {"@good.dcsv", "--size", "10x"}, 2, "usage: dcsv FILE"},
                      UsageCase{"UnknownOption", {"@good.dcsv", "--pdf"}, 2, "usage: dcsv FILE"},
                      UsageCase{"Missing", {"@gone.dcsv"}, 1, "the file does not exist"},
                      UsageCase{"Malformed", {"@bad.dcsv"}, 1, "item 1 has no <X> element"},
                      UsageCase{"MalformedIsNotDrawn", {"@bad.dcsv", "--png", "@out.png"}, 1, "item 1 has no <X>"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(DcsvVerb, DrawsThePngAndTheSvgWithTheAxesNamed) {
    ferrolund::testing::TempFolder temp;
    const fs::path file = temp.write("TractiveEffortVsThrottle.dcsv",
                                     DcsvText({{"0", "0"}, {"0.5", "150000"}, {"1", "200000"}}));
    const fs::path png = temp.path() / "out" / "chart.png";
    const fs::path svg = temp.path() / "out" / "chart.svg";
    fs::create_directories(png.parent_path());
    const auto run = Cli({"dcsv", file.string(), "--png", png.string(), "--svg", svg.string(), "--size", "800x500"},
                         temp.system());
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, png.string() + "\n" + svg.string() + "\n");
    const std::string pngBytes = temp.read("out/chart.png");
    ASSERT_GT(pngBytes.size(), 1000u);
    EXPECT_EQ(pngBytes.substr(1, 3), "PNG");
    const std::string svgText = temp.read("out/chart.svg");
    for (const char* text : {"<svg", "Throttle", "Tractive Effort", "0.50", "200000.0000", "From the file",
                             "TractiveEffortVsThrottle.dcsv"})
        EXPECT_NE(svgText.find(text), std::string::npos) << text;

    // Drawn again: the old pictures are kept as back-ups.
    ASSERT_EQ(Cli({"dcsv", file.string(), "--png", png.string()}, temp.system()).code, 0);
    EXPECT_EQ(temp.read("out/chart.png.bak"), pngBytes);
}

TEST(DcsvVerb, ProcessRestoresFromTheSourceCsv) {
    ferrolund::testing::TempFolder temp;
    const fs::path file = temp.write("RW/Assets/P/Q/Markers.dcsv", DcsvText({{"1.1", "2.2"}}));
    const auto unfound = Cli({"dcsv", file.string(), "--process"}, temp.system());
    EXPECT_EQ(unfound.code, 1);
    EXPECT_NE(unfound.err.find("The original Source .csv for Markers.dcsv could not be found"), std::string::npos);
    temp.write("RW/Source/P/Q/Markers.csv", "1.1234567,2.2345678\r\n");
    const auto run = Cli({"dcsv", file.string(), "--process"}, temp.system());
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "Precision of .DCSV files has been improved, a backup has been made.\n");
    EXPECT_EQ(Cli({"dcsv", file.string()}, temp.system()).out, "1.1234567,2.2345678\n");
    EXPECT_EQ(temp.read("RW/Assets/P/Q/Markers.dcsv.bak"), DcsvText({{"1.1", "2.2"}}));
}
