#include "assets/clone_asset.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "assets/asset_scan.h"
#include "stock_fixture.h"
#include "support/locked_folder.h"
#include "tools/text_search.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Game;

const std::string kFolder = "Prov\\Prod\\RailVehicles\\Coaches\\Mk2";
const std::string kBlueprint = kFolder + "\\Engine\\Mk2.bin";

// A coach whose folder holds its blueprint, its model (named like the blueprint) and a
// texture.
void PutCoach(Game& game, const std::string& folder = kFolder, const std::string& name = "Mk2 Coach") {
    const std::string geometry = folder + "\\Engine\\[00]Mk2";
    game.put(folder + "\\Engine\\Mk2.bin", CoachXml(name, {}, geometry));
    game.put(folder + "\\Engine\\Mk2.GeoPcDx", testing::TexturedGeometryXml({"Textures\\[00]body"}));
    game.folder.write(fs::relative(game.onDisk(folder + "\\Engine\\Textures\\body.TgPcDx"), game.folder.path()).string(),
                      "paint");
}

CloneSource Source(Game& game, const std::string& blueprint = kBlueprint) {
    return *SourceOfFile(game.gameRoot() + "\\Assets\\" + blueprint);
}

// Answers the name dialog once with these boxes, recording what it opened with.
struct Answers {
    std::vector<CloneNames> offered;
    std::vector<CloneNames> given;
    CloneAsk ask() {
        return [this](const CloneNames& shown) -> std::optional<CloneNames> {
            offered.push_back(shown);
            if (offered.size() > given.size()) return std::nullopt;
            return given[offered.size() - 1];
        };
    }
};

std::string BytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::map<std::string, std::string> FilesBelow(const fs::path& folder) {
    std::map<std::string, std::string> files;
    if (!fs::exists(folder)) return files;
    for (const auto& e : fs::recursive_directory_iterator(folder))
        if (e.is_regular_file()) files[fs::relative(e.path(), folder).generic_string()] = BytesOf(e.path());
    return files;
}

