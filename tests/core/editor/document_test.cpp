#include "editor/document.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/editor/recording_document_window.h"
#include "serz/codec.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::editor {
namespace {

namespace fs = std::filesystem;

// A small game file in the converter's XML form.
std::string TileXml(const std::string& detail) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
           "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"101\">\r\n"
           "\t<Record>\r\n"
           "\t\t<cSceneryRender d:id=\"102\">\r\n"
           "\t\t\t<DetailLevel d:type=\"sInt32\">" + detail + "</DetailLevel>\r\n"
           "\t\t\t<Global d:type=\"bool\">0</Global>\r\n"
           "\t\t</cSceneryRender>\r\n"
           "\t</Record>\r\n"
           "</cRecordSet>\r\n";
}

std::string Binary(const std::string& xml) {
    std::string bin;
    EXPECT_FALSE(serz::XmlToBinary(xml, bin));
    return bin;
}

std::string XmlOf(const std::string& bin) {
    std::string xml;
    EXPECT_FALSE(serz::BinaryToXml(bin, xml));
    return xml;
}

struct Editor {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    EditorDocument doc;
    RecordingDocumentWindow window;
    std::string game;

    Editor() {
        fs::create_directories(root.path() / "app/TempFiles");
        ctx.appRoot = (root.path() / "app").string();
        ctx.ui = &ui;
        game = (root.path() / "game").string();
        ctx.prefs.gameRoot = game;
    }
    std::string put(const std::string& relative, const std::string& bytes) {
        return root.write("game/" + relative, bytes).string();
    }
    std::string open(const std::string& path) {
        ui.files.push_back(path);
        OpenGameFile(ctx, doc, window);
        return window.panes[0];
    }
};

TEST(EditorDocument, SplitName) {
    struct Case { std::string path; std::string base; std::string ext; };
    const Case cases[] = {
        {"C:\\Routes\\a.b.bin", "a.b.", "bin"},
        {"/home/u/Track.XSec", "Track.", "XSec"},
        {"C:\\x.y\\noext", "noext", ""},
        {"Scenario.bin", "Scenario.", "bin"},
    };
    for (const auto& c : cases) {
        const NameParts parts = SplitDocumentName(c.path);
        EXPECT_EQ(parts.baseName, c.base) << c.path;
        EXPECT_EQ(parts.extension, c.ext) << c.path;
    }
}

TEST(EditorDocument, OpenShowsTheXmlAndArmsTheSaveCommands) {
    Editor e;
    const std::string file = e.put("Content/Routes/r/Scenery/+000000+000000.bin", Binary(TileXml("10")));
    EXPECT_EQ(e.open(file), TileXml("10"));
    EXPECT_EQ(e.ui.dialogTitles, std::vector<std::string>{"Open RailSim file"});
    EXPECT_EQ(e.window.names[0], file);
    EXPECT_EQ(e.ctx.commandFile, file);
    EXPECT_EQ(e.doc.strBin, e.ctx.appRoot + "\\TempFiles\\+000000+000000.");
    EXPECT_EQ(e.doc.fileExtension, "bin");
    EXPECT_TRUE(fs::exists(e.root.path() / "app/TempFiles/+000000+000000.bin"));
    EXPECT_TRUE(e.window.enabled.at("mnuSaveRS"));
    EXPECT_TRUE(e.window.enabled.at("mnuFind"));
    EXPECT_FALSE(e.window.enabled.at("mnuSavexml"));
    EXPECT_EQ(e.ui.lastStatus(kOpenedPanel).rfind("File Opened: ", 0), 0u);
    EXPECT_EQ(e.ui.lastStatus(kModifiedPanel).rfind("File last Modified: 20", 0), 0u);
    EXPECT_EQ(e.ui.lastStatus(kProgressPanel).rfind("File Loaded: ", 0), 0u);
    EXPECT_EQ(e.ui.busyDepth, 0);
}

TEST(EditorDocument, AMissingFileIsAskedForAgainOrGivenUp) {
    Editor e;
    const std::string file = e.put("a.bin", Binary(TileXml("1")));
    e.ui.files = {e.game + "/gone.bin", file};
    e.ui.answers = {base::Answer::Retry};
    OpenGameFile(e.ctx, e.doc, e.window);
    EXPECT_EQ(e.ui.texts(), std::vector<std::string>{"The file selected does not exist?"});
    EXPECT_EQ(e.window.names[0], file);

    Editor cancelled;
    cancelled.ui.files = {cancelled.game + "/gone.bin"};
    cancelled.ui.answers = {base::Answer::Cancel};
    OpenGameFile(cancelled.ctx, cancelled.doc, cancelled.window);
    EXPECT_EQ(cancelled.window.names[0], "");
    EXPECT_EQ(cancelled.doc.strBin, "");
}

TEST(EditorDocument, CommandLineOpenSkipsTheDialogOnce) {
    Editor e;
    const std::string file = e.put("Scenario.bin", Binary(TileXml("3")));
    e.ctx.commandFile = file;
    e.ctx.commandLineOpen = true;
    OpenGameFile(e.ctx, e.doc, e.window);
    EXPECT_TRUE(e.ui.dialogTitles.empty());
    EXPECT_EQ(e.window.panes[0], TileXml("3"));
    EXPECT_FALSE(e.ctx.commandLineOpen);
    OpenGameFile(e.ctx, e.doc, e.window);  // the next open asks
    EXPECT_EQ(e.ui.dialogTitles.size(), 1u);
}

