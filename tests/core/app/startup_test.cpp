#include "app/startup.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "recording_window.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::app {
namespace {

namespace fs = std::filesystem;
using testing::RecordingWindow;
using testing::ScriptedUi;
using testing::TempFolder;

const char* const kFirstUse =
    "If this is the first use of this program you must run following:-\n"
    "1. Route Building Tools/Extract RouteProperties.xml\n"
    "2. Scenarios/Extract ScenarioProperties.xml\n"
    "To enable the program to correctly index items in .ap files\n";

// A table of 321 texts: the first and the status panel's are given, the others numbered.
std::string LanguageFile(const std::string& first, const std::string& panel) {
    std::string text = "1,\"" + first + "\"\r\n";
    for (int i = 2; i <= 321; ++i) {
        text += std::to_string(i) + ",\"" + (i == 321 ? panel : "Text " + std::to_string(i)) + "\"\r\n";
    }
    return text;
}

// A program folder with the two shipped language files and a game folder beside it.
struct Start {
    TempFolder root;
    ScriptedUi ui;
    RecordingWindow window;
    AppContext ctx;
    StartOptions options;
    std::string gameRoot;

    Start() {
        root.write("app/Language/Lang_English.txt", LanguageFile("&Files", "Language"));
        root.write("app/Language/Lang_German.txt", LanguageFile("&Dateien", "Sprache"));
        fs::create_directories(root.path() / "game");
        gameRoot = (root.path() / "game").string();
        ctx.appRoot = (root.path() / "app").string();
        ctx.ui = &ui;
        options.discoverGameRoot = [this] { return gameRoot; };
    }
    std::string prefsPath() const { return (root.path() / "app" / kPreferenceFileName).string(); }
    bool prefsExist() const { return fs::exists(prefsPath()); }
    void writePrefs(const PreferenceSet& p) { root.write("app/Ferrolundpreferences.txt", FormatPreferences(p, AboutHome::Shadow)); }
    PreferenceSet readPrefs() const {
        PreferenceSet p;
        ParsePreferences(root.read("app/Ferrolundpreferences.txt"), p, AboutHome::AboutScreen);
        return p;
    }
    void run() { StartUp(ctx, window, options); }
};

TEST(StartUp, FirstRunShowsNoMessageAndWritesNothingUntilExit) {
    Start s;
    s.run();
    EXPECT_TRUE(s.ui.shown.empty());
    EXPECT_FALSE(s.prefsExist());
    EXPECT_EQ(s.ctx.gameRoot(), s.gameRoot);
    EXPECT_FALSE(s.window.maximised);
    EXPECT_EQ(s.window.geometry.width, 9600);  // the design size stays
    EXPECT_FALSE(s.window.checked["mnuDont"]);
    EXPECT_FALSE(s.window.checked["mnuWarn"]);
    EXPECT_EQ(s.window.caption, "Ferrolund editor  Version 1.0.1   Rail Works path = " + s.gameRoot);
    EXPECT_EQ(s.ui.lastStatus(0), "English");
    EXPECT_EQ(s.ctx.lang.count(), 321);
    EXPECT_EQ(s.window.languageApplied, 1);
    EXPECT_TRUE(fs::is_directory(s.root.path() / "app/TempFiles"));
    for (const char* item : {"mnuSaveRS", "mnuSavexml", "mnuSaveAs", "mnuPrint", "mnuDDS", "mnuView", "mnuEditDDS"}) {
        EXPECT_FALSE(s.window.enabled.at(item)) << item;
    }
    EXPECT_FALSE(s.window.visible.at("mnuRSBT"));

    s.ui.answers.push_back(base::Answer::Yes);
    EXPECT_TRUE(ExitSequence(s.ctx, s.window, {}));
    EXPECT_EQ(s.ui.texts(), std::vector<std::string>{"Do you really wish to exit Ferrolund?"});
    ASSERT_TRUE(s.prefsExist());
    const PreferenceSet written = s.readPrefs();
    EXPECT_EQ(written.gameRoot, s.gameRoot);
    EXPECT_EQ(written.editorWidth, 9600);
}

TEST(StartUp, RoutesNotIndexedShowsTheFirstUseMessage) {
    Start s;
    s.writePrefs(PreferenceSet{});
    s.run();
    ASSERT_EQ(s.ui.shown.size(), 1u);
    EXPECT_EQ(s.ui.shown[0].text, kFirstUse);
    EXPECT_EQ(s.ui.shown[0].icon, base::Icon::Information);
    EXPECT_EQ(s.ui.shown[0].title, "");  // the program's own title
}

TEST(StartUp, StoredGeometryAndTheZeroRule) {
    struct Case { PreferenceSet prefs; TwipsRect expected; bool maximised; };
    PreferenceSet zero;
    zero.routesIndexed = true;
    PreferenceSet stored = zero;
    stored.editorLeft = 200;
    stored.editorTop = 300;
    stored.editorWidth = 12000;
    stored.editorHeight = 9000;
    PreferenceSet maxed = stored;
    maxed.editorWindowState = 2;
    const Case cases[] = {{zero, {1000, 1000, 10000, 8000}, false},
                          {stored, {200, 300, 12000, 9000}, false},
                          {maxed, {1000, 1000, 9600, 7200}, true}};
    for (const auto& c : cases) {
        Start s;
        s.writePrefs(c.prefs);
        s.run();
        EXPECT_EQ(s.window.maximised, c.maximised);
        EXPECT_EQ(s.window.geometry.left, c.expected.left);
        EXPECT_EQ(s.window.geometry.width, c.expected.width);
        EXPECT_EQ(s.window.geometry.height, c.expected.height);
        EXPECT_TRUE(s.ui.shown.empty());
    }
}

TEST(StartUp, CommandLineFileIsDispatchedByItsEnding) {
    struct Case { std::string line; std::string file; std::string command; };
    const Case cases[] = {
        {"\"C:\\x\\Scenario.bin\"", "C:\\x\\Scenario.bin", "mnuOpenRS"},
        {"/home/u/My Route/Tracks.BIN", "/home/u/My Route/Tracks.BIN", "mnuOpenRS"},
        {"a.XSec", "a.XSec", "mnuOpenRS"},
        {"b.GeoPcDx", "b.GeoPcDx", "mnuOpenRS"},
        {"c.proxybin", "c.proxybin", "mnuOpenRS"},
        {"d.TgPcDx", "d.TgPcDx", "mnuOpenTex"},
        {"\"RouteProperties.xml\"", "RouteProperties.xml", "mnuXML"},
        {"e.cost", "e.cost", "mnuXML"},
        {"f.tgt", "f.tgt", "mnuXML"},
        {"g.proxyxml", "g.proxyxml", "mnuXML"},
        {"texture.dds", "texture.dds", ""},
    };
    for (const auto& c : cases) {
        Start s;
        s.options.commandLine = c.line;
        s.run();
        EXPECT_EQ(s.ctx.commandFile, c.file) << c.line;
        EXPECT_TRUE(s.ctx.commandLineOpen) << c.line;
        EXPECT_TRUE(s.window.maximised) << c.line;
        EXPECT_EQ(s.window.commandsRun, c.command.empty() ? std::vector<std::string>{}
                                                          : std::vector<std::string>{c.command})
            << c.line;
        EXPECT_EQ(s.ui.dialogTitles.size(), 0u) << "no file dialog for " << c.line;
    }
}

TEST(StartUp, ACommandLineFileThatNoBuiltCommandOpensIsSaidSo) {
    // A command that is not built yet, and files the desktop hands over that only the
    // menus deal with.
    struct Case { std::string file; std::vector<std::string> commandsRun; };
    const Case cases[] = {
        {"/games/RailWorks/Content/Routes/r/Scenarios/s/Scenario.bin", {"mnuOpenRS"}},
        {"/home/u/Downloads/Loco Pack.ap", {}},
        {"/home/u/textures/body.dds", {}},
    };
    for (const auto& c : cases) {
        Start s;
        s.window.availableCommands.clear();
        s.options.commandLine = "\"" + c.file + "\"";
        s.run();
        EXPECT_EQ(s.window.commandsRun, c.commandsRun) << c.file;
        EXPECT_EQ(s.ui.texts(), std::vector<std::string>{"This version of Ferrolund cannot open " + c.file + " yet."})
            << c.file;
    }
}

TEST(StartUp, AMissingLanguageGivesEnglishWhileTheChoiceStays) {
    Start s;
    PreferenceSet p;
    p.routesIndexed = true;
    p.language = "Klingon";
    s.writePrefs(p);
    s.run();
    EXPECT_EQ(s.ctx.prefs.language, "Klingon");
    EXPECT_EQ(s.ctx.languageFile, "Lang_English.txt");
    EXPECT_EQ(*s.ctx.lang.text(1), "&Files");
    EXPECT_EQ(s.ui.lastStatus(0), "Klingon");
}

TEST(StartUp, NoLanguageFileAtAllIsReportedOnce) {
    Start s;
    fs::remove_all(s.root.path() / "app/Language");
    s.run();
    ASSERT_EQ(s.ui.shown.size(), 2u);  // the missing table, then the missing status-panel text
    EXPECT_EQ(s.ui.shown[0].icon, base::Icon::Critical);
    EXPECT_EQ(s.window.languageApplied, 0);
}

TEST(StartUp, ShortPreferenceFileReportsEachMissingValue) {
    Start s;
    s.root.write("app/Ferrolundpreferences.txt", "11000\r\n9000\r\n");
    s.run();
    int reports = 0;
    for (const auto& m : s.ui.shown) reports += m.text.rfind("Error: #62 ", 0) == 0;
    EXPECT_EQ(reports, 30);
    const std::string log = s.root.read("app/Errors.txt");
    EXPECT_NE(log.find("Procedure:\r\nForm_Load\r\n"), std::string::npos);
    EXPECT_EQ(s.window.geometry.width, 11000);
    EXPECT_EQ(s.window.geometry.left, 1000);
}

TEST(StartUp, CancellingTheGamePathLeavesItEmptyAndExitWritesIt) {
    Start s;
    s.gameRoot.clear();
    s.run();
    ASSERT_EQ(s.ui.dialogTitles, std::vector<std::string>{"Select your RailWorks.exe File"});
    EXPECT_EQ(s.ctx.gameRoot(), "");
    EXPECT_EQ(s.window.caption, "Ferrolund editor  Version 1.0.1   Rail Works path = ");
    s.ctx.prefs.noAskOnExit = true;
    EXPECT_TRUE(ExitSequence(s.ctx, s.window, {}));
    EXPECT_EQ(s.readPrefs().gameRoot, "");
}

TEST(StartUp, ChoosingTheGameExeKeepsItsFolder) {
    Start s;
    s.gameRoot.clear();
    s.ui.files.push_back((s.root.path() / "game" / "RailWorks.exe").string());
    s.run();
    EXPECT_EQ(s.ctx.gameRoot(), (s.root.path() / "game").string());
    EXPECT_FALSE(s.prefsExist());  // written by the picker only when the file exists
}

TEST(StartUp, ConverterIsCopiedOnlyWhenThePrivateCopyIsAbsent) {
    Start s;
    s.root.write("game/serz.exe", "new serz");
    s.root.write("game/zlibwapi.dll", "zlib");
    s.root.write("game/stlport_vc10.5.2.dll", "stl");
    s.root.write("app/serz.exe", "old serz");
    s.run();
    EXPECT_EQ(s.root.read("app/serz.exe"), "new serz");
    EXPECT_EQ(s.root.read("app/zlibwapi.dll"), "zlib");
    EXPECT_EQ(s.root.read("app/stlport_vc10.5.2.dll"), "stl");

    s.root.write("game/serz.exe", "newer serz");
    CopyConverter(s.ctx);
    EXPECT_EQ(s.root.read("app/serz.exe"), "new serz");  // zlibwapi.dll alone decides
    EXPECT_TRUE(s.ui.shown.empty());
}

TEST(StartUp, RsBinToolFolderShowsItsItem) {
    Start s;
    fs::create_directories(s.root.path() / "app/RSBinTool");
    s.run();
    EXPECT_TRUE(s.window.visible.at("mnuRSBT"));
    EXPECT_EQ(s.ctx.prefs.rsBinToolPath, s.ctx.appRoot + "\\RSBinTool\\rsbintool.exe");
}

TEST(StartUp, RouteIndexIsLoadedWhenPresent) {
    Start s;
    s.root.write("app/IndexFiles/RouteIndex.csv",
                 "Example Line - Tours,12345678-1234-1234-1234-123456789ABC,17\r\nSecond,abc,18\r\n\r\n");
    s.run();
    ASSERT_EQ(s.ctx.routeIndex.count(), 2);
    EXPECT_EQ(s.ctx.routeIndex.routeName[0], "Example Line - Tours");
    EXPECT_EQ(s.ctx.routeIndex.routeSlot[1], "18");
}

TEST(StartUp, EditorFontSizeIsApplied) {
    Start s;
    PreferenceSet p;
    p.routesIndexed = true;
    p.editorFontSize = "14";
    s.writePrefs(p);
    s.run();
    EXPECT_EQ(s.window.fontSize, 14.0);
}

struct ExitCase : Start {
    ExitCase() {
        PreferenceSet p;
        p.routesIndexed = true;
        p.warnIfNotSaved = true;
        writePrefs(p);
        run();
        root.write("app/TempFiles/left.xml", "x");
    }
};

TEST(ExitSequence, NoToTheExitQuestionKeepsRunningWithTheFileWritten) {
    ExitCase s;
    fs::remove(s.prefsPath());
    s.ui.answers.push_back(base::Answer::No);
    EXPECT_FALSE(ExitSequence(s.ctx, s.window, {}));
    EXPECT_TRUE(s.prefsExist());
    EXPECT_TRUE(fs::exists(s.root.path() / "app/TempFiles/left.xml"));
    EXPECT_EQ(s.window.searchClosed, 1);
}

TEST(ExitSequence, UnsavedEditIsWarnedAndNoChangesNothing) {
    ExitCase s;
    fs::remove(s.prefsPath());
    s.ui.answers.push_back(base::Answer::No);
    EXPECT_FALSE(ExitSequence(s.ctx, s.window, {true, false}));
    EXPECT_EQ(s.ui.shown.back().text,
              "You edited a file in the .bin file editor but do\nnot appear to have saved it. Do you really\n"
              "want to exit?");
    EXPECT_EQ(s.ui.shown.back().icon, base::Icon::Exclamation);
    EXPECT_FALSE(s.prefsExist());
}

TEST(ExitSequence, SavedOrUnwarnedEditsAreNotQuestioned) {
    struct Case { EditorState editor; bool warn; };
    for (const Case c : {Case{{true, true}, true}, Case{{true, false}, false}, Case{{false, false}, true}}) {
        ExitCase s;
        s.ctx.prefs.warnIfNotSaved = c.warn;
        s.ctx.prefs.noAskOnExit = true;
        EXPECT_TRUE(ExitSequence(s.ctx, s.window, c.editor));
        EXPECT_TRUE(s.ui.shown.empty());
        EXPECT_FALSE(fs::exists(s.root.path() / "app/TempFiles/left.xml"));
        EXPECT_TRUE(fs::is_directory(s.root.path() / "app/TempFiles"));
    }
}

TEST(ExitSequence, AWindowTooWideForTheFileIsReportedAndKeepsTheOldWidth) {
    ExitCase s;
    s.ctx.prefs.noAskOnExit = true;
    s.ctx.prefs.editorWidth = 12345;
    s.window.geometry = {0, 0, 40000, 8000};
    EXPECT_TRUE(ExitSequence(s.ctx, s.window, {}));
    ASSERT_FALSE(s.ui.shown.empty());
    EXPECT_EQ(s.ui.shown[0].text.rfind("Error: #6 Overflow", 0), 0u);
    EXPECT_EQ(s.readPrefs().editorWidth, 12345);
    EXPECT_EQ(s.readPrefs().editorHeight, 8000);
}

TEST(ExitSequence, LineFourteenAtExitIsTheAboutScreensFlag) {
    ExitCase s;
    s.ctx.prefs.noAskOnExit = true;
    s.ctx.prefs.aboutFlagShadow = true;
    s.ctx.prefs.aboutFlag = false;
    ToggleNoAskOnExit(s.ctx, s.window);  // a menu writer stores the shadow
    PreferenceSet afterMenu;
    ParsePreferences(s.root.read("app/Ferrolundpreferences.txt"), afterMenu, AboutHome::Shadow);
    EXPECT_TRUE(afterMenu.aboutFlagShadow);
    EXPECT_FALSE(afterMenu.noAskOnExit);
    s.ui.answers.push_back(base::Answer::Yes);
    EXPECT_TRUE(ExitSequence(s.ctx, s.window, {}));
    PreferenceSet afterExit;
    ParsePreferences(s.root.read("app/Ferrolundpreferences.txt"), afterExit, AboutHome::Shadow);
    EXPECT_FALSE(afterExit.aboutFlagShadow);
}

TEST(OptionCommands, WritersAndToggles) {
    ExitCase s;
    fs::remove(s.prefsPath());
    ToggleWarnIfNotSaved(s.ctx, s.window);  // kept for the next writer only
    EXPECT_FALSE(s.ctx.prefs.warnIfNotSaved);
    EXPECT_FALSE(s.window.checked["mnuWarn"]);
    EXPECT_FALSE(s.prefsExist());

    s.ui.answers.push_back(base::Answer::Yes);
    StartMaximised(s.ctx, s.window);
    EXPECT_TRUE(s.window.maximised);
    EXPECT_EQ(s.readPrefs().editorWindowState, 2);
    EXPECT_FALSE(s.readPrefs().warnIfNotSaved);
    s.ui.answers.push_back(base::Answer::No);
    StartMaximised(s.ctx, s.window);
    EXPECT_EQ(s.readPrefs().editorWindowState, 0);
}

TEST(OptionCommands, SelectLanguageRelabelsAtOnce) {
    ExitCase s;
    const int before = s.window.languageApplied;
    SelectLanguage(s.ctx, s.window, "Lang_German.txt");
    EXPECT_EQ(s.ctx.prefs.language, "German");
    EXPECT_EQ(*s.ctx.lang.text(1), "&Dateien");
    EXPECT_EQ(s.window.languageApplied, before + 1);
    EXPECT_EQ(s.ui.lastStatus(0), "German");
    EXPECT_EQ(s.readPrefs().language, "German");
}

TEST(OptionCommands, ToolPathPickersKeepOrClear) {
    ExitCase s;
    s.ui.files.push_back(std::string("/usr/bin/evince"));
    PickToolPath(s.ctx, ToolPath::PdfReader);
    EXPECT_EQ(s.ctx.prefs.pdfReaderPath, "/usr/bin/evince");
    PickToolPath(s.ctx, ToolPath::PdfReader);  // cancelled
    EXPECT_EQ(s.ctx.prefs.pdfReaderPath, "");
    s.ui.files.push_back(std::string("/usr/bin/gimp"));
    PickToolPath(s.ctx, ToolPath::GraphicsEditor);
    s.ui.files.push_back(std::string("/usr/bin/eog"));
    PickToolPath(s.ctx, ToolPath::Viewer);
    EXPECT_EQ(s.ctx.prefs.graphicsEditorPath, "/usr/bin/gimp");
    EXPECT_EQ(s.ctx.prefs.viewerPath, "/usr/bin/eog");
    EXPECT_EQ(s.ui.dialogTitles, (std::vector<std::string>{"Select your PDF Reader", "Select your PDF Reader",
                                                            "Select your Graphics Editor",
                                                            "Select your Graphics Viewer"}));
    SetPreLoadFolder(s.ctx, std::string("/games/PreLoad"));
    EXPECT_EQ(s.ctx.prefs.preLoadFolder, "/games/PreLoad");
    SetPreLoadFolder(s.ctx, std::nullopt);
    EXPECT_EQ(s.ctx.prefs.preLoadFolder, "");
}

}  // namespace
}  // namespace ferrolund::app
