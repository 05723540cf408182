#include "screens/routes/dlgMissShape.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

#include "screens/app/screen_fixture.h"

namespace ferrolund::screens {
namespace {

routes::GridItem Loft() { return {{"Kuju", "RailSimulator", "Loft\\Wall.xml"}, routes::kLoftKind}; }

TEST(dlgMissShape, ShowsTheKindOfTheItemAndFillsTheTripleFromAPickedFile) {
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = "C:\\Games\\RailWorks";
    dlgMissShape dialog(f.ctx, Loft());
    EXPECT_EQ(dialog.windowTitle(), "Substitute for a missing Asset.");
    const std::pair<int, const char*> captions[] = {{routes::kTrackKind, "Track Item"},
                                                    {routes::kRoadKind, "Road Item"},
                                                    {routes::kLoftKind, "Loft Item"},
                                                    {routes::kSceneryKind, "Scenery Item"}};
    for (const auto& [kind, caption] : captions) {
        EXPECT_EQ(dialog.kindOption(kind)->text(), caption);
        EXPECT_EQ(dialog.kindOption(kind)->isChecked(), kind == routes::kLoftKind);
    }
    f.ui.files = {"C:\\Games\\RailWorks\\Assets\\Brackenridge\\CountryScenery\\Walls\\Stone Wall.bin"};
    dialog.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(f.ui.dialogTitles, std::vector<std::string>{"Select .bin file"});
    EXPECT_EQ(dialog.provider()->text(), "Brackenridge");
    EXPECT_EQ(dialog.product()->text(), "CountryScenery");
    EXPECT_EQ(dialog.path()->text(), "Walls\\Stone Wall.xml");
    testing::Screenshot(dialog, "dlgMissShape");
    dialog.kindOption(routes::kSceneryKind)->setChecked(true);
    dialog.findChild<QPushButton*>("OKButton")->click();
    ASSERT_TRUE(dialog.choice().has_value());
    EXPECT_EQ(dialog.choice()->replacement.blueprintId, "Walls\\Stone Wall.xml");
    EXPECT_EQ(dialog.choice()->kind, routes::kSceneryKind);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(dlgMissShape, ATypedPathWithEnterOrByHandAndWhatOkRefuses) {
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = "C:\\Games\\RailWorks";
    const struct {
        std::string typed;
        bool enter;
        std::string provider, product, path;  // the texts afterwards
        bool accepted;
    } cases[] = {
        {"C:\\Games\\RailWorks\\Assets\\Hartwell\\Steam\\Trees\\Oak.bin", true, "Hartwell", "Steam", "Trees\\Oak.xml",
         true},
        {"Trees\\Oak.BIN", false, "", "", "Trees\\Oak.xml", true},
        {"Trees\\Oak.dds", false, "", "", "Trees\\Oak.dds", false},
        {"Not a path below the game", true, "", "", "Not a path below the game", false},
        {"", false, "", "", "", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        dlgMissShape dialog(f.ctx, Loft());
        dialog.path()->setText(QString::fromStdString(c.typed));
        if (c.enter) emit dialog.path()->returnPressed();
        dialog.findChild<QPushButton*>("OKButton")->click();
        EXPECT_EQ(dialog.provider()->text().toStdString(), c.provider);
        EXPECT_EQ(dialog.product()->text().toStdString(), c.product);
        EXPECT_EQ(dialog.path()->text().toStdString(), c.path);
        EXPECT_EQ(dialog.choice().has_value(), c.accepted);
    }
    dlgMissShape cancelled(f.ctx, Loft());
    cancelled.findChild<QPushButton*>("CancelButton")->click();
    EXPECT_FALSE(cancelled.choice().has_value());
}

}  // namespace
}  // namespace ferrolund::screens
