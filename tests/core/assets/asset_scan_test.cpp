// The walk that fills the asset list, on folders made for each case.
#include "assets/asset_scan.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "serz/codec.h"
#include "support/temp_folder.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;

std::string Blueprint(const std::string& classTag, const std::string& name, const std::string& extra = {}) {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\"><Blueprint><" + classTag + "><Name><Localisation-cUserLocalisedString>"
        "<English d:type=\"cDeltaString\">" + name + "</English></Localisation-cUserLocalisedString></Name>" + extra +
        "</" + classTag + "></Blueprint></cBlueprintLoader>";
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(xml, binary));
    return binary;
}

const std::string kEngine = Blueprint("cEngineBlueprint", "Loco, green",
                                      "<RailVehicleComponent/><EngineType d:type=\"cDeltaString\">eDiesel</EngineType>");
const std::string kWagon = Blueprint("cWagonBlueprint", "Box", "<RailVehicleComponent/>");
const std::string kShed = Blueprint("cSceneryBlueprint", "Shed", "<Category d:type=\"cDeltaString\">eScenery</Category>");

// Assets\Prov\... with a loco, a wagon (in an accented folder), scenery, a simulation
// file, a note, a broken and an empty blueprint.
struct Tree {
    testing::TempFolder folder;
    std::string assets;
    Tree() {
        folder.write("Assets/Prov/Prod/RailVehicles/Engine/loco.bin", kEngine);
        folder.write("Assets/Prov/Gro\xc3\x9f/RailVehicles/Wagons/w.bin", kWagon);
        folder.write("Assets/Prov/Prod/Scenery/shed.bin", kShed);
        folder.write("Assets/Prov/Prod/RailVehicles/Engine/Simulation/sim.bin", kWagon);
        folder.write("Assets/Prov/Prod/RailVehicles/Engine/notes.txt", "hello");
        folder.write("Assets/Prov/Prod/RailVehicles/Engine/broken.bin", kEngine.substr(0, kEngine.size() / 2));
        folder.write("Assets/Prov/Prod/RailVehicles/Engine/empty.bin", "");
        folder.write("Assets/Prov/Prod/RailVehicles/Engine/empty.txt", "");
        assets = folder.system() + "/Assets";
    }
};

struct Listing {
    std::vector<AssetRow> rows;
    ScanTotals totals;
    int batches = 0;
};

Listing Scan(const ScanOptions& options) {
    app::AppContext ctx;
    Listing listing;
    listing.totals = ScanAssets(ctx, options, [&](std::vector<AssetRow>& rows) {
        ++listing.batches;
        listing.rows.insert(listing.rows.end(), rows.begin(), rows.end());
    });
    return listing;
}

std::vector<std::string> Column(const std::vector<AssetRow>& rows, std::string AssetRow::*field) {
    std::vector<std::string> out;
    for (const AssetRow& row : rows) out.push_back(row.*field);
    return out;
}

bool HasProblem(const ScanTotals& totals, const std::string& pathPart) {
    for (const ScanProblem& p : totals.problems) {
        if (p.path.find(pathPart) != std::string::npos && !p.message.empty()) return true;
    }
    return false;
}

TEST(AssetScan, ListsInOrderAndNumbersOnEveryWorkerCount) {
    Tree tree;
    for (unsigned workers : {1u, 2u, 0u}) {
        ScanOptions options;
        options.startFolder = tree.assets;
        options.workers = workers;
        options.firstIndex = 40;
        const Listing got = Scan(options);
        // Sorted walk: a folder's files, then its folders; the simulation file takes a number.
        EXPECT_EQ(Column(got.rows, &AssetRow::path),
                  (std::vector<std::string>{"RailVehicles\\Wagons\\w.bin", "RailVehicles\\Engine\\loco.bin",
                                            "Scenery\\shed.bin"}))
            << workers;
        EXPECT_EQ(Column(got.rows, &AssetRow::index), (std::vector<std::string>{"41", "42", "44"})) << workers;
        EXPECT_EQ(Column(got.rows, &AssetRow::product),
                  (std::vector<std::string>{"Gro\xc3\x9f", "Prod", "Prod"}));
        EXPECT_EQ(got.rows[1].name, "Loco green");
        EXPECT_EQ(got.rows[1].category, "eDiesel");
        EXPECT_EQ(got.totals.lastIndex, 44);
        EXPECT_EQ(got.totals.rows, 3);
        EXPECT_FALSE(got.totals.aborted);
        EXPECT_TRUE(HasProblem(got.totals, "broken.bin")) << workers;
        EXPECT_TRUE(HasProblem(got.totals, "empty.bin")) << workers;
    }
}

