#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "consists/consist_templates.h"
#include "core/tools/testdata_file.h"
#include "screens/app/screen_fixture.h"
#include "screens/scenarios/frmKickStart.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

TEST(frmKickStart, SaveAsNamedConsistAddsTheSelectedConsistToTheSavedOnes) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = f.root.system() + "/RW";
    f.ctx.lang.parse(f.root.read("Language/Lang_English.txt"));
    fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", f.root.path() / "Templates",
             fs::copy_options::recursive);
    fs::create_directories(f.root.path() / "RW/Content");
    frmKickStart screen(f.ctx, scenarios::ScenarioTexts{f.root.system(), "", xml});
    QPushButton* named = screen.findChild<QPushButton*>("cmdConsist");
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(named->text(), "Save as Named Consist");

    screen.consistGrid()->clearSelection();
    f.ui.shown.clear();
    named->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected a consist?"});

    screen.consistGrid()->selectRow(1);
    f.ui.inputs.push_back("Voyager");
    named->click();
    EXPECT_EQ(f.ui.texts().back(), "Your new ConsistTemplate.bin file is now ready for use.");
    std::string saved;
    ASSERT_FALSE(tools::SerzReadXml(f.ctx, (f.root.path() / "RW/Content/ConsistTemplates.bin").string(), saved));
    consists::TemplateFile file;
    ASSERT_TRUE(consists::ParseConsistTemplates(saved, file));
    ASSERT_FALSE(file.rows.empty());
    EXPECT_EQ(file.rows[0].name, "Voyager");
    EXPECT_EQ(file.rows.size(), static_cast<std::size_t>(screen.consistGrid()->item(1, 3)->text().toInt()));
    EXPECT_FALSE(screen.dirty());
}

}  // namespace
}  // namespace ferrolund::screens
