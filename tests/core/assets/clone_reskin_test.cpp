#include "assets/clone_reskin.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/tools/testdata_file.h"
#include "serz/codec.h"
#include "stock_fixture.h"
#include "tools/files.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Game;
using testing::TexturedGeometryXml;

void Write(Game& game, const std::string& relative, const std::string& bytes) {
    game.folder.write(fs::relative(game.onDisk(relative), game.folder.path()).string(), bytes);
}

CloneAsk Answer(CloneNames names, int* asked = nullptr) {
    return [names, asked](const CloneNames&) -> std::optional<CloneNames> {
        if (asked) ++*asked;
        return names;
    };
}

std::vector<std::string> NamesIn(const fs::path& folder) {
    std::vector<std::string> names;
    if (!fs::exists(folder)) return names;
    for (const auto& e : fs::recursive_directory_iterator(folder))
        if (e.is_regular_file()) names.push_back(fs::relative(e.path(), folder).generic_string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> Shown(const std::vector<std::string>& files, const std::string& root) {
    std::vector<std::string> out;
    for (const std::string& f : files) out.push_back(f.substr(root.size() + 1));
    return out;
}

TEST(ReskinTextures, SiblingsSharedFoldersAndMissingOnes) {
    Game game;
    const std::string folder = "Prov\\Prod\\RailVehicles\\Mk2\\Engine";
    for (const char* t : {"Textures\\body.TgPcDx", "Textures\\body_nm.TgPcDx", "Textures\\body_WI.tgpcdx",
                          "Textures\\bodynight.tgpcdx", "Textures\\numbers.TgPcDx", "Textures\\Tom&Jerry.TgPcDx"})
        Write(game, folder + "\\" + t, "x");
    Write(game, "Prov\\Prod\\RailVehicles\\Common\\Textures\\plate.TgPcDx", "x");
    Write(game, "Prov\\Prod\\Shared\\paint.TgPcDx", "x");
    const std::string root = game.gameRoot() + "\\Assets";
    const std::string model = root + "\\" + folder + "\\Mk2.GeoPcDx";
    const std::string xml = TexturedGeometryXml({"Textures\\[00]body", "..\\..\\..\\Common\\Textures\\plate",
                                                 "Textures\\numbers", "Prov\\Prod\\Shared\\paint", "Textures\\gone",
                                                 "Textures\\Tom&amp;Jerry"});
    struct Case {
        TextureChoice choice;
        std::vector<std::string> files, missing;
    };
    const std::string in = folder + "\\Textures\\";
    const Case cases[] = {
        {TextureChoice::All,
         {in + "body.TgPcDx", in + "body_WI.tgpcdx", in + "body_nm.TgPcDx", in + "bodynight.tgpcdx",
          "Prov\\Prod\\RailVehicles\\Common\\Textures\\plate.TgPcDx", in + "numbers.TgPcDx", in + "Tom&Jerry.TgPcDx"},
         {folder + "\\Prov\\Prod\\Shared\\paint.TgPcDx", in + "gone.TgPcDx"}},
        // Shared textures stay where they are; a value that is not relative is found under Assets.
        {TextureChoice::OwnOnly,
         {in + "body.TgPcDx", in + "body_WI.tgpcdx", in + "body_nm.TgPcDx", in + "bodynight.tgpcdx",
          "Prov\\Prod\\Shared\\paint.TgPcDx", in + "Tom&Jerry.TgPcDx"},
         {in + "gone.TgPcDx"}},
    };
    for (const Case& c : cases) {
        const ReskinTextures got = GatherTextures(xml, model, root, c.choice);
        EXPECT_EQ(Shown(got.files, root), c.files);
        EXPECT_EQ(Shown(got.missing, root), c.missing);
        EXPECT_EQ(got.firstElement, "Textures\\[00]body");
    }
}

TEST(ReskinGeometryId, TheMarkerStaysBeforeTheNewName) {
    const std::pair<std::string, std::string> cases[] = {
        {"AP\\VegEP\\Scenery\\Trees\\Beech1\\[00]tree", "New\\[00]oak_red"},
        {"AP\\VegEP\\Scenery\\tree", "New\\oak_red"},
        {"tr[01]ee", "New\\[01]oak_red"},
    };
    for (const auto& [old, made] : cases) EXPECT_EQ(ReskinGeometryId(old, "New", "oak_red"), made) << old;
    EXPECT_EQ(CategoryWord(" Domestic buildings "), "eDomesticbuildings");
}

TEST(ReskinTemplate, EveryMarkerIsFilledAndTheResultCompiles) {
    const std::string text = tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/ReSkinBluePrint.txt");
    ASSERT_FALSE(text.empty());
    ReskinFill fill{"oak_red", "Red Oak", "eFoliage", "AP", "VegEP", "Scenery\\oak.xml", "123456789",
                    "Textures\\[00]bark", "AP\\VegEP\\Red\\[00]oak_red"};
    const std::string filled = FillReskinTemplate(text, fill);
    for (const char* marker : {"aaaaaa", "bbbbbb", "cccccc", "dddddd", "eeeeee", "ffffff", "gggggg", "hhhhhh", "iiiiii",
                               "jjjjjj"}) {
        EXPECT_NE(text.find(marker), std::string::npos) << marker;
        EXPECT_EQ(filled.find(marker), std::string::npos) << marker;
    }
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(filled, binary));
    EXPECT_NE(filled.find("d:id=\"123456789\""), std::string::npos);
    EXPECT_NE(filled.find(">Scenery\\oak.xml</BlueprintID>"), std::string::npos);
}

TEST(CloneSceneryForReskin, TheRealItemGetsItsOwnModelAndTextures) {
    const fs::path real = ferrolund::testing::TestdataPath("serz/scenery-item.bin");
    if (!fs::exists(real)) GTEST_SKIP() << "real game file serz/scenery-item.bin is absent: the shared test data is not beside this checkout";
    Game game;
    const std::string folder = "AP\\VegEP\\Scenery\\Trees\\Beech1";
    game.putFile(folder + "\\Beech1.bin", real);
    // GeometryID "...\Beech1\[00]tree": the marker is cut to find the model.
    game.put(folder + "\\tree.GeoPcDx", TexturedGeometryXml({"Textures\\[00]bark", "Textures\\gone"}));
    Write(game, folder + "\\Textures\\bark.TgPcDx", "bark");
    Write(game, folder + "\\Textures\\bark_sm.TgPcDx", "shine");
    int asked = 0;
    const CloneOutcome out = CloneSceneryForReskin(
        game.ctx, {*SourceOfFile(game.gameRoot() + "\\Assets\\" + folder + "\\Beech1.bin")},
        Answer({"Beech1_Red", "Red Beech", "Trees\\Red", "Foliage"}, &asked));
    ASSERT_EQ(out.written.size(), 1u) << out.report;
    EXPECT_EQ(asked, 1);
    const std::string clone = "AP\\VegEP\\Scenery\\Trees\\Red\\Beech1";
    EXPECT_EQ(NamesIn(game.onDisk(clone)), (std::vector<std::string>{"Beech1_Red.GeoPcDx", "Beech1_Red.bin",
                                                                     "Textures/bark.TgPcDx", "Textures/bark_sm.TgPcDx"}));
    const std::string xml = game.xmlOf(clone + "\\Beech1_Red.bin");
    EXPECT_NE(xml.find(">AP\\VegEP\\Scenery\\Trees\\Red\\Beech1\\[00]Beech1_Red</GeometryID>"), std::string::npos);
    EXPECT_NE(xml.find(">Red Beech</English>"), std::string::npos);
    EXPECT_NE(out.report.find(game.gameRoot() + "\\Assets\\" + folder + "\\Textures\\gone.TgPcDx Called by "),
              std::string::npos);
    // The original's blueprint still holds its own model, marker and all.
    EXPECT_NE(game.xmlOf(folder + "\\Beech1.bin").find(">AP\\VegEP\\Scenery\\Trees\\Beech1\\[00]tree</GeometryID>"),
              std::string::npos);
}

TEST(CloneSceneryForReskin, ProceduralItemsStopTheCommand) {
    Game game;
    game.put("Prov\\Prod\\Procedural\\Fence\\fence.bin", CoachXml("Fence", {}));
    int asked = 0;
    const CloneOutcome out = CloneSceneryForReskin(
        game.ctx, {*SourceOfFile(game.gameRoot() + "\\Assets\\Prov\\Prod\\Procedural\\Fence\\fence.bin")},
        Answer({"a", "b", "c", ""}, &asked));
    EXPECT_FALSE(out.ran);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(game.ui.texts(), std::vector<std::string>{std::string(kProceduralMessage)});
}

TEST(CloneForReskinBlueprint, WritesAReskinThatNamesTheOriginal) {
    Game game;
    fs::create_directories(game.folder.path() / "app" / "Templates");
    tools::CopyFileReplacing(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/ReSkinBluePrint.txt",
                             game.ctx.appPath("Templates\\ReSkinBluePrint.txt"));
    const std::string folder = "Prov\\Prod\\RailVehicles\\Coaches\\Mk2\\Engine";
    game.put(folder + "\\Mk2.bin", CoachXml("Mk2", {}, folder + "\\[00]Mk2"));
    fs::create_directories(game.onDisk(folder));
    game.put(folder + "\\Mk2.GeoPcDx", TexturedGeometryXml({"Textures\\[00]body", "..\\Common\\plate"}));
    Write(game, folder + "\\Textures\\body.TgPcDx", "body");
    Write(game, "Prov\\Prod\\RailVehicles\\Coaches\\Mk2\\Common\\plate.TgPcDx", "plate");
    const CloneOutcome out =
        CloneForReskinBlueprint(game.ctx, {*SourceOfFile(game.gameRoot() + "\\Assets\\" + folder + "\\Mk2.bin")},
                                Answer({"Mk2_Blue", "Mk2 Blue", "Mk2_Blue", "Rolling stock"}));
    ASSERT_EQ(out.written.size(), 1u) << out.report;
    const std::string clone = "Prov\\Prod\\RailVehicles\\Coaches\\Mk2_Blue\\Engine";
    EXPECT_EQ(NamesIn(game.onDisk(clone)), (std::vector<std::string>{"Mk2_Blue.bin", "Textures/body.TgPcDx"}));
    const std::string xml = game.xmlOf(clone + "\\Mk2_Blue.bin");
    for (const std::string& part :
         {std::string("<cReskinBlueprint>"), std::string(">Mk2 Blue</English>"), std::string(">eRollingstock</Category>"),
          std::string(">Prov</Provider>"), std::string(">RailVehicles\\Coaches\\Mk2\\Engine\\Mk2.xml</BlueprintID>"),
          std::string(">Textures\\[00]body</OriginalTexture>"), std::string(">" + clone + "\\[00]Mk2_Blue<")}) {
        EXPECT_NE(xml.find(part), std::string::npos) << part;
    }
}

TEST(CloneForReskinBlueprint, WithoutItsTemplateNothingIsDone) {
    Game game;
    game.put("Prov\\Prod\\A\\B\\x.bin", CoachXml("X", {}));
    const CloneOutcome out = CloneForReskinBlueprint(
        game.ctx, {*SourceOfFile(game.gameRoot() + "\\Assets\\Prov\\Prod\\A\\B\\x.bin")}, Answer({"a", "b", "c", ""}));
    EXPECT_FALSE(out.ran);
    ASSERT_EQ(game.ui.texts().size(), 1u);
    EXPECT_NE(game.ui.texts()[0].find("ReSkinBluePrint.txt was not found"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::assets
