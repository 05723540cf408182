#include "screens/assets/frmAPConsists.h"

#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

#include <filesystem>

#include "archives/zip_writer.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

std::string Properties(const std::string& root, const std::string& english) {
    return "<" + root + "><DisplayName><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">" +
           english + "</English></Localisation-cUserLocalisedString></DisplayName></" + root + ">\n";
}

struct ApConsistsScreen : testing::ScreenFixture {
    ApConsistsScreen() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = root.system() + "/RW";
        archives::ZipWriter writer;
        const fs::path target = root.path() / "RW/Content/Routes/R1/MainContent.ap";
        fs::create_directories(target.parent_path());
        EXPECT_FALSE(writer.create(target.string(), {}));
        const std::pair<const char*, std::string> members[] = {
            {"Content\\Routes\\R1\\RouteProperties.xml", Properties("cRouteProperties", "Semmering")},
            {"Content\\Routes\\R1\\Scenarios\\S1\\ScenarioProperties.xml",
             Properties("cScenarioProperties", "Güterzug bergauf")},
            {"Content\\Routes\\R1\\Scenarios\\S2\\ScenarioProperties.xml", Properties("cScenarioProperties", "Abend")},
        };
        int n = 0;
        for (const auto& [stored, text] : members) {
            EXPECT_FALSE(writer.addFile(root.write("src/" + std::to_string(n++), text).string(), stored));
        }
        EXPECT_FALSE(writer.finish());
    }
};

TEST(frmAPConsists, FindsArchivesThenPropertiesThenTheDetailsInOrder) {
    ApConsistsScreen f;
    frmAPConsists screen(f.ctx);
    EXPECT_EQ(screen.windowTitle(), "Build List of Routes & Scenarios  in .AP files");
    screen.button("cmdFindAP")->click();
    ASSERT_EQ(screen.archiveList()->count(), 1);

    // Details before the properties: the guard.
    screen.button("cmdDetails")->click();
    ASSERT_EQ(f.ui.texts().size(), 1u);
    EXPECT_EQ(f.ui.texts()[0].rfind("You have already run 'Find .ap files'", 0), 0u);

    screen.archiveList()->item(0)->setSelected(true);
    screen.button("Command1")->click();
    ASSERT_EQ(screen.propertiesList()->count(), 2);
    EXPECT_EQ(f.ui.texts().back(), "All selected .xml files have been added to the grid.");
    screen.propertiesList()->selectAll();
    screen.button("cmdDetails")->click();
    EXPECT_EQ(f.ui.texts().back(), "All selected Scenario details have been added to the main grid.");
    auto* model = screen.grid()->view()->model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(0, 0).data().toString(), "R1");
    EXPECT_EQ(model->index(0, 1).data().toString(), "S1");
    EXPECT_EQ(model->index(0, 2).data().toString(), "Semmering");
    EXPECT_EQ(model->index(0, 3).data().toString(), QString::fromUtf8("Güterzug bergauf"));
    EXPECT_EQ(model->index(1, 3).data().toString(), "Abend");
    screen.show();
    testing::Screenshot(screen, "frmAPConsists_details");
}

}  // namespace
}  // namespace ferrolund::screens