TEST(EditorDocument, SavesPileUpBackupsUpToFifty) {
    Editor e;
    const std::string file = e.put("Tracks.bin", Binary(TileXml("1")));
    e.open(file);
    for (int save = 1; save <= 3; ++save) {
        e.window.panes[0] = TileXml(std::to_string(save + 1));
        SaveGameFile(e.ctx, e.doc, e.window);
        EXPECT_TRUE(e.doc.savedFlag);
        EXPECT_EQ(XmlOf(e.root.read("game/Tracks.bin")), TileXml(std::to_string(save + 1)));
    }
    EXPECT_EQ(XmlOf(e.root.read("game/Tracks.bin.bak")), TileXml("1"));   // the first is the earliest
    EXPECT_EQ(XmlOf(e.root.read("game/Tracks.bin.bak1")), TileXml("2"));
    EXPECT_EQ(XmlOf(e.root.read("game/Tracks.bin.bak2")), TileXml("3"));
    EXPECT_EQ(e.ui.lastStatus(kProgressPanel).rfind("Finished at ", 0), 0u);
    EXPECT_TRUE(e.ui.shown.empty());

    for (int n = 3; n <= 50; ++n) e.put("Tracks.bin.bak" + std::to_string(n), "old");
    e.window.panes[0] = TileXml("99");
    SaveGameFile(e.ctx, e.doc, e.window);  // every name taken: no back-up, the file is overwritten
    EXPECT_EQ(XmlOf(e.root.read("game/Tracks.bin")), TileXml("99"));
    EXPECT_FALSE(fs::exists(e.root.path() / "game/Tracks.bin.bak51"));
    EXPECT_EQ(XmlOf(e.root.read("game/Tracks.bin.bak2")), TileXml("3"));
}

TEST(EditorDocument, OtherKindsGoBackUnderTheirOwnExtension) {
    for (const std::string ext : {"XSec", "proxybin", "GeoPcDx"}) {
        Editor e;
        const std::string file = e.put("Assets/K/P/Track." + ext, Binary(TileXml("5")));
        e.open(file);
        EXPECT_TRUE(fs::exists(e.root.path() / "app/TempFiles/Track.bin")) << ext;  // converted as a .bin
        e.window.panes[0] = TileXml("6");
        SaveGameFile(e.ctx, e.doc, e.window);
        EXPECT_EQ(XmlOf(e.root.read("game/Assets/K/P/Track." + ext)), TileXml("6")) << ext;
        EXPECT_TRUE(fs::exists(e.root.path() / ("game/Assets/K/P/Track." + ext + ".bak"))) << ext;
        EXPECT_TRUE(fs::exists(e.root.path() / ("app/TempFiles/Track." + ext))) << ext;
    }
}

TEST(EditorDocument, AFailedRecompileLeavesTheOriginalAlone) {
    Editor e;
    const std::string original = Binary(TileXml("7"));
    const std::string file = e.put("Scenario.bin", original);
    e.open(file);
    e.window.panes[0] = "<cRecordSet><Record><broken";
    SaveGameFile(e.ctx, e.doc, e.window);
    ASSERT_EQ(e.ui.shown.size(), 1u);
    EXPECT_EQ(e.ui.shown[0].text,
              "Serz.exe was unable to recompress this file. The operation could\n"
              "not be completed. The original file has not been altered.");
    EXPECT_EQ(e.ui.shown[0].icon, base::Icon::Critical);
    EXPECT_EQ(e.root.read("game/Scenario.bin"), original);
    EXPECT_FALSE(fs::exists(e.root.path() / "game/Scenario.bin.bak"));
    EXPECT_FALSE(e.doc.savedFlag);
}

TEST(EditorDocument, AnUnreadableBinaryShowsAnEmptyPaneAndTheReason) {
    Editor e;
    const std::string bin = Binary(TileXml("8"));
    const std::string file = e.put("Cut.bin", bin.substr(0, bin.size() / 2));
    EXPECT_EQ(e.open(file), "");
    EXPECT_NE(e.ui.lastStatus(kProgressPanel).find("Cut"), std::string::npos) << e.ui.lastStatus(kProgressPanel);
    SaveGameFile(e.ctx, e.doc, e.window);  // nothing to recompile
    EXPECT_EQ(e.root.read("game/Cut.bin"), bin.substr(0, bin.size() / 2));
}

