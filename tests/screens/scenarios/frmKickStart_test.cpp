#include "screens/scenarios/frmKickStart.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>

#include "core/tools/testdata_file.h"
#include "screens/app/screen_fixture.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRealProperties =
    "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Scenarios/b01bda98-a8d8-4615-ba62-1be3f3edb378/"
    "ScenarioProperties.xml";
constexpr const char* kRelative = "RW/Content/Routes/Strecke-ü/Scenarios/Fahrt é/";

struct EditorScreen : testing::ScreenFixture {
    std::string binary, properties, folder;
    EditorScreen(std::string realBinary, std::string realProperties)
        : binary(std::move(realBinary)), properties(std::move(realProperties)) {
        ctx.prefs.gameRoot = root.system() + "/RW";
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", root.path() / "Templates",
                 fs::copy_options::recursive);
        root.write(std::string(kRelative) + "Scenario.bin", binary);
        root.write(std::string(kRelative) + "ScenarioProperties.xml", properties);
        root.write("RW/Assets/Kuju/RailSimulatorCore/Weather/RW_Clear.bin", "x");
        folder = ctx.gameRoot() + "\\Content\\Routes\\Strecke-ü\\Scenarios\\Fahrt é";
    }
    std::string file(const std::string& name) const { return root.read(std::string(kRelative) + name); }
};

void Key(QWidget* widget, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
}

#define OPEN_EDITOR(f, screen)                                       \
    FERROLUND_READ_TESTDATA(binary_, "serz/scenario-game.bin");      \
    FERROLUND_READ_TESTDATA(properties_, kRealProperties);           \
    EditorScreen f(binary_, properties_);                            \
    frmKickStart* screen = ShowScenarioEditor(f.ctx, nullptr, f.folder); \
    ASSERT_NE(screen, nullptr);                                      \
    std::unique_ptr<frmKickStart> owner_(screen)

TEST(frmKickStart, ShowsTheDetailsConsistsAndStock) {
    OPEN_EDITOR(f, screen);
    EXPECT_EQ(screen->windowTitle(), "Scenario Editor");
    EXPECT_EQ(screen->box(0)->text(), "Testiajot");
    EXPECT_EQ(screen->box(3)->text(), "1200");
    EXPECT_EQ(screen->box(8)->text(), "SEASON_SUMMER");
    EXPECT_EQ(screen->box(9)->text(), "Kuju");
    EXPECT_TRUE(screen->findChild<QRadioButton*>("Option2_1")->isChecked());
    EXPECT_FALSE(screen->authorBox()->isHidden());  // FreeRoam shows both
    EXPECT_FALSE(screen->startLocationBox()->isHidden());
    EXPECT_TRUE(f.ui.shown.empty()) << f.ui.shown.front().text;  // the weather folder exists
    ASSERT_GT(screen->consistGrid()->rowCount(), 1);
    EXPECT_GT(screen->stockGrid()->rowCount(), 0);
    // No blueprint of the scenario is installed here: every stock row says so.
    EXPECT_TRUE(screen->stockGrid()->item(0, 4)->text().endsWith("(missing)"));
    for (const char* name : {"cmdStock_Swap", "cmdStock_Delete", "cmdStock_Flip"})
        EXPECT_FALSE(screen->findChild<QPushButton*>(name)->isEnabled()) << name;
    screen->stockGrid()->selectRow(0);
    screen->showStockDetails();
    auto* details = screen->findChild<QDialog*>("frmStockDetails");
    ASSERT_NE(details, nullptr);
    EXPECT_FALSE(details->isModal());
    EXPECT_TRUE(details->findChild<QPlainTextEdit*>("Text1")->toPlainText().contains("Provider: "));
    screen->resize(1250, 720);
    testing::Screenshot(*screen, "frmKickStart");
    EXPECT_FALSE(screen->dirty());
}

TEST(frmKickStart, TabOrEnterInTheTimeBoxMovesEveryConsistEachTime) {
    OPEN_EDITOR(f, screen);
    screen->box(3)->setText("1230");
    Key(screen->box(3), Qt::Key_Tab);
    EXPECT_NE(screen->texts().scenarioXml.find(">47100.0000</StartTime>"), std::string::npos);
    EXPECT_TRUE(screen->dirty());
    Key(screen->box(3), Qt::Key_Return);  // the loaded time stays, so it moves again
    EXPECT_NE(screen->texts().scenarioXml.find(">48900.0000</StartTime>"), std::string::npos);

    const std::string before = screen->texts().scenarioXml;
    struct Case {
        const char* typed;
        const char* message;
    } cases[] = {{"2401", "after 2400 or the consist might fail."}, {"930", "24hour format"}};
    for (const Case& c : cases) {
        f.ui.shown.clear();
        screen->box(3)->setText(c.typed);
        Key(screen->box(3), Qt::Key_Enter);
        ASSERT_EQ(f.ui.shown.size(), 1u) << c.typed;
        EXPECT_NE(f.ui.shown[0].text.find(c.message), std::string::npos) << c.typed;
        EXPECT_EQ(screen->texts().scenarioXml, before) << c.typed;
    }
}

TEST(frmKickStart, TheClassChangesOnlyWhenTheQuestionIsAnsweredOk) {
    OPEN_EDITOR(f, screen);
    f.ui.answers = {base::Answer::Cancel};
    EXPECT_FALSE(screen->chooseClass(0));
    EXPECT_TRUE(screen->findChild<QRadioButton*>("Option2_1")->isChecked());
    EXPECT_NE(screen->texts().propertiesXml.find(">eFreeRoamScenarioClass<"), std::string::npos);
    EXPECT_FALSE(screen->dirty());
    f.ui.answers = {base::Answer::Ok};
    EXPECT_TRUE(screen->chooseClass(0));
    ASSERT_FALSE(f.ui.shown.empty());
    EXPECT_NE(f.ui.shown.back().text.find("make a Clone of the Scenario first."), std::string::npos);
    EXPECT_TRUE(screen->findChild<QRadioButton*>("Option2_0")->isChecked());
    EXPECT_NE(screen->texts().propertiesXml.find(">eStandardScenarioClass<"), std::string::npos);
    EXPECT_TRUE(screen->startLocationBox()->isHidden());
    EXPECT_FALSE(screen->authorBox()->isHidden());
}

