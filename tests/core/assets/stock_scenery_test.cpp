#include "assets/stock_scenery.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "assets/stock_templates.h"
#include "generator/texture_sample.h"
#include "serz/codec.h"
#include "stock_fixture.h"
#include "support/locked_folder.h"
#include "textures/tgpcdx_dds.h"
#include "tools/files.h"
#include "tools/tags.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Game;
using testing::Siblings;
using testing::TagValue;

const std::string kCoach = "RailVehicles\\Coach\\Coach.bin";
const std::string kFolder = "Prov\\Prod\\RailVehicles\\Coach\\";

TEST(ConvertToScenery, TheGeometryPathLiesInTheStaticFolder) {
    const std::pair<std::string, std::string> cases[] = {
        {"Prov\\Prod\\RailVehicles\\[00]coach", "Prov\\Prod\\RailVehicles\\Coach\\Static\\[00]coach"},
        {"coach", "Prov\\Prod\\RailVehicles\\Coach\\Static\\coach"},
    };
    for (const auto& [geometry, expected] : cases)
        EXPECT_EQ(StaticGeometryId("Prov\\Prod\\RailVehicles\\Coach", geometry), expected) << geometry;
}

// The vehicle's folder with its models and textures.
void PutVehicle(Game& game, bool textures) {
    game.put(kFolder + "Coach.bin", CoachXml("Caf\xC3\xA9 Coach", {}));
    game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coach/coach.GeoPcDx", "model");
    game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coach/coach_col.geopcdx", "collision");
    game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coach/notes.txt", "not a model");
    if (textures) {
        game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coach/Textures/body.TgPcDx", "body");
        game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coach/Textures/body.dds", "not a texture of the game");
    }
}

TEST(ConvertToScenery, MakesTheStaticItemBesideTheVehicle) {
    Game game;
    game.useTemplates({"APBatch11.txt"});
    PutVehicle(game, true);
    const std::string before = game.bytesOf(kFolder + "Coach.bin");
    game.okToWarning();
    const TransformOutcome out = ConvertToScenery(game.ctx, {game.row("Prov", "Prod", kCoach)});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    const std::string xml = game.xmlOf(kFolder + "Static\\Coach.bin");
    ASSERT_FALSE(xml.empty());
    EXPECT_NE(xml.find("<cSceneryBlueprint"), std::string::npos);
    EXPECT_EQ(TagValue(xml, "English"), "Static - Caf\xC3\xA9 Coach");
    EXPECT_EQ(TagValue(xml, "GeometryID"), "Prov\\Prod\\RailVehicles\\Coach\\Static\\[00]coach");
    EXPECT_EQ(game.bytesOf(kFolder + "Static\\coach.GeoPcDx"), "model");
    EXPECT_EQ(game.bytesOf(kFolder + "Static\\coach_col.geopcdx"), "collision");
    EXPECT_FALSE(fs::exists(game.onDisk(kFolder + "Static\\notes.txt")));
    EXPECT_EQ(game.bytesOf(kFolder + "Static\\Textures\\body.TgPcDx"), "body");
    EXPECT_FALSE(fs::exists(game.onDisk(kFolder + "Static\\Textures\\body.dds")));
    EXPECT_EQ(game.bytesOf(kFolder + "Coach.bin"), before);
}

TEST(ConvertToScenery, WithoutTexturesItSaysWhereToLook) {
    Game game;
    game.useTemplates({"APBatch11.txt"});
    PutVehicle(game, false);
    // A different model already in the Static folder is kept by the back-up rule.
    game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coach/Static/coach.GeoPcDx", "older model");
    game.okToWarning();
    const TransformOutcome out = ConvertToScenery(game.ctx, {game.row("Prov", "Prod", kCoach)});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    const auto texts = game.ui.texts();
    const std::string message = "There is no Textures folder in " + game.gameRoot() +
                                "\\Assets\\Prov\\Prod\\RailVehicles\\Coach\r\nYou will need to work out where textures are?";
    EXPECT_NE(std::find(texts.begin(), texts.end(), message), texts.end());
    EXPECT_EQ(game.bytesOf(kFolder + "Static\\coach.GeoPcDx"), "model");
    EXPECT_EQ(game.bytesOf(kFolder + "Static\\coach.GeoPcDx.bak"), "older model");
    EXPECT_TRUE(fs::is_directory(game.onDisk(kFolder + "Static\\Textures")));
}

TEST(ConvertToScenery, WithoutItsTemplateNothingIsMade) {
    Game game;
    PutVehicle(game, true);
    game.okToWarning();
    const TransformOutcome out = ConvertToScenery(game.ctx, {game.row("Prov", "Prod", kCoach)});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, MissingTemplateMessage("APBatch11.txt"));
    EXPECT_FALSE(fs::exists(game.onDisk(kFolder + "Static")));
}

