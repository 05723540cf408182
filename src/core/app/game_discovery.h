#pragma once
// Finding the simulator's folder when the settings name none: Steam's library list.

#include <filesystem>
#include <string>
#include <vector>

namespace ferrolund::app {

// The library folders named in a libraryfolders.vdf text ("path" entries).
std::vector<std::string> ParseSteamLibraryPaths(const std::string& vdfText);

// The first steamapps/common/RailWorks that exists among the Steam roots under `home`
// and the libraries their lists name, as a system string; empty when there is none.
std::string DiscoverGameRoot(const std::filesystem::path& home);

// For the user running the program: the folder named by $FERROLUND_GAME_ROOT when that is
// set (it stands where the simulator's own platform keeps the install path), otherwise the
// search above under $HOME.
std::string DiscoverGameRoot();

}  // namespace ferrolund::app
