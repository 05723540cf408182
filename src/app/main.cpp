// Ferrolund, the desktop program.
#include <QApplication>
#include <QStringList>

#include "app/game_discovery.h"
#include "app/startup.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_text.h"
#include "screens/app/qt_ui.h"

int main(int argc, char** argv) {
    using namespace ferrolund;
    QApplication application(argc, argv);
    QApplication::setApplicationName("Ferrolund");

    screens::QtUi ui;
    app::AppContext ctx;
    ctx.appRoot = screens::SystemPathFromQt(QCoreApplication::applicationDirPath());
    ctx.ui = &ui;

    screens::frmEditor window(ctx, ui);
    app::StartOptions options;
    options.commandLine = screens::FromQt(QCoreApplication::arguments().mid(1).join(' '));
    options.discoverGameRoot = [] { return app::DiscoverGameRoot(); };
    window.show();
    app::StartUp(ctx, window, options);
    return QApplication::exec();
}