TEST(MakeBetterSnow, CopiesTheTextureIntoEachItemsFolder) {
    Game game;
    game.put(kFolder + "Coach.bin", CoachXml("Coach", {}));
    game.put("Prov\\Prod\\Wagons\\Box\\Box.bin", CoachXml("Box", {}));
    game.folder.write("game/Assets/Prov/Prod/Wagons/Box/Snow000_Deep.TgPcDx", "an older snow");
    game.useTemplates({std::string(kSnowTexture)});
    const std::string snow = game.bytesOf("..\\..\\app\\Templates\\Snow000_Deep.TgPcDx");
    ASSERT_GT(snow.size(), 1000u);
    const SnowOutcome out =
        MakeBetterSnow(game.ctx, {game.row("Prov", "Prod", kCoach), game.row("Prov", "Prod", "Wagons\\Box\\Box.bin")});
    ASSERT_TRUE(out.ran);
    EXPECT_EQ(out.written.size(), 2u);
    EXPECT_EQ(game.bytesOf(kFolder + "Snow000_Deep.TgPcDx"), snow);
    EXPECT_EQ(game.bytesOf("Prov\\Prod\\Wagons\\Box\\Snow000_Deep.TgPcDx"), snow);
    EXPECT_EQ(game.bytesOf("Prov\\Prod\\Wagons\\Box\\Snow000_Deep.TgPcDx.bak"), "an older snow");
    EXPECT_EQ(game.ui.texts().back(), "Requested changes have been made.");
}

TEST(MakeBetterSnow, WithoutTheTextureOrWithALockedFolderNothingIsLost) {
    Game game;
    const fs::path coach = game.put(kFolder + "Coach.bin", CoachXml("Coach", {}));
    EXPECT_FALSE(MakeBetterSnow(game.ctx, {game.row("Prov", "Prod", kCoach)}).ran);
    EXPECT_EQ(game.ui.texts().back(), "The Snow000_Deep.TgPcDx file was not found in your\r\nFerrolund\\Templates folder.");

    game.useTemplates({std::string(kSnowTexture)});
    game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coach/Snow000_Deep.TgPcDx", "an older snow");
    SnowOutcome out;
    {
        ferrolund::testing::LockedFolder lock(coach.parent_path());
        if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        out = MakeBetterSnow(game.ctx, {game.row("Prov", "Prod", kCoach)});
    }
    EXPECT_TRUE(out.written.empty());
    EXPECT_EQ(game.bytesOf(kFolder + "Snow000_Deep.TgPcDx"), "an older snow");
    EXPECT_NE(out.report.find(kCoach), std::string::npos);
}

// The shipped file is generated data: the generator's texture, compiled.
TEST(MakeBetterSnow, TheShippedSnowIsWhatTheGeneratorMakes) {
    std::string binary;
    ASSERT_FALSE(serz::XmlToBinary(sample::SnowTextureXml(), binary));
    EXPECT_EQ(tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/Snow000_Deep.TgPcDx"), binary);
}

// The shipped snow is a texture the game reads: it converts, and the texture tools take it.
TEST(MakeBetterSnow, TheShippedSnowIsAWhiteTexture) {
    const std::string bytes = tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/Snow000_Deep.TgPcDx");
    std::string xml;
    ASSERT_FALSE(serz::BinaryToXml(bytes, xml));
    textures::TextureImage image;
    ASSERT_EQ(textures::ReadTextureXml(xml, image), "");
    EXPECT_EQ(std::string(image.format->label).substr(0, 4), "DXT1");
    EXPECT_EQ(image.width, 256u);
    EXPECT_EQ(image.height, 256u);
    EXPECT_EQ(image.blobSize.size(), 9u);
    std::string error;
    const std::string dds = textures::MakeDds(xml, image, error);
    ASSERT_EQ(error, "");
    // Both colours of every block of the first level are near white.
    for (std::size_t block = textures::kDdsHeaderSize; block + 8 <= textures::kDdsHeaderSize + image.blobSize[0]; block += 8) {
        for (int c = 0; c < 2; ++c) {
            const unsigned v = static_cast<unsigned char>(dds[block + 2 * c]) | static_cast<unsigned char>(dds[block + 2 * c + 1]) << 8;
            ASSERT_GE(v >> 11, 26u) << block;           // red
            ASSERT_GE((v >> 5) & 63, 54u) << block;     // green
            ASSERT_GE(v & 31, 28u) << block;            // blue
        }
    }
}

}  // namespace
}  // namespace ferrolund::assets
