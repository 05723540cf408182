#include "editor/multi_file_replace.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "serz/codec.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"

namespace ferrolund::editor {
namespace {

namespace fs = std::filesystem;

std::string Xml(const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
           "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"10\">\r\n"
           "\t<Record>\r\n" +
           body + "\t</Record>\r\n</cRecordSet>\r\n";
}

std::string Name(const std::string& value) {
    return "\t\t<Name d:type=\"cDeltaString\">" + value + "</Name>\r\n";
}

std::string Binary(const std::string& xml) {
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(xml, binary));
    return binary;
}

struct Folder5 : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    const fs::file_time_type old = fs::file_time_type::clock::now() - std::chrono::hours(48);

    Folder5() {
        ctx.appRoot = (root.path() / "app").string();
        ctx.ui = &ui;
        fs::create_directories(root.path() / "app");
    }
    // A game file in the folder "game", dated two days back.
    std::string game(const std::string& name, const std::string& bytes) {
        const fs::path path = root.write("game/" + name, bytes);
        fs::last_write_time(path, old);
        return path.string();
    }
    std::string xmlOf(const std::string& path) {
        std::string xml;
        EXPECT_FALSE(tools::SerzReadXml(ctx, path, xml));
        return xml;
    }
    bool exists(const std::string& relative) const { return fs::exists(root.path() / relative); }
};

TEST_F(Folder5, ReplacesWithBackUpsAndLeavesFilesWithoutTheTextAlone) {
    const std::string wagonBytes = Binary(Xml(Name("Wagon")));
    const std::string a = game("a.bin", wagonBytes);
    const std::string section = game("b.XSec", wagonBytes);
    const std::string coach = game("c.bin", Binary(Xml(Name("Coach"))));
    std::vector<std::string> shown;
    std::vector<int> steps;
    ReplaceInFilesHooks hooks;
    hooks.show = [&](const std::string& xml) { shown.push_back(xml); };
    hooks.progress = [&](int index, int count, const std::string&) { steps.push_back(index * 10 + count); };

    const ReplaceInFilesRun run = ReplaceInFiles(ctx, {a, section, coach}, "wagon", "Loco", hooks);

    EXPECT_EQ(run.changed, (std::vector<std::string>{a, section}));
    EXPECT_FALSE(run.stopped);
    EXPECT_TRUE(run.unreadable.empty());
    EXPECT_TRUE(ui.shown.empty());
    EXPECT_EQ(steps, (std::vector<int>{3, 13, 23}));
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_NE(shown[0].find(">Loco<"), std::string::npos);
    // Each original stands beside its successor as <name>.bak.
    EXPECT_EQ(root.read("game/a.bin.bak"), wagonBytes);
    EXPECT_EQ(root.read("game/b.XSec.bak"), wagonBytes);
    EXPECT_NE(xmlOf(a).find(">Loco<"), std::string::npos);
    // The section went back under its own extension.
    EXPECT_NE(xmlOf(section).find(">Loco<"), std::string::npos);
    EXPECT_FALSE(exists("game/b.bin"));
    EXPECT_TRUE(exists("app/TempFiles/b.XSec"));
    // The file without the text: same bytes, same time stamp, no back-up.
    EXPECT_EQ(fs::last_write_time(coach), old);
    EXPECT_FALSE(exists("game/c.bin.bak"));
    EXPECT_EQ(ui.busyDepth, 0);
}

TEST_F(Folder5, ASecondRunKeepsTheFirstBackUpAndNumbersTheNext) {
    const std::string a = game("a.bin", Binary(Xml(Name("One"))));
    ReplaceInFiles(ctx, {a}, "One", "Two");
    ReplaceInFiles(ctx, {a}, "Two", "Three");
    EXPECT_NE(xmlOf((root.path() / "game/a.bin.bak").string()).find(">One<"), std::string::npos);
    EXPECT_NE(xmlOf((root.path() / "game/a.bin.bak1").string()).find(">Two<"), std::string::npos);
    EXPECT_NE(xmlOf(a).find(">Three<"), std::string::npos);
}

TEST_F(Folder5, StopsWhereTheConverterFailsAndKeepsWhatWasDone) {
    // "7" in a string is harmless; in a whole number "x" is not one, and the text
    // cannot be converted back.
    const std::string first = game("1.bin", Binary(Xml(Name("7"))));
    const std::string countBytes = Binary(Xml("\t\t<Count d:type=\"sUInt32\">7</Count>\r\n"));
    const std::string second = game("2.bin", countBytes);
    const std::string third = game("3.bin", Binary(Xml(Name("77"))));

    const ReplaceInFilesRun run = ReplaceInFiles(ctx, {first, second, third}, "7", "x");

    EXPECT_TRUE(run.stopped);
    EXPECT_EQ(run.changed, std::vector<std::string>{first});
    ASSERT_EQ(ui.texts(), std::vector<std::string>{kRecompressFailed});
    EXPECT_EQ(ui.shown[0].icon, base::Icon::Critical);
    EXPECT_NE(xmlOf(first).find(">x<"), std::string::npos);
    EXPECT_EQ(root.read("game/2.bin"), countBytes);
    EXPECT_EQ(fs::last_write_time(second), old);
    EXPECT_FALSE(exists("game/2.bin.bak"));
    EXPECT_EQ(fs::last_write_time(third), old);  // never reached
    EXPECT_EQ(ui.busyDepth, 0);
}

