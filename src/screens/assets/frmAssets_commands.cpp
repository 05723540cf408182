// frmAssets: the commands of the Edit and Check Assets menus on the selected rows.
#include "screens/assets/frmAssets.h"

namespace ferrolund::screens {

std::function<void()> frmAssets::editCommand(const std::string& name) {
    (void)name;
    return {};
}

std::function<void()> frmAssets::checkCommand(const std::string& name) {
    (void)name;
    return {};
}

}  // namespace ferrolund::screens
