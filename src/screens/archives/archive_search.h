#pragma once
// The .ap searches that end on the report grid: the main menu's find commands and
// frmNewAP's "Find .ap files". Archives over 2 gigabytes are named afterwards on the
// report screen.

#include <QWidget>
#include <string>

#include "app/app_context.h"

namespace ferrolund::screens {

// Every file below `folder` whose name matches `mask`, listed on frmListRS in its .ap mode.
void FindArchivesCommand(app::AppContext& ctx, QWidget* parent, const std::string& folder, const std::string& mask);

}  // namespace ferrolund::screens