TEST(ReplaceEach, OnePassOverTheTextAsItWas) {
    struct Case {
        std::string text, result;
    };
    const Case cases[] = {
        // The name inside the folder goes with the folder and is not changed again.
        {"a\\Coaches\\Mk2\\mk2.xml", "a\\Coaches\\Blue\\Mk2\\mk2_B.xml"},
        {"COACHES\\MK2", "Coaches\\Blue\\Mk2"},
        {"xMK2y", "xmk2_By"},  // inside another word too: textual, by design
        {"nothing", "nothing"},
        {"", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(tools::ReplaceEach(c.text, {{"Coaches\\Mk2", "Coaches\\Blue\\Mk2"}, {"mk2", "mk2_B"}}), c.result)
            << c.text;
    }
    EXPECT_EQ(tools::ReplaceEvery("a\\\\b\\\\\\\\c", "\\\\", "\\"), "a\\b\\\\c");
    EXPECT_EQ(tools::ReplaceEvery("xXx", "x", "y", tools::CaseRule::Exact), "yXy");
    EXPECT_EQ(tools::ReplaceEvery("abc", "", "z"), "abc");
}

TEST(ClonePlace, TheLevelPicksTheFolderAndTheBoxReplacesItsParent) {
    struct Case {
        std::string blueprint;
        CloneLevel level;
        std::string typed;
        std::string relative, word, target, message;
    };
    const Case cases[] = {
        {"A\\B\\RV\\Diesel\\C66\\Engine\\c66.bin", CloneLevel::Asset, "Diesel\\Red", "RV\\Diesel\\C66", "Diesel",
         "RV\\Diesel\\Red\\C66", ""},
        {"A\\B\\RV\\Diesel\\C66\\Default\\Engine\\c66.bin", CloneLevel::RollingStock, "Mine", "RV\\Diesel\\C66",
         "Diesel", "RV\\Mine\\C66", ""},
        {"A\\B\\Scenery\\Trees\\Oak\\oak.bin", CloneLevel::Blueprint, " \\Bäume\\\\ ", "Scenery\\Trees\\Oak", "Trees",
         "Scenery\\Bäume\\Oak", ""},
        {"A\\B\\C66\\Engine\\c66.bin", CloneLevel::Asset, "C66_Red", "C66", "C66", "C66_Red", ""},
        // the box left as it opened: the clone would be its original
        {"A\\B\\RV\\Diesel\\C66\\Engine\\c66.bin", CloneLevel::Asset, "Diesel\\", "RV\\Diesel\\C66", "Diesel", "",
         "in the folder of its original"},
        // into the original's own folder
        {"A\\B\\RV\\Diesel\\C66\\Engine\\c66.bin", CloneLevel::Asset, "Diesel\\C66\\x", "RV\\Diesel\\C66", "Diesel",
         "", "in the folder of its original"},
        {"A\\B\\RV\\Diesel\\C66\\Engine\\c66.bin", CloneLevel::Asset, "..\\x", "RV\\Diesel\\C66", "Diesel", "",
         "cannot be used as a folder name"},
        {"A\\B\\RV\\Diesel\\C66\\Engine\\c66.bin", CloneLevel::Asset, "  ", "RV\\Diesel\\C66", "Diesel", "",
         "You have failed to complete one of the boxes?"},
    };
    for (const Case& c : cases) {
        CloneSource source{"G\\Assets", "", {}};
        source.ref = *SplitAssetPath("G\\Assets\\" + c.blueprint);
        const std::optional<ClonePlace> place = PlaceOf(source, c.level);
        ASSERT_TRUE(place) << c.blueprint;
        EXPECT_EQ(place->relative, c.relative) << c.blueprint;
        EXPECT_EQ(place->folderWord, c.word) << c.blueprint;
        const CloneTarget target = TargetOf(source, *place, c.typed);
        EXPECT_EQ(target.relative, c.target) << c.typed;
        if (c.message.empty()) {
            EXPECT_EQ(target.message, "") << c.typed;
            EXPECT_EQ(target.folder, "G\\Assets\\A\\B\\" + c.target);
        } else {
            EXPECT_NE(target.message.find(c.message), std::string::npos) << c.typed << ": " << target.message;
        }
    }
    // Too near the product: there is no folder to copy.
    CloneSource shallow{"G\\Assets", "", {"A", "B", "Engine\\c66.bin"}};
    EXPECT_FALSE(PlaceOf(shallow, CloneLevel::Asset));
    EXPECT_FALSE(PlaceOf(shallow, CloneLevel::RollingStock));
}

TEST(RewriteClone, NamesFoldersAndTheBaseNameByText) {
    std::string xml = CoachXml("Mk2 Coach", {}, "Prov\\Prod\\RailVehicles\\Coaches\\Mk2\\Engine\\[00]Mk2");
    const std::string key = "<Key d:type=\"cDeltaString\"></Key>";
    xml.replace(xml.find(key), key.size(), "<Key d:type=\"cDeltaString\">4f1c-77</Key>");
    xml.insert(xml.find("</Blueprint>"), "<Extra d:type=\"cDeltaString\">Mk2Old\\\\mk2\\Coaches</Extra>\r\n");
    const std::string out =
        RewriteClone(xml, "Blau & Weiß", "RailVehicles\\Coaches\\Mk2", "RailVehicles\\Coaches\\Blue\\Mk2", "Mk2", "Mk2_B");
    const std::string name = "Blau &amp; Weiß";
    for (const char* tag : {"Name", "English", "French", "Italian", "German", "Spanish"}) {
        const std::string element = std::string("<") + tag + " d:type=\"cDeltaString\">" + name + "</" + tag + ">";
        EXPECT_NE(out.find(element), std::string::npos) << tag;
    }
    EXPECT_NE(out.find("<Dutch d:type=\"cDeltaString\"></Dutch>"), std::string::npos);  // the first five only
    EXPECT_EQ(out.find("4f1c-77"), std::string::npos);  // the display name's key emptied
    EXPECT_NE(out.find(">Prov\\Prod\\RailVehicles\\Coaches\\Blue\\Mk2\\Engine\\[00]Mk2_B</GeometryID>"),
              std::string::npos);
    // The base name in another word is changed too, the doubled '\' is made single.
    EXPECT_NE(out.find(">Mk2_BOld\\Mk2_B\\Coaches</Extra>"), std::string::npos);
    EXPECT_EQ(out.find("Mk2 Coach"), std::string::npos);
}

TEST(CloneAssets, CopiesTheFolderAndPutsTheNewBlueprintInIt) {
    Game game;
    PutCoach(game);
    game.folder.write("game/Assets/BluePrints.pak", "cache");
    const auto before = FilesBelow(game.onDisk(kFolder));
    Answers answers;
    answers.given = {{"Mk2_Blue", "Mk2 Coach Blue", "Coaches\\Blue", ""}};
    const CloneOutcome out = CloneAssets(game.ctx, {Source(game)}, CloneLevel::Asset, answers.ask());
    ASSERT_TRUE(out.ran);
    ASSERT_EQ(answers.offered.size(), 1u);
    EXPECT_EQ(answers.offered[0].fileName, "Mk2_");
    EXPECT_EQ(answers.offered[0].internalName, "Mk2 Coach_");
    EXPECT_EQ(answers.offered[0].folder, "Coaches\\");

    const std::string clone = "Prov\\Prod\\RailVehicles\\Coaches\\Blue\\Mk2";
    const auto files = FilesBelow(game.onDisk(clone));
    std::vector<std::string> names;
    for (const auto& [name, bytes] : files) names.push_back(name);
    // The old blueprint's copy is gone; the model is there under both names.
    EXPECT_EQ(names, (std::vector<std::string>{"Engine/Mk2.GeoPcDx", "Engine/Mk2_Blue.GeoPcDx", "Engine/Mk2_Blue.bin",
                                               "Engine/Textures/body.TgPcDx"}));
    EXPECT_EQ(out.written, std::vector<std::string>{game.gameRoot() + "\\Assets\\" + clone + "\\Engine\\Mk2_Blue.bin"});
    const std::string xml = game.xmlOf(clone + "\\Engine\\Mk2_Blue.bin");
    EXPECT_NE(xml.find(">Mk2 Coach Blue</English>"), std::string::npos);
    EXPECT_NE(xml.find(">Prov\\Prod\\RailVehicles\\Coaches\\Blue\\Mk2\\Engine\\[00]Mk2_Blue</GeometryID>"),
              std::string::npos);
    EXPECT_EQ(FilesBelow(game.onDisk(kFolder)), before);  // the original untouched
    EXPECT_FALSE(fs::exists(game.onDisk("BluePrints.pak")));
    EXPECT_EQ(game.ui.texts().back(), game.ctx.langText(445, {}, "frmAssets"));

    // The asset list finds the clone.
    ScanOptions options;
    options.startFolder = game.gameRoot() + "\\Assets\\" + clone;
    std::vector<AssetRow> rows;
    ScanAssets(game.ctx, options, [&](std::vector<AssetRow>& batch) { rows.insert(rows.end(), batch.begin(), batch.end()); });
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].path, "RailVehicles\\Coaches\\Blue\\Mk2\\Engine\\Mk2_Blue.bin");
    EXPECT_EQ(rows[0].name, "Mk2 Coach Blue");
}

