#include "screens/scenarios/frmScenario.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTableWidget>
#include <QTextCursor>
#include <QTextEdit>

#include "screens/app/screen_fixture.h"
#include "core/tools/testdata_file.h"
#include "scenarios/work_order.h"
#include "screens/scenarios/frmWorkOrder.h"
#include "tools/files.h"

namespace ferrolund::screens {
namespace {

const std::string kProperties =
    "<cScenarioProperties><DisplayName><English>Clay Trip</English></DisplayName>"
    "<Description><English>Shunt the hoods</English></Description><Briefing><English>Go</English></Briefing>"
    "<ScenarioClass d:type=\"cDeltaString\">eStandardScenarioClass</ScenarioClass>"
    "<StartTime d:type=\"sInt32\">45300</StartTime><DurationMins d:type=\"sInt32\">90</DurationMins>"
    "<StartDD>3</StartDD><StartMM>10</StartMM><StartYYYY>1991</StartYYYY>"
    "<Season d:type=\"cDeltaString\">SEASON_AUTUMN</Season></cScenarioProperties>";

scenarios::ScenarioTexts GameTexts(const std::string& xml, const std::string& properties = kProperties) {
    scenarios::ScenarioTexts texts;
    texts.propertiesXml = properties;
    texts.scenarioXml = xml;
    return texts;
}

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; ++at) ++n;
    return n;
}

TEST(frmScenario, ShowsTheGameScenarioAndSavesItsGrid) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    testing::ScreenFixture f;
    scenarios::ReportOptions options;
    options.includeLoose = true;
    frmScenario screen(f.ctx, GameTexts(xml), options);
    EXPECT_EQ(screen.windowTitle(), "Scenario Details");
    EXPECT_EQ(screen.field(0)->text(), "Clay Trip");
    EXPECT_EQ(screen.field(3)->text(), "1235");
    EXPECT_EQ(screen.field(7)->text(), "3/10/1991");
    EXPECT_EQ(screen.playersConsist()->text(), "6C58 10:45 Heathfield-St Blazey");
    EXPECT_EQ(screen.services()->count(), 5);
    ASSERT_EQ(screen.playersStock()->count(), 18);
    EXPECT_EQ(screen.playersStock()->item(0)->text(), "AP Class 37/0 BR Trainload (W1)");
    EXPECT_TRUE(screen.standardOption()->isChecked());
    ASSERT_GT(screen.grid()->rowCount(), 21);
    EXPECT_EQ(screen.grid()->item(0, 0)->text(), "Service Name");
    screen.resize(1100, 700);
    testing::Screenshot(screen, "frmScenario");

    // The right mouse button shows a long instruction whole.
    int instruction = 0;
    while (instruction < screen.grid()->rowCount() && screen.grid()->item(instruction, 0)->text() != "Drivers Instructions")
        ++instruction;
    ASSERT_LT(instruction, screen.grid()->rowCount());
    screen.showCell(instruction, 1);
    auto* window = screen.findChild<QDialog*>("txtScroll");
    ASSERT_NE(window, nullptr);
    auto* whole = window->findChild<QPlainTextEdit*>();
    ASSERT_NE(whole, nullptr);
    EXPECT_TRUE(whole->toPlainText().endsWith("before we end our trip.")) << whole->toPlainText().toStdString();
    window->close();

    struct Case {
        const char* file;
        const char* holds;  // bytes the saved file must hold
    } cases[] = {{"details.csv", "Service Name,"}, {"details.txt", "Service Name\t"}, {"details.xls", "Service Name"}};
    for (const Case& c : cases) {
        const std::string path = f.ctx.appPath("Reports") + "\\" + c.file;
        f.ui.files.push_back(path);
        screen.saveGrid();
        const std::string saved = tools::ReadTextFile(path);
        EXPECT_NE(saved.find(c.holds), std::string::npos) << c.file;
    }
    EXPECT_EQ(tools::ReadTextFile(f.ctx.appPath("Reports") + "\\details.xls").compare(0, 2, "\x09\x08"), 0)
        << "an .xls file is a BIFF worksheet, not text";
    EXPECT_EQ(f.ui.dialogTitles.back(), "Save Grid as File");
}

TEST(frmScenario, TheTimetableOptionAsksAndSetsEveryFlag) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    testing::ScreenFixture f;
    frmScenario screen(f.ctx, GameTexts(xml), {});
    const std::string zero = "<Timetabled d:type=\"bool\">0</Timetabled>";
    const std::string one = "<Timetabled d:type=\"bool\">1</Timetabled>";
    struct Step {
        bool timetable;
        base::Answer answer;
        bool asked;
        bool flag;
        int ones;
    } steps[] = {
        {true, base::Answer::Cancel, true, false, 0},   // Cancel puts the options back
        {true, base::Answer::Ok, true, true, 18},       // OK sets every flag
        {true, base::Answer::Ok, false, true, 18},      // already set: nothing asked
        {false, base::Answer::Ok, false, false, 0},     // Standard asks nothing
    };
    for (const Step& s : steps) {
        f.ui.shown.clear();
        f.ui.answers = {s.answer};
        screen.chooseTimetable(s.timetable);
        EXPECT_EQ(!f.ui.shown.empty(), s.asked);
        EXPECT_EQ(screen.timetableFlag(), s.flag);
        EXPECT_EQ(screen.timetableOption()->isChecked(), s.flag);
        EXPECT_EQ(Count(screen.texts().scenarioXml, one), s.ones);
        EXPECT_EQ(Count(screen.texts().scenarioXml, zero), 18 - s.ones);
    }
}

