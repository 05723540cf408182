#include "assets/ap_assets.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "archives/zip_archive.h"
#include "assets/asset_index.h"
#include "core/archives/zip_fixture.h"
#include "core/sample/sample_fixture.h"
#include "core/tools/testdata_file.h"
#include "support/cli_run.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/files.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CliRun;

constexpr const char* kStationPack = "Assets\\Brackenridge\\StationPack\\StationPack.ap";

struct Fixture {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Fixture() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
    }
};

std::string SamplePath(const std::string& relative) { return sample::SampleRoot().string() + "\\" + relative; }

// The members the manifest names for one archive of the sample, with backslashes.
std::vector<std::string> ManifestMembers(const std::string& archive) {
    std::vector<std::string> members;
    for (const auto& line : sample::ManifestLines(sample::SampleRoot())) {
        if (line.fields.size() < 3 || line.fields[0] != "member" || line.fields[1] != archive) continue;
        std::string name = line.fields[2];
        for (char& c : name)
            if (c == '/') c = '\\';
        members.push_back(name);
    }
    return members;
}

std::vector<std::string> Stored(const std::vector<archives::ArchiveEntry>& entries) {
    std::vector<std::string> names;
    for (const auto& e : entries) names.push_back(e.stored);
    return names;
}

TEST(ApEntryFilter, WhatTheEntryListShows) {
    struct Case {
        const char* stored;
        bool rollingStock;
        const char* mask;
        bool shown;
    };
    const Case cases[] = {
        {"RailVehicles\\Diesel\\Class58\\Engine\\body.GeoPcDx", false, kDefaultEntryMask, true},
        {"RailVehicles\\Diesel\\Class58\\Engine\\body.geopcdx", false, kDefaultEntryMask, true},  // any case
        {"RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin", false, kDefaultEntryMask, false},
        {"RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin", false, "*", true},
        {"RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin", false, "", true},
        {"Scenery\\Houses\\house.bin", false, "*.bin", true},
        {"Scenery\\Houses\\house.bin", true, "*.bin", false},                                 // not a vehicle
        {"RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin", true, "*.bin", true},
        {"RAILVEHICLES\\Steam\\Merlin\\TENDER\\Tender.bin", true, "*.bin", true},
        {"RailVehicles\\Freight\\Hopper\\Hopper.bin", true, "*.bin", true},
        {"RailVehicles\\FreightWagons\\Hopper.bin", true, "*.bin", false},
        {"RailVehicles\\Coal\\Freight\\Hopper.bin", true, "*.bin", true},
        {"RailVehicles\\Coaches\\Passenger\\Mk2.bin", true, "*.bin", true},
        {"RailVehicles\\Diesel\\Class58\\Cabs\\Class58.bin", true, "*.bin", false},          // no vehicle folder
        {"RailVehicles\\Diesel\\Engine\\Textures\\x.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\Audio\\x.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\Interactive\\x.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\Digits.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\CabBlueprint.bin", true, "*.bin", false},
        {"RailVehicles\\Coaches\\Passenger\\Passengers.bin", true, "*.bin", false},
        {"RailVehicles\\Coaches\\Passenger\\PassView.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\bogie_front.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\BOGIES\\x.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\Numbering\\x.bin", true, "*.bin", false},                // "Number"
        {"RailVehicles\\Diesel\\Engine\\Simulation\\Sim.bin", true, "*.bin", false},
        {"RailVehicles\\Diesel\\Engine\\LiveryTexture.bin", true, "*.bin", true},                // textures allowed
        {"RailVehicles\\Diesel\\Engine\\Station.bin", true, "*.bin", false},
        {"RailVehicles\\Elektrisch\\\xC3\x89lectrique\\Engine\\Locomotive \xC3\xA9t\xC3\xA9.bin", true, "*.bin", true},
        {"RailVehicles\\Elektrisch\\Engine\\Lok \xFC" "ber.bin", true, "*\xDC" "BER.BIN", true},  // accented mask
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ApEntryPasses(c.stored, {.rollingStockOnly = c.rollingStock, .mask = c.mask}), c.shown)
            << c.stored << " mask " << c.mask << (c.rollingStock ? " rolling stock" : "");
    }
}

