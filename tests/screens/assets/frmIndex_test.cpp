#include "screens/assets/frmIndex.h"

#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"

namespace ferrolund::screens {
namespace {

struct IndexFixture : testing::ScreenFixture {
    IndexFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        // An appended index: its second heading line is no row of stock.
        root.write("IndexFiles/index.csv",
                   "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
                   "Ostvale,NorthernLines,RailVehicles\\Class58.bin,Class 58,Yes,Diesel,EngineBlueprint,1\r\n"
                   "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
                   "Müller,Straßenbahn,RailVehicles\\Tram.bin,Tram,Yes,Electric,EngineBlueprint,2\r\n"
                   "ČeskéDráhy,Nádraží,RailVehicles\\Vůz.bin,Vůz,Yes,Freight Wagon,WagonBlueprint,3\r\n"
                   "Broken,line\r\n");
    }
};

TEST(frmIndex, TheMainIndexShowsSortedWithoutHeadingRowsAndNamesBadLines) {
    IndexFixture f;
    f.ui.answers.push_back(base::Answer::Yes);
    frmIndex screen(f.ctx);
    ASSERT_TRUE(screen.openIndex());
    const auto& rows = screen.grid()->grid().rows();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0][0], "Müller");
    EXPECT_EQ(rows[1][0], "Ostvale");
    EXPECT_EQ(rows[2][0], "ČeskéDráhy");
    EXPECT_NE(f.ui.texts().back().find("Line 6"), std::string::npos) << f.ui.texts().back();
    EXPECT_FALSE(screen.pickButton()->isVisibleTo(&screen));
}

TEST(frmIndex, WithoutAnIndexItSaysSoAndDoesNotOpen) {
    testing::ScreenFixture f;
    f.ctx.lang.parse(f.root.read("Language/Lang_English.txt"));
    f.ui.answers.push_back(base::Answer::Yes);
    frmIndex screen(f.ctx);
    EXPECT_FALSE(screen.openIndex());
    EXPECT_EQ(f.ui.texts().back(), "You do not appear to have generated an Index.csv file.");
}

TEST(frmIndex, APickHandsOverTheChosenStock) {
    IndexFixture f;
    f.ui.answers.push_back(base::Answer::Yes);
    std::vector<assets::AssetRow> picked;
    frmIndex screen(f.ctx, [&picked](const std::vector<assets::AssetRow>& rows) { picked = rows; });
    ASSERT_TRUE(screen.openIndex());
    EXPECT_TRUE(screen.pickButton()->isVisibleTo(&screen));
    screen.pickButton()->click();
    EXPECT_TRUE(picked.empty());
    EXPECT_EQ(f.ui.texts().back(), "You do not appear to have selected any rolling stock");
    screen.grid()->selectRows({2});
    screen.pickButton()->click();
    ASSERT_EQ(picked.size(), 1u);
    EXPECT_EQ(picked[0].provider, "ČeskéDráhy");
    EXPECT_EQ(picked[0].path, "RailVehicles\\Vůz.bin");
    EXPECT_EQ(picked[0].category, "Freight Wagon");
}

}  // namespace
}  // namespace ferrolund::screens