TEST(frmKickStart, TheWeatherDialogFillsTheBoxes) {
    OPEN_EDITOR(f, screen);
    screen->box(12)->setText("Old");
    screen->applyWeather(f.ctx.gameRoot() + "\\Assets\\DTG\\Wetter ß\\Weather\\Snow.bin", true);
    EXPECT_EQ(screen->box(9)->text(), "DTG");
    EXPECT_EQ(screen->box(10)->text(), QString::fromUtf8("Wetter ß"));
    EXPECT_EQ(screen->box(11)->text(), "Weather\\Snow.xml");
    EXPECT_TRUE(screen->box(12)->text().isEmpty());
    dlgWeather dialog(f.ctx, f.ctx.gameRoot() + "\\Assets", screen);
    EXPECT_EQ(dialog.windowTitle(), "Set Weather");
    EXPECT_EQ(dialog.blankBox()->text(), "Blank Extension Blueprint");
}

TEST(frmKickStart, SaveWritesBothFilesWithBackUpsAndCloses) {
    OPEN_EDITOR(f, screen);
    screen->box(0)->setText("Morgen's Fahrt");
    screen->box(3)->setText("1230");
    Key(screen->box(3), Qt::Key_Tab);
    ASSERT_TRUE(screen->saveChanges());
    ASSERT_FALSE(f.ui.shown.empty());
    EXPECT_EQ(f.ui.shown.back().text, "Your Scenario.bin and ScenarioProperties.xml files have been updated.");
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(screen->closeButton()->text(), "Exit");
    EXPECT_FALSE(screen->saveButton()->isEnabled());
    EXPECT_EQ(f.file("ScenarioProperties.bak"), f.properties);
    EXPECT_EQ(f.file("Scenario.bak"), f.binary);
    EXPECT_NE(f.file("ScenarioProperties.xml").find(">Morgen&apos;s Fahrt</English>"), std::string::npos);
    EXPECT_NE(f.file("ScenarioProperties.xml").find(">45000.0000</StartTime>"), std::string::npos);
}

TEST(frmKickStart, ABadTimeStopsTheSaveWithNothingWritten) {
    OPEN_EDITOR(f, screen);
    screen->box(3)->setText("2401");
    EXPECT_FALSE(screen->saveChanges());
    ASSERT_FALSE(f.ui.shown.empty());
    EXPECT_EQ(f.ui.shown.back().text, "The time must be in 24hour format, e.g. 0530");
    EXPECT_EQ(f.file("ScenarioProperties.xml"), f.properties);
    EXPECT_EQ(f.file("Scenario.bin"), f.binary);
    EXPECT_FALSE(fs::exists(f.root.path() / kRelative / "Scenario.bak"));
}

TEST(frmKickStart, ClosingWithChangesAsksFirst) {
    OPEN_EDITOR(f, screen);
    screen->show();
    screen->box(4)->setText("120");
    emit screen->box(4)->textEdited("120");
    ASSERT_TRUE(screen->dirty());
    f.ui.answers = {base::Answer::No};
    screen->closeButton()->click();
    EXPECT_TRUE(screen->isVisible());
    EXPECT_NE(f.ui.shown.back().text.find("Do you really wish to exit?"), std::string::npos);
    f.ui.answers = {base::Answer::Yes};
    screen->closeButton()->click();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(f.file("ScenarioProperties.xml"), f.properties);
}

TEST(frmKickStart, AMissingWeatherFolderIsOnlyWarnedAbout) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-game.bin");
    FERROLUND_READ_TESTDATA(properties, kRealProperties);
    EditorScreen f(binary, properties);
    fs::remove_all(f.root.path() / "RW" / "Assets");
    std::unique_ptr<frmKickStart> screen(ShowScenarioEditor(f.ctx, nullptr, f.folder));
    ASSERT_NE(screen, nullptr);
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_NE(f.ui.shown[0].text.find("The Weather folder for this scenario is missing\r\n"
                                      "Maybe it is packed in an .ap file? Missing item:-\r\n"),
              std::string::npos);
    EXPECT_NE(f.ui.shown[0].text.find("Kuju\\RailSimulatorCore\\Weather"), std::string::npos) << f.ui.shown[0].text;
    EXPECT_TRUE(screen->saveButton()->isEnabled());
}

TEST(frmKickStart, ScenariosThatCannotBeEditedAreNotOpened) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-game.bin");
    struct Case {
        const char* name;
        std::string properties;
        const char* message;
    } cases[] = {
        {"quick drive", "<cScenarioProperties><ScenarioClass>eTemplateScenarioClass</ScenarioClass></cScenarioProperties>",
         "Quick Drive"},
        {"no properties", "", "ScenarioProperties.xml"},
    };
    for (const Case& c : cases) {
        EditorScreen f(binary, c.properties);
        EXPECT_EQ(ShowScenarioEditor(f.ctx, nullptr, f.folder), nullptr) << c.name;
        ASSERT_FALSE(f.ui.shown.empty()) << c.name;
        EXPECT_NE(f.ui.shown.back().text.find(c.message), std::string::npos) << c.name << f.ui.shown.back().text;
    }
}

}  // namespace
}  // namespace ferrolund::screens
