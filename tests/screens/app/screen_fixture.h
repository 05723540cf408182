#pragma once
// A program folder with the shipped language files, a context and a scripted Ui for
// screen tests; screenshots go to $FERROLUND_SCREENSHOT_DIR when it is set.

#include <QWidget>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::testing {

struct ScreenFixture {
    TempFolder root;
    ScriptedUi ui;
    app::AppContext ctx;

    ScreenFixture() {
        const std::filesystem::path data = std::filesystem::path(FERROLUND_SOURCE_DIR) / "data" / "Language";
        std::filesystem::create_directories(root.path() / "Language");
        for (const auto& entry : std::filesystem::directory_iterator(data)) {
            std::filesystem::copy_file(entry.path(), root.path() / "Language" / entry.path().filename());
        }
        ctx.appRoot = root.system();
        ctx.ui = &ui;
        ctx.languageFile = "Lang_English.txt";
    }
};

// Saves a picture of the widget as <name>.png in the screenshot folder, if one is set.
inline void Screenshot(QWidget& widget, const std::string& name) {
    const char* dir = std::getenv("FERROLUND_SCREENSHOT_DIR");
    if (!dir) return;
    widget.grab().save(QString::fromStdString(std::string(dir) + "/" + name + ".png"));
}

}  // namespace ferrolund::testing