TEST(CloneAssets, IntoAnExistingFolderMergesAndKeepsWhatItWouldOverwrite) {
    Game game;
    PutCoach(game);
    const std::string clone = "Prov\\Prod\\RailVehicles\\Coaches\\Blue\\Mk2";
    game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coaches/Blue/Mk2/Engine/Textures/body.TgPcDx", "old paint");
    game.folder.write("game/Assets/Prov/Prod/RailVehicles/Coaches/Blue/Mk2/Engine/Textures/roof.TgPcDx", "roof");
    Answers answers;
    answers.given = {{"Mk2_Blue", "Blue", "Coaches\\Blue", ""}};
    ASSERT_TRUE(CloneAssets(game.ctx, {Source(game)}, CloneLevel::Asset, answers.ask()).ran);
    const auto files = FilesBelow(game.onDisk(clone + "\\Engine\\Textures"));
    EXPECT_EQ(files.at("body.TgPcDx"), "paint");
    EXPECT_EQ(files.at("body.TgPcDx.bak"), "old paint");
    EXPECT_EQ(files.at("roof.TgPcDx"), "roof");
}

TEST(CloneAssets, AccentedFoldersAndRollingStockOneLevelHigher) {
    Game game;
    const std::string folder = "Müller\\Straßenbahn\\RailVehicles\\Wägen\\Mk2\\Default";
    PutCoach(game, folder, "Wagen Zürich");
    Answers answers;
    answers.given = {{"Mk2", "Wagen Genève", "Wägen\\Genève", ""}};
    const CloneOutcome out = CloneAssets(game.ctx, {Source(game, folder + "\\Engine\\Mk2.bin")},
                                         CloneLevel::RollingStock, answers.ask());
    ASSERT_EQ(out.written.size(), 1u) << out.report;
    EXPECT_EQ(answers.offered[0].internalName, "Wagen Zürich_");
    const std::string clone = "Müller\\Straßenbahn\\RailVehicles\\Wägen\\Genève\\Mk2\\Default\\Engine\\Mk2.bin";
    EXPECT_TRUE(fs::exists(game.onDisk(clone)));
    const std::string xml = game.xmlOf(clone);
    EXPECT_NE(xml.find(">Wagen Genève</English>"), std::string::npos);
    EXPECT_NE(xml.find("RailVehicles\\Wägen\\Genève\\Mk2\\Default\\Engine\\[00]Mk2<"), std::string::npos);
}

