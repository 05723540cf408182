// The Graphics Tools of the main window and the editor's "Show Image".
#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/textures/frmGFX2.h"
#include "textures/texture_commands.h"

namespace ferrolund::screens {

namespace {

textures::ProgramStarter DesktopStarter() {
    textures::ProgramStarter start;
    start.program = [](const std::string& program, const std::string& file) {
        return QProcess::startDetached(QString::fromStdString(program), {QString::fromStdString(file)});
    };
    start.desktop = [](const std::string& file) {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(file)));
    };
    return start;
}

// The viewer: one window, brought forward when it is open already.
frmGFX2& Viewer(app::AppContext& ctx, frmEditor& window) {
    frmGFX2* open = window.findChild<frmGFX2*>("frmGFX2", Qt::FindDirectChildrenOnly);
    if (!open) open = new frmGFX2(ctx, &window);
    open->show();
    open->raise();
    open->activateWindow();
    return *open;
}

}  // namespace

void RegisterTextureCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    frmEditor& window = menu.window;
    menu.add("mnuOpenTex", [&] { textures::OpenTexture(ctx, window.document(), window); });
    menu.add("mnuDDS", [&] { textures::ConvertOpenTexture(ctx, window); });
    menu.add("mnuDDStoKrs", [&] { textures::ConvertDdsToTexture(ctx, window); });
    menu.add("mnuView", [&] { textures::OpenDdsIn(ctx, window, textures::DdsProgram::Viewer, DesktopStarter()); });
    menu.add("mnuEditDDS",
             [&] { textures::OpenDdsIn(ctx, window, textures::DdsProgram::PaintProgram, DesktopStarter()); });
    menu.add("mnuEmpt", [&] { textures::EmptyTempDds(ctx); });
    menu.add("mnuTgpcdx", [&] { Viewer(ctx, window); });
    // "Show Image": the editor's texture in the viewer.
    menu.add("Command7", [&] {
        const std::string name = window.documentName(editor::Pane::Main);
        if (!name.empty()) Viewer(ctx, window).showFile(name);
    });
}

}  // namespace ferrolund::screens
