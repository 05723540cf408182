// Ferrolund, the desktop program.
#include <QApplication>
#include <QStringList>

#include "app/app_root.h"
#include "app/game_discovery.h"
#include "app/startup.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_text.h"
#include "screens/app/qt_ui.h"

int main(int argc, char** argv) {
    using namespace ferrolund;
    QApplication application(argc, argv);
    QApplication::setApplicationName("Ferrolund");
    // Ties the windows to ferrolund.desktop (its icon and name) where the desktop asks.
    QGuiApplication::setDesktopFileName("ferrolund");

    screens::QtUi ui;
    const app::PreparedAppRoot root = app::PrepareAppRoot();
    for (const std::string& problem : root.problems) ui.message(problem, base::Icon::Exclamation, {});
    app::AppContext ctx;
    ctx.appRoot = root.appRoot;
    ctx.ui = &ui;

    screens::frmEditor window(ctx, ui);
    app::StartOptions options;
    options.commandLine = screens::FromQt(QCoreApplication::arguments().mid(1).join(' '));
    options.discoverGameRoot = [] { return app::DiscoverGameRoot(); };
    window.show();
    app::StartUp(ctx, window, options);
    return QApplication::exec();
}
