// Names with accents on the route browser: route names from the index and asset paths
// from the tiles read as the person wrote them, whether stored in UTF-8 or Windows-1252.
#include <QAbstractItemModel>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <gtest/gtest.h>

#include "route_screen_fixture.h"

namespace ferrolund::screens {
namespace {

struct AccentedRoutes : testing::RouteScreenFixture {
    AccentedRoutes() {
        // The index as the route indexer writes it (UTF-8 from RouteProperties.xml), and a
        // line written by hand in Windows-1252.
        writeIndex("Br\xC3\xBC" "ckenau \xC3\xBC" "ber H\xC3\xB6henweg,route-de,1\r\n"
                   "\xC4\x8C" "esk\xC3\xA9 dr\xC3\xA1hy,route-cz,2\r\n"
                   "Ligne du Caf\xE9,route-fr,3");
    }
};

TEST(AccentedNames, RouteNamesReadAsWritten) {
    AccentedRoutes f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    QStringList names;
    for (int r = 0; r < screen.routes()->rowCount(); ++r) names << screen.routes()->item(r, 0)->text();
    names.sort();
    testing::Screenshot(screen, "frmDelRoute_accented_routes");
    EXPECT_EQ(names, (QStringList{QString::fromUtf8("Br\xC3\xBC" "ckenau \xC3\xBC" "ber H\xC3\xB6henweg"),
                                  QString::fromUtf8("Ligne du Caf\xC3\xA9"),
                                  QString::fromUtf8("\xC4\x8C" "esk\xC3\xA9 dr\xC3\xA1hy")}));
}

TEST(AccentedNames, TheCheckFindsAccentedAssetsAndShowsTheMissingOnesAsWritten) {
    AccentedRoutes f;
    // Installed under their names in UTF-8, as on a Linux disk.
    f.asset("\xC4\x8C" "eskeDrahy/N\xC3\xA1" "dra\xC5\xBE\xC3\xAD/Budova.bin");
    f.asset("M\xC3\xBCller/Stra\xC3\x9F" "e/Lampe.bin");
    ASSERT_TRUE(f.tile("Content/Routes/route-cz/Scenery/+000000+000000.bin",
                       {{"\xC4\x8D" "ESKEDRAHY", "N\xC3\x81" "DRA\xC5\xBD\xC3\x8D", "Budova.xml"},   // another case
                        {"M\xC3\xBCller", "Stra\xC3\x9F" "e", "Lampe.xml"},
                        {"Caf\xC3\xA9Rail", "Gare", "Quai\xEF\xBF\xA9.xml"}}));                   // not installed
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, "route-cz");
    screen.listScenarios();
    f.ui.answers = {base::Answer::No, base::Answer::No};
    screen.button("Command4")->click();

    const auto shown = f.grids(screen);
    ASSERT_FALSE(shown.empty());
    const QAbstractItemModel* missing = shown[0]->list()->model();
    ASSERT_EQ(missing->rowCount(), 1);
    const QString cell = missing->data(missing->index(0, 0)).toString();
    testing::Screenshot(*shown[0], "frmListRS_accented_missing");
    EXPECT_TRUE(cell.endsWith(QString::fromUtf8("\\Assets\\Caf\xC3\xA9Rail\\Gare\\Quai\xEF\xBF\xA9.bin"))) << cell.toStdString();
}

}  // namespace
}  // namespace ferrolund::screens
