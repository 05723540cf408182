// The main window's menu: built from the command table, each item wired to its command
// where this build has one.

#include <QAction>
#include <algorithm>
#include <QMenu>
#include <QMenuBar>

#include "app/game_discovery.h"
#include "app/menu_table.h"
#include "app/startup.h"
#include "screens/app/dlgLang.h"
#include "screens/app/dlgOptions.h"
#include "screens/app/frmAbout.h"
#include "screens/app/frmEditor.h"
#include "screens/app/frmEmail.h"
#include "screens/app/frmPreload.h"
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
    using app::ToolPath;
    commands_["mnuExit"] = [this] { close(); };
    commands_["mnuDont"] = [this] { app::ToggleNoAskOnExit(ctx_, *this); };
    commands_["mnuWarn"] = [this] { app::ToggleWarnIfNotSaved(ctx_, *this); };
    commands_["mnuEdMax"] = [this] { app::StartMaximised(ctx_, *this); };
    commands_["mnuLang"] = [this] {
        dlgLang dialog(ctx_, this);
        dialog.exec();
        app::SelectLanguage(ctx_, *this, dialog.chosenFile());
    };
    commands_["mnuAcro"] = [this] { app::PickToolPath(ctx_, ToolPath::PdfReader); };
    commands_["mnuIRF"] = [this] { app::PickToolPath(ctx_, ToolPath::GraphicsEditor); };
    commands_["mnuViewer"] = [this] { app::PickToolPath(ctx_, ToolPath::Viewer); };
    commands_["mnuQDPreload"] = [this] {
        frmPreload dialog(ctx_, this);
        const bool ok = dialog.exec() == QDialog::Accepted;
        app::SetPreLoadFolder(ctx_, ok ? std::optional<std::string>(dialog.folder()) : std::nullopt);
    };
    commands_["mnuRWPath"] = [this] {
        app::ChooseRailWorksPath(ctx_, *this, [] { return app::DiscoverGameRoot(); });
    };
    commands_["mnuPaths"] = [this] {
        dlgOptions dialog(ctx_, this);
        dialog.exec();
    };
    commands_["mnuContents"] = [this] { app::OpenHelpContents(ctx_); };
    commands_["mnuAbout"] = [this] {
        ctx_.prefs.aboutFlag = false;
        frmAbout about(ctx_, this);
        about.exec();
    };
    commands_["mnuEmail"] = [this] {
        frmEmail email(ctx_, this);
        email.exec();
    };
}

}  // namespace ferrolund::screens
