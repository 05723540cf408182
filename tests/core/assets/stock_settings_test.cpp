#include "assets/stock_settings.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "assets/stock_transforms.h"
#include "core/tools/testdata_file.h"
#include "stock_fixture.h"
#include "tools/tags.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Game;
using testing::Siblings;
using testing::TagValue;

const std::string kCoach = "RailVehicles\\Coach\\Coach.bin";
const std::string kCoachFile = "Prov\\Prod\\" + kCoach;
const std::string kTree = "AP\\VegEP\\Scenery\\Trees\\Beech1.bin";

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

TEST(ChangeCategory, ALeadingEIsAddedWhenMissing) {
    const std::pair<std::string, std::string> cases[] = {
        {"FreightWagon", "eFreightWagon"}, {"eScenery", "eScenery"}, {" Engine ", "eEngine"},
        {"ExcludeFromBrowserList", "eExcludeFromBrowserList"}, {"", ""},
    };
    for (const auto& [typed, value] : cases) EXPECT_EQ(CategoryValue(typed), value) << typed;
}

TEST(ChangeCategory, WrittenOrPutBehindTheDescription) {
    std::string present = CoachXml("Coach", {});
    ASSERT_TRUE(SetCategory(present, "eFreightWagon"));
    EXPECT_EQ(TagValue(present, "Category"), "eFreightWagon");
    EXPECT_EQ(Count(present, "<Category"), 1);

    std::string missing = CoachXml("Coach", {});
    missing.erase(missing.find("\t\t\t\t\t<Category"), missing.find("</Category>\r\n") + 13 - missing.find("\t\t\t\t\t<Category"));
    ASSERT_EQ(Count(missing, "<Category"), 0);
    ASSERT_TRUE(SetCategory(missing, std::string(kHiddenCategory)));
    EXPECT_NE(missing.find("</Description>\r\n\t\t\t\t\t<Category d:type=\"cDeltaString\">eExcludeFromBrowserList</Category>\r\n"),
              std::string::npos);

    std::string neither = "<cBlueprintLoader/>";
    EXPECT_FALSE(SetCategory(neither, "eScenery"));
    EXPECT_EQ(neither, "<cBlueprintLoader/>");
}

TEST(ChangeCategory, TheRowsCellsFollow) {
    Game game;
    game.put(kCoachFile, CoachXml("Coach", {}));
    game.okToWarning();
    game.ui.inputs.push_back("FreightWagon");
    AssetRow row = game.row("Prov", "Prod", kCoach);
    row.inScene = "No";
    row.category = "PassengerWagon";
    const TransformOutcome out = ChangeCategory(game.ctx, {row});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(out.rows[0].row.category, "FreightWagon");
    EXPECT_EQ(out.rows[0].row.inScene, "Yes");
    EXPECT_EQ(TagValue(game.xmlOf(kCoachFile), "Category"), "eFreightWagon");
    // Nothing typed: nothing done.
    const std::string before = game.bytesOf(kCoachFile);
    game.okToWarning();
    EXPECT_FALSE(ChangeCategory(game.ctx, {row}).ran);
    EXPECT_EQ(game.bytesOf(kCoachFile), before);
}

TEST(UseInScenarios, TurnsValidityAndFillsAnEmptyCategory) {
    struct Case {
        std::string valid, category;  // as in the file; "-" for no element
        std::string validAfter, categoryAfter;
    };
    const Case cases[] = {
        {"eTrue", "eScenery", "eFalse", "eScenery"},
        {"eFalse", "", "eTrue", "eUncategorised"},
        {"eMaybe", "eScenery", "eMaybe", "eScenery"},
        {"-", "", "", "eUncategorised"},
        {"eFalse", "-", "eTrue", ""},
    };
    for (const Case& c : cases) {
        std::string text = "<Browse>";
        if (c.category != "-") text += "<Category d:type=\"cDeltaString\">" + c.category + "</Category>";
        if (c.valid != "-") text += "<ValidInScenarios d:type=\"cDeltaString\">" + c.valid + "</ValidInScenarios>";
        text += "</Browse>";
        const ScenarioUse use = ToggleScenarioUse(text);
        EXPECT_EQ(use.valid, c.validAfter) << c.valid << c.category;
        EXPECT_EQ(use.category, c.categoryAfter) << c.valid << c.category;
        if (c.valid != "-") {
            EXPECT_EQ(TagValue(text, "ValidInScenarios"), c.validAfter);
        }
        if (c.category != "-") {
            EXPECT_EQ(TagValue(text, "Category"), c.categoryAfter);
        }
    }
}

TEST(UseInScenarios, ARealSceneryItemIsTakenOutOfScenariosAndBack) {
    const fs::path real = ferrolund::testing::TestdataPath("serz/scenery-item.bin");
    if (!fs::exists(real)) GTEST_SKIP() << "real game file serz/scenery-item.bin is absent: the shared test data is not beside this checkout";
    Game game;
    game.putFile(kTree, real);
    AssetRow row = game.row("AP", "VegEP", "Scenery\\Trees\\Beech1.bin");
    for (const std::string expected : {"No", "Yes"}) {
        game.okToWarning();
        const TransformOutcome out = UseInScenarios(game.ctx, {row});
        ASSERT_EQ(out.rows.size(), 1u);
        EXPECT_EQ(out.rows[0].reason, "");
        EXPECT_EQ(out.rows[0].row.inScene, expected);
        EXPECT_EQ(out.rows[0].row.category, "FoliageLarge");
        EXPECT_EQ(TagValue(game.xmlOf(kTree), "ValidInScenarios"), expected == "Yes" ? "eTrue" : "eFalse");
        row = out.rows[0].row;
    }
}