TEST(CloneAssets, AFailureHalfWayLeavesTheSourceAndSaysWhy) {
    struct Case {
        std::string name;
        bool lockTarget;
        std::string newName;
        std::string said;
    };
    const Case cases[] = {
        // The textual rewrite makes the base name "Mass" into a broken tag: the compile fails.
        {"compile fails", false, "Mass 2", "Serz.exe could not convert file "},
        {"target cannot be written", true, "Mass_2", "The folder could not be copied to "},
    };
    for (const Case& c : cases) {
        Game game;
        const std::string blueprint = "Prov\\Prod\\RailVehicles\\Vans\\Box\\Mass.bin";
        game.put(blueprint, CoachXml("Box Van", {}));
        fs::create_directories(game.onDisk("Prov\\Prod\\RailVehicles\\New"));
        const auto before = FilesBelow(game.onDisk("Prov"));
        std::optional<ferrolund::testing::LockedFolder> lock;
        if (c.lockTarget) {
            lock.emplace(game.onDisk("Prov\\Prod\\RailVehicles\\New"));
            if (!lock->locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        }
        Answers answers;
        answers.given = {{c.newName, "Box Van 2", "New", ""}};
        const CloneOutcome out =
            CloneAssets(game.ctx, {Source(game, blueprint)}, CloneLevel::Blueprint, answers.ask());
        lock.reset();
        EXPECT_TRUE(out.written.empty()) << c.name;
        EXPECT_NE(out.report.find(c.said), std::string::npos) << c.name << ": " << out.report;
        EXPECT_EQ(FilesBelow(game.onDisk("Prov")), before) << c.name;
    }
}

TEST(CloneAssets, CancelOrAbortDoNothing) {
    Game game;
    PutCoach(game);
    const auto before = FilesBelow(game.onDisk("Prov"));
    Answers cancel;
    const CloneOutcome cancelled = CloneAssets(game.ctx, {Source(game)}, CloneLevel::Asset, cancel.ask());
    EXPECT_FALSE(cancelled.ran);
    EXPECT_TRUE(game.ui.shown.empty());
    game.ctx.abortFlag = true;
    Answers answers;
    answers.given = {{"Mk2_Blue", "Blue", "Coaches\\Blue", ""}};
    const CloneOutcome aborted = CloneAssets(game.ctx, {Source(game)}, CloneLevel::Asset, answers.ask());
    EXPECT_TRUE(aborted.aborted);
    EXPECT_TRUE(answers.offered.empty());
    EXPECT_EQ(FilesBelow(game.onDisk("Prov")), before);
}

}  // namespace
}  // namespace ferrolund::assets
