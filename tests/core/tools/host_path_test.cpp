#include "tools/host_path.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/temp_folder.h"

namespace ferrolund::tools {
namespace {

namespace fs = std::filesystem;

class HostPathTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder_.write("Assets/Kuju/RailSimulator/RailVehicles/Engine.bin", "e");
        folder_.write("Content/Routes/My Route/Route Properties.xml", "r");
        folder_.write("Assets/Provider/Prod\xC3\xBCkt/Wagon.bin", "w");  // u umlaut in UTF-8 on disk
        folder_.write("Twins/data/a.txt", "lower");
        folder_.write("Twins/Data/a.txt", "capital");
    }
    // The temporary folder as a system string with backslashes after it.
    std::string Sys(const std::string& rest) const { return folder_.system() + rest; }
    fs::path Host(const std::string& rest) const { return folder_.path() / rest; }

    testing::TempFolder folder_;
};

TEST_F(HostPathTest, ElementsMatchWithoutRegardToCase) {
    const std::pair<std::string, std::string> cases[] = {
        {"\\assets\\KUJU\\railsimulator\\RAILVEHICLES\\engine.BIN", "Assets/Kuju/RailSimulator/RailVehicles/Engine.bin"},
        {"\\content\\routes\\MY ROUTE\\route properties.XML", "Content/Routes/My Route/Route Properties.xml"},
        {"\\ASSETS\\provider\\PROD\xDCKT\\wagon.bin", "Assets/Provider/Prod\xC3\xBCkt/Wagon.bin"},
        {"/assets\\kuju/RailSimulator", "Assets/Kuju/RailSimulator"},
        {"\\assets\\kuju\\NewFolder\\New.bin", "Assets/Kuju/NewFolder/New.bin"},       // kept as written
        {"\\nothing\\ASSETS", "nothing/ASSETS"},                                      // behind a missing one too
        {"\\assets\\kuju\\..\\PROVIDER\\prod\xFCkt", "Assets/Kuju/../Provider/Prod\xC3\xBCkt"},
        {"\\assets\\.\\kuju\\", "Assets/./Kuju"},
        {"\\Twins\\Data\\A.TXT", "Twins/Data/a.txt"},   // the exact name wins
        {"\\Twins\\data\\A.TXT", "Twins/data/a.txt"},
    };
    for (const auto& [system, host] : cases) {
        EXPECT_EQ(HostPath(Sys(system)), Host(host)) << system;
    }
    const fs::path either = HostPath(Sys("\\TWINS\\DATA\\a.txt"));
    EXPECT_TRUE(either == Host("Twins/data/a.txt") || either == Host("Twins/Data/a.txt")) << either;
}

TEST_F(HostPathTest, WhatTheProgramCreatesRenamesAndDeletesIsSeenAfterForgetPath) {
    const std::string folder = "\\assets\\kuju\\";
    EXPECT_EQ(HostPath(Sys(folder + "NEW.TXT")), Host("Assets/Kuju/NEW.TXT"));

    std::ofstream(Host("Assets/Kuju/new.txt")) << "x";
    ForgetPath(Sys(folder + "new.txt"));
    EXPECT_EQ(HostPath(Sys(folder + "NEW.TXT")), Host("Assets/Kuju/new.txt"));

    fs::rename(Host("Assets/Kuju/new.txt"), Host("Assets/Kuju/Renamed.txt"));
    ForgetPath(Sys(folder + "new.txt"));
    ForgetPath(Sys(folder + "Renamed.txt"));
    EXPECT_EQ(HostPath(Sys(folder + "NEW.TXT")), Host("Assets/Kuju/NEW.TXT"));
    EXPECT_EQ(HostPath(Sys(folder + "renamed.TXT")), Host("Assets/Kuju/Renamed.txt"));

    // A whole folder goes; what was remembered below it goes with it.
    EXPECT_EQ(HostPath(Sys("\\assets\\kuju\\railsimulator\\railvehicles")), Host("Assets/Kuju/RailSimulator/RailVehicles"));
    fs::remove_all(Host("Assets/Kuju/RailSimulator"));
    ForgetPath(Sys("\\assets\\KUJU\\RAILSIMULATOR"));
    fs::create_directories(Host("Assets/Kuju/railsimulator/railvehicles"));
    ForgetPath(Sys("\\assets\\kuju\\railsimulator"));
    EXPECT_EQ(HostPath(Sys("\\assets\\kuju\\RailSimulator\\RailVehicles")), Host("Assets/Kuju/railsimulator/railvehicles"));
}

TEST_F(HostPathTest, AFolderFillingFileByFileStaysTrue) {
    const std::string folder = "\\content\\TEMPFILES\\";
    fs::create_directories(Host("Content/TempFiles"));
    ForgetPath(Sys("\\content\\TempFiles"));
    for (int i = 0; i < 300; ++i) {
        const std::string name = "Tile" + std::to_string(i) + ".xml";
        EXPECT_EQ(HostPath(Sys(folder + name)), Host("Content/TempFiles/" + name));
        std::ofstream(HostPath(Sys(folder + name))) << i;
        ForgetPath(Sys(folder + name));
    }
    for (int i = 0; i < 300; i += 2) {
        fs::remove(Host("Content/TempFiles/Tile" + std::to_string(i) + ".xml"));
        ForgetPath(Sys(folder + "tile" + std::to_string(i) + ".XML"));
    }
    for (int i = 0; i < 300; ++i) {
        const std::string asked = "TILE" + std::to_string(i) + ".XML";
        const fs::path expected = i % 2 ? Host("Content/TempFiles/Tile" + std::to_string(i) + ".xml")
                                        : Host("Content/TempFiles/" + asked);  // gone: kept as written
        EXPECT_EQ(HostPath(Sys(folder + asked)), expected) << i;
    }
}

TEST_F(HostPathTest, AFileMadeByAnotherProgramIsFoundWithoutForgetPath) {
    EXPECT_EQ(HostPath(Sys("\\content\\routes\\my route\\scenarios")), Host("Content/Routes/My Route/scenarios"));
    fs::create_directories(Host("Content/Routes/My Route/Scenarios"));
    EXPECT_EQ(HostPath(Sys("\\content\\routes\\my route\\scenarios")), Host("Content/Routes/My Route/Scenarios"));
}

TEST_F(HostPathTest, RelativePathsStayRelative) {
    const fs::path before = fs::current_path();
    fs::current_path(folder_.path() / "Assets");
    const fs::path resolved = HostPath("kuju\\RAILSIMULATOR");
    const fs::path missing = HostPath("kuju\\Other");
    fs::current_path(before);
    EXPECT_EQ(resolved, fs::path("Kuju/RailSimulator"));
    EXPECT_EQ(missing, fs::path("Kuju/Other"));
}

TEST(SystemPath, NamesOnDiskBackToTheCodePage) {
    EXPECT_EQ(SystemPath(fs::path("/a/Prod\xC3\xBCkt/x.bin")), "/a/Prod\xFCkt/x.bin");
    EXPECT_EQ(HostPath(""), fs::path());
}

}  // namespace
}  // namespace ferrolund::tools