TEST_F(Folder5, AFileTheConverterCannotReadIsListedAndLeftAlone) {
    const std::string broken = game("broken.bin", "SERZ\0\0\x01\0 not a game file");
    const std::string good = game("good.bin", Binary(Xml(Name("Wagon"))));
    const ReplaceInFilesRun run = ReplaceInFiles(ctx, {broken, good}, "Wagon", "Loco");
    EXPECT_EQ(run.unreadable, std::vector<std::string>{broken});
    EXPECT_EQ(run.changed, std::vector<std::string>{good});
    EXPECT_TRUE(ui.shown.empty());
    EXPECT_EQ(fs::last_write_time(broken), old);
    EXPECT_FALSE(exists("game/broken.bin.bak"));
}

TEST_F(Folder5, TheAbortFlagEndsTheRunBetweenTwoFiles) {
    const std::string a = game("a.bin", Binary(Xml(Name("Wagon"))));
    const std::string b = game("b.bin", Binary(Xml(Name("Wagon"))));
    ReplaceInFilesHooks hooks;
    hooks.progress = [&](int index, int, const std::string&) {
        if (index == 1) ctx.abortFlag = true;
    };
    const ReplaceInFilesRun run = ReplaceInFiles(ctx, {a, b}, "Wagon", "Loco", hooks);
    EXPECT_TRUE(run.aborted);
    EXPECT_EQ(run.changed, std::vector<std::string>{a});
    EXPECT_EQ(fs::last_write_time(b), old);
}

TEST_F(Folder5, NoSearchTextOrNoFileDoesNothing) {
    const std::string a = game("a.bin", Binary(Xml(Name("Wagon"))));
    EXPECT_TRUE(ReplaceInFiles(ctx, {a}, "", "Loco").changed.empty());
    EXPECT_TRUE(ReplaceInFiles(ctx, {}, "Wagon", "Loco").changed.empty());
    EXPECT_EQ(fs::last_write_time(a), old);
    EXPECT_FALSE(exists("app/TempFiles"));
}

TEST_F(Folder5, DisplayShowsTheXmlAndLeavesItInTempFiles) {
    const std::string a = game("a.b.proxybin", Binary(Xml(Name("Wagon"))));
    fs::create_directories(root.path() / "app/TempFiles");
    const std::string xml = DisplayAsXml(ctx, a);
    EXPECT_NE(xml.find(">Wagon<"), std::string::npos);
    EXPECT_EQ(root.read("app/TempFiles/a.b.xml"), xml);
    EXPECT_TRUE(exists("app/TempFiles/a.b.bin"));
    EXPECT_EQ(DisplayAsXml(ctx, (root.path() / "game/missing.bin").string()), "");
}

TEST_F(Folder5, SaveSelectedAsXmlAsksThenMakesTempXmlAnew) {
    const std::string a = game("a.bin", Binary(Xml(Name("Wagon"))));
    const std::string broken = game("b.bin", "junk");
    root.write("app/TempXML/old.xml", "old");

    EXPECT_EQ(SaveSelectedAsXml(ctx, {a, broken}), -1);  // Cancel
    EXPECT_TRUE(exists("app/TempXML/old.xml"));
    ASSERT_EQ(ui.shown.size(), 1u);
    EXPECT_EQ(ui.shown[0].text,
              "This option will save all selected files in .xml format\n"
              "in Ferrolund\\TempXML existing files in TempXML will be deleted.");
    EXPECT_TRUE(ui.shown[0].question);

    ui.answers.push_back(base::Answer::Ok);
    EXPECT_EQ(SaveSelectedAsXml(ctx, {a, broken}), 1);
    EXPECT_FALSE(exists("app/TempXML/old.xml"));
    EXPECT_NE(root.read("app/TempXML/a.xml").find(">Wagon<"), std::string::npos);
    EXPECT_TRUE(exists("app/TempXML/a.bin"));
    EXPECT_FALSE(exists("app/TempXML/b.xml"));

    ui.answers.push_back(base::Answer::Ok);
    const int converted = SaveSelectedAsXml(ctx, {a, a}, [&](int index, int, const std::string&) {
        if (index == 1) ctx.abortFlag = true;
    });
    EXPECT_EQ(converted, 1);
}

TEST(FolderFiles, ListsFilesOnlySortedWithoutCase) {
    testing::TempFolder root;
    root.write("b.bin", "1");
    root.write("A.bin", "1");
    root.write("c.XSec", "1");
    root.write("sub/d.bin", "1");
    EXPECT_EQ(FolderFiles(root.system()), (std::vector<std::string>{"A.bin", "b.bin", "c.XSec"}));
    EXPECT_TRUE(FolderFiles(root.system() + "/missing").empty());
}

TEST(RailWorksPart, FromRailWorksOn) {
    EXPECT_EQ(RailWorksPart("C:\\Games\\RailWorks\\Content"), "RailWorks\\Content");
    EXPECT_EQ(RailWorksPart("/home/me/railworks/Assets"), "railworks/Assets");
    EXPECT_EQ(RailWorksPart("/home/me/files"), "/home/me/files");
}

}  // namespace
}  // namespace ferrolund::editor
