#pragma once
// The asset list's screen over a game folder with one coach, for the tests of its commands.

#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <string>

#include "core/assets/stock_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/frmAssets.h"
#include "screens/services/frmReport.h"
#include "serz/codec.h"

namespace ferrolund::screens {

using assets::testing::Child;

struct CommandsFixture : testing::ScreenFixture {
    testing::TempFolder game;
    CommandsFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = game.system();
        put("Assets/Müller/Straßenbahn/RailVehicles/Coach/Wagen.bin",
            assets::testing::CoachXml("Wagen", {Child{"Exhaust", assets::testing::Tilted()},
                                                Child{"Lamp", assets::testing::Upright("0", "1", "2")}},
                                      "Müller\\Straßenbahn\\RailVehicles\\Coach\\wagen"));
    }
    void put(const std::string& relative, const std::string& xml) {
        std::string binary;
        ASSERT_FALSE(serz::XmlToBinary(xml, binary));
        game.write(relative, binary);
    }
    std::string reportText(QWidget& screen) {
        const auto reports = screen.findChildren<frmReport*>();
        return reports.empty() ? std::string() : FromQt(reports.back()->pane()->toPlainText());
    }
};

// The screen with its list filled and the one coach selected.
struct Listed {
    frmAssets screen;
    explicit Listed(CommandsFixture& f) : screen(f.ctx) {
        screen.button("cmdAdd")->click();
        screen.grid()->selectRows({0});
    }
};

}  // namespace ferrolund::screens
