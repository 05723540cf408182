#include "screens/assets/frmAssets.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <filesystem>
#include <gtest/gtest.h>

#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "serz/codec.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

// A blueprint of the given class, with a display name and what the class needs to be
// recognised.
std::string Blueprint(const std::string& cls, const std::string& name, const std::string& inner) {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
        "\t<Blueprint>\r\n\t\t<" + cls + ">\r\n"
        "\t\t\t<Name d:type=\"cDeltaString\">" + name + "</Name>\r\n"
        "\t\t\t<DisplayName>\r\n\t\t\t\t<Localisation-cUserLocalisedString>\r\n"
        "\t\t\t\t\t<English d:type=\"cDeltaString\">" + name + "</English>\r\n"
        "\t\t\t\t\t<Key d:type=\"cDeltaString\"></Key>\r\n"
        "\t\t\t\t</Localisation-cUserLocalisedString>\r\n\t\t\t</DisplayName>\r\n" + inner +
        "\t\t</" + cls + ">\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(xml, binary)) << cls;
    return binary;
}

struct AssetsFixture : testing::ScreenFixture {
    testing::TempFolder game;
    AssetsFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = game.system();
        const std::string vehicle = "\t\t\t<RailVehicleComponent>\r\n\t\t\t\t<cEngineComponentBlueprint>\r\n"
                                    "\t\t\t\t\t<EngineType d:type=\"cDeltaString\">eDiesel</EngineType>\r\n"
                                    "\t\t\t\t</cEngineComponentBlueprint>\r\n\t\t\t</RailVehicleComponent>\r\n";
        game.write("Assets/Ostvale/NorthernLines/RailVehicles/Diesel/Class58/Engine/Class58.bin",
                   Blueprint("cEngineBlueprint", "Ostvale Class 58, Diesel", vehicle));
        game.write("Assets/ČeskéDráhy/Nádraží/RailVehicles/Freight/Vůz/Vůz.bin",
                   Blueprint("cWagonBlueprint", "Vůz Müller", "\t\t\t<RailVehicleComponent d:type=\"cDeltaString\">x</RailVehicleComponent>\r\n"));
        game.write("Assets/Ostvale/NorthernLines/Scenery/Hut.bin",
                   Blueprint("cEntityContainerBlueprint", "Hut", "\t\t\t<Category d:type=\"cDeltaString\">eScenery</Category>\r\n"));
        game.write("Assets/Ostvale/NorthernLines/Scenery/Empty.bin", "");
    }
    std::vector<std::string> Column(frmAssets& screen, std::size_t column) {
        std::vector<std::string> cells;
        for (const auto& row : screen.grid()->grid().rows()) cells.push_back(row[column]);
        return cells;
    }
};

TEST(frmAssets, OpensOnTheGameAssetsWithTheListsHeadings) {
    AssetsFixture f;
    frmAssets screen(f.ctx);
    EXPECT_EQ(screen.windowTitle(), "Build List of Assets");
    EXPECT_EQ(FromQt(screen.folderBox()->text()), f.game.system() + "\\Assets\\");
    EXPECT_EQ(screen.filterBox()->text(), "*.bin");
    EXPECT_FALSE(screen.defaultFoldersBox()->isEnabled());
    screen.rollingStockBox()->setChecked(true);
    EXPECT_TRUE(screen.defaultFoldersBox()->isEnabled());
    screen.defaultFoldersBox()->setChecked(true);
    screen.rollingStockBox()->setChecked(false);
    EXPECT_FALSE(screen.defaultFoldersBox()->isChecked());
    EXPECT_TRUE(fs::is_directory(f.root.path() / "TempFiles"));
    EXPECT_EQ(screen.grid()->view()->model()->headerData(4, Qt::Horizontal).toString(), "In Scene");
    // The missing-asset commands show only while their input file exists.
    EXPECT_FALSE(screen.button("cmdAdd")->isHidden());
}

