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

TEST(SystemPath, NamesOnDiskKeepTheirBytes) {
    EXPECT_EQ(SystemPath(fs::path("/a/Prod\xC3\xBCkt/\xC4\x8C.bin")), "/a/Prod\xC3\xBCkt/\xC4\x8C.bin");
    EXPECT_EQ(HostPath(""), fs::path());
}

// Folders as the simulator's installer writes them on a Linux disk (UTF-8), each asked for
// as a game file may store the name: UTF-8 or Windows-1252, in any case.
TEST(HostPathAccents, NamesAreFoundWhateverTheirEncodingAndCase) {
    testing::TempFolder folder;
    const char* onDisk[] = {
        "Assets/Caf\xC3\xA9Rail/Gare/Quai.bin",                    // é
        "Assets/M\xC3\xBC" "nchen/Stra\xC3\x9F" "e/Lampe.bin",      // ü, ß
        "Assets/\xC4\x8C" "eskeDrahy/N\xC3\xA1" "dra\xC5\xBE\xC3\xAD/Budova.bin",  // Č, á, ž, í
        "Assets/Arrow\xEF\xBF\xA9Set/Sign.bin",                    // U+FFE9
        "Assets/\xC5\x81\xC3\xB3" "d\xC5\xBA/Dworzec.bin",          // Ł, ó, ź
    };
    for (const char* path : onDisk) folder.write(path, "x");
    const std::pair<std::string, std::string> cases[] = {
        {"\\assets\\caf\xC3\xA9rail\\gare\\quai.bin", "Assets/Caf\xC3\xA9Rail/Gare/Quai.bin"},          // UTF-8
        {"\\assets\\CAF\xC3\x89RAIL\\GARE\\QUAI.BIN", "Assets/Caf\xC3\xA9Rail/Gare/Quai.bin"},          // UTF-8 capital É
        {"\\assets\\Caf\xE9Rail\\Gare\\Quai.bin", "Assets/Caf\xC3\xA9Rail/Gare/Quai.bin"},               // Windows-1252 é
        {"\\assets\\CAF\xC9RAIL\\gare\\quai.bin", "Assets/Caf\xC3\xA9Rail/Gare/Quai.bin"},               // Windows-1252 É
        {"\\assets\\M\xDCNCHEN\\stra\xDF" "e\\lampe.bin", "Assets/M\xC3\xBC" "nchen/Stra\xC3\x9F" "e/Lampe.bin"},
        {"\\assets\\m\xC3\x9C" "nchen\\STRA\xC3\x9F" "E\\Lampe.bin", "Assets/M\xC3\xBC" "nchen/Stra\xC3\x9F" "e/Lampe.bin"},
        {"\\assets\\\xC4\x8D" "eskedrahy\\N\xC3\x81" "DRA\xC5\xBD\xC3\x8D\\budova.bin",
         "Assets/\xC4\x8C" "eskeDrahy/N\xC3\xA1" "dra\xC5\xBE\xC3\xAD/Budova.bin"},                               // č/Č, Á, Ž, Í
        {"\\assets\\ARROW\xEF\xBF\xA9SET\\sign.bin", "Assets/Arrow\xEF\xBF\xA9Set/Sign.bin"},
        {"\\assets\\\xC5\x82\xC3\x93" "D\xC5\xB9\\dworzec.bin", "Assets/\xC5\x81\xC3\xB3" "d\xC5\xBA/Dworzec.bin"},
        // Not on disk: kept as written, in UTF-8.
        {"\\assets\\Caf\xE9Neu\\x.bin", "Assets/Caf\xC3\xA9Neu/x.bin"},
        {"\\assets\\\xC4\x8CNeu\\x.bin", "Assets/\xC4\x8CNeu/x.bin"},
    };
    for (const auto& [system, host] : cases) {
        const fs::path resolved = HostPath(folder.system() + system);
        EXPECT_EQ(resolved, folder.path() / host) << system;
    }
    for (const char* path : onDisk) {
        EXPECT_TRUE(fs::exists(HostPath(SystemPath(folder.path() / path)))) << path;
    }
}

TEST(HostPathAccents, AFileTheProgramMakesUnderAnAccentedNameIsFoundAgain) {
    testing::TempFolder folder;
    folder.write("Assets/Placeholder.txt", "x");
    const std::string made = folder.system() + "\\Assets\\Br\xFC" "cke\\Pfeiler.bin";  // Windows-1252
    EXPECT_EQ(HostPath(made), folder.path() / "Assets/Br\xC3\xBC" "cke/Pfeiler.bin");
    fs::create_directories(folder.path() / "Assets/Br\xC3\xBC" "cke");
    std::ofstream(HostPath(made)) << "p";
    ForgetPath(made);
    EXPECT_TRUE(fs::exists(HostPath(folder.system() + "\\assets\\BR\xC3\x9C" "CKE\\pfeiler.BIN")));
}

}  // namespace
}  // namespace ferrolund::tools
