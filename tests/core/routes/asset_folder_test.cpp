#include "routes/asset_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;

TEST(AssetCopyLines, OneXcopyLinePerAssetIntoItsProviderAndProductFolder) {
    struct Case {
        const char* line;
        const char* expected;  // empty: no line
    };
    const std::vector<Case> cases = {
        {"C:\\Game\\Assets\\Kestrel\\Moorland\\Scenery\\Oak.bin,(Scenery Item)",
         "xcopy \"C:\\Game\\Assets\\Kestrel\\Moorland\\Scenery\\Oak.bin\" \"T\\Kestrel\\Moorland\\Scenery\\\" /I /C /S"},
        {"C:\\Game\\assets\\Kestrel\\Moorland\\Oak.GeoPcDx,C:\\Game\\Assets\\Kestrel\\Moorland\\Scenery\\Oak.bin",
         "xcopy \"C:\\Game\\assets\\Kestrel\\Moorland\\Oak.GeoPcDx\" \"T\\Kestrel\\Moorland\\\" /I /C /S"},
        {"C:\\Game\\Assets\\Kestrel\\Oak.wav", "xcopy \"C:\\Game\\Assets\\Kestrel\\Oak.wav\" \"T\\Kestrel\\\" /I /C /S"},
        {"C:\\Game\\Assets\\Loose.bin", ""},
        {"C:\\Game\\Content\\Routes\\R\\Scenery\\+000000+000000.bin", ""},
        {"C:\\GAME\\ASSETS\\KESTREL\\MOORLAND\\SCENERY\\OAK.BIN,again in other case", ""},
        {"", ""},
    };
    std::string text;
    for (const Case& c : cases) text += std::string(c.line) + "\r\n";
    text += "C:\\Game\\Assets\\Kestrel\\Moorland\\Audio\\Wind.wav";  // last line without line end
    std::vector<std::string> lines;
    std::unordered_set<std::string> seen;
    AddAssetCopyLines(text, "T", lines, seen);
    std::vector<std::string> expected;
    for (const Case& c : cases)
        if (*c.expected) expected.push_back(c.expected);
    expected.push_back("xcopy \"C:\\Game\\Assets\\Kestrel\\Moorland\\Audio\\Wind.wav\" \"T\\Kestrel\\Moorland\\Audio\\\" "
                       "/I /C /S");
    EXPECT_EQ(lines, expected);
    // A second list naming the same files adds nothing.
    AddAssetCopyLines("C:\\Game\\Assets\\Kestrel\\Moorland\\Scenery\\Oak.bin\n", "T", lines, seen);
    EXPECT_EQ(lines.size(), expected.size());
}

TEST(AssetFolderPath, NamedAfterTheRouteBelowTheProgramFolder) {
    app::AppContext ctx;
    ctx.appRoot = "C:\\Ferrolund";
    EXPECT_EQ(AssetFolderPath(ctx, " Moorland Line "), "C:\\Ferrolund\\Moorland Line");
    EXPECT_EQ(AssetFolderPath(ctx, "A/B: \"C\"?"), "C:\\Ferrolund\\A_B_ _C__");
    EXPECT_EQ(AssetFolderPath(ctx, ""), "C:\\Ferrolund\\_");
}

struct AssetGathering {
    testing::TempFolder app;
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    AssetGathering() {
        ctx.appRoot = app.system();
        ctx.prefs.gameRoot = game.system();
        ctx.ui = &ui;
    }
    std::string asset(const std::string& relative) {
        game.write("Assets/" + relative, "content of " + relative);
        std::string path = game.system() + "\\Assets\\" + relative;
        for (std::size_t i = game.system().size(); i < path.size(); ++i)
            if (path[i] == '/') path[i] = '\\';
        return path;
    }
    void list(const std::string& suffix, const std::vector<std::string>& rows) {
        std::string text;
        for (const std::string& row : rows) text += row + ",x\r\n";
        app.write("Reports/Moorland" + suffix, text);
    }
};

