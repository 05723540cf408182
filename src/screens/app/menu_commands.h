#pragma once
// How the areas of the program put their commands into the main menu: each area has one
// registration function that adds a command per menu item it serves. An item whose
// command nobody adds stays greyed.

#include <functional>
#include <map>
#include <string>

#include "app/app_context.h"

namespace ferrolund::screens {

class frmEditor;
class QtUi;

struct MenuCommands {
    app::AppContext& ctx;
    frmEditor& window;
    std::map<std::string, std::function<void()>>& commands;

    // `item` is the menu item's name, such as "mnuFind".
    void add(const std::string& item, std::function<void()> command) { commands[item] = std::move(command); }
};

// The commands of the Options and Help menus and of Exit.
void RegisterOptionCommands(MenuCommands& menu);
// The Files menu's document commands and the panes' pop-up.
void RegisterDocumentCommands(MenuCommands& menu);
// Every area's commands, in one place.
void RegisterAllCommands(MenuCommands& menu);

}  // namespace ferrolund::screens