TEST(ApAssets, ListingInsideTheSampleArchives) {
    const std::vector<std::string> members = ManifestMembers(kStationPack);
    ASSERT_FALSE(members.empty()) << "the sample names the members of " << kStationPack;
    const ApListing all = ListApEntries(SamplePath(kStationPack), {.mask = "*"});
    ASSERT_FALSE(all.error) << all.error->description;
    std::vector<std::string> listed = Stored(all.entries);
    std::vector<std::string> expected = members;
    std::sort(listed.begin(), listed.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(listed, expected);

    const ApListing geometry = ListApEntries(SamplePath(kStationPack), {});
    EXPECT_EQ(Stored(geometry.entries), std::vector<std::string>{"Scenery\\platform.GeoPcDx"});
    EXPECT_TRUE(ListApEntries(SamplePath(kStationPack), {.rollingStockOnly = true, .mask = "*"}).entries.empty());
}

TEST(ApAssets, FindApFilesAndSaveTheApAndBinIndexes) {
    Fixture f;
    f.root.write("IndexFiles/index.csv", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
                                         "P,Q,a.bin,A,Yes,,,41\r\n");
    ApAssetList list;
    list.findApFiles(f.ctx, sample::SampleRoot().string());
    EXPECT_EQ(list.lastNumber(), 41);
    std::vector<std::string> expected;
    for (const auto& line : sample::ManifestLines(sample::SampleRoot()))
        if (line.fields.size() > 1 && line.fields[0] == "member") expected.push_back(SamplePath(line.fields[1]));
    std::sort(expected.begin(), expected.end());
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    std::vector<std::string> found = list.apFiles();
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, expected);
    EXPECT_TRUE(list.overlength().empty());

    ASSERT_TRUE(list.saveApIndex(f.ctx));
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{kApIndexSavedMessage});
    const std::string text = f.root.read("Data/AP-Index.csv");
    EXPECT_NE(text.find("StationPack.ap," + SamplePath("Assets\\Brackenridge\\StationPack") + "\r\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("MainContent.ap,"), std::string::npos) << text;
}

TEST(ApAssets, ArchivesOverTwoGigabytesAreSetApart) {
    Fixture f;
    testing::MakeZip(f.root.path() / "Assets/P/Q/Small.ap", {{"a.bin", "x"}});
    for (const auto& [name, size] : {std::pair{"Edge.ap", 2147483647ull}, std::pair{"Huge.ap", 2147483648ull}}) {
        const fs::path file = f.root.write(std::string("Assets/P/Q/") + name, "");
        fs::resize_file(file, size);  // sparse: no disk space is taken
    }
    ApAssetList list;
    list.findApFiles(f.ctx, f.root.system());
    const std::string folder = f.root.system() + "\\Assets\\P\\Q\\";
    EXPECT_EQ(list.apFiles(), (std::vector<std::string>{folder + "Edge.ap", folder + "Small.ap"}));
    EXPECT_EQ(list.overlength(), std::vector<std::string>{folder + "Huge.ap"});

    const CliRun run = testing::Cli({"list-ap", f.root.system() + "\\Assets\\P\\Q", "--filter", "*"}, f.root.system());
    EXPECT_NE(run.err.find("over 2 gigabytes"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("Huge.ap"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("Small.ap\n\ta.bin\n"), std::string::npos) << run.out;
    EXPECT_EQ(run.code, 0) << "Small.ap was read";
}

TEST(ApAssets, AnArchiveThatIsNoZip) {
    Fixture f;
    f.root.write("Assets/P/Q/Broken.ap", "This is not a zip archive at all, only text.");
    testing::MakeZip(f.root.path() / "Assets/P/Q/Good.ap", {{"Scenery/a.GeoPcDx", "x"}});
    const ApListing broken = ListApEntries(f.root.system() + "\\Assets\\P\\Q\\Broken.ap", {});
    ASSERT_TRUE(broken.error);
    EXPECT_NE(broken.error->description.find("Broken.ap"), std::string::npos) << broken.error->description;
    EXPECT_TRUE(broken.entries.empty());

    ApAssetList list;
    list.findApFiles(f.ctx, f.root.system() + "\\Assets");
    ASSERT_EQ(list.apFiles().size(), 2u);
    EXPECT_FALSE(list.chooseArchive(f.ctx, list.apFiles()[0]));  // Broken.ap, in name order
    EXPECT_EQ(f.ui.shown.size(), 1u) << "the failure is told";
    EXPECT_NE(f.root.read("Errors.txt").find("Broken.ap"), std::string::npos);
    EXPECT_TRUE(list.entries().empty());
    // The next archive opens as usual.
    EXPECT_TRUE(list.chooseArchive(f.ctx, list.apFiles()[1]));
    EXPECT_EQ(Stored(list.entries()), std::vector<std::string>{"Scenery\\a.GeoPcDx"});
    list.filter.mask = "*.bin";
    list.refreshEntries();
    EXPECT_TRUE(list.entries().empty());
}

TEST(ApAssets, OpenInEditor) {
    Fixture f;
    ApAssetList list;
    EXPECT_FALSE(list.openInEditor(f.ctx, 0));
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You must Open an Archive before you can\r\n"
                                                     "            Extract anything from it!"});

    // Members of the sample's archive: a blueprint and a geometry come out as XML; a text
    // entry comes out as it is, writable; a broken blueprint is told.
    const fs::path ap = f.root.path() / "Pack \xC3\xA9t\xC3\xA9.ap";
    const auto members = sample::ArchiveMembers(sample::OnDisk(sample::SampleRoot(), kStationPack));
    testing::MakeZip(ap, {{"Scenery/Platform.bin", members.at("Scenery/Platform.bin")},
                          {"Scenery/platform.GeoPcDx", members.at("Scenery/platform.GeoPcDx")},
                          {"Scenery/Notes \xC3\xA9t\xC3\xA9.txt", "plain"},
                          {"Scenery/Broken.bin", "SERZ but not really"}});
    ASSERT_TRUE(list.chooseArchive(f.ctx, ap.string()));
    struct Case {
        const char* entry;
        const char* file;      // in TempFiles, empty for none
        const char* contains;  // in that file
    };
    const Case cases[] = {
        {"Platform.bin", "Platform.xml", "Country platform"},
        {"platform.GeoPcDx", "platform.xml", "TextureByName"},
        {"Notes \xC3\xA9t\xC3\xA9.txt", "Notes \xC3\xA9t\xC3\xA9.txt", "plain"},
        {"Broken.bin", "", ""},
    };
    for (const auto& c : cases) {
        const auto& entries = list.archive().entries();
        const auto entry = std::find_if(entries.begin(), entries.end(), [&](const auto& e) { return e.name == c.entry; });
        ASSERT_NE(entry, entries.end()) << c.entry;
        f.ui.shown.clear();
        const std::optional<std::string> file = list.openInEditor(f.ctx, entry->index);
        if (std::string(c.file).empty()) {
            EXPECT_FALSE(file) << c.entry;
            EXPECT_EQ(f.ui.shown.size(), 1u) << "a conversion that fails is told: " << c.entry;
            continue;
        }
        ASSERT_TRUE(file) << c.entry;
        EXPECT_EQ(*file, f.root.system() + "\\TempFiles\\" + c.file);
        EXPECT_NE(tools::ReadTextFile(*file).find(c.contains), std::string::npos) << c.entry;
        const auto perms = fs::status(f.root.path() / "TempFiles" / c.entry).permissions();
        EXPECT_NE(perms & fs::perms::owner_write, fs::perms::none) << c.entry;
    }
}

// An archive of vehicles under an accented product folder, made of the sample's loose
// blueprints, beside an index whose last number is 41.
struct VehicleArchive : Fixture {
    std::string archive;
    VehicleArchive() {
        auto loose = [](const std::string& relative) {
            return sample::ReadBytes(sample::OnDisk(sample::SampleRoot(), "Assets\\Ostvale\\NorthernLines\\" + relative));
        };
        const fs::path ap = root.path() / "RailWorks/Assets/Ostvale/Pak\xC3\xABt/Pak\xC3\xABt.ap";
        fs::create_directories(ap.parent_path());
        testing::MakeZip(ap, {
            {"RailVehicles/Diesel/Class58/Engine/Class58 \xC3\xA9t\xC3\xA9.bin", loose("RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin")},
            {"RailVehicles/Diesel/Class58/Simulation/Class58Sim.bin", loose("RailVehicles\\Diesel\\Class58\\Simulation\\Class58Sim.bin")},
            {"RailVehicles/Bogies/TwoAxle.bin", loose("RailVehicles\\Bogies\\TwoAxle.bin")},
            {"RailVehicles/Freight/CoalHopper/CoalHopper.bin", loose("RailVehicles\\Freight\\CoalHopper\\CoalHopper.bin")},
            {"RailVehicles/Diesel/Class58/class58.GeoPcDx", loose("RailVehicles\\Diesel\\Class58\\class58.GeoPcDx")},
            {"RailVehicles/Freight/Broken.bin", "SERZ and then nothing of use"},
        });
        archive = ap.string();
        root.write("IndexFiles/index.csv", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
                                           "P,Q,a.bin,A,Yes,,,41\r\n");
    }
    std::size_t Entry(const ApAssetList& list, const std::string& name) const {
        for (const auto& e : list.archive().entries())
            if (e.name == name) return e.index;
        ADD_FAILURE() << name;
        return 0;
    }
};

TEST(ApAssets, RowsOfBlueprintsReadInsideTheArchive) {
    struct Case {
        const char* what;
        bool rollingStock;
        std::vector<std::vector<std::string>> rows;  // Path, Name, Category, Blueprint, Index
        long lastNumber;
    };
    const std::string engine = "RailVehicles\\Diesel\\Class58\\Engine\\Class58 \xC3\xA9t\xC3\xA9.bin";
    const std::string hopper = "RailVehicles\\Freight\\CoalHopper\\CoalHopper.bin";
    const std::string geometry = "RailVehicles\\Diesel\\Class58\\class58.GeoPcDx";
    const Case cases[] = {
        {"rolling stock only: the simulation and the bogie are no vehicles",
         true,
         {{engine, "Ostvale Class 58 Diesel", "eDiesel", "EngineBlueprint", "42"},
          {hopper, "Coal hopper", "Freight Wagon", "WagonBlueprint", "43"},
          {geometry, "", "", "", "44"}},
         44},
        {"everything: the simulation takes a number but shows no row",
         false,
         {{engine, "Ostvale Class 58 Diesel", "eDiesel", "EngineBlueprint", "42"},
          {"RailVehicles\\Bogies\\TwoAxle.bin", "Two-axle bogie", "", "BogieBlueprint", "44"},
          {hopper, "Coal hopper", "Freight Wagon", "WagonBlueprint", "45"},
          {geometry, "", "", "", "46"}},
         46},
    };
    for (const auto& c : cases) {
        VehicleArchive f;
        ApAssetList list;
        list.filter = {.rollingStockOnly = c.rollingStock, .mask = "*"};
        list.findApFiles(f.ctx, f.root.system() + "\\RailWorks");
        ASSERT_EQ(list.apFiles().size(), 1u) << c.what;
        ASSERT_TRUE(list.chooseArchive(f.ctx, list.apFiles()[0])) << c.what;
        std::vector<std::size_t> chosen;
        for (const char* name : {"Class58 \xC3\xA9t\xC3\xA9.bin", "Class58Sim.bin", "TwoAxle.bin", "CoalHopper.bin",
                                 "class58.GeoPcDx", "Broken.bin"})
            chosen.push_back(f.Entry(list, name));
        std::vector<std::string> problems;
        EXPECT_EQ(list.addEntries(f.ctx, chosen, problems), c.rows.size()) << c.what;
        ASSERT_EQ(problems.size(), 1u) << c.what;
        EXPECT_NE(problems[0].find("Broken.bin"), std::string::npos) << problems[0];
        std::vector<std::vector<std::string>> rows;
        for (const auto& row : list.rows()) {
            EXPECT_EQ(row.provider, "Ostvale") << c.what;
            EXPECT_EQ(row.product, "Pak\xC3\xABt") << c.what;
            rows.push_back({row.path, row.name, row.category, row.blueprint, row.index});
        }
        EXPECT_EQ(rows, c.rows) << c.what;
        EXPECT_EQ(list.lastNumber(), c.lastNumber) << c.what;

        // Appended to the index, the rows read back behind the old one and the heading.
        ASSERT_TRUE(list.appendToIndex(f.ctx)) << c.what;
        const LoadedIndex index = LoadAssetIndex(IndexFilePath(f.ctx));
        ASSERT_EQ(index.rows.size(), 2 + c.rows.size()) << c.what;
        EXPECT_TRUE(IsHeadingRow(index.rows[1])) << c.what;
        EXPECT_EQ(index.rows.back().index, std::to_string(c.lastNumber)) << c.what;
        EXPECT_EQ(LastRunningNumber(f.ctx), c.lastNumber) << c.what;
    }
}

TEST(ApAssets, ARealSceneryBlueprintInsideAnArchive) {
    FERROLUND_READ_TESTDATA(bytes, "serz/scenery-item.bin");
    Fixture f;
    const fs::path ap = f.root.path() / "Assets/Kuju/Forest/Trees.ap";
    testing::MakeZip(ap, {{"Scenery/Trees/Beech.bin", bytes}});
    archives::ZipArchive archive;
    ASSERT_FALSE(archive.open(ap.string()));
    for (const bool rollingStock : {false, true}) {
        long last = 0;
        std::vector<std::string> problems;
        AssetFilter filter;
        filter.rollingStockOnly = rollingStock;
        const std::vector<AssetRow> rows = ApEntryRows(f.ctx, archive, {0}, filter, last, problems);
        EXPECT_TRUE(problems.empty());
        if (rollingStock) {
            EXPECT_TRUE(rows.empty()) << "a tree is no vehicle";
            continue;
        }
        EXPECT_EQ(rows, (std::vector<AssetRow>{{"Kuju", "Forest", "Scenery\\Trees\\Beech.bin", "AP Tree Near Beech 1",
                                                "Yes", "FoliageLarge", "SceneryBlueprint", "1"}}));
    }
}

TEST(ApAssets, EntryRowsOfAnArchiveNamedByAHostPathAndTheAbort) {
    VehicleArchive f;
    archives::ZipArchive archive;
    ASSERT_FALSE(archive.open(f.archive));  // separators of this disk, not backslashes
    long last = 7;
    std::vector<std::string> problems;
    const std::vector<AssetRow> rows = ApEntryRows(f.ctx, archive, {0, 1, 2}, {}, last, problems);
    ASSERT_EQ(rows.size(), 2u) << "the engine and the bogie; the simulation only takes its number";
    EXPECT_EQ(rows[0].provider, "Ostvale");
    EXPECT_EQ(rows[0].product, "Pak\xC3\xABt");
    EXPECT_EQ(rows[1].index, "10");
    EXPECT_EQ(last, 10);
    EXPECT_TRUE(problems.empty());

    f.ctx.abortFlag = true;
    EXPECT_TRUE(ApEntryRows(f.ctx, archive, {0, 1, 2}, {}, last, problems).empty());
    EXPECT_EQ(last, 10);
}

}  // namespace
}  // namespace ferrolund::assets
