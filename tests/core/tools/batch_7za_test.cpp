// The 7za and serz forms of the batch interpreter.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "archives/overlength.h"
#include "batch_test_fixture.h"
#include "core/archives/zip_fixture.h"

namespace ferrolund::tools {
namespace {

namespace fs = std::filesystem;
using testing::BatchFixture;
using testing::MakeZip;

struct SevenZipTest : ::testing::Test, BatchFixture {
    SevenZipTest() {
        MakeZip(disk("My Route/MainContent.ap"), {{"RouteProperties.xml", "route"},
                                                  {"Scenarios/s1/ScenarioProperties.xml", "props"},
                                                  {"Scenarios/s1/Scenario.bin", "scen"},
                                                  {"RailVehicles/Diesel/Engine/loco.bin", "loco"},
                                                  {"RailVehicles/Diesel/Engine/loco.GeoPcDx", "geo"}});
    }
    std::string ap() const { return sys("My Route\\MainContent.ap"); }
};

TEST_F(SevenZipTest, XKeepsPathsIntoTheFolderOfO) {
    EXPECT_FALSE(run("\"" + sys() + "\\7za.exe\" x \"" + ap() + "\" -o\"" + sys("out") + "\" -r"));
    EXPECT_EQ(root.read("out/Scenarios/s1/Scenario.bin"), "scen");
    EXPECT_EQ(root.read("out/RouteProperties.xml"), "route");
    EXPECT_NE(outcome.console.find("Everything is Ok"), std::string::npos);
}

TEST_F(SevenZipTest, EPutsTheNamedFilesFlat) {
    EXPECT_FALSE(run("7za e -y -o\"" + sys("flat") + "\" \"" + ap() + "\" \"RouteProperties.xml\" Scenario.bin -r"));
    EXPECT_TRUE(exists("flat/RouteProperties.xml"));
    EXPECT_TRUE(exists("flat/Scenario.bin"));
    EXPECT_FALSE(exists("flat/ScenarioProperties.xml"));
    EXPECT_FALSE(exists("flat/Scenarios"));
}

TEST_F(SevenZipTest, NamesWithoutRStartAtTheRootAndFoldersBringTheirContent) {
    EXPECT_FALSE(run("7za x \"" + ap() + "\" -o\"" + sys("a") + "\" Scenario.bin RailVehicles -y"));
    EXPECT_FALSE(exists("a/Scenarios"));
    EXPECT_TRUE(exists("a/RailVehicles/Diesel/Engine/loco.bin"));
    EXPECT_FALSE(run("7za x \"" + ap() + "\" -o\"" + sys("b") + "\" RailVehicles\\*.geopcdx -y"));
    EXPECT_TRUE(exists("b/RailVehicles/Diesel/Engine/loco.GeoPcDx"));
    EXPECT_FALSE(exists("b/RailVehicles/Diesel/Engine/loco.bin"));
}

TEST_F(SevenZipTest, TheFourOverwriteSwitches) {
    struct Case {
        const char* option;
        const char* file;
        const char* numbered;  // RouteProperties_1.xml, or null when none
    };
    const Case cases[] = {{"-aoa", "route", nullptr},
                          {"-aos", "mine", nullptr},
                          {"-aou", "mine", "route"},
                          {"-aot", "route", "mine"}};
    for (const auto& c : cases) {
        const std::string folder = std::string("o") + c.option;
        root.write(folder + "/RouteProperties.xml", "mine");
        EXPECT_FALSE(run("7za x \"" + ap() + "\" " + c.option + " -o\"" + sys(folder) + "\" RouteProperties.xml"));
        EXPECT_EQ(root.read(folder + "/RouteProperties.xml"), c.file) << c.option;
        EXPECT_EQ(exists(folder + "/RouteProperties_1.xml"), c.numbered != nullptr) << c.option;
        if (c.numbered) {
            EXPECT_EQ(root.read(folder + "/RouteProperties_1.xml"), c.numbered) << c.option;
        }
    }
    // Without a rule or -y the question is asked.
    root.write("ask/RouteProperties.xml", "mine");
    ui.answers = {base::Answer::No};
    EXPECT_FALSE(run("7za x \"" + ap() + "\" -o\"" + sys("ask") + "\" RouteProperties.xml"));
    EXPECT_EQ(root.read("ask/RouteProperties.xml"), "mine");
    EXPECT_EQ(ui.shown.size(), 1u);
}

TEST_F(SevenZipTest, ArchiveWildcardsAndTheListing) {
    MakeZip(disk("My Route/Second.ap"), {{"RouteProperties.xml", "second"}});
    EXPECT_FALSE(run("7za x \"" + sys("My Route") + "\\*.ap\" -o\"" + sys("w") + "\" RouteProperties.xml -aou"));
    EXPECT_TRUE(exists("w/RouteProperties.xml"));
    EXPECT_TRUE(exists("w/RouteProperties_1.xml"));
    // A redirection into a folder that does not exist fails, as on the console.
    EXPECT_TRUE(run("\"" + sys() + "\\7za.exe\" l \"" + ap() + "\" > \"" + sys("Tempfiles\\List.txt") + "\""));
    fs::create_directories(disk("Tempfiles"));
    EXPECT_FALSE(run("\"" + sys() + "\\7za.exe\" l \"" + ap() + "\" > \"" + sys("Tempfiles\\List.txt") + "\""));
    const std::string list = root.read("Tempfiles/List.txt");
    EXPECT_NE(list.find("Scenarios\\s1\\Scenario.bin"), std::string::npos);
    EXPECT_NE(list.find("5 files, 0 folders"), std::string::npos);
}

TEST_F(SevenZipTest, ClimbingEntriesAndBrokenArchivesAreReported) {
    MakeZip(disk("evil.ap"), {{"../escaped.txt", "x"}, {"fine.txt", "y"}});
    root.write("broken.ap", "PK not really");
    const base::Status s = run("7za x \"evil.ap\" -o\"" + sys("t") + "\" -y\r\n7za x \"broken.ap\" -o\"" + sys("t") +
                              "\" -y\r\n7za x \"missing.ap\" -y\r\n7za t \"evil.ap\"\r\n7za x \"evil.ap\" -q");
    ASSERT_TRUE(s);
    EXPECT_NE(s->description.find("..\\escaped.txt"), std::string::npos);
    EXPECT_NE(s->description.find("names a place outside"), std::string::npos);
    EXPECT_EQ(outcome.errors.size(), 5u);
    EXPECT_FALSE(exists("escaped.txt"));
    EXPECT_TRUE(exists("t/fine.txt"));
}

TEST_F(SevenZipTest, AnArchiveOverTwoGigabytesIsPassedOverAndListed) {
    {
        std::ofstream(disk("huge.ap"), std::ios::binary) << "x";
    }
    fs::resize_file(disk("huge.ap"), archives::kMaxArchiveBytes + 1);
    EXPECT_TRUE(archives::IsOverlength(sys("huge.ap")));
    EXPECT_FALSE(archives::IsOverlength(ap()));
    EXPECT_FALSE(run("7za x \"" + sys() + "\\*.ap\" -o\"" + sys("h") + "\" -y"));
    ASSERT_EQ(outcome.overlength.size(), 1u);
    EXPECT_EQ(outcome.overlength[0], sys("huge.ap"));
    const std::string report = archives::OverlengthReport(outcome.overlength);
    EXPECT_TRUE(report.starts_with("The following .ap files were over 2 gigabytes in length."));
    EXPECT_TRUE(report.ends_with("\r\n\r\n" + sys("huge.ap") + "\r\n"));
}

TEST(BatchSerz, BothDirectionsThroughTheConverter) {
    BatchFixture f;
    f.root.write("a.xml",
                 "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                 "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
                 "\t<Record>\r\n\t\t<Name d:type=\"cDeltaString\">Hello</Name>\r\n\t</Record>\r\n</cRecordSet>\r\n");
    EXPECT_FALSE(f.run("serz.exe \"a.xml\" bin:\"a.bin\"\r\nserz.exe \"a.bin\" /xml:\"" + f.sys("b.xml") + "\""));
    EXPECT_TRUE(f.exists("a.bin"));
    EXPECT_NE(f.root.read("b.xml").find(">Hello</Name>"), std::string::npos);
    EXPECT_TRUE(f.run("serz.exe \"a.xml\" txt:\"c.txt\""));
    EXPECT_TRUE(f.run("serz.exe \"missing.bin\" xml:\"m.xml\""));
}

}  // namespace
}  // namespace ferrolund::tools
