#pragma once
// The logic of the two small folder screens of the archives: frmFolder6, which empties the
// simulator's Temp folder, and frmFolder2, which picks (and makes) the folder that
// unpacked files go to.

#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::archives {

// GameRoot\Temp, or empty when no simulator folder is known.
std::string GameTempFolder(const app::AppContext& ctx);

// "Delete Selected": the files one by one; a file that cannot be deleted is reported and
// the others are still deleted. Only files below `folder` are touched. Gives the count
// deleted.
long DeleteSelectedFiles(app::AppContext& ctx, const std::string& folder, const std::vector<std::string>& files);
// "Delete All": the folder with all it holds, then the folder made again. Gives false when
// there was no folder to clear or it could not be made again.
bool ClearFolder(app::AppContext& ctx, const std::string& folder);

// frmFolder2's Confirm: the chosen folder joined with the new name (no name: the folder
// itself). An existing folder is used only when the user says Yes to "A folder with that
// name already exists. Do you wish to proceed?"; a missing one is made. Nothing when the
// user said No or the folder could not be made.
std::optional<std::string> ConfirmUnpackFolder(app::AppContext& ctx, const std::string& folder,
                                               const std::string& newName);

}  // namespace ferrolund::archives
