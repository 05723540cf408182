// ferrolund-cli check-assets, on the sample installation and on small cases.
#include <gtest/gtest.h>

#include <set>

#include "asset_check_fixture.h"
#include "core/sample/sample_fixture.h"
#include "cli/interrupt.h"
#include "support/cli_run.h"
#include "tools/names.h"

namespace ferrolund::assets::checks {
namespace {

using testing::Cli;
using testing::CliRun;

// A program folder with the language files, as the build lays it out.
struct AppFolder {
    testing::TempFolder app;
    AppFolder() {
        fs::copy(fs::path(FERROLUND_BIN_DIR) / "Language", app.path() / "Language", fs::copy_options::recursive);
    }
    std::string system() const { return app.system(); }
};

// The second field of each line of the saved CSV, behind the heading.
std::vector<std::string> CsvFiles(const std::string& csv) {
    std::vector<std::string> files;
    const std::vector<std::string> lines = Lines(csv);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::size_t comma = lines[i].find("\",\"");
        files.push_back(lines[i].substr(comma + 3, lines[i].size() - comma - 4));
    }
    return files;
}

TEST(CheckAssetsVerb, OnTheSampleReportsExactlyWhatTheManifestMisses) {
    AppFolder app;
    const fs::path sampleRoot = sample::SampleRoot();
    const std::string game = sampleRoot.string();
    const fs::path csv = app.app.path() / "out";
    const auto before = Snapshot(sampleRoot / "Assets");
    const CliRun run = Cli({"--game-root", game, "check-assets", game + "/Assets", "--csv", csv.string()}, app.system());
    ASSERT_EQ(run.code, 3) << run.err;
    EXPECT_EQ(Snapshot(sampleRoot / "Assets"), before);

    // What the manifest knows: every loose file, and the references of the blueprints.
    std::set<std::string> files, missingRefs, foundRefs;
    for (const sample::ManifestLine& line : sample::ManifestLines(sampleRoot)) {
        const auto& f = line.fields;
        if (f[0] == "file") files.insert(tools::NameKey(f[1]));
        if (f[0] != "reference" || f[5].rfind("Assets\\", 0) != 0) continue;
        std::string path = "Assets\\" + f[2] + "\\" + f[3] + "\\" + f[4];
        path = path.substr(0, path.size() - 3) + "bin";
        (f[1] == "missing" ? missingRefs : foundRefs).insert(tools::NameKey(path));
    }
    ASSERT_FALSE(files.empty());
    ASSERT_FALSE(foundRefs.empty());

    std::set<std::string> reported;
    const std::string prefix = game + "\\";
    for (const std::string& file : CsvFiles(tools::ReadTextFile((csv / "MissingFiles.csv").string()))) {
        ASSERT_EQ(file.rfind(prefix, 0), 0u) << file;
        const std::string key = tools::NameKey(file.substr(prefix.size()));
        EXPECT_EQ(files.count(key), 0u) << "reported missing but in the sample: " << file;
        EXPECT_EQ(foundRefs.count(key), 0u) << "a reference the sample holds: " << file;
        reported.insert(key);
    }
    for (const std::string& ref : missingRefs) EXPECT_EQ(reported.count(ref), 1u) << "not reported: " << ref;
    EXPECT_FALSE(reported.empty());
    EXPECT_NE(run.out.find("missing files\n"), std::string::npos);
}

TEST(CheckAssetsVerb, ExitCodesAndIndexRows) {
    AppFolder app;
    Installation g;
    g.binary("K/P/Loco/Loco.bin", "<Blueprint>\r\n<cEngineBlueprint>\r\n" + Triple("FrontCoupling", "K", "P", "Gone.xml") +
                                      "</cEngineBlueprint>\r\n</Blueprint>\r\n");
    g.binary("K/P/Loco/Fine.bin", "<Blueprint>\r\n<cEngineBlueprint>\r\n</cEngineBlueprint>\r\n</Blueprint>\r\n");
    const std::string game = g.ctx.gameRoot();
    g.root.write("fine.csv", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\nK,P,Loco\\Fine.bin,Fine,Yes,Diesel,EngineBlueprint,1\r\n");
    g.root.write("short.csv", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\nK,P\r\n"
                              "K,P,Loco\\Loco.bin,Loco,Yes,Diesel,EngineBlueprint,1\r\n");
    g.root.write("empty.csv", "");
    struct Case {
        std::vector<std::string> args;
        int code;
        std::string inOut, inErr;
    };
    const Case cases[] = {
        {{"check-assets"}, 2, "", "check-assets (--index FILE"},
        {{"check-assets", "A", "--index", "x.csv"}, 2, "", "check-assets (--index FILE"},
        {{"check-assets", "--bogus"}, 2, "", "check-assets (--index FILE"},
        {{"check-assets", g.root.system() + "/nowhere"}, 1, "", "no folder"},
        {{"check-assets", "--index", g.root.system() + "/none.csv"}, 1, "", "no index file"},
        {{"check-assets", "--index", g.root.system() + "/fine.csv"}, 0, "No errors found", ""},
        {{"check-assets", "--index", g.root.system() + "/short.csv"}, 3, g.asset("K\\P\\Gone.bin"), "line 2: 2 of 8 columns; the line is left out."},
        {{"check-assets", "--index", g.root.system() + "/empty.csv"}, 1, "", "line 1: The file is empty."},
        {{"check-assets", "K"}, 3, "2 blueprints checked, 1 missing files", ""},  // a folder below Assets
        {{"check-assets", "K", "--show"}, 3, "MISSING: " + g.asset("K\\P\\Gone.bin"), ""},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args{"--game-root", game};
        args.insert(args.end(), c.args.begin(), c.args.end());
        const CliRun run = Cli(args, app.system());
        EXPECT_EQ(run.code, c.code) << c.args.back() << "\n" << run.err;
        EXPECT_NE(run.out.find(c.inOut), std::string::npos) << c.args.back() << "\n" << run.out;
        EXPECT_NE(run.err.find(c.inErr), std::string::npos) << c.args.back() << "\n" << run.err;
    }
}

TEST(CheckAssetsVerb, CtrlCStopsTheCheck) {
    AppFolder app;
    Installation g;
    g.binary("K/P/Loco/Loco.bin", "<Blueprint>\r\n<cEngineBlueprint>\r\n" + Triple("FrontCoupling", "K", "P", "Gone.xml") +
                                      "</cEngineBlueprint>\r\n</Blueprint>\r\n");
    g.root.write("loco.csv", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
                             "K,P,Loco\\Loco.bin,Loco,Yes,Diesel,EngineBlueprint,1\r\n");
    cli::RequestInterrupt();
    const CliRun run = Cli({"--game-root", g.ctx.gameRoot(), "check-assets", "--index", g.root.system() + "/loco.csv"},
                           app.system());
    cli::ForgetInterrupt();
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("stopped by Ctrl+C"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("The check was stopped before its end: 0 of 1 rows checked."), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("No errors found"), std::string::npos);

    // Stopped while the folder is still being listed, nothing is checked.
    cli::RequestInterrupt();
    const CliRun walk = Cli({"--game-root", g.ctx.gameRoot(), "check-assets", "K"}, app.system());
    cli::ForgetInterrupt();
    EXPECT_EQ(walk.code, 1);
    EXPECT_NE(walk.err.find("stopped by Ctrl+C"), std::string::npos) << walk.err;
    EXPECT_EQ(walk.out.find("No errors found"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::assets::checks
