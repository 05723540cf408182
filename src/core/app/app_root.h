#pragma once
// Where the program keeps its own folder (AppRoot): its settings, error log, scratch files,
// indexes and reports, beside the shipped data (Language/, Templates/, ...).
//
// Installed, with the shipped data at <bin>/ShippedDataFromProgram(), the executables'
// folder is not the user's to write into: AppRoot is then $XDG_DATA_HOME/ferrolund
// (~/.local/share/ferrolund by default), seeded from the installed data. Otherwise the
// executables' folder is AppRoot: the build tree's output folder, where the build puts the
// shipped data beside them and marks the folder with kBuildTreeMarker (which wins over an
// install layout around it), or any folder a user copied the programs into.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ferrolund::app {

// The file the build leaves beside the executables in its own output folder.
inline constexpr const char* kBuildTreeMarker = "FerrolundBuildTree.txt";
// What AppRoot's seeding remembers of the shipped files it copied.
inline constexpr const char* kSeedManifest = "ShippedFiles.txt";

// The part of the environment the decision reads.
struct UserFolders {
    std::optional<std::string> xdgDataHome;  // $XDG_DATA_HOME
    std::optional<std::string> home;         // $HOME, or the password entry's home
};
// Takes them from the process's environment.
UserFolders UserFoldersFromEnvironment();

struct AppRootChoice {
    std::filesystem::path folder;  // AppRoot; empty when none could be named (see problem)
    // The installed shipped data to seed AppRoot from; empty when not installed.
    std::filesystem::path shippedData;
    std::string problem;
};
// Where the installed shipped data is, relative to the installed executables' folder
// ("../share/ferrolund" for the usual install folders).
std::filesystem::path ShippedDataFromProgram();

// Decides AppRoot for executables in `programFolder`.
AppRootChoice ChooseAppRoot(const std::filesystem::path& programFolder, const UserFolders& user);

// Copies the shipped data into AppRoot. A file that is missing there is copied; a file
// that is still as it was last copied is replaced by a newer shipped version; a file the
// user changed, or made, is never overwritten. What was copied is remembered in
// kSeedManifest. Gives one line per problem; the shipped folder is only read.
std::vector<std::string> SeedAppRoot(const std::filesystem::path& shippedData, const std::filesystem::path& appRoot);

// The folder of the running executable.
std::filesystem::path ProgramFolder();

struct PreparedAppRoot {
    std::string appRoot;  // a system string, as AppContext::appRoot takes it
    std::vector<std::string> problems;
};
// The three programs' start: chooses AppRoot for this executable and this user, makes it
// and seeds it when installed.
PreparedAppRoot PrepareAppRoot();

}  // namespace ferrolund::app