TEST(AssetScan, Modes) {
    Tree tree;
    struct Case {
        const char* label;
        ScanOptions options;
        std::vector<std::string> paths;
    };
    ScanOptions rolling;
    rolling.filter.rollingStockOnly = true;
    ScanOptions scenery;
    scenery.filter.category = "Scenery";
    ScanOptions everything;
    everything.fileFilter = "";
    ScanOptions zero;
    zero.zeroLength = true;
    zero.readBlueprints = false;
    ScanOptions zeroAfterList = zero;
    zeroAfterList.readBlueprints = true;
    ScanOptions onlyName;
    onlyName.filter.onlyFileName = "SHED.bin";
    const std::vector<Case> cases = {
        {"rolling stock", rolling, {"RailVehicles\\Wagons\\w.bin", "RailVehicles\\Engine\\loco.bin"}},
        {"category", scenery, {"Scenery\\shed.bin"}},
        {"every name: plain rows for the rest",
         everything,
         {"RailVehicles\\Wagons\\w.bin", "RailVehicles\\Engine\\empty.txt", "RailVehicles\\Engine\\loco.bin",
          "RailVehicles\\Engine\\notes.txt", "Scenery\\shed.bin"}},
        {"zero length", zero, {"RailVehicles\\Engine\\empty.bin", "RailVehicles\\Engine\\empty.txt"}},
        {"zero length once blueprints are read", zeroAfterList, {"RailVehicles\\Engine\\empty.txt"}},
        {"one file name", onlyName, {"Scenery\\shed.bin"}},
    };
    for (Case c : cases) {
        c.options.startFolder = tree.assets;
        const Listing got = Scan(c.options);
        EXPECT_EQ(Column(got.rows, &AssetRow::path), c.paths) << c.label;
    }
}

TEST(AssetScan, QuickDriveWalkListsPreLoadBlueprintsOnly) {
    testing::TempFolder folder;
    folder.write("Assets/P/Q/PreLoad/Express.bin", kEngine);
    folder.write("Assets/P/Q/PreLoad/Fragments/Coaches.bin", kWagon);
    folder.write("Assets/P/Q/PreLoad/Stub.bin", kWagon.substr(0, 60));  // under 100 bytes: not even read
    folder.write("Assets/P/Q/RailVehicles/Engine/loco.bin", kEngine);
    folder.write("Assets/P/Q/PreLoad/Shed.bin", kShed);
    ScanOptions options;
    options.startFolder = folder.system() + "/Assets";
    options.filter.quickDrive = true;
    options.filter.rollingStockOnly = true;  // the Quick Drive walk lists what is not rolling stock too
    const Listing got = Scan(options);
    EXPECT_EQ(Column(got.rows, &AssetRow::path),
              (std::vector<std::string>{"PreLoad\\Express.bin", "PreLoad\\Shed.bin"}));
    EXPECT_TRUE(got.totals.problems.empty());
}

TEST(AssetScan, BadPlacesAreProblemsAndTheWalkGoesOn) {
    Tree tree;
    tree.folder.write("Assets/Prov/stray.txt", "x");  // no product folder
    tree.folder.write("Assets/Prov/Prod/Zeta/z.txt", "x");
    ScanOptions options;
    options.startFolder = tree.assets;
    // Text files are not read: each row is handed over in the walk's own step, so the
    // folder Zeta is removed before the walk reaches it.
    options.fileFilter = "*.txt";
    options.batchRows = 1;
    app::AppContext ctx;
    Listing listing;
    listing.totals = ScanAssets(ctx, options, [&](std::vector<AssetRow>& rows) {
        fs::remove_all(tree.folder.path() / "Assets/Prov/Prod/Zeta");
        listing.rows.insert(listing.rows.end(), rows.begin(), rows.end());
    });
    EXPECT_TRUE(HasProblem(listing.totals, "stray.txt"));
    EXPECT_TRUE(HasProblem(listing.totals, "Zeta"));
    EXPECT_EQ(Column(listing.rows, &AssetRow::path),
              (std::vector<std::string>{"RailVehicles\\Engine\\empty.txt", "RailVehicles\\Engine\\notes.txt"}));
    // The plain row's number is taken before its path is found wanting.
    EXPECT_EQ(Column(listing.rows, &AssetRow::index), (std::vector<std::string>{"2", "3"}));

    options.fileFilter = "*.bin";
    options.startFolder = tree.folder.system() + "/Nowhere";
    const Listing none = Scan(options);
    EXPECT_TRUE(none.rows.empty());
    EXPECT_TRUE(HasProblem(none.totals, "Nowhere"));
}

TEST(AssetScan, AbortKeepsTheRowsFoundSoFar) {
    testing::TempFolder folder;
    for (int i = 0; i < 3000; ++i) folder.write("Assets/P/Q/W" + std::to_string(i % 30) + "/w" + std::to_string(i) + ".bin", kWagon);
    ScanOptions options;
    options.startFolder = folder.system() + "/Assets";
    options.batchRows = 10;
    app::AppContext ctx;
    Listing got;
    // "&Abort" is clicked as the first rows show.
    got.totals = ScanAssets(ctx, options, [&](std::vector<AssetRow>& rows) {
        ctx.abortFlag = true;
        got.rows.insert(got.rows.end(), rows.begin(), rows.end());
    });
    EXPECT_TRUE(got.totals.aborted);
    EXPECT_LT(got.rows.size(), 3000u);
    // What was kept is the head of the list, numbered without gaps.
    for (std::size_t i = 0; i < got.rows.size(); ++i) EXPECT_EQ(got.rows[i].index, std::to_string(i + 1));
}

}  // namespace
}  // namespace ferrolund::assets