TEST(frmScenario, ATimetableBriefingOpensWithTheTimetableOption) {
    testing::ScreenFixture f;
    std::string properties = kProperties;
    properties.replace(properties.find(">Go<"), 4, ">Run to the timetable<");
    frmScenario screen(f.ctx, GameTexts("", properties), {});
    EXPECT_TRUE(screen.timetableOption()->isChecked());
    EXPECT_TRUE(screen.timetableFlag());
    EXPECT_EQ(screen.grid()->rowCount(), 0);
}

TEST(frmScenario, AnUnreadableScenarioIsToldAndNotShown) {
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = f.root.system();
    f.root.write("Content/Routes/R\xC3\xA9/Scenarios/Broken/ScenarioProperties.xml", kProperties);
    f.root.write("Content/Routes/R\xC3\xA9/Scenarios/Broken/Scenario.bin", "not a scenario");
    // The route has no Tracks.bin: the index cannot be made, which is told, and the
    // unreadable Scenario.bin then stops the screen.
    f.ui.answers = {base::Answer::Ok};
    ShowScenarioDetails(f.ctx, nullptr, "R\xC3\xA9", "Broken", false);
    ASSERT_EQ(f.ui.shown.size(), 3u);
    EXPECT_EQ(f.ui.shown[0].text, scenarios::kIndexTracksQuestion);
    EXPECT_NE(f.ui.shown[1].text.find("Tracks.bin"), std::string::npos);
    EXPECT_NE(f.ui.shown[2].text.find("Scenario.bin"), std::string::npos);
    // Cancel on the index question leaves without reading the scenario.
    f.ui.shown.clear();
    f.ui.answers = {base::Answer::Cancel};
    ShowScenarioDetails(f.ctx, nullptr, "R\xC3\xA9", "Broken", true);
    EXPECT_EQ(f.ui.shown.size(), 1u);
    f.ui.shown.clear();
    ShowWorkOrder(f.ctx, nullptr, "R\xC3\xA9", "Broken");
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_NE(f.ui.shown[0].text.find("Scenario.bin"), std::string::npos);
}

TEST(frmWorkOrder, ShowsColoursAndSavesTheSheet) {
    testing::ScreenFixture f;
    frmWorkOrder screen(f.ctx, {"Route:- Cornish Clay", "Scenario:- Clay Trip", "", "Operation: Drop off wagon(s)"});
    EXPECT_EQ(screen.windowTitle(), "Work Order");
    QStringList colours;
    for (int i = 0; i < screen.colours()->count(); ++i) colours << screen.colours()->itemText(i);
    EXPECT_EQ(colours, QStringList({"Black", "Blue", "Red", "Green"}));

    QTextCursor cursor(screen.sheet()->document());
    cursor.movePosition(QTextCursor::NextWord, QTextCursor::KeepAnchor);
    screen.sheet()->setTextCursor(cursor);
    screen.applyColour("Red");
    screen.applySize(18);
    const QTextCharFormat format = screen.sheet()->textCursor().charFormat();
    EXPECT_EQ(format.foreground().color(), QColor(Qt::red));
    EXPECT_EQ(format.fontPointSize(), 18);
    testing::Screenshot(screen, "frmWorkOrder");

    const std::string path = f.ctx.appPath("Reports") + "\\order.txt";
    f.ui.files.push_back(path);
    screen.save();
    EXPECT_EQ(tools::ReadTextFile(path),
              "Route:- Cornish Clay\r\nScenario:- Clay Trip\r\n\r\nOperation: Drop off wagon(s)\r\n");
    EXPECT_EQ(f.ui.dialogTitles.back(), "Save Object File");
}

TEST(frmWorkOrder, ShowsTheGameScenariosSheet) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-game.xml");
    testing::ScreenFixture f;
    frmWorkOrder screen(f.ctx, scenarios::WorkOrderLines("Cornish Clay", kProperties, xml));
    const QString text = screen.sheet()->toPlainText();
    EXPECT_TRUE(text.startsWith("Route:- Cornish Clay\nScenario:- Clay Trip\n"));
    EXPECT_TRUE(text.contains("Operation: Drop off wagon(s)\nWagon Numbers:- \n     200332\n"));
    testing::Screenshot(screen, "frmWorkOrder-game");
}

}  // namespace
}  // namespace ferrolund::screens