TEST(frmAssets, AddToListFillsTheEightColumnsInOrder) {
    AssetsFixture f;
    frmAssets screen(f.ctx);
    screen.resize(1280, 760);
    screen.button("cmdAdd")->click();
    const auto names = f.Column(screen, 3);
    ASSERT_EQ(names.size(), 3u) << "the empty file is no blueprint";
    EXPECT_NE(std::find(names.begin(), names.end(), "Ostvale Class 58 Diesel"), names.end()) << "commas go";
    EXPECT_NE(std::find(names.begin(), names.end(), "Vůz Müller"), names.end());
    const auto indices = f.Column(screen, 7);
    EXPECT_EQ(indices, (std::vector<std::string>{"1", "2", "3"}));
    // The empty blueprint is named in the report and the log, and the walk went on.
    EXPECT_EQ(f.ui.texts().back(), "Selected items have been added to the grid.\r\n\r\n1 file(s) could not be "
                                   "listed; they are named in the report and in Errors.txt.");
    ASSERT_EQ(screen.lastProblems().size(), 1u);
    EXPECT_NE(screen.lastProblems()[0].path.find("Empty.bin"), std::string::npos);
    EXPECT_NE(f.root.read("Errors.txt").find("Empty.bin"), std::string::npos);
    EXPECT_EQ(screen.findChild<QLabel*>("lblTotal")->text(), "3");
    testing::Screenshot(screen, "frmAssets_list");
}

TEST(frmAssets, RollingStockOnlyLeavesTheSceneryOut) {
    AssetsFixture f;
    frmAssets screen(f.ctx);
    screen.rollingStockBox()->setChecked(true);
    screen.button("cmdAdd")->click();
    auto categories = f.Column(screen, 5);
    std::sort(categories.begin(), categories.end());
    EXPECT_EQ(categories, (std::vector<std::string>{"Freight Wagon", "eDiesel"}));
}

TEST(frmAssets, ZeroLengthFilesAreListedAndDeletedOnlyWhenConfirmed) {
    AssetsFixture f;
    frmAssets screen(f.ctx);
    screen.button("cmdZero")->click();
    ASSERT_EQ(screen.grid()->grid().rowCount(), 1u);
    EXPECT_EQ(screen.grid()->grid().cell(0, 2), "Scenery\\Empty.bin");
    screen.grid()->selectRows({0});
    f.ui.answers.push_back(base::Answer::Cancel);
    screen.button("cmdDelete")->click();
    EXPECT_TRUE(fs::exists(f.game.path() / "Assets/Ostvale/NorthernLines/Scenery/Empty.bin"));
    f.ui.answers.push_back(base::Answer::Ok);
    screen.button("cmdDelete")->click();
    EXPECT_FALSE(fs::exists(f.game.path() / "Assets/Ostvale/NorthernLines/Scenery/Empty.bin"));
    EXPECT_TRUE(fs::exists(f.game.path() / "Assets/Ostvale/NorthernLines/Scenery/Hut.bin"));
    EXPECT_EQ(screen.grid()->grid().rowCount(), 0u);
}

TEST(frmAssets, DeleteWithNothingSelectedSaysSo) {
    AssetsFixture f;
    frmAssets screen(f.ctx);
    screen.button("cmdAdd")->click();
    f.ui.shown.clear();
    screen.button("cmdDelete")->click();
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_EQ(f.ui.shown[0].text, f.ctx.langText(444));
}

TEST(frmAssets, AFolderThatIsGoneListsNothingAndSaysWhy) {
    AssetsFixture f;
    frmAssets screen(f.ctx);
    screen.folderBox()->setText(ToQt(f.game.system() + "\\Assets\\Nowhere\\"));
    screen.button("cmdAdd")->click();
    EXPECT_EQ(screen.grid()->grid().rowCount(), 0u);
    EXPECT_FALSE(screen.lastProblems().empty());
}

}  // namespace
}  // namespace ferrolund::screens
