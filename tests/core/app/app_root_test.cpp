#include "app/app_root.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "support/temp_folder.h"

namespace ferrolund::app {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

// Under the temporary folder: "build/bin" with the build's marker, and an installed
// "prefix/bin" with the shipped data where the installed programs look for it.
struct Layouts {
    TempFolder root;
    fs::path buildBin = root.path() / "build" / "bin";
    fs::path installedBin = root.path() / "prefix" / "bin";
    fs::path shipped = (installedBin / ShippedDataFromProgram()).lexically_normal();

    Layouts() {
        root.write("build/bin/" + std::string(kBuildTreeMarker), "built here");
        // A build folder whose ../share/ferrolund is an installed one.
        root.write("prefix/build/" + std::string(kBuildTreeMarker), "built here");
        fs::create_directories(installedBin);
        fs::create_directories(shipped / "Language");
    }
};

TEST(ChooseAppRoot, BuildTreeOrPerUserFolder) {
    Layouts l;
    const std::string data = (l.root.path() / "data").string();
    const std::string home = (l.root.path() / "home").string();
    struct Case {
        const char* name;
        fs::path programFolder;
        UserFolders user;
        fs::path folder;
        fs::path shippedData;
        bool problem;
    };
    const Case cases[] = {
        {"build tree", l.buildBin, {data, home}, l.buildBin, {}, false},
        {"installed, XDG_DATA_HOME", l.installedBin, {data, home}, fs::path(data) / "ferrolund", l.shipped, false},
        {"installed, HOME only", l.installedBin, {std::nullopt, home}, fs::path(home) / ".local/share/ferrolund",
         l.shipped, false},
        {"relative XDG_DATA_HOME passed over", l.installedBin, {"rel/data", home},
         fs::path(home) / ".local/share/ferrolund", l.shipped, false},
        {"no home at all", l.installedBin, {std::nullopt, std::nullopt}, {}, {}, true},
        {"a copy of the program with no install around it", l.root.path() / "elsewhere", {data, home},
         l.root.path() / "elsewhere", {}, false},
        {"build tree inside an install layout", l.installedBin.parent_path() / "build", {data, home},
         l.installedBin.parent_path() / "build", {}, false},
    };
    for (const auto& c : cases) {
        const AppRootChoice choice = ChooseAppRoot(c.programFolder, c.user);
        EXPECT_EQ(choice.folder, c.folder) << c.name;
        EXPECT_EQ(choice.shippedData, c.shippedData) << c.name;
        EXPECT_EQ(!choice.problem.empty(), c.problem) << c.name << ": " << choice.problem;
    }
}

// Shipped data and an AppRoot, seeded as the program starts.
struct Seeding {
    TempFolder root;
    fs::path shipped = root.path() / "share";
    fs::path appRoot = root.path() / "app";

