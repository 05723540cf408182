#pragma once
// The "Check Assets" commands as a screen runs them: the rows it has selected go to the
// core, and what comes back is shown on the report screen.

#include <vector>

#include "app/app_context.h"
#include "assets/asset_filter.h"
#include "assets/asset_row.h"
#include "assets/file_check.h"

class QWidget;

namespace ferrolund::screens {

// "Check Loco for missing files", "Show Files Used by Locos", "Show Files Used by
// Wagons", "Show files used by Asset", "Show files used by Lofts".
void RunRowCheck(app::AppContext& ctx, QWidget* parent, const std::vector<assets::AssetRow>& rows,
                 assets::RowReport report);
// "Where is it used?"
void RunWhereUsed(app::AppContext& ctx, QWidget* parent, const std::vector<assets::AssetRow>& rows);
// "Process Missing Assets File", with the list's filters; the report is shown for the
// person to save as Reports\MissingFiles.txt. Gives the rows found, for the list.
std::vector<assets::AssetRow> RunProcessMissingAssets(app::AppContext& ctx, QWidget* parent,
                                                      const assets::AssetFilter& filter);
// "Add LocoInformation", pictures written by Qt's image writer.
void RunAddLocoInformation(app::AppContext& ctx, const std::vector<assets::AssetRow>& rows);

}  // namespace ferrolund::screens
