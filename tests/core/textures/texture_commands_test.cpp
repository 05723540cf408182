// The Graphics Tools of the main window on a texture in an accented folder: open, to .dds,
// back with a back-up, and the answers that must leave every file as it was.
#include "textures/texture_commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "core/editor/recording_document_window.h"
#include "generator/texture_sample.h"
#include "serz/codec.h"
#include "support/locked_folder.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "textures/tgpcdx_dds.h"
#include "tools/files.h"

namespace ferrolund::textures {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDxt5 = "HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA";

std::string Read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::map<std::string, std::string> Snapshot(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files[entry.path().string()] = Read(entry.path());
    return files;
}

struct Graphics {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    editor::EditorDocument doc;
    editor::RecordingDocumentWindow window;
    std::string texture, binary;

    Graphics() {
        ctx.appRoot = (root.path() / "app").string();
        fs::create_directories(root.path() / "app/TempFiles");
        ctx.ui = &ui;
        ctx.prefs.gameRoot = (root.path() / "game").string();
        ctx.lang.parse(tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Language/Lang_English.txt"));
        EXPECT_FALSE(serz::XmlToBinary(sample::TextureXml(kDxt5, 64, 32, 4, 3), binary));
        texture = root.write("game/Assets/Kuju/Strecke_é/Textures/Brücke_č.TgPcDx", binary).string();
    }
    fs::path tempDds() const { return root.path() / "app/TempDDS"; }
    void open() {
        ui.files.push_back(texture);
        OpenTexture(ctx, doc, window);
    }
    std::string dds() const { return (tempDds() / "Brücke_č.dds").string(); }
};

TEST(GraphicsTools, OpenShowsTheTexturesXmlFromACopyInTempDds) {
    Graphics g;
    g.open();
    EXPECT_EQ(g.ui.dialogTitles, std::vector<std::string>{"Open RS Texture files"});
    EXPECT_EQ(g.window.names[0], g.texture);
    EXPECT_NE(g.window.panes[0].find("<d:blob"), std::string::npos);
    EXPECT_EQ(g.ui.lastStatus(editor::kModifiedPanel).rfind("File last Modified: 20", 0), 0u);
    EXPECT_EQ(Read(g.tempDds() / "Brücke_č.bin"), g.binary);
    EXPECT_TRUE(g.window.enabled.at("mnuDDS"));
    EXPECT_FALSE(g.window.enabled.at("mnuView"));
    EXPECT_TRUE(g.ui.shown.empty());
}

TEST(GraphicsTools, ToDdsWritesTheSameFilesAsTheDirectConversionAndTellsTheFormat) {
    Graphics g;
    g.open();
    ConvertOpenTexture(g.ctx, g.window);
    ASSERT_EQ(g.ui.shown.size(), 1u);
    EXPECT_EQ(g.ui.shown[0].title, "Editing .dds files");
    EXPECT_EQ(g.ui.shown[0].text,
              "If you wish to edit this file, then it must be saved with the following format:-\n1. .DDS\n"
              "2. DXT5 ARGB\n3. Number of Mip-Maps - 4");
    EXPECT_TRUE(g.window.enabled.at("mnuView"));
    EXPECT_TRUE(g.window.enabled.at("mnuEditDDS"));
    const ConversionResult direct = TgPcDxToDds(g.texture, (g.root.path() / "direct").string());
    ASSERT_EQ(direct.error, "");
    EXPECT_EQ(Read(g.dds()), Read(direct.output));
    EXPECT_EQ(Read(g.tempDds() / "Brücke_č.dat"), Read(g.root.path() / "direct/Brücke_č.dat"));
}

TEST(GraphicsTools, ToDdsRefusesWhatIsNoTexture) {
    struct Case {
        std::string document;
        std::string text;
        std::string message;
    };
    const std::string foreign = sample::TextureXml(kDxt5, 8, 8, 1);
    std::string odd = foreign;
    odd.replace(odd.find(kDxt5), std::string(kDxt5).size(), "HC_IMAGE_FORMAT_PALETTE");
    const std::vector<Case> cases = {
        {"C:\\game\\Scenery\\+000000+000000.bin", foreign, kNotTgPcDx},
        {"", "", kNotTgPcDx},
        {"C:\\game\\a.TgPcDx", odd, std::string(kUnableToConvert) + "\nHC_IMAGE_FORMAT_PALETTE"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.document);
        Graphics g;
        g.window.names[0] = c.document;
        g.window.panes[0] = c.text;
        ConvertOpenTexture(g.ctx, g.window);
        ASSERT_EQ(g.ui.texts(), std::vector<std::string>{c.message});
        EXPECT_FALSE(fs::exists(g.tempDds() / "a.dds"));
        EXPECT_FALSE(fs::exists(g.tempDds() / "+000000+000000.dds"));
    }
}

struct Converted : Graphics {
    Converted() {
        open();
        ConvertOpenTexture(ctx, window);
        ui.shown.clear();
        // The paint program changes the first pixels.
        std::string bytes = Read(dds());
        bytes.replace(128, 8, "\x11\x22\x33\x44\x55\x66\x77\x88");
        std::ofstream(dds(), std::ios::binary) << bytes;
    }
};

TEST(GraphicsTools, BackToTextureAsksThenReplacesWithABackup) {
    Converted g;
    g.ui.files.push_back(g.dds());
    g.ui.answers.push_back(base::Answer::Yes);
    ConvertDdsToTexture(g.ctx, g.window);
    ASSERT_EQ(g.ui.shown.size(), 2u);
    EXPECT_EQ(g.ui.shown[0].text, "This option will convert your modified file Brücke_č.dds\nto " + g.texture +
                                      "\nand create a backup of the original file. Continue?");
    EXPECT_TRUE(g.ui.shown[0].question);
    EXPECT_EQ(g.ui.dialogTitles, (std::vector<std::string>{"Open RS Texture files", "Convert .dds file"}));
    EXPECT_EQ(Read(g.texture + ".bak"), g.binary);
    const std::string changed = Read(g.texture);
    EXPECT_NE(changed, g.binary);
    EXPECT_NE(changed.find("\x11\x22\x33\x44\x55\x66\x77\x88"), std::string::npos);
}

TEST(GraphicsTools, BackToTextureChangesNothingWithoutItsSideFileOrAYes) {
    {
        Converted g;
        fs::remove(g.tempDds() / "Brücke_č.dat");
        const auto before = Snapshot(g.root.path());
        g.ui.files.push_back(g.dds());
        ConvertDdsToTexture(g.ctx, g.window);
        EXPECT_EQ(g.ui.texts(), std::vector<std::string>{kNoSideFile});
        EXPECT_EQ(Snapshot(g.root.path()), before);
    }
    {
        Converted g;
        const auto before = Snapshot(g.root.path());
        g.ui.files.push_back(g.dds());
        g.ui.answers.push_back(base::Answer::No);
        ConvertDdsToTexture(g.ctx, g.window);
        EXPECT_EQ(g.ui.shown.size(), 1u);
        EXPECT_EQ(Snapshot(g.root.path()), before);
    }
}

TEST(GraphicsTools, BackToTextureInAReadOnlyFolderKeepsTheOriginal) {
    Converted g;
    testing::LockedFolder lock(fs::path(g.texture).parent_path());
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    g.ui.files.push_back(g.dds());
    g.ui.answers.push_back(base::Answer::Yes);
    ConvertDdsToTexture(g.ctx, g.window);
    ASSERT_EQ(g.ui.shown.size(), 2u);
    EXPECT_EQ(g.ui.shown[1].icon, base::Icon::Exclamation);
    EXPECT_EQ(Read(g.texture), g.binary);
    EXPECT_FALSE(fs::exists(g.texture + ".bak"));
}

TEST(GraphicsTools, BackToATextureOtherThanTheOpenOneAsksWhichToReplace) {
    Converted g;
    g.window.names[0] = "C:\\elsewhere\\other.TgPcDx";
    const std::string copy = g.root.write("game/copy/Brücke_č.TgPcDx", g.binary).string();
    g.ui.files = {g.dds(), copy};
    g.ui.answers.push_back(base::Answer::Yes);
    ConvertDdsToTexture(g.ctx, g.window);
    EXPECT_EQ(g.ui.dialogTitles.back(), "The .TgPcDx texture to replace with Brücke_č.dds");
    EXPECT_EQ(Read(g.texture), g.binary);
    EXPECT_EQ(Read(copy + ".bak"), g.binary);
    EXPECT_NE(Read(copy), g.binary);
}

TEST(GraphicsTools, EmptyTempDdsAsksFirst) {
    Converted g;
    g.ui.answers = {base::Answer::No};
    EmptyTempDds(g.ctx);
    EXPECT_EQ(g.ui.texts(),
              std::vector<std::string>{"This will delete all files in your TempDDS folder. Do you wish to continue?"});
    EXPECT_TRUE(fs::exists(g.dds()));
    g.ui.answers = {base::Answer::Yes};
    EmptyTempDds(g.ctx);
    EXPECT_TRUE(fs::is_directory(g.tempDds()));
    EXPECT_TRUE(fs::is_empty(g.tempDds()));
    EXPECT_FALSE(fs::exists(g.texture + ".bak"));
    EXPECT_TRUE(fs::exists(g.texture));
}

TEST(GraphicsTools, ViewAndEditUseTheSetProgramOrTheDesktop) {
    struct Case {
        DdsProgram which;
        std::string viewer, editor;  // the options
        bool desktopOpens;
        std::string program;  // what was started, empty for the desktop or nothing
        std::string message;
    };
    const std::string noViewer =
        "To view DDS files you need to install a suitable Texture viewer (e.g. IrfanView) on your PC "
        "\nand select the path from the Options menu.";
    const std::string noEditor =
        "To edit DDS files you need to install a suitable paint program (e.g. PSP with .dds plugin) on your PC "
        "\nand select the path from the Options menu.";
    const std::vector<Case> cases = {
        {DdsProgram::Viewer, "/opt/viewer", "/opt/paint", true, "/opt/viewer", ""},
        {DdsProgram::PaintProgram, "/opt/viewer", "/opt/paint", true, "/opt/paint", ""},
        {DdsProgram::Viewer, "", "/opt/paint", true, "", ""},
        {DdsProgram::Viewer, "", "", false, "", noViewer},
        {DdsProgram::PaintProgram, "/opt/viewer", "", false, "", noEditor},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.viewer + "|" + c.editor);
        Converted g;
        g.ctx.prefs.viewerPath = c.viewer;
        g.ctx.prefs.graphicsEditorPath = c.editor;
        std::string started, file, desktop;
        ProgramStarter start;
        start.program = [&](const std::string& program, const std::string& f) {
            started = program;
            file = f;
            return true;
        };
        start.desktop = [&](const std::string& f) {
            desktop = f;
            return c.desktopOpens;
        };
        OpenDdsIn(g.ctx, g.window, c.which, start);
        EXPECT_EQ(started, c.program);
        if (!c.program.empty()) {
            EXPECT_EQ(fs::path(file), fs::path(g.dds()));
            EXPECT_EQ(desktop, "");
        } else {
            EXPECT_EQ(fs::path(desktop), fs::path(g.dds()));
        }
        EXPECT_EQ(g.ui.texts(), c.message.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.message});
    }
}

TEST(GraphicsTools, ViewBeforeTheConversionSaysSo) {
    Graphics g;
    g.open();
    bool asked = false;
    ProgramStarter start;
    start.desktop = [&](const std::string&) { return asked = true; };
    OpenDdsIn(g.ctx, g.window, DdsProgram::Viewer, start);
    EXPECT_FALSE(asked);
    ASSERT_EQ(g.ui.shown.size(), 1u);
    EXPECT_EQ(g.ui.shown[0].text.rfind("There is no ", 0), 0u);
}

}  // namespace
}  // namespace ferrolund::textures