    void ship(const std::string& relative, const std::string& text) const { root.write("share/" + relative, text); }
    void userWrites(const std::string& relative, const std::string& text) const { root.write("app/" + relative, text); }
    std::string inApp(const std::string& relative) const { return root.read("app/" + relative); }
    std::vector<std::string> seed() const { return SeedAppRoot(shipped, appRoot); }
};

TEST(SeedAppRoot, FirstStartCopiesTheShippedData) {
    Seeding s;
    s.ship("Language/Lang_English.txt", "1,\"&Files\"\r\n");
    s.ship("Templates/APBatch1.txt", "batch");
    EXPECT_TRUE(s.seed().empty());
    EXPECT_EQ(s.inApp("Language/Lang_English.txt"), "1,\"&Files\"\r\n");
    EXPECT_EQ(s.inApp("Templates/APBatch1.txt"), "batch");
    EXPECT_TRUE(fs::exists(s.appRoot / kSeedManifest));
    for (const auto& entry : fs::recursive_directory_iterator(s.appRoot)) {
        EXPECT_NE(entry.path().extension(), ".partial") << entry.path();
    }
}

TEST(SeedAppRoot, ANewerVersionReplacesOnlyWhatTheUserLeftAlone) {
    struct Case {
        const char* name;
        std::function<void(const Seeding&)> between;  // what happens after the first start
        std::string expected;                          // Templates/A.txt after the new version's start
    };
    const Case cases[] = {
        {"left alone", [](const Seeding&) {}, "version 2"},
        {"changed by the user", [](const Seeding& s) { s.userWrites("Templates/A.txt", "mine"); }, "mine"},
        {"deleted by the user", [](const Seeding& s) { fs::remove(s.appRoot / "Templates/A.txt"); }, "version 2"},
        {"changed back to the shipped text", [](const Seeding& s) { s.userWrites("Templates/A.txt", "version 1"); },
         "version 2"},
        {"the list of copied files lost", [](const Seeding& s) { fs::remove(s.appRoot / kSeedManifest); },
         "version 1"},
        {"the list of copied files garbled",
         [](const Seeding& s) { s.userWrites(kSeedManifest, "zz\t3\tTemplates/A.txt\n\t\t\nno tabs\n"); },
         "version 1"},
    };
    for (const auto& c : cases) {
        Seeding s;
        s.ship("Templates/A.txt", "version 1");
        ASSERT_TRUE(s.seed().empty()) << c.name;
        c.between(s);
        s.ship("Templates/A.txt", "version 2");
        s.ship("Templates/New.txt", "new in version 2");
        EXPECT_TRUE(s.seed().empty()) << c.name;
        EXPECT_EQ(s.inApp("Templates/A.txt"), c.expected) << c.name;
        EXPECT_EQ(s.inApp("Templates/New.txt"), "new in version 2") << c.name;
    }
}

TEST(SeedAppRoot, AChangedFileStaysTheUsersThroughLaterVersions) {
    Seeding s;
    s.ship("Templates/A.txt", "version 1");
    s.seed();
    s.userWrites("Templates/A.txt", "mine");
    s.userWrites("Templates/Own.txt", "made by the user");
    for (const char* version : {"version 2", "version 3"}) {
        s.ship("Templates/A.txt", version);
        EXPECT_TRUE(s.seed().empty()) << version;
        EXPECT_EQ(s.inApp("Templates/A.txt"), "mine") << version;
    }
    EXPECT_EQ(s.inApp("Templates/Own.txt"), "made by the user");
}

TEST(SeedAppRoot, AFileMadeBeforeAnySeedingIsKept) {
    Seeding s;
    s.userWrites("Language/Lang_English.txt", "translated by hand");
    s.ship("Language/Lang_English.txt", "shipped");
    EXPECT_TRUE(s.seed().empty());
    EXPECT_EQ(s.inApp("Language/Lang_English.txt"), "translated by hand");
}

TEST(SeedAppRoot, WhatCannotBeDoneIsToldAndNothingIsHarmed) {
    struct Case {
        const char* name;
        std::function<void(Seeding&)> arrange;
    };
    const Case cases[] = {
        {"no shipped data", [](Seeding& s) { s.shipped = s.root.path() / "missing"; }},
        {"AppRoot is a file", [](Seeding& s) { s.root.write("app", "a file"); }},
        {"a folder where a shipped file goes", [](Seeding& s) { fs::create_directories(s.appRoot / "Templates/A.txt"); }},
    };
    for (const auto& c : cases) {
        Seeding s;
        s.ship("Templates/A.txt", "shipped");
        c.arrange(s);
        const auto problems = s.seed();
        ASSERT_FALSE(problems.empty()) << c.name;
        EXPECT_NE(problems.front().find(s.root.path().string()), std::string::npos) << c.name << ": " << problems.front();
        EXPECT_EQ(s.root.read("share/Templates/A.txt"), "shipped") << c.name;
    }
}

}  // namespace
}  // namespace ferrolund::app
