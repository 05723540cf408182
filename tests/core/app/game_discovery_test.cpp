#include "app/game_discovery.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_folder.h"

namespace ferrolund::app {
namespace {

namespace fs = std::filesystem;

TEST(GameDiscovery, LibraryListPaths) {
    const std::string vdf = R"("libraryfolders"
{
	"0"
	{
		"path"		"/home/u/.local/share/Steam"
		"apps" { "24010"		"123" }
	}
	"1"
	{
		"PATH"		"D:\\SteamLibrary"
	}
})";
    EXPECT_EQ(ParseSteamLibraryPaths(vdf), (std::vector<std::string>{"/home/u/.local/share/Steam", "D:\\SteamLibrary"}));
    EXPECT_TRUE(ParseSteamLibraryPaths("").empty());
    EXPECT_TRUE(ParseSteamLibraryPaths("\"path\"").empty());
}

TEST(GameDiscovery, FindsTheGameInASecondLibrary) {
    testing::TempFolder home;
    const fs::path library = home.path() / "games lib";
    fs::create_directories(library / "steamapps/common/RailWorks/Assets");
    home.write(".local/share/Steam/steamapps/libraryfolders.vdf",
               "\"libraryfolders\" { \"0\" { \"path\" \"" + (home.path() / ".local/share/Steam").string() +
                   "\" } \"1\" { \"path\" \"" + library.string() + "\" } }");
    EXPECT_EQ(DiscoverGameRoot(home.path()), (library / "steamapps/common/RailWorks").string());
}

TEST(GameDiscovery, FindsTheGameInTheSteamRootWhateverItsCase) {
    testing::TempFolder home;
    fs::create_directories(home.path() / ".steam/steam/steamapps/common/railworks");
    EXPECT_EQ(DiscoverGameRoot(home.path()), (home.path() / ".steam/steam/steamapps/common/railworks").string());
}

TEST(GameDiscovery, NothingInstalledGivesNothing) {
    testing::TempFolder home;
    home.write(".steam/steam/steamapps/libraryfolders.vdf", "\"path\" \"/no/such/library\"");
    EXPECT_EQ(DiscoverGameRoot(home.path()), "");
}

TEST(GameDiscovery, TheEnvironmentNamesTheFolderFirst) {
    const char* old = std::getenv("FERROLUND_GAME_ROOT");
    const std::string saved = old ? old : "";
    setenv("FERROLUND_GAME_ROOT", "/sample/R\xC3\xA4ilWorks", 1);
    EXPECT_EQ(DiscoverGameRoot(), "/sample/R\xC3\xA4ilWorks");  // held as the environment gives it
    if (old) {
        setenv("FERROLUND_GAME_ROOT", saved.c_str(), 1);
    } else {
        unsetenv("FERROLUND_GAME_ROOT");
    }
}

}  // namespace
}  // namespace ferrolund::app
