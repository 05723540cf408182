// The one list of the areas whose commands stand in the main menu.
#include "screens/app/menu_commands.h"

namespace ferrolund::screens {

void RegisterAllCommands(MenuCommands& menu) {
    RegisterOptionCommands(menu);
    RegisterDocumentCommands(menu);
}

}  // namespace ferrolund::screens
