// The main window's menu: built from the command table, each item wired to its command
// where this build has one.

#include <QAction>
#include <algorithm>
#include <QMenu>
#include <QMenuBar>

#include "app/game_discovery.h"
#include "app/maintenance.h"
#include "routes/route_indexer.h"
#include "app/menu_table.h"
#include "app/startup.h"
#include "screens/app/dlgLang.h"
#include "screens/app/dlgOptions.h"
#include "screens/app/frmAbout.h"
#include "screens/app/frmEditor.h"
#include "screens/app/frmEmail.h"
#include "screens/app/frmPreload.h"
#include "screens/app/frmSDB.h"
#include "screens/app/menu_commands.h"
#include "screens/app/qt_text.h"
#include "screens/app/qt_ui.h"

namespace ferrolund::screens {

void frmEditor::buildMenu() {
    for (const auto& item : app::MainMenu()) {
        const std::string name(item.name);
        const QString caption = ToQt(std::string(item.caption));
        if (item.parent.empty()) {
            auto* menu = new QMenu(caption, this);
            menu->setObjectName(QString::fromStdString(name));
            menus_[name] = menu;
            actions_[name] = menu->menuAction();
            // The editor's pop-up never stands in the bar.
            menu->menuAction()->setVisible(!item.hidden);
            if (!item.hidden) menuBar()->addMenu(menu);
            continue;
        }
        QMenu* parent = menus_.at(std::string(item.parent));
        const bool isSubmenu = std::any_of(app::MainMenu().begin(), app::MainMenu().end(),
                                           [&](const app::MenuItem& other) { return other.parent == item.name; });
        QAction* action = nullptr;
        if (caption == "-") {
            action = parent->addSeparator();
        } else if (isSubmenu) {
            QMenu* sub = parent->addMenu(caption);
            sub->setObjectName(QString::fromStdString(name));
            menus_[name] = sub;
            action = sub->menuAction();
        } else {
            action = parent->addAction(caption);
            if (!item.shortcut.empty()) action->setShortcut(QKeySequence(QString::fromLatin1(item.shortcut.data(),
                                                                                             item.shortcut.size())));
        }
        action->setObjectName(QString::fromStdString(name));
        action->setVisible(!item.hidden);
        actions_[name] = action;

        if (item.handler.empty()) {
            action->setEnabled(!item.disabled);
            continue;
        }
        // A command whose screen is not part of this build stays in the menu, greyed.
        const bool available = commands_.count(name) > 0;
        action->setEnabled(available && !item.disabled);
        if (available) connect(action, &QAction::triggered, this, [this, name] { runMenuCommand(name); });
    }
    for (const char* name : {"mnuDont", "mnuWarn", "mnuNewVer"}) actions_.at(name)->setCheckable(true);
}

void frmEditor::registerCommands() {
    MenuCommands menu{ctx_, *this, commands_};
    RegisterAllCommands(menu);
}

void RegisterOptionCommands(MenuCommands& menu) {
    using app::ToolPath;
    app::AppContext& ctx = menu.ctx;
    frmEditor& window = menu.window;
    menu.add("mnuExit", [&window] { window.close(); });
    menu.add("mnuDont", [&] { app::ToggleNoAskOnExit(ctx, window); });
    menu.add("mnuWarn", [&] { app::ToggleWarnIfNotSaved(ctx, window); });
    menu.add("mnuEdMax", [&] { app::StartMaximised(ctx, window); });
    menu.add("mnuLang", [&] {
        dlgLang dialog(ctx, &window);
        dialog.exec();
        app::SelectLanguage(ctx, window, dialog.chosenFile());
    });
    menu.add("mnuAcro", [&ctx] { app::PickToolPath(ctx, ToolPath::PdfReader); });
    menu.add("mnuIRF", [&ctx] { app::PickToolPath(ctx, ToolPath::GraphicsEditor); });
    menu.add("mnuViewer", [&ctx] { app::PickToolPath(ctx, ToolPath::Viewer); });
    menu.add("mnuQDPreload", [&] {
        frmPreload dialog(ctx, &window);
        const bool ok = dialog.exec() == QDialog::Accepted;
        app::SetPreLoadFolder(ctx, ok ? std::optional<std::string>(dialog.folder()) : std::nullopt);
    });
    menu.add("mnuRWPath", [&] { app::ChooseRailWorksPath(ctx, window, [] { return app::DiscoverGameRoot(); }); });
    menu.add("mnuPaths", [&] {
        dlgOptions dialog(ctx, &window);
        dialog.exec();
    });
    menu.add("mnuContents", [&ctx] { app::OpenHelpContents(ctx); });
    menu.add("mnuAbout", [&] {
        ctx.prefs.aboutFlag = false;
        frmAbout about(ctx, &window);
        about.exec();
    });
    menu.add("mnuEmail", [&] {
        frmEmail email(ctx, &window);
        email.exec();
    });
    menu.add("mnuCTF", [&ctx] { app::ClearTempFiles(ctx); });
    menu.add("mnuReadWrite", [&ctx] { app::MakeReadWrite(ctx, ctx.gameRoot()); });
    menu.add("mnuSelRW", [&ctx] { app::MakeSelectedFolderReadWrite(ctx); });
    menu.add("mnuBackup", [&ctx] { app::FullBackup(ctx); });
    menu.add("mnuIRP", [&ctx] { routes::IndexRouteProperties(ctx); });
    menu.add("mnuSDB", [&] {
        frmSDB dialog(ctx, [&] {
            ctx.commandFile = ctx.gameRoot() + "\\Content\\SDBCache.bin";
            window.document().openFromList = true;
            editor::OpenGameFile(ctx, window.document(), window);
        }, &window);
        dialog.exec();
    });
    // Both programs are Windows programs; the simulator's folder needs neither here.
    menu.add("mnuSP", [&ctx] {
        ctx.ui->message("SuperPicture2.ocx is a Windows control. Ferrolund shows pictures without it here, so "
                        "there is nothing to register.",
                        base::Icon::Information);
    });
    menu.add("mnuRSBT", [&ctx] {
        ctx.ui->message("RSBinTool is a Windows program and cannot be run here:\n" + ctx.prefs.rsBinToolPath,
                        base::Icon::Exclamation);
    });
}

}  // namespace ferrolund::screens
