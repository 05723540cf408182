#include "assets/missing_assets.h"

#include <gtest/gtest.h>

#include "asset_check_fixture.h"
#include "tools/names.h"

namespace ferrolund::assets::checks {
namespace {

std::string Named(const std::string& name) {
    return "<Name>\r\n<Localisation-cUserLocalisedString>\r\n" + Text("English", name) +
           "</Localisation-cUserLocalisedString>\r\n</Name>\r\n";
}

struct Workflow : Installation {
    Workflow() {
        binary("K/P/Wagons/Hopper.bin", "<Blueprint>\r\n<cWagonBlueprint>\r\n" + Text("GeometryID", "K\\P\\Wagons\\hopper") +
                                            Named("Hopper") + "</cWagonBlueprint>\r\n</Blueprint>\r\n");
        binary("K/P/Wagons/Tank.bin", "<Blueprint>\r\n<cWagonBlueprint>\r\n" + Text("GeometryID", "K\\P\\Wagons\\tank") +
                                          Named("Tank") + "</cWagonBlueprint>\r\n</Blueprint>\r\n");
        // Without a display name: the list leaves it out.
        binary("K/P/Wagons/Nameless.bin", "<Blueprint>\r\n<cWagonBlueprint>\r\n</cWagonBlueprint>\r\n</Blueprint>\r\n");
        binary("K/P/Wagons/Other.bin", "<Blueprint>\r\n<cWagonBlueprint>\r\n</cWagonBlueprint>\r\n</Blueprint>\r\n");
        binary("K/P/Wagons/hopper.GeoPcDx", "<TextureByName>\r\n" + Text("e", "[00]Textures\\livery") + "</TextureByName>\r\n");
        binary("K/P/Wagons/tank.GeoPcDx", "<TextureByName>\r\n" + Text("e", "Textures\\T\xC3\xA9l\xC3\xA9") + "</TextureByName>\r\n");
        // The texture with its seasonal siblings, in the case the disk happens to hold.
        root.write("game/Assets/K/P/Wagons/Textures/livery.TgPcDx", "summer");
        root.write("game/Assets/K/P/Wagons/Textures/livery_AU.TgPcDx", "autumn");
        root.write("game/Assets/K/P/Wagons/Textures/livery_sp.tgpcdx", "spring");
        root.write("game/Assets/K/P/Wagons/Textures/livery_Wi.TgPcDx", "winter");
        root.write("game/Assets/K/P/Wagons/Textures/T\xC3\xA9l\xC3\xA9.TgPcDx", "tele");
    }
    void missingAssets(const std::string& text) { root.write("app/Reports/MissingAssets.csv", text); }
    void missingFiles(const std::string& text) { root.write("app/Reports/MissingFiles.txt", text); }
    bool packed(const std::string& relative) const {
        return fs::is_regular_file(root.path() / "app/NewPackage/Assets" / relative);
    }
};

TEST(MissingAssets, WithoutItsFilesTheCommandsSayWhere) {
    Workflow w;
    EXPECT_TRUE(ProcessMissingAssets(w.ctx).noFile);
    EXPECT_TRUE(PackageMissingAssets(w.ctx).noFile);
    EXPECT_EQ(w.ui.texts(), (std::vector<std::string>{
                                "Your missing assets file could not be found, must be saved as\nReports\\MissingAssets.csv",
                                "Your missing files file could not be found, must be saved as\nReports\\MissingFiles.txt"}));
    EXPECT_FALSE(fs::exists(w.root.path() / "app/NewPackage"));
}

TEST(MissingAssets, EachLineScansItsFolderForItsFileAlone) {
    Workflow w;
    // Two lines naming the same folder: two scans, one hit each; blank lines skipped.
    w.missingAssets(w.asset("K\\P\\Wagons\\Hopper.bin") + "\r\n\r\n   \r\n" + w.asset("K\\P\\WAGONS\\tank.BIN") + "\r\n");
    std::vector<std::string> scanned;
    const MissingAssetsOutcome outcome =
        ProcessMissingAssets(w.ctx, [&](app::AppContext& ctx, const MissingAssetJob& job) {
            scanned.push_back(job.fileName);
            EXPECT_EQ(tools::NameKey(job.folder), tools::NameKey(w.asset("K\\P\\Wagons")));
            return ListScan()(ctx, job);
        });
    EXPECT_EQ(scanned, (std::vector<std::string>{"Hopper.bin", "tank.BIN"}));
    ASSERT_EQ(outcome.rows.size(), 2u);
    EXPECT_EQ(outcome.rows[0].name, "Hopper");
    EXPECT_EQ(outcome.rows[0].index, "1");
    EXPECT_EQ(tools::NameKey(outcome.rows[1].path), tools::NameKey("Wagons\\Tank.bin"));
    EXPECT_EQ(outcome.rows[1].index, "1");  // each line's scan numbers anew
    const std::vector<std::string> lines = Lines(outcome.report);
    EXPECT_NE(std::find(lines.begin(), lines.end(), w.asset("K\\P\\Wagons\\Textures\\livery.TgPcDx")), lines.end());
    EXPECT_EQ(lines.back(), "+++");
}

TEST(MissingAssets, PackingCopiesFilesAndSiblingsUpToTheEndMark) {
    Workflow w;
    const auto before = Snapshot(w.root.path() / "game");
    w.missingFiles(w.asset("K\\P\\Wagons\\hopper.GeoPcDx") + "\r\n" + w.asset("K\\P\\Wagons\\Textures\\livery.TgPcDx") +
                   "\r\n\r\nC:\\Elsewhere\\file.bin\r\n" + w.asset("K\\P\\Wagons\\Textures\\gone.TgPcDx") + " Called by x\r\n" +
                   w.asset("K\\P\\Wagons\\Textures\\T\xC3\xA9l\xC3\xA9.TgPcDx") + "\r\n+++\r\n" +
                   w.asset("K\\P\\Wagons\\Tank.bin") + "\r\n");
    const PackageOutcome outcome = PackageMissingAssets(w.ctx);
    struct Case { const char* file; bool packed; };
    const Case cases[] = {
        {"K/P/Wagons/hopper.GeoPcDx", true},
        {"K/P/Wagons/Textures/livery.TgPcDx", true},
        {"K/P/Wagons/Textures/livery_AU.TgPcDx", true},  // siblings the list never named
        {"K/P/Wagons/Textures/livery_sp.tgpcdx", true},
        {"K/P/Wagons/Textures/livery_Wi.TgPcDx", true},
        {"K/P/Wagons/Textures/T\xC3\xA9l\xC3\xA9.TgPcDx", true},
        {"K/P/Wagons/Tank.bin", false},  // behind "+++"
    };
    for (const Case& c : cases) EXPECT_EQ(w.packed(c.file), c.packed) << c.file;
    EXPECT_EQ(tools::ReadTextFile((w.root.path() / "app/NewPackage/Assets/K/P/Wagons/Textures/livery_AU.TgPcDx").string()), "autumn");
    EXPECT_EQ(outcome.copied.size(), 6u);
    ASSERT_EQ(outcome.problems.size(), 2u);  // the line outside Assets and the missing one
    EXPECT_NE(outcome.problems[0].find("Elsewhere"), std::string::npos);
    EXPECT_NE(outcome.problems[1].find("gone.TgPcDx"), std::string::npos);
    EXPECT_EQ(Snapshot(w.root.path() / "game"), before);  // the user's files only read
}

TEST(MissingAssets, TheWorkflowEndToEnd) {
    Workflow w;
    w.missingAssets(w.asset("K\\P\\Wagons\\Hopper.bin") + "\r\n" + w.asset("K\\P\\Wagons\\Tank.bin") + "\r\n" +
                    w.asset("K\\P\\Wagons\\Nameless.bin") + "\r\n");
    const MissingAssetsOutcome processed = ProcessMissingAssets(w.ctx);
    const std::string saved = SaveMissingFiles(w.ctx, processed.report);
    ASSERT_FALSE(saved.empty());
    EXPECT_EQ(tools::ReadTextFile(saved), processed.report);
    const PackageOutcome packed = PackageMissingAssets(w.ctx);
    EXPECT_TRUE(packed.problems.empty());
    for (const char* file : {"K/P/Wagons/Hopper.bin", "K/P/Wagons/Tank.bin", "K/P/Wagons/hopper.GeoPcDx",
                             "K/P/Wagons/tank.GeoPcDx", "K/P/Wagons/Textures/livery_Wi.TgPcDx",
                             "K/P/Wagons/Textures/T\xC3\xA9l\xC3\xA9.TgPcDx"})
        EXPECT_TRUE(w.packed(file)) << file;
    EXPECT_FALSE(w.packed("K/P/Wagons/Other.bin"));
    EXPECT_FALSE(w.packed("K/P/Wagons/Nameless.bin"));
    EXPECT_EQ(processed.rows.size(), 2u);
}

TEST(MissingAssets, AbortStopsBetweenJobs) {
    Workflow w;
    w.missingAssets(w.asset("K\\P\\Wagons\\Hopper.bin") + "\r\n");
    w.ctx.abortFlag = true;
    const MissingAssetsOutcome outcome = ProcessMissingAssets(w.ctx);
    EXPECT_TRUE(outcome.aborted);
    EXPECT_TRUE(outcome.rows.empty());
}

}  // namespace
}  // namespace ferrolund::assets::checks
