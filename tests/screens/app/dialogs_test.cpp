#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <gtest/gtest.h>

#include "app/preference_set.h"
#include "screen_fixture.h"
#include "screens/app/dlgIndex.h"
#include "screens/app/dlgLang.h"
#include "screens/app/dlgOptions.h"
#include "screens/app/frmAbout.h"
#include "screens/app/frmEmail.h"
#include "screens/app/frmPreload.h"

namespace ferrolund::screens {
namespace {

TEST(dlgIndex, ContinueSetsTheFlagOnlyWhenTicked) {
    for (const bool ticked : {false, true}) {
        testing::ScreenFixture f;
        dlgIndex dialog(f.ctx, {}, {});
        testing::Screenshot(dialog, "dlgIndex");
        EXPECT_EQ(dialog.windowTitle(), "Notice:-");
        EXPECT_FALSE(dialog.extractButton()->isEnabled());
        EXPECT_FALSE(dialog.indexButton()->isEnabled());
        dialog.dontShow()->setChecked(ticked);
        dialog.continueButton()->click();
        EXPECT_EQ(f.ctx.prefs.routesIndexed, ticked);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
    }
}

TEST(dlgIndex, CommandsRunAndTheNoticeStaysOpen) {
    testing::ScreenFixture f;
    int extracted = 0;
    int indexed = 0;
    dlgIndex dialog(f.ctx, [&] { ++extracted; }, [&] { ++indexed; });
    dialog.show();
    dialog.extractButton()->click();
    dialog.indexButton()->click();
    dialog.indexButton()->click();
    EXPECT_EQ(extracted, 1);
    EXPECT_EQ(indexed, 2);
    EXPECT_TRUE(dialog.isVisible());
}

TEST(dlgLang, ListsTheLanguageFilesAndGivesThePick) {
    testing::ScreenFixture f;
    dlgLang dialog(f.ctx);
    testing::Screenshot(dialog, "dlgLang");
    QStringList names;
    for (int i = 0; i < dialog.list()->count(); ++i) names << dialog.list()->item(i)->text();
    EXPECT_EQ(names, (QStringList{"Lang_English.txt", "Lang_German.txt"}));
    EXPECT_EQ(dialog.list()->currentItem()->text(), "Lang_English.txt");
    dialog.list()->setCurrentRow(1);
    dialog.findChild<QPushButton*>("OKButton")->click();
    EXPECT_EQ(dialog.chosenFile(), "Lang_German.txt");
}

TEST(dlgOptions, ShowsTheSevenValues) {
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = "/games/RailWorks";
    f.ctx.prefs.language = "German";
    f.ctx.prefs.viewerPath = "/usr/bin/eog";
    dlgOptions dialog(f.ctx);
    testing::Screenshot(dialog, "dlgOptions");
    EXPECT_EQ(dialog.windowTitle(), "Current Options Settings");
    EXPECT_EQ(dialog.findChild<QLabel*>("Text1")->text(), "German");
    EXPECT_EQ(dialog.findChild<QLabel*>("Text4")->text(), "/games/RailWorks");
    EXPECT_EQ(dialog.findChild<QLabel*>("Text7")->text(), "/usr/bin/eog");
}

TEST(frmAbout, ReadsLineFourteenIntoItsOwnFlag) {
    testing::ScreenFixture f;
    app::PreferenceSet onDisk;
    onDisk.aboutFlagShadow = true;
    onDisk.language = "German";
    f.root.write("Ferrolundpreferences.txt", app::FormatPreferences(onDisk, app::AboutHome::Shadow));
    f.ctx.prefs.language = "English";
    frmAbout about(f.ctx);
    testing::Screenshot(about, "frmAbout");
    EXPECT_TRUE(f.ctx.prefs.aboutFlag);
    EXPECT_EQ(f.ctx.prefs.language, "German");  // every field is read again
    EXPECT_TRUE(about.doNotShow()->isChecked());
    about.doNotShow()->setChecked(false);
    EXPECT_FALSE(f.ctx.prefs.aboutFlag);
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(frmAbout, WithoutASettingsFileNothingIsReported) {
    testing::ScreenFixture f;
    frmAbout about(f.ctx);
    EXPECT_TRUE(f.ui.shown.empty());
    EXPECT_FALSE(about.doNotShow()->isChecked());
}

TEST(frmPreload, StartsAtTheGameAndGivesTheTextBox) {
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = f.root.system();
    frmPreload dialog(f.ctx);
    testing::Screenshot(dialog, "frmPreload");
    EXPECT_EQ(dialog.windowTitle(), "Select your PreLoad folder");
    EXPECT_EQ(dialog.folder(), f.root.system());
    dialog.textBox()->setText("/games/RailWorks/Assets/Kuju/RailSimulator/PreLoad");
    EXPECT_EQ(dialog.folder(), "/games/RailWorks/Assets/Kuju/RailSimulator/PreLoad");
}

TEST(frmEmail, PointsToTheErrorLogWhenThereIsOne) {
    testing::ScreenFixture f;
    {
        frmEmail none(f.ctx);
        EXPECT_FALSE(none.findChild<QPushButton*>("cmdCopy")->isEnabled());
    }
    f.root.write("Errors.txt", "entry");
    frmEmail email(f.ctx);
    testing::Screenshot(email, "frmEmail");
    EXPECT_TRUE(email.findChild<QPushButton*>("cmdCopy")->isEnabled());
    EXPECT_EQ(email.findChild<QLineEdit*>("Text1")->text().toStdString(), (f.root.path() / "Errors.txt").string());
}

}  // namespace
}  // namespace ferrolund::screens