TEST(EditorDocument, SaveAsCutsTheBaseAtTheFirstPoint) {
    Editor e;
    e.open(e.put("Scenario.bin", Binary(TileXml("4"))));
    fs::create_directories(e.root.path() / "out/x.y");
    e.ui.files.push_back((e.root.path() / "out/x.y/file.xml").string());
    SaveGameFileAs(e.ctx, e.doc, e.window);
    const std::string base = (e.root.path() / "out/x.").string();
    EXPECT_EQ(e.doc.strBin, base);
    EXPECT_EQ(XmlOf(e.root.read("out/x.bin")), TileXml("4"));
    ASSERT_EQ(e.ui.shown.size(), 1u);
    EXPECT_EQ(e.ui.shown[0].text, "Your file has been saved as:-\n" + base + "bin");
    EXPECT_EQ(e.ui.shown[0].icon, base::Icon::Information);
    EXPECT_TRUE(e.doc.savedFlag);
    EXPECT_EQ(e.window.names[0], e.game + "/Scenario.bin");  // the document's name stays
    EXPECT_FALSE(fs::exists(e.root.path() / "game/Scenario.bin.bak"));
}

TEST(EditorDocument, PlainXmlOpensAndSavesAsText) {
    Editor e;
    const std::string file = e.put("Assets/K/P/RouteProperties.xml", "<a>\r\n\tx\xFC\r\n</a>\r\n");
    e.ui.files.push_back(file);
    OpenXmlFile(e.ctx, e.doc, e.window);
    EXPECT_EQ(e.window.panes[0], "<a>\r\n\tx\xFC\r\n</a>\r\n");
    EXPECT_EQ(e.root.read("app/TempFiles/RouteProperties.xml"), "<a>\r\n\tx\xFC\r\n</a>\r\n");
    EXPECT_FALSE(e.window.enabled.at("mnuSaveRS"));
    EXPECT_TRUE(e.window.enabled.at("mnuSavexml"));

    e.window.panes[0] = "<b/>";
    const std::string target = (e.root.path() / "saved.xml").string();
    e.ui.files.push_back(target);
    SaveXmlFile(e.ctx, e.window, XmlSaveDialog::Krs);
    EXPECT_EQ(e.root.read("saved.xml"), "<b/>");
    EXPECT_EQ(e.root.read("game/Assets/K/P/RouteProperties.xml"), "<a>\r\n\tx\xFC\r\n</a>\r\n");
    EXPECT_EQ(e.ui.dialogTitles.back(), "Save KRS format files");

    SaveXmlFile(e.ctx, e.window, XmlSaveDialog::Xml);  // cancelled: no name to write to
    EXPECT_EQ(e.ui.dialogTitles.back(), "Save .xml format files");
    ASSERT_EQ(e.ui.shown.size(), 1u);
    EXPECT_EQ(e.ui.shown[0].icon, base::Icon::Critical);
}

TEST(EditorDocument, OnlyBinDocumentsCountAsEdited) {
    struct Case { const char* name; bool edited; };
    for (const Case c : {Case{"C:\\a\\Scenario.bin", true}, Case{"/a/TRACKS.BIN", true},
                         Case{"/a/Track.XSec", false}, Case{"/a/RouteProperties.xml", false}, Case{"", false}}) {
        EditorDocument doc;
        NoteKeyPress(doc, c.name);
        EXPECT_EQ(doc.editedFlag, c.edited) << c.name;
    }
}

TEST(EditorDocument, SecondPaneShowsAnotherFileWithoutTouchingTheDocument) {
    Editor e;
    const std::string first = e.put("One.bin", Binary(TileXml("1")));
    const std::string second = e.put("Two.bin", Binary(TileXml("2")));
    e.open(first);
    ToggleSecondWindow(e.doc, e.window);
    EXPECT_TRUE(e.window.secondShown);
    EXPECT_TRUE(e.window.visible.at("mnuFile2"));
    EXPECT_EQ(e.window.captions.at("mnu2bin"), "Close 2nd Window");
    e.ui.files.push_back(second);
    OpenSecondGameFile(e.ctx, e.doc, e.window);
    EXPECT_EQ(e.window.panes[1], TileXml("2"));
    EXPECT_EQ(e.ctx.commandFile, first);
    EXPECT_EQ(e.doc.strBin, e.ctx.appRoot + "\\TempFiles\\One.");
    EXPECT_EQ(e.window.panes[0], TileXml("1"));

    ClearScreen(e.doc, e.window);
    EXPECT_EQ(e.window.panes[0], "");
    EXPECT_EQ(e.window.panes[1], "");
    ToggleSecondWindow(e.doc, e.window);
    EXPECT_FALSE(e.window.secondShown);
    EXPECT_FALSE(e.window.visible.at("mnuFile2"));
    EXPECT_EQ(e.window.captions.at("mnu2bin"), "Open 2nd Window");
}

TEST(EditorDocument, LineEndsBecomeCrLf) {
    struct Case { std::string in; std::string out; };
    const Case cases[] = {{"a\nb\n", "a\r\nb\r\n"}, {"a\r\nb", "a\r\nb"}, {"\n", "\r\n"}, {"", ""},
                          {"a\rb\n", "a\rb\r\n"}};
    for (const auto& c : cases) EXPECT_EQ(WithCrLf(c.in), c.out);
}

TEST(EditorDocument, PrintingDropsTabs) {
    EXPECT_EQ(TextForPrinting("\t<a>\r\n\t\t<b/>\r\n"), "<a>\r\n<b/>\r\n");
}

}  // namespace
}  // namespace ferrolund::editor
