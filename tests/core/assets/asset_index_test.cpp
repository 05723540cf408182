#include "assets/asset_index.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "support/locked_folder.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;

const std::string kHeading = "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n";

AssetRow Row(const std::string& provider, const std::string& name, int number) {
    return {provider, "Pack", "RailVehicles\\Engine\\" + name + ".bin", name, "Yes", "Diesel", "EngineBlueprint",
            std::to_string(number)};
}

struct Fixture {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Fixture() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
    }
    std::string index() const { return root.read("IndexFiles/index.csv"); }
};

TEST(AssetIndex, SavedAndReadBackWithAccentedNames) {
    Fixture f;
    const std::vector<AssetRow> rows = {
        Row("Kuju", "Class 66", 1),
        Row("Br\xFC" "ckenau", "Loco caf\xE9", 2),           // Windows-1252 bytes
        Row("\xC4\x8C" "esk\xC3\xA9 dr\xC3\xA1hy", "\xC5\xA0kod\xC3\xA1", 3),  // UTF-8 bytes
        {"Q", "P", "a.bin", "12\" gauge", "No", "", "", "4"},  // a quote survives the comma text
    };
    fs::create_directories(f.root.path() / "IndexFiles");
    std::string backup;
    ASSERT_FALSE(SaveAssetIndex(IndexFilePath(f.ctx), rows, backup));
    EXPECT_EQ(backup, "") << "nothing to back up on the first save";
    const std::string text = f.index();
    EXPECT_EQ(text.substr(0, kHeading.size()), kHeading);
    EXPECT_NE(text.find("\r\nBr\xFC" "ckenau,Pack,RailVehicles\\Engine\\Loco caf\xE9.bin,"), std::string::npos);

    const LoadedIndex loaded = LoadAssetIndex(IndexFilePath(f.ctx));
    EXPECT_TRUE(loaded.found);
    EXPECT_EQ(loaded.headings, std::vector<std::string>(kAssetHeadings.begin(), kAssetHeadings.end()));
    EXPECT_EQ(loaded.rows, rows);
    EXPECT_TRUE(loaded.problems.empty());
    EXPECT_EQ(LastRunningNumber(f.ctx), 4);
}

