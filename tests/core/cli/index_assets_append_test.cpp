// ferrolund-cli index-assets --append: the listed rows go on to the asset index.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "assets/asset_index.h"
#include "core/sample/sample_fixture.h"
#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ferrolund {
namespace {

using testing::Cli;

TEST(IndexAssetsAppend, RowsGoOnToTheIndexNumberedOn) {
    const std::string heading = "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n";
    const std::string loco = sample::ReadBytes(sample::OnDisk(
        sample::SampleRoot(), "Assets\\Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin"));
    struct Case {
        const char* what;
        std::string before;  // index.csv before, empty for none
        std::string number;  // the appended row's running number
        std::size_t rows;    // rows read back
    };
    const Case cases[] = {
        {"onto an index", heading + "Old,P,a.bin,Old one,Yes,,,41\r\n", "42", 3},
        {"with no index yet", "", "1", 1},
    };
    for (const auto& c : cases) {
        testing::TempFolder app, game;
        game.write("Assets/Ostvale/Z\xC3\xBCge/RailVehicles/Diesel/Class58/Engine/Class58.bin", loco);
        if (!c.before.empty()) app.write("IndexFiles/index.csv", c.before);
        const auto run = Cli({"index-assets", "--rolling-stock", "--append", "--game-root", game.system()}, app.system());
        ASSERT_EQ(run.code, 0) << c.what << "\n" << run.err;
        EXPECT_NE(run.err.find("1 rows appended to"), std::string::npos) << run.err;

        const assets::LoadedIndex index = assets::LoadAssetIndex(app.system() + "\\IndexFiles\\index.csv");
        ASSERT_EQ(index.rows.size(), c.rows) << c.what;
        EXPECT_TRUE(index.problems.empty()) << c.what;
        const assets::AssetRow& added = index.rows.back();
        EXPECT_EQ(added.product, "Z\xC3\xBCge") << c.what;
        EXPECT_EQ(added.name, "Ostvale Class 58 Diesel") << c.what;
        EXPECT_EQ(added.index, c.number) << c.what;
        if (!c.before.empty()) {
            EXPECT_TRUE(assets::IsHeadingRow(index.rows[1])) << c.what;
            EXPECT_EQ(app.read("IndexFiles/index.csv.bak"), c.before) << c.what;
        }
    }
}

}  // namespace
}  // namespace ferrolund
