#include "cli/cli.h"
#include "support/cli_run.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <sstream>

#include "app/preference_set.h"
#include "cli/cli_ui.h"
#include "cli/interrupt.h"
#include "support/temp_folder.h"

namespace ferrolund::cli {
namespace {

namespace fs = std::filesystem;

using testing::Cli;
using testing::CliRun;

TEST(Cli, VersionHelpAndMistakes) {
    testing::TempFolder root;
    struct Case { std::vector<std::string> args; int code; std::string inOut; std::string inErr; };
    const Case cases[] = {
        {{"--version"}, 0, "ferrolund-cli 1.0.1\n", ""},
        {{"--help"}, 0, "--game-root DIR", ""},
        {{"--help"}, 0, "serz \"<source>\"", ""},
        {{}, 2, "", "usage: ferrolund-cli"},
        {{"--yes"}, 2, "", "usage: ferrolund-cli"},
        {{"frobnicate"}, 2, "", "unknown command frobnicate"},
        {{"--colour", "paths"}, 2, "", "unknown option --colour"},
        {{"--game-root"}, 2, "", "--game-root needs a value"},
        {{"paths", "--game-root"}, 2, "", "--game-root needs a value"},
        {{"--help"}, 0, "  3  the check found missing items\n", ""},
        {{"check-route", "--help"}, 0, "usage: ferrolund-cli check-route ROUTE", ""},
        {{"--help", "check-route"}, 0, "Exit codes:\n  0  done\n", ""},
        {{"paths", "--colour"}, 2, "", "takes no arguments"},
    };
    for (const auto& c : cases) {
        const CliRun r = Cli(c.args, root.system());
        EXPECT_EQ(r.code, c.code) << ::testing::PrintToString(c.args);
        EXPECT_NE(r.out.find(c.inOut), std::string::npos) << r.out;
        EXPECT_NE(r.err.find(c.inErr), std::string::npos) << r.err;
        const std::string& printed = r.out.empty() ? r.err : r.out;
        EXPECT_TRUE(printed.ends_with("\n")) << ::testing::PrintToString(c.args);
    }
}

// The shared options mean the same wherever they stand on the line.
TEST(Cli, SharedOptionsBeforeOrAfterTheCommand) {
    testing::TempFolder root;
    const std::vector<std::string> lines[] = {
        {"--game-root", "/g/R\xC3\xA4il", "paths"},
        {"paths", "--game-root", "/g/R\xC3\xA4il"},
        {"--no", "paths", "--game-root", "/g/R\xC3\xA4il", "--answer", "x"},
    };
    for (const auto& args : lines) {
        const CliRun r = Cli(args, root.system());
        EXPECT_EQ(r.code, 0) << r.err;
        EXPECT_NE(r.out.find("Rail Works: /g/R\xC3\xA4il\n"), std::string::npos) << r.out;
    }
}

TEST(Cli, GameRootFromTheOptionOrElseTheSettings) {
    testing::TempFolder root;
    app::PreferenceSet prefs;
    prefs.gameRoot = "/from/settings/RailWorks";
    prefs.language = "German";
    root.write("Ferrolundpreferences.txt", app::FormatPreferences(prefs, app::AboutHome::Shadow));
    EXPECT_NE(Cli({"paths"}, root.system()).out.find("Rail Works: /from/settings/RailWorks\n"), std::string::npos);
    const CliRun given = Cli({"--game-root", "/given/R\xC3\xA4ilWorks", "paths"}, root.system());
    EXPECT_NE(given.out.find("Rail Works: /given/R\xC3\xA4ilWorks\n"), std::string::npos) << given.out;
    EXPECT_NE(given.out.find("Language: German\n"), std::string::npos);
    EXPECT_EQ(given.code, 0);
}

TEST(Cli, ABrokenSettingsFileIsReportedAndTheCommandGoesOn) {
    testing::TempFolder root;
    root.write("Ferrolundpreferences.txt", "12000\r\n");
    const CliRun r = Cli({"--game-root", "/g", "paths"}, root.system());
    EXPECT_EQ(r.code, 0);
    EXPECT_NE(r.err.find("Error: #62 Input past end of file"), std::string::npos);
    EXPECT_NE(root.read("Errors.txt").find("Procedure:\r\npaths\r\n"), std::string::npos);
}

TEST(CliUi, AnswersComeFromTheOptions) {
    std::ostringstream out, err;
    CliUi ui(out, err);
    using base::Answer;
    using base::Buttons;
    EXPECT_EQ(ui.ask("Q1", Buttons::YesNo, base::Icon::Question, {}), Answer::No);  // nothing given: the safe answer
    EXPECT_EQ(ui.ask("Q2", Buttons::OkCancel, base::Icon::Question, {}), Answer::Cancel);
    EXPECT_EQ(ui.ask("Q3", Buttons::Ok, base::Icon::Question, {}), Answer::Ok);
    ui.defaultYes = true;
    EXPECT_EQ(ui.ask("Q4", Buttons::YesNo, base::Icon::Question, {}), Answer::Yes);
    EXPECT_EQ(ui.ask("Q5", Buttons::OkCancel, base::Icon::Question, {}), Answer::Ok);
    ui.answers = {"no", "cancel", "OK"};
    EXPECT_EQ(ui.ask("Q6", Buttons::YesNo, base::Icon::Question, {}), Answer::No);
    EXPECT_EQ(ui.ask("Q7", Buttons::YesNoCancel, base::Icon::Question, {}), Answer::Cancel);
    EXPECT_EQ(ui.ask("Q8", Buttons::OkCancel, base::Icon::Question, {}), Answer::Ok);
    EXPECT_NE(out.str().find("Q1\n  (no answer given: taking No"), std::string::npos) << out.str();
    ui.answers = {"/picked/file.bin"};
    EXPECT_EQ(ui.chooseOpenFile("Pick", "*.bin", {}), std::optional<std::string>("/picked/file.bin"));
    EXPECT_EQ(ui.chooseFolder("Folder", {}), std::nullopt);
    ui.message("Gr\xFC\xDF" "e", base::Icon::Critical, {});
    EXPECT_EQ(err.str(), "Gr\xC3\xBC\xC3\x9F" "e\n");  // shown as UTF-8 on the console
}

TEST(CliUi, ProgressIsOneUpdatedLineOnATerminalAndOneLinePerStageOtherwise) {
    struct Case {
        ProgressStyle style;
        std::string expected;
    };
    const Case cases[] = {
        {ProgressStyle::Silent, ""},
        {ProgressStyle::Lines, "Scenery\nRoads\n"},
        {ProgressStyle::Terminal,
         "\r\x1b[KScenery 50 % (1 of 2 tiles)\r\x1b[KScenery 100 % (2 of 2 tiles)\r\x1b[KRoads 100 % (1 of 1 tiles)"
         "\r\x1b[K"},
    };
    for (const auto& c : cases) {
        std::ostringstream out, err;
        {
            CliUi ui(out, err);
            ui.progressStyle = c.style;
            ui.progressCount(1, 2, "tiles");
            ui.progress(50, "Scenery 50 %");
            ui.progressCount(2, 2, "tiles");
            ui.progress(100, "Scenery 100 %");
            ui.progressCount(1, 1, "tiles");
            ui.progress(100, "Roads 100 %");
        }  // the open line is cleared when the run ends
        EXPECT_EQ(err.str(), c.expected);
        EXPECT_EQ(out.str(), "");
    }
}

TEST(CliUi, ACtrlCSetsTheAbortFlagAtTheNextPump) {
    std::ostringstream out, err;
    CliUi ui(out, err);
    bool abortFlag = false;
    ui.abortFlag = &abortFlag;
    ui.pump();
    EXPECT_FALSE(abortFlag);
    RequestInterrupt();
    ui.pump();
    ForgetInterrupt();
    EXPECT_TRUE(abortFlag);
}

// The built program, run from a folder of its own so no settings of a developer's run
// come into play.
TEST(CliProgram, RunsAsAProgram) {
    const fs::path built = fs::path(FERROLUND_BIN_DIR) / "ferrolund-cli";
    if (!fs::exists(built)) GTEST_SKIP() << "ferrolund-cli is not built at " << built;
    testing::TempFolder root;
    fs::copy_file(built, root.path() / "ferrolund-cli");
    const std::string command = "'" + (root.path() / "ferrolund-cli").string() + "' --game-root /g paths 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string output;
    std::array<char, 256> buffer{};
    while (fgets(buffer.data(), buffer.size(), pipe)) output += buffer.data();
    const int status = pclose(pipe);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_NE(output.find("Program folder: " + root.system() + "\n"), std::string::npos) << output;
    EXPECT_NE(output.find("Rail Works: /g\n"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::cli