TEST(AssetIndex, BadLinesAreNamedAndLeftOut) {
    struct Case {
        const char* what;
        std::string text;
        std::vector<std::string> names;   // the rows kept
        std::vector<long> problemLines;   // the lines named
    };
    const std::string good = "P,Q,a.bin,Alpha,Yes,Diesel,EngineBlueprint,1\r\n";
    const Case cases[] = {
        {"too few columns", kHeading + good + "P,Q,b.bin,Beta\r\n" + "P,Q,c.bin,Gamma,No,,,3\r\n", {"Alpha", "Gamma"}, {3}},
        {"a blank line", kHeading + good + "\r\n" + good, {"Alpha", "Alpha"}, {3}},
        {"extra columns are dropped, the row kept", kHeading + "P,Q,a.bin,Alpha,Yes,Diesel,Engine,1,x,y\r\n", {"Alpha"}, {2}},
        {"no final line end", kHeading + "P,Q,a.bin,Alpha,Yes,Diesel,EngineBlueprint,1", {"Alpha"}, {}},
        {"LF line ends", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\nP,Q,a,Alpha,Yes,,,1\nP,Q\n", {"Alpha"}, {3}},
        {"only the heading row", kHeading, {}, {}},
        {"empty", "", {}, {1}},
        {"a quoted cell over two lines counts from its first", kHeading + "P,Q,a,\"Two\r\nlines\",Yes\r\n" + good, {"Alpha"}, {2}},
    };
    for (const auto& c : cases) {
        const LoadedIndex loaded = ParseAssetIndex(c.text);
        std::vector<std::string> names;
        for (const auto& row : loaded.rows) names.push_back(row.name);
        std::vector<long> lines;
        for (const auto& problem : loaded.problems) {
            lines.push_back(problem.line);
            EXPECT_FALSE(problem.text.empty()) << c.what;
        }
        EXPECT_EQ(names, c.names) << c.what;
        EXPECT_EQ(lines, c.problemLines) << c.what;
    }
}

TEST(AssetIndex, AMissingIndexIsToldInTheScreensWords) {
    for (const char* message : {kNoIndexMessage, kNoIndexFileMessage}) {
        Fixture f;
        const LoadedIndex loaded = LoadMainIndex(f.ctx, message);
        EXPECT_FALSE(loaded.found);
        EXPECT_TRUE(loaded.rows.empty());
        EXPECT_EQ(f.ui.texts(), std::vector<std::string>{message});
    }
    EXPECT_EQ(std::string(kNoIndexMessage), "You do not appear to have generated an Index.csv file.");
    Fixture f;
    EXPECT_EQ(LastRunningNumber(f.ctx), 0);
}

TEST(AssetIndex, BackupsUpToFiftyOneThenOverwritten) {
    Fixture f;
    fs::create_directories(f.root.path() / "IndexFiles");
    const std::string path = IndexFilePath(f.ctx);
    std::string backup;
    // Save n holds the single row numbered n.
    for (int n = 1; n <= 53; ++n) {
        ASSERT_FALSE(SaveAssetIndex(path, {Row("P", "Save", n)}, backup)) << n;
        const std::string expected = n == 1 ? "" : n == 2 ? path + ".bak" : n <= 52 ? path + ".bak" + std::to_string(n - 2) : "";
        EXPECT_EQ(backup, expected) << "save " << n;
    }
    auto number = [&](const std::string& name) { return LastRunningNumber(f.root.read("IndexFiles/" + name)); };
    EXPECT_EQ(number("index.csv"), 53);
    EXPECT_EQ(number("index.csv.bak"), 1);
    EXPECT_EQ(number("index.csv.bak1"), 2);
    EXPECT_EQ(number("index.csv.bak50"), 51);
    EXPECT_FALSE(fs::exists(f.root.path() / "IndexFiles/index.csv.bak51"));
    EXPECT_FALSE(fs::exists(f.root.path() / "IndexFiles/index.csv.new"));
    // Save 52 was overwritten by save 53 without a back-up: no file holds it.
    for (const auto& entry : fs::directory_iterator(f.root.path() / "IndexFiles"))
        EXPECT_NE(number(entry.path().filename().string()), 52) << entry.path();
}

TEST(AssetIndex, AFailedWriteLeavesTheOldIndex) {
    struct Case {
        const char* what;
        void (*spoil)(const fs::path& folder);
    };
    const Case cases[] = {
        {"the disk is full", [](const fs::path& folder) { fs::create_symlink("/dev/full", folder / "index.csv.new"); }},
        {"the scratch name is a folder", [](const fs::path& folder) { fs::create_directory(folder / "index.csv.new"); }},
    };
    for (const auto& c : cases) {
        if (std::string(c.what) == "the disk is full" && !fs::exists("/dev/full")) continue;
        Fixture f;
        const fs::path folder = f.root.path() / "IndexFiles";
        f.root.write("IndexFiles/index.csv", kHeading + "old,row,x,Old,No,,,7\r\n");
        c.spoil(folder);
        std::string backup;
        EXPECT_TRUE(SaveAssetIndex(IndexFilePath(f.ctx), {Row("P", "New", 1)}, backup)) << c.what;
        EXPECT_EQ(LastRunningNumber(f.index()), 7) << c.what;
        EXPECT_FALSE(fs::exists(folder / "index.csv.bak")) << c.what;
        // The symbolic link must go before the folder is cleared (its clearing follows links).
        fs::remove(folder / "index.csv.new");
    }
}

TEST(AssetIndex, ReadOnlyIndexAndFolder) {
    // A read-only index is replaced, the old one kept as its back-up.
    {
        Fixture f;
        const fs::path file = f.root.write("IndexFiles/index.csv", kHeading + "o,r,x,Old,No,,,7\r\n");
        fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
        std::string backup;
        EXPECT_FALSE(SaveAssetIndex(IndexFilePath(f.ctx), {Row("P", "New", 1)}, backup));
        EXPECT_EQ(LastRunningNumber(f.index()), 1);
        EXPECT_EQ(LastRunningNumber(f.root.read("IndexFiles/index.csv.bak")), 7);
    }
    Fixture f;
    const fs::path folder = f.root.path() / "IndexFiles";
    f.root.write("IndexFiles/index.csv", kHeading + "o,r,x,Old,No,,,7\r\n");
    std::string backup;
    {
        ferrolund::testing::LockedFolder lock(folder);
        if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        EXPECT_TRUE(SaveAssetIndex(IndexFilePath(f.ctx), {Row("P", "New", 1)}, backup));
    }
    EXPECT_FALSE(fs::exists(folder / "index.csv.bak"));
    EXPECT_EQ(LastRunningNumber(f.index()), 7);
}

TEST(AssetIndex, AppendKeepsTheSecondHeadingAsARow) {
    struct Case {
        const char* what;
        std::optional<std::string> before;  // index.csv before the append
        std::vector<std::string> names;     // the names read back
        bool backedUp;
    };
    const Case cases[] = {
        {"onto an index", kHeading + "K,P,a.bin,One,Yes,Diesel,EngineBlueprint,1\r\n",
         {"One", "Name", "App\xE9", "Two"}, true},
        {"onto one without a final line end", kHeading + "K,P,a.bin,One,Yes,Diesel,EngineBlueprint,1",
         {"One", "Name", "App\xE9", "Two"}, true},
        {"with no index yet", std::nullopt, {"App\xE9", "Two"}, false},
    };
    for (const auto& c : cases) {
        Fixture f;
        if (c.before) f.root.write("IndexFiles/index.csv", *c.before);
        f.root.write("IndexFiles/indextest.csv", "stale");
        std::string backup;
        ASSERT_FALSE(AppendToIndex(f.ctx, {Row("X", "App\xE9", 2), Row("X", "Two", 3)}, backup)) << c.what;
        EXPECT_EQ(!backup.empty(), c.backedUp) << c.what;
        if (c.backedUp) {
            EXPECT_EQ(f.root.read("IndexFiles/index.csv.bak"), *c.before) << c.what;
        }
        EXPECT_EQ(f.root.read("IndexFiles/indextest.csv").substr(0, 8), "Provider") << c.what;

        const LoadedIndex loaded = LoadAssetIndex(IndexFilePath(f.ctx));
        std::vector<std::string> names;
        for (const auto& row : loaded.rows) names.push_back(row.name);
        EXPECT_EQ(names, c.names) << c.what;
        EXPECT_TRUE(loaded.problems.empty()) << c.what;
        EXPECT_EQ(IsHeadingRow(loaded.rows.front()), false) << c.what;
        if (c.before) {
            EXPECT_TRUE(IsHeadingRow(loaded.rows[1])) << c.what;
        }
        EXPECT_EQ(LastRunningNumber(f.ctx), 3) << c.what;
    }
}

TEST(AssetIndex, AFailedAppendLeavesTheIndex) {
    struct Case {
        const char* what;
        const char* blocked;  // a folder standing where the append writes a file
    };
    const Case cases[] = {
        {"the list cannot be written", "indextest.csv"},
        {"the joined index cannot be written", "index.csv.new"},
    };
    for (const auto& c : cases) {
        Fixture f;
        const std::string before = kHeading + "K,P,a.bin,One,Yes,,,1\r\n";
        f.root.write("IndexFiles/index.csv", before);
        fs::create_directories(f.root.path() / "IndexFiles" / c.blocked);
        std::string backup;
        EXPECT_TRUE(AppendToIndex(f.ctx, {Row("X", "Two", 2)}, backup)) << c.what;
        EXPECT_EQ(f.index(), before) << c.what;
        EXPECT_EQ(backup, "") << c.what;
        EXPECT_FALSE(fs::exists(f.root.path() / "IndexFiles/index.csv.bak")) << c.what;
    }
}

TEST(AssetIndex, LastRunningNumber) {
    struct Case {
        std::string text;
        long number;
    };
    const Case cases[] = {
        {kHeading + "P,Q,a,A,Yes,,,17\r\n", 17},
        {kHeading + "P,Q,a,A,Yes,,,9\r\n\r\n", 9},
        {kHeading + "P,Q,a,A,Yes,,,250", 250},
        {kHeading, 0},  // the heading's "Index"
        {"", 0},
        {"no comma at all 12", 0},
        {"a,b,-4\r\n", 0},
    };
    for (const auto& c : cases) EXPECT_EQ(LastRunningNumber(c.text), c.number) << c.text;
}

TEST(AssetIndex, SortByProviderKeepsTheFileOrderWithinOne) {
    std::vector<AssetRow> rows = {Row("b", "1", 1), Row("A", "2", 2), Row("b", "3", 3), Row("B", "4", 4),
                                  Row("\xC4" "ra", "5", 5)};
    SortByProvider(rows);
    std::vector<std::string> order;
    for (const auto& row : rows) order.push_back(row.name);
    // Plain byte order: capitals first, an accented letter last.
    EXPECT_EQ(order, (std::vector<std::string>{"2", "4", "1", "3", "5"}));
}

TEST(AssetIndex, TheIndexFilesToChooseFrom) {
    Fixture f;
    EXPECT_TRUE(IndexFiles(f.ctx).empty()) << "no folder yet";
    for (const char* name : {"index.csv", "Gem\xC3\xBC" "se.CSV", "notes.txt", "RouteIndex.csv", "a.csv.bak"})
        f.root.write(std::string("IndexFiles/") + name, "x");
    fs::create_directories(f.root.path() / "IndexFiles/folder.csv");
    const std::string in = f.root.system() + "\\IndexFiles\\";
    EXPECT_EQ(IndexFiles(f.ctx),
              (std::vector<std::string>{in + "Gem\xC3\xBC" "se.CSV", in + "index.csv", in + "RouteIndex.csv"}));
}

TEST(AssetIndex, SaveStockIndexAsksFirst) {
    const std::string question =
        "To make an Index file, you must first have set this screen\r\n"
        "to start on 'Assets' and ticked the 'Rolling Stock only' box.\r\n"
        "Then clicked 'Add to List' - Are you ready to save?\r\n"
        "This can take a considerable amount of time to complete.";
    for (const base::Answer answer : {base::Answer::No, base::Answer::Yes}) {
        Fixture f;
        f.ui.answers.push_back(answer);
        EXPECT_EQ(SaveStockIndex(f.ctx, {Row("P", "One", 1)}), answer == base::Answer::Yes);
        EXPECT_EQ(f.ui.texts(), std::vector<std::string>{question});
        EXPECT_EQ(fs::exists(f.root.path() / "IndexFiles/index.csv"), answer == base::Answer::Yes);
    }
}

TEST(AssetIndex, TheRollingStockIndexPicker) {
    const std::string question =
        "Do you wish to use the main Index.csv file - Answer Yes\r\nor\r\nDo you wish to select some other index? - Answer No";
    const std::string mainIndex = kHeading + "b,P,x.bin,Bee,Yes,,,1\r\n" + kHeading + "a,P,y.bin,Ay,Yes,,,2\r\n";
    struct Case {
        const char* what;
        base::Answer answer;
        std::optional<std::string> chosen;  // the file given to the chooser, below IndexFiles
        std::vector<std::string> texts;     // what the person was told after the question
        std::vector<std::string> names;     // the rows, in the picker's order
    };
    const Case cases[] = {
        {"the main index, sorted; the second heading sorts as its provider", base::Answer::Yes, std::nullopt, {},
         {"Name", "Ay", "Bee"}},
        {"another index", base::Answer::No, "G\xC3\xBCter.csv", {}, {"G\xC3\xBCterwagen"}},
        {"none chosen", base::Answer::No, std::nullopt, {}, {}},
    };
    for (const auto& c : cases) {
        Fixture f;
        f.root.write("IndexFiles/index.csv", mainIndex);
        f.root.write("IndexFiles/G\xC3\xBCter.csv", kHeading + "K,P,g.bin,G\xC3\xBCterwagen,Yes,,,1\r\n");
        f.ui.answers.push_back(c.answer);
        if (c.chosen) f.ui.files.push_back(IndexFolder(f.ctx) + "\\" + *c.chosen);
        const LoadedIndex index = OpenRollingStockIndex(f.ctx);
        std::vector<std::string> names;
        for (const auto& row : index.rows) names.push_back(row.name);
        EXPECT_EQ(names, c.names) << c.what;
        EXPECT_EQ(f.ui.texts(), std::vector<std::string>{question}) << c.what;
        if (c.answer == base::Answer::No) {
            EXPECT_EQ(f.ui.dialogTitles, std::vector<std::string>{"Get User Index File"}) << c.what;
        }
    }
    // With no index the picker says so.
    Fixture f;
    f.ui.answers.push_back(base::Answer::Yes);
    EXPECT_TRUE(OpenRollingStockIndex(f.ctx).rows.empty());
    EXPECT_EQ(f.ui.texts().back(), kNoIndexMessage);

    // Picking: heading rows and rows out of range are no stock.
    const std::vector<AssetRow> rows = ParseAssetIndex(mainIndex).rows;
    f.ui.shown.clear();
    EXPECT_EQ(PickRollingStock(f.ctx, rows, {2, 0}), (std::vector<AssetRow>{rows[2], rows[0]}));
    EXPECT_TRUE(f.ui.shown.empty());
    EXPECT_TRUE(PickRollingStock(f.ctx, rows, {1, 9}).empty());
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected any rolling stock"});
}

}  // namespace
}  // namespace ferrolund::assets