TEST(MakeAssetFolder, GathersTheRoutesAssetsFromItsSavedLists) {
    AssetGathering g;
    g.list("_Assets.csv", {g.asset("Kestrel/Moorland/Scenery/Oak.bin"), g.asset("Hartwell/Signals/Home.bin")});
    g.list("_GeoShapes.csv", {g.asset("Kestrel/Moorland/Scenery/Oak.GeoPcDx")});
    g.list("_Textures.csv", {g.asset("Kestrel/Moorland/Scenery/Textures/Bark.TgPcDx"),
                             g.game.system() + "\\Assets\\Kestrel\\Moorland\\Scenery\\Textures\\Gone.TgPcDx"});
    g.asset("Kestrel/Moorland/Scenery/Unused.bin");
    g.ui.answers.push_back(base::Answer::Ok);

    const AssetFolderOutcome out = MakeAssetFolder(g.ctx, "Moorland");
    EXPECT_FALSE(out.cancelled);
    EXPECT_EQ(out.folder, g.app.system() + "\\Moorland");
    EXPECT_EQ(out.lines, 5u);
    const fs::path made = g.app.path() / "Moorland";
    for (const char* copied : {"Kestrel/Moorland/Scenery/Oak.bin", "Hartwell/Signals/Home.bin",
                               "Kestrel/Moorland/Scenery/Oak.GeoPcDx", "Kestrel/Moorland/Scenery/Textures/Bark.TgPcDx"})
        EXPECT_EQ(g.app.read(std::string("Moorland/") + copied), std::string("content of ") + copied) << copied;
    EXPECT_FALSE(fs::exists(made / "Kestrel/Moorland/Scenery/Unused.bin"));
    // The missing texture is told, and the copy went on past it.
    EXPECT_EQ(out.batch.errors.size(), 1u);
    ASSERT_EQ(out.listsAbsent.size(), 1u);
    EXPECT_TRUE(out.listsAbsent[0].ends_with("Moorland_Sounds.csv"));
    EXPECT_TRUE(g.app.read("TempFiles/AssetFolder.bat").starts_with("xcopy \""));

    const auto texts = g.ui.texts();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_NE(texts[0].find("Sounds,Textures,GeoShapes and Assets.csv files\nFrom the 'Check Route' option"),
              std::string::npos);
    EXPECT_TRUE(texts[1].starts_with("The assets used by Moorland have been copied into\n" + out.folder));
    EXPECT_NE(texts[1].find("Gone.TgPcDx"), std::string::npos);
    EXPECT_NE(texts[1].find("Moorland_Sounds.csv"), std::string::npos);
}

TEST(MakeAssetFolder, ASecondRunAsksOnceWhetherToReplaceTheCopies) {
    AssetGathering g;
    const std::string oak = g.asset("Kestrel/Moorland/Scenery/Oak.bin");
    g.list("_Assets.csv", {oak, g.asset("Hartwell/Signals/Home.bin")});
    g.ui.answers.push_back(base::Answer::Ok);
    ASSERT_EQ(MakeAssetFolder(g.ctx, "Moorland").lines, 2u);
    g.game.write("Assets/Kestrel/Moorland/Scenery/Oak.bin", "changed since");

    g.ui.shown.clear();
    g.ui.answers = {base::Answer::Ok, base::Answer::No};
    EXPECT_TRUE(MakeAssetFolder(g.ctx, "Moorland").cancelled);
    EXPECT_EQ(g.app.read("Moorland/Kestrel/Moorland/Scenery/Oak.bin"), "content of Kestrel/Moorland/Scenery/Oak.bin");
    EXPECT_EQ(g.ui.texts().size(), 2u);

    g.ui.shown.clear();
    g.ui.answers = {base::Answer::Ok, base::Answer::Yes};
    const AssetFolderOutcome again = MakeAssetFolder(g.ctx, "Moorland");
    EXPECT_EQ(again.lines, 2u);
    EXPECT_TRUE(again.batch.errors.empty());
    EXPECT_EQ(g.app.read("Moorland/Kestrel/Moorland/Scenery/Oak.bin"), "changed since");
    // Two questions and the closing box: no question a file.
    EXPECT_EQ(g.ui.texts().size(), 3u);
}

TEST(MakeAssetFolder, CancelNoListsAndAbort) {
    AssetGathering g;
    g.list("_Assets.csv", {g.asset("Kestrel/Moorland/Scenery/Oak.bin")});
    g.ui.answers.push_back(base::Answer::Cancel);
    EXPECT_TRUE(MakeAssetFolder(g.ctx, "Moorland").cancelled);
    EXPECT_FALSE(fs::exists(g.app.path() / "Moorland"));
    EXPECT_EQ(g.ui.texts().size(), 1u);

    g.ui.shown.clear();
    g.ui.answers.push_back(base::Answer::Ok);
    const AssetFolderOutcome none = MakeAssetFolder(g.ctx, "Other Line");
    EXPECT_EQ(none.lines, 0u);
    EXPECT_FALSE(fs::exists(g.app.path() / "Other Line"));
    ASSERT_EQ(g.ui.texts().size(), 2u);
    EXPECT_TRUE(g.ui.texts()[1].starts_with("No asset to copy was found in the saved lists of Other Line."));

    g.ui.shown.clear();
    g.ui.answers.push_back(base::Answer::Ok);
    g.ctx.abortFlag = true;
    const AssetFolderOutcome stopped = MakeAssetFolder(g.ctx, "Moorland");
    EXPECT_TRUE(stopped.batch.aborted);
    EXPECT_EQ(stopped.lines, 0u);
    EXPECT_FALSE(fs::exists(g.app.path() / "Moorland/Kestrel/Moorland/Scenery/Oak.bin"));
    EXPECT_TRUE(g.ui.texts().back().starts_with("Stopped after 0 of 1 assets"));
}

}  // namespace
}  // namespace ferrolund::routes
