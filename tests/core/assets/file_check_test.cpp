#include "assets/file_check.h"

#include <gtest/gtest.h>

#include "asset_check_fixture.h"

namespace ferrolund::assets::checks {
namespace {

// A loco whose references use accented names that stand on disk in another case.
constexpr const char* kSim = "Loco\\Sim\xC3\xA9.xml";              // Simé
constexpr const char* kSimOnDisk = "K/P/Loco/SIM\xC3\x89.bin";      // SIMÉ
constexpr const char* kLamp = "Lights\\Lamp\xC4\x8D.xml";          // Lampč
constexpr const char* kLampOnDisk = "K/P/Lights/LAMP\xC4\x8C.bin";  // LAMPČ
constexpr const char* kSoundOnDisk = "K/P/Audio/stra\xC3\x9F" "e.proxyxml";

std::string LocoBody(bool withCargo = true) {
    return "<Blueprint>\r\n<cEngineBlueprint d:id=\"1\">\r\n" + Text("GeometryID", "K\\P\\Loco\\[00]Body") +
           "<NumberingList>\r\n" + Text("CsvFile", "K\\P\\Loco\\Numbers") + "</NumberingList>\r\n" +
           Triple("FrontCoupling", "K", "P", "Couplings\\Buffer.xml") +
           Triple("RearCoupling", "K", "P", "Couplings\\Buffer.xml") +
           Triple("BogeyBlueprint", "K", "P", "Bogies\\Bogie.xml") +
           Text("BogieAudioControlName", "K\\P\\Audio\\Stra\xC3\x9F" "e") +
           Triple("HeadOutCameraBlueprint", "K", "P", "Cameras\\HeadOut.XML") + "<AnimSet>\r\n" +
           Text("AnimationName", "Anims\\Doors") + Text("AnimationName", "") + "</AnimSet>\r\n" +
           Triple("EngineSimFile", "K", "P", kSim) + "<Children>\r\n" + Text("ChildName", "Lamp") + Id("K", "P", kLamp) +
           "</Children>\r\n<ScriptComponent>\r\n" + Text("Name", "K\\P\\Loco\\script") + "</ScriptComponent>\r\n" +
           (withCargo ? Triple("CargoBlueprintID", "", "", "Cargo\\Coal.xml") : std::string()) +
           "</cEngineBlueprint>\r\n</Blueprint>\r\n";
}

struct Loco : Installation {
    Loco() {
        binary("K/P/Loco/Loco.bin", LocoBody());
        binary("K/P/Loco/Body.GeoPcDx", "<TextureByName>\r\n" + Text("e", "[00]Textures\\body") +
                                             Text("e", "Textures\\Gr\xC3\xBCn") + "</TextureByName>\r\n");
        for (const char* f : {"K/P/Loco/Textures/BODY.TgPcDx", "K/P/Loco/Textures/GR\xC3\x9CN.tgpcdx",
                              "K/P/Loco/numbers.DCSV", "K/P/Couplings/Buffer.bin", "K/P/Bogies/Bogie.bin",
                              kSoundOnDisk, "K/P/Cameras/HeadOut.bin", "K/P/Loco/Doors.ban", kSimOnDisk,
                              kLampOnDisk, "K/P/Loco/script.lua"})
            file(f);
    }
    std::string blueprint() const { return asset("K\\P\\Loco\\Loco.bin"); }
    CheckOutcome check(RowReport report = RowReport::MissingFiles) {
        const AssetRow row{"K", "P", "Loco\\Loco.bin", "Loco", "Yes", "Diesel", "EngineBlueprint", "1"};
        return CheckRows(ctx, {row}, report, AssetListRows(ctx, report));
    }
    void remove(const std::string& relative) { fs::remove(root.path() / "game/Assets" / relative); }
};

std::vector<std::string> MissingFiles(const CheckOutcome& outcome) {
    std::vector<std::string> files;
    for (const MissingFile& m : outcome.missing) files.push_back(m.file);
    return files;
}

TEST(CheckLoco, TheMissingDecision) {
    struct Case {
        const char* what;
        std::vector<std::string> remove;
        std::vector<std::string> add;
        std::vector<std::string> missing;  // below Assets
    };
    const Case cases[] = {
        {"every file there, names in other cases and accents", {}, {}, {}},
        {"script only compiled", {"K/P/Loco/script.lua"}, {"K/P/Loco/script.out"}, {}},
        {"script neither source nor compiled", {"K/P/Loco/script.lua"}, {}, {"K\\P\\Loco\\script.lua"}},
        {"coupling named twice", {"K/P/Couplings/Buffer.bin"}, {}, {"K\\P\\Couplings\\Buffer.bin", "K\\P\\Couplings\\Buffer.bin"}},
        {"texture", {"K/P/Loco/Textures/BODY.TgPcDx"}, {}, {"K\\P\\Loco\\Textures\\body.TgPcDx"}},
        {"accented texture", {"K/P/Loco/Textures/GR\xC3\x9CN.tgpcdx"}, {}, {"K\\P\\Loco\\Textures\\Gr\xC3\xBCn.TgPcDx"}},
        {"geometry: both spellings, no texture step", {"K/P/Loco/Body.GeoPcDx"}, {},
         {"K\\P\\Loco\\Body.GeoPcDx", "K\\P\\Loco\\Body.geopcdx"}},
        {"accented linked blueprint", {kSimOnDisk}, {}, {"K\\P\\Loco\\Sim\xC3\xA9.bin"}},
        {"accented child", {kLampOnDisk}, {}, {"K\\P\\Lights\\Lamp\xC4\x8D.bin"}},
        {"accented sound proxy", {kSoundOnDisk}, {}, {"K\\P\\Audio\\Stra\xC3\x9F" "e.proxyxml"}},
        {"animation, numbering list, camera with XML in capitals",
         {"K/P/Loco/Doors.ban", "K/P/Loco/numbers.DCSV", "K/P/Cameras/HeadOut.bin"}, {},
         {"K\\P\\Loco\\Numbers.dcsv", "K\\P\\Cameras\\HeadOut.bin", "K\\P\\Loco\\Doors.ban"}},
    };
    for (const Case& c : cases) {
        Loco loco;
        for (const auto& r : c.remove) loco.remove(r);
        for (const auto& a : c.add) loco.file(a);
        const CheckOutcome outcome = loco.check();
        std::vector<std::string> expected;
        for (const auto& m : c.missing) expected.push_back(loco.asset(m));
        EXPECT_EQ(MissingFiles(outcome), expected) << c.what;
        if (c.missing.empty()) {
            EXPECT_EQ(outcome.report, "No errors found") << c.what;
        }
        EXPECT_EQ(outcome.rowsChecked, 1u);
    }
}

TEST(CheckLoco, ReportLinesOfAMissingTexture) {
    Loco loco;
    loco.remove("K/P/Loco/Textures/BODY.TgPcDx");
    loco.remove("K/P/Loco/script.lua");
    const CheckOutcome outcome = loco.check();
    EXPECT_EQ(Lines(outcome.report),
              (std::vector<std::string>{"Checking: " + loco.blueprint(), "Missing Files:-",
                                        loco.asset("K\\P\\Loco\\Textures\\body.TgPcDx") + " Called by " + loco.blueprint(),
                                        loco.asset("K\\P\\Loco\\script.lua"), ""}));
    EXPECT_EQ(outcome.missing.front().blueprint, loco.blueprint());
}

TEST(CheckLoco, ShowFilesMarksWhatIsMissing) {
    Loco loco;
    loco.remove("K/P/Couplings/Buffer.bin");
    loco.remove("K/P/Loco/script.lua");
    const std::vector<std::string> locoLines = Lines(loco.check(RowReport::LocoFiles).report);
    EXPECT_EQ(locoLines[0], "Checking: " + loco.blueprint());
    EXPECT_EQ(locoLines[1], "Files used:-");
    EXPECT_EQ(locoLines[2], loco.asset("K\\P\\Loco\\Body.GeoPcDx"));
    EXPECT_EQ(locoLines[3], loco.asset("K\\P\\Loco\\Textures\\body.TgPcDx"));
    auto has = [](const std::vector<std::string>& lines, const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    };
    EXPECT_TRUE(has(locoLines, "MISSING: " + loco.asset("K\\P\\Couplings\\Buffer.bin")));
    EXPECT_TRUE(has(locoLines, "MISSING: " + loco.asset("K\\P\\Loco\\script.lua")));
    EXPECT_TRUE(has(locoLines, loco.asset("K\\P\\Cameras\\HeadOut.bin")));

    // The wagon's list: its own markers, and no camera, simulation or script.
    const std::vector<std::string> wagon = Lines(loco.check(RowReport::WagonFiles).report);
    EXPECT_TRUE(has(wagon, "Missing: " + loco.asset("K\\P\\Couplings\\Buffer.bin")));   // front coupling
    EXPECT_TRUE(has(wagon, "MISSING:  " + loco.asset("K\\P\\Couplings\\Buffer.bin")));  // rear coupling
    EXPECT_FALSE(has(wagon, loco.asset("K\\P\\Cameras\\HeadOut.bin")));
    EXPECT_FALSE(has(wagon, loco.asset("K\\P\\Loco\\Sim\xC3\xA9.bin")));
    EXPECT_FALSE(has(wagon, "MISSING:  " + loco.asset("K\\P\\Loco\\script.lua")));
}

TEST(CheckLoco, TheFrame) {
    Loco loco;
    const AssetRow good = Row("K", "P", "Loco\\Loco.bin");
    const AssetRow blank = Row(" ", "", "");
    struct Case {
        const char* what;
        std::vector<AssetRow> rows;
        std::vector<std::string> messages;
        bool noRows, emptyRow;
        std::size_t checked;
    };
    const Case cases[] = {
        {"nothing selected", {}, {"You have not selected any items - please select one or more rows in the list first."}, true, false, 0},
        {"empty first cell passed over", {AssetRow{}, good}, {}, false, false, 1},
        {"an empty row ends the walk", {good, blank, good},
         {"You do not appear to have selected any valid items in the list below."}, false, true, 1},
    };
    for (const Case& c : cases) {
        loco.ui.shown.clear();
        const CheckOutcome outcome = CheckRows(loco.ctx, c.rows, RowReport::MissingFiles, AssetListRows(loco.ctx, RowReport::MissingFiles));
        EXPECT_EQ(loco.ui.texts(), c.messages) << c.what;
        EXPECT_EQ(outcome.noRows, c.noRows) << c.what;
        EXPECT_EQ(outcome.emptyRow, c.emptyRow) << c.what;
        EXPECT_EQ(outcome.rowsChecked, c.checked) << c.what;
    }
    loco.ui.progressSteps.clear();
    CheckRows(loco.ctx, {good, good}, RowReport::MissingFiles, AssetListRows(loco.ctx, RowReport::MissingFiles));
    ASSERT_EQ(loco.ui.progressSteps.size(), 3u);
    EXPECT_EQ(loco.ui.progressSteps[0].second, "Processed 0 %");
    EXPECT_EQ(loco.ui.progressSteps[1].second, "Processed 50 %");
}

TEST(CheckLoco, AbortKeepsWhatWasFound) {
    Loco loco;
    loco.remove("K/P/Loco/script.lua");
    loco.ctx.abortFlag = true;
    const CheckOutcome outcome = loco.check();
    EXPECT_TRUE(outcome.aborted);
    EXPECT_EQ(outcome.rowsChecked, 0u);
    EXPECT_EQ(outcome.report, "The check was stopped before its end: 0 of 1 rows checked.\r\n");  // never "No errors found"
}

TEST(CheckLoco, BrokenAndMissingBlueprintsAddNoMisses) {
    Loco loco;
    std::string bin = tools::ReadTextFile(loco.blueprint());
    loco.root.write("game/Assets/K/P/Loco/Cut.bin", bin.substr(0, bin.size() / 2));
    loco.root.write("game/Assets/K/P/Loco/Text.bin", "not a binary file at all");
    const std::vector<AssetRow> rows{Row("K", "P", "Loco\\Cut.bin"), Row("K", "P", "Loco\\Text.bin"), Row("K", "P", "Loco\\Gone.bin")};
    const CheckOutcome outcome = CheckRows(loco.ctx, rows, RowReport::MissingFiles, AssetListRows(loco.ctx, RowReport::MissingFiles));
    EXPECT_EQ(outcome.report, "No errors found");
    EXPECT_EQ(outcome.rowsChecked, 3u);
    const CheckOutcome shown = CheckRows(loco.ctx, rows, RowReport::LocoFiles, AssetListRows(loco.ctx, RowReport::LocoFiles));
    EXPECT_EQ(Lines(shown.report).size(), 9u);  // three headings of two lines and a blank line each
}

TEST(CheckLoco, NothingOnDiskChanges) {
    Loco loco;
    loco.remove("K/P/Loco/Textures/BODY.TgPcDx");
    const auto before = Snapshot(loco.root.path());
    for (RowReport report : {RowReport::MissingFiles, RowReport::LocoFiles, RowReport::WagonFiles,
                             RowReport::AssetFiles, RowReport::LoftFiles})
        loco.check(report);
    EXPECT_EQ(Snapshot(loco.root.path()), before);
}

TEST(ReportGridTwin, RowsFromTheGridAndItsOwnMessage) {
    struct Case { std::string item; AssetRow row; };
    const Case cases[] = {
        {"K\\P\\Loco\\Loco.xml", Row("K", "P", "Loco\\Loco.bin")},
        {"C:\\Games\\RailWorks\\Assets\\K\\P\\Loco\\Loco.bin\tMissing", Row("K", "P", "Loco\\Loco.bin")},
        {"  K\\Pr\xC3\xB6" "dukt\\a.XML ", Row("K", "Pr\xC3\xB6" "dukt", "a.bin")},
        {"NoSeparators", {}},
        {"", {}},
    };
    for (const Case& c : cases) {
        const AssetRow row = RowFromGridItem(c.item);
        EXPECT_EQ(row.provider, c.row.provider) << c.item;
        EXPECT_EQ(row.product, c.row.product) << c.item;
        EXPECT_EQ(row.path, c.row.path) << c.item;
    }
    Loco loco;
    CheckRows(loco.ctx, {}, RowReport::MissingFiles, ReportGridRows());
    EXPECT_EQ(loco.ui.texts(), std::vector<std::string>{"You do not appear to have selected any Assets to check"});
}

TEST(ShowUsedFiles, AssetAndLoft) {
    Loco loco;
    loco.binary("K/P/Loft/Wall.bin", "<Blueprint>\r\n<cLoftSectionBlueprint>\r\n" +
                                         Text("CrossSectionID", "K\\P\\Loft\\[01]wall") + "</cLoftSectionBlueprint>\r\n</Blueprint>\r\n");
    loco.binary("K/P/Loft/wall.XSec", "<Texture>\r\n" + Text("e", "[00]Textures\\brick") + "</Texture>\r\n");
    const AssetRow loft = Row("K", "P", "Loft\\Wall.bin", "Wall");
    const CheckOutcome shown = CheckRows(loco.ctx, {loft}, RowReport::LoftFiles, AssetListRows(loco.ctx, RowReport::LoftFiles));
    EXPECT_EQ(Lines(shown.report),
              (std::vector<std::string>{"Checking: " + loco.asset("K\\P\\Loft\\Wall.bin"), "Geometry file used:-",
                                        loco.asset("K\\P\\Loft\\wall.XSec"), "Textures used by this geometry:-",
                                        "Textures\\brick.TgPcDx", ""}));

    // The asset's view of a loft has no geometry to show: the message, and the row's heading.
    CheckRows(loco.ctx, {loft}, RowReport::AssetFiles, AssetListRows(loco.ctx, RowReport::AssetFiles));
    EXPECT_EQ(loco.ui.texts().back(),
              "Selected item did not have an associated .GeoPcDx file\nSo this option can't display textures used. Sorry.");

    const CheckOutcome asset = loco.check(RowReport::AssetFiles);
    const std::vector<std::string> lines = Lines(asset.report);
    ASSERT_GE(lines.size(), 7u);
    EXPECT_EQ(lines[1], "Animation files used by " + loco.blueprint());
    EXPECT_EQ(lines[2], "Anims\\Doors.ban");
    EXPECT_EQ(lines[3], "Geometry file used:-");
    EXPECT_EQ(lines[5], "Textures used by this geometry:-");
    EXPECT_EQ(lines[6], "Textures\\body.TgPcDx");

    // A row whose name cell reads "Name" is the heading row of a loaded list.
    AssetRow heading = loft;
    heading.name = "Name";
    EXPECT_EQ(CheckRows(loco.ctx, {heading}, RowReport::LoftFiles, AssetListRows(loco.ctx, RowReport::LoftFiles)).rowsChecked, 0u);
    loco.ui.shown.clear();
    CheckRows(loco.ctx, {}, RowReport::AssetFiles, AssetListRows(loco.ctx, RowReport::AssetFiles));
    EXPECT_EQ(loco.ui.texts(), std::vector<std::string>{"You do not appear to have added any items to the list below?\n"
                                                        "Click the 'Add to List' button to enable your selection."});
}

TEST(MissingFilesCsv, QuotesEveryField) {
    EXPECT_EQ(MissingFilesCsv({{"A\\b.bin", "C \"x\".dcsv"}}), "Blueprint,Missing file\r\n\"A\\b.bin\",\"C \"\"x\"\".dcsv\"\r\n");
}

}  // namespace
}  // namespace ferrolund::assets::checks
