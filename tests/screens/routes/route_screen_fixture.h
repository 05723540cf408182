#pragma once
// A small installation for the route screens: routes, scenarios and tiles written by the
// test itself, and the route index that frmDelRoute reads.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <QTableWidget>

#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/archives/frmListRS.h"
#include "screens/routes/frmDelRoute.h"
#include "tools/serz_convert.h"

namespace ferrolund::testing {

struct RouteScreenFixture : ScreenFixture {
    TempFolder game;

    RouteScreenFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = game.system();
    }

    // IndexFiles\RouteIndex.csv with one line "name,folder,slot" a route, and the closing line.
    void writeIndex(const std::string& rows) const { root.write("IndexFiles/RouteIndex.csv", rows + "\r\n"); }

    void scenario(const std::string& route, const std::string& folder, const std::string& name,
                  const std::string& classAndWorkshop) const {
        game.write("Content/Routes/" + route + "/Scenarios/" + folder + "/ScenarioProperties.xml",
                   "<cScenarioProperties>\r\n<ID><cGUID><DevString d:type=\"cDeltaString\">dev-" + folder +
                       "</DevString></cGUID></ID>\r\n<DisplayName><Localisation-cUserLocalisedString>\r\n<English>" +
                       name + "</English></Localisation-cUserLocalisedString></DisplayName>\r\n" + classAndWorkshop +
                       "\r\n</cScenarioProperties>\r\n");
    }

    // A scenery tile naming the given references (provider, product, blueprint id), made
    // binary by the converter as the simulator ships it.
    bool tile(const std::string& relative, const std::vector<std::array<std::string, 3>>& refs) {
        std::string xml =
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
            "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n";
        int id = 10;
        for (const auto& [provider, product, blueprint] : refs) {
            xml += "<cDynamicEntity d:id=\"" + std::to_string(id++) +
                   "\">\r\n<BlueprintID>\r\n<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n<BlueprintSetID>\r\n"
                   "<iBlueprintLibrary-cBlueprintSetID>\r\n<Provider d:type=\"cDeltaString\">" +
                   provider + "</Provider>\r\n<Product d:type=\"cDeltaString\">" + product +
                   "</Product>\r\n</iBlueprintLibrary-cBlueprintSetID>\r\n</BlueprintSetID>\r\n"
                   "<BlueprintID d:type=\"cDeltaString\">" +
                   blueprint +
                   "</BlueprintID>\r\n</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n</BlueprintID>\r\n"
                   "</cDynamicEntity>\r\n";
        }
        xml += "</Record>\r\n</cRecordSet>\r\n";
        const auto source = root.write("tile-source.xml", xml);
        std::string target = game.system() + "\\" + relative;
        std::replace(target.begin() + static_cast<long>(game.system().size()), target.end(), '/', '\\');
        game.write(relative, "");
        return !tools::SerzConvert(ctx, source.string(), target, tools::SerzDirection::ToBinary);
    }

    void asset(const std::string& relative) const { game.write("Assets/" + relative, "bin"); }

    // A cell's text, "<none>" for an empty cell.
    std::string text(QTableWidget* grid, int row, int column) const {
        const QTableWidgetItem* item = grid->item(row, column);
        return item ? screens::FromQt(item->text()) : std::string("<none>");
    }
    void selectRoute(screens::frmDelRoute& screen, const std::string& folder) const {
        for (int r = 0; r < screen.routes()->rowCount(); ++r)
            if (text(screen.routes(), r, 1) == folder) screen.routes()->selectRow(r);
    }
    // The report grids a screen has opened.
    std::vector<screens::frmListRS*> grids(QWidget& screen) const {
        std::vector<screens::frmListRS*> found;
        for (screens::frmListRS* g : screen.findChildren<screens::frmListRS*>()) found.push_back(g);
        return found;
    }
};

}  // namespace ferrolund::testing
