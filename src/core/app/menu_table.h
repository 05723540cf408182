#pragma once
// The main menu of the editor window: the program's index of commands, kept as data.

#include <string_view>
#include <vector>

namespace ferrolund::app {

struct MenuItem {
    std::string_view name;      // mnuOpenRS
    std::string_view parent;    // the menu it stands in; empty for a menu of the bar
    std::string_view caption;   // the English default; "-" is a separator
    std::string_view shortcut;  // "Ctrl+O", or empty
    int langIndex;              // the language-table text that replaces the caption, 0 for none
    bool hidden;                // present but not visible at start
    bool disabled;              // present but greyed at start
    std::string_view handler;   // the command it runs; empty: the item does nothing
};

const std::vector<MenuItem>& MainMenu();
// The item of that name, or nullptr.
const MenuItem* FindMenuItem(std::string_view name);

}  // namespace ferrolund::app