TEST(MakeEnglishOnly, EveryLocalisedBlockKeepsOnlyItsEnglish) {
    std::string text = CoachXml("Coach", {});
    EXPECT_EQ(KeepEnglishOnly(text), 2);
    EXPECT_EQ(Count(text, "<French"), 0);
    EXPECT_EQ(Count(text, "<Key"), 0);
    EXPECT_EQ(Count(text, "</English></Localisation-cUserLocalisedString>"), 2);
    EXPECT_EQ(TagValue(text, "English"), "Coach");
    EXPECT_EQ(KeepEnglishOnly(text), 0);
}

TEST(MakeEnglishOnly, WarnsItsOwnWayAndCompiles) {
    Game game;
    game.put(kCoachFile, CoachXml("Coach", {}));
    game.okToWarning();
    const TransformOutcome out = MakeEnglishOnly(game.ctx, {game.row("Prov", "Prod", kCoach)});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(game.ui.texts().front(),
              "This will remove all non-English entries from the items in question\r\nIf you do not have a back-up of "
              "the folder you are about to alter, I suggest\r\nyou make one before carrying out this procedure!");
    EXPECT_EQ(Count(game.xmlOf(kCoachFile), "<German"), 0);
}

TEST(ChangeLocoName, NamesAndKeysAndTheEnginesOwnName) {
    std::string text = CoachXml("Class 20", {});
    text.replace(text.find("<Key d:type=\"cDeltaString\"></Key>"), 33, "<Key d:type=\"cDeltaString\">a1b2</Key>");
    const std::string engine =
        "<EngineType d:type=\"cDeltaString\">eDiesel</EngineType><EngineName d:type=\"cDeltaString\">Old</EngineName>"
        "<Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">Old</English>"
        "<Key d:type=\"cDeltaString\">k-77</Key></Localisation-cUserLocalisedString>";
    text.replace(text.find("</cWagonComponentBlueprint>"), 0, engine);
    ASSERT_TRUE(WriteNewName(text, "Class 20 Blue", NameChange::NamesAndKeys));
    EXPECT_EQ(TagValue(text, "Name"), "Class 20 Blue");
    EXPECT_EQ(TagValue(text, "Key"), "");
    EXPECT_EQ(TagValue(text, "EngineName", "<EngineType"), "Class 20 Blue");
    EXPECT_EQ(TagValue(text, "English", "<EngineType"), "Class 20 Blue");
    EXPECT_EQ(TagValue(text, "Key", "<EngineType"), "");

    std::string plain = CoachXml("Class 20", {});
    plain.replace(plain.find("<Key d:type=\"cDeltaString\"></Key>"), 33, "<Key d:type=\"cDeltaString\">a1b2</Key>");
    ASSERT_TRUE(WriteNewName(plain, "X", NameChange::NamesOnly));
    EXPECT_EQ(TagValue(plain, "Key"), "a1b2");
}

TEST(ChangeLocoName, AsksAfterItsExplanation) {
    Game game;
    game.put(kCoachFile, CoachXml("Class 20", {}));
    game.okToWarning();
    game.ui.answers.push_back(base::Answer::Ok);
    game.ui.inputs.push_back("# Blue");
    const TransformOutcome out = ChangeName(game.ctx, {game.row("Prov", "Prod", kCoach, "Class 20")}, NameChange::NamesAndKeys);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].row.name, "Class 20 Blue");
    EXPECT_EQ(game.ui.texts()[1],
              "This option will change both the Name and Localize(English)\r\nName of the item and delete any 'Key' entry "
              "for a selected item.");
}

std::string MaterialsXml(int count) {
    std::string xml = "<cHcRGeometry><Materials>";
    for (int i = 0; i < count; ++i) {
        xml += "<Material><AmbientAsVec d:numElements=\"4\" d:elementType=\"sFloat32\" d:precision=\"string\">1.0000000 "
               "1.0000000 1.0000000 1.0000000</AmbientAsVec><EmissiveAsVec d:numElements=\"4\" d:elementType=\"sFloat32\" "
               "d:precision=\"string\">0.5000000 0.2500000 0.0000000 1.0000000</EmissiveAsVec></Material>";
    }
    return xml + "</Materials></cHcRGeometry>";
}

TEST(ZeroEmissive, EveryMaterialLosesItsGlow) {
    for (int count : {0, 1, 3}) {
        std::string text = MaterialsXml(count);
        EXPECT_EQ(ZeroEmission(text), count);
        EXPECT_EQ(Count(text, ">0.0000 0.0000 0.0000 0.0000</EmissiveAsVec>"), count);
        EXPECT_EQ(Count(text, "0.5000000"), 0);
    }
}

TEST(ZeroEmissive, TheGeometryIsRewrittenWithItsBackup) {
    Game game;
    game.put(kCoachFile, CoachXml("Coach", {}));
    const std::string geometry = "Prov\\Prod\\RailVehicles\\Coach\\coach.GeoPcDx";
    game.put(geometry, "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n" + MaterialsXml(2));
    game.okToWarning();
    const TransformOutcome out = ZeroEmissive(game.ctx, {game.row("Prov", "Prod", kCoach)});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_TRUE(fs::exists(game.onDisk(geometry + ".bak")));
    EXPECT_EQ(Count(game.xmlOf(geometry), ">0.0000000 0.0000000 0.0000000 0.0000000</EmissiveAsVec>"), 2);
}

}  // namespace
}  // namespace ferrolund::assets
