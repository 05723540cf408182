#include <gtest/gtest.h>

#include <filesystem>

#include "core/sample/sample_fixture.h"
#include "routes/route_indexer.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;

struct PackedGame {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    PackedGame() {
        const std::string packed = "d7e2b6a0-51c9-4f8d-a6e3-0b4c8f2917de";
        fs::create_directories(root.path() / "game/Content/Routes" / packed);
        fs::copy_file(sample::SampleRoot() / "Content/Routes" / packed / "MainContent.ap",
                      root.path() / "game/Content/Routes" / packed / "MainContent.ap");
        fs::create_directories(root.path() / "game/Content/Routes/empty");
        fs::create_directories(root.path() / "app");
        fs::copy(fs::path(FERROLUND_BIN_DIR) / "Templates", root.path() / "app/Templates", fs::copy_options::recursive);
        ctx.appRoot = root.system() + "/app";
        ctx.prefs.gameRoot = root.system() + "/game";
        ctx.ui = &ui;
    }
};

TEST(getRouteProperties, ExtractsThePackedPropertiesAndIndexesFromTheFirstPlace) {
    PackedGame game;
    game.ui.answers = {base::Answer::Ok};
    getRouteProperties(game.ctx);
    EXPECT_TRUE(fs::exists(game.root.path() / "game/Content/Routes/d7e2b6a0-51c9-4f8d-a6e3-0b4c8f2917de/RouteProperties.xml"));
    ASSERT_EQ(game.ctx.routeIndex.count(), 1);
    EXPECT_EQ(game.ctx.routeIndex.routeFolder[0], "d7e2b6a0-51c9-4f8d-a6e3-0b4c8f2917de");
    EXPECT_EQ(game.ui.texts().back(),
              "All RouteProperties.xml files have been extracted and\nRouteIndex.csv written to 'IndexFiles' folder");
    EXPECT_FALSE(game.ctx.prefs.routesIndexed);
}

TEST(getRouteProperties, CancelPromisesTheIndexButLeaves) {
    PackedGame game;
    game.ui.answers = {base::Answer::Cancel};
    getRouteProperties(game.ctx);
    EXPECT_EQ(game.ui.texts().back(),
              "An Index of all RouteProperties.xml files will now\nbe compiled and written to IndexFiles\\RouteIndex.csv");
    EXPECT_FALSE(fs::exists(game.root.path() / "app/IndexFiles/RouteIndex.csv"));
    EXPECT_FALSE(fs::exists(game.root.path() / "game/Content/Routes/d7e2b6a0-51c9-4f8d-a6e3-0b4c8f2917de/RouteProperties.xml"));
}

}  // namespace
}  // namespace ferrolund::routes
