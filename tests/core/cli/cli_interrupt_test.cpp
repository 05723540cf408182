// Ctrl+C in a terminal: the built program, stopped half-way through a route check by a
// real SIGINT, ends with the "failed" code and leaves every file it wrote whole.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "cli/interrupt.h"
#include "support/temp_folder.h"

extern char** environ;

namespace ferrolund::cli {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// Runs `argv`; calls `onStderrLine` with each line of its stderr until it returns true.
struct Child {
    pid_t pid = -1;
    int errFd = -1;
};

Child Spawn(const std::vector<std::string>& args) {
    int pipeFds[2];
    if (pipe(pipeFds) != 0) return {};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 2);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclose(&actions, pipeFds[0]);
    std::vector<char*> argv;
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    Child child;
    if (posix_spawn(&child.pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) child.pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    close(pipeFds[1]);
    child.errFd = pipeFds[0];
    return child;
}

std::string ReadLine(int fd) {
    std::string line;
    char c = 0;
    while (read(fd, &c, 1) == 1 && c != '\n') line += c;
    return line;
}

TEST(CliInterrupt, CtrlCStopsTheCheckAndLeavesEveryFileWhole) {
    const fs::path built = fs::path(FERROLUND_BIN_DIR) / "ferrolund-cli";
    if (!fs::exists(built)) GTEST_SKIP() << "ferrolund-cli is not built at " << built;
    testing::TempFolder root;
    const fs::path program = root.path() / "ferrolund-cli";
    fs::copy_file(built, program);
    const std::string game = (root.path() / "game").string();
    // Enough tiles that the check is still running when the signal comes; the sample's
    // first tiles miss assets, so from then on each tile's XML is written to TempFiles.
    const std::string make = "'" + program.string() + "' make-sample '" + game + "' --tiles 10000 > /dev/null";
    ASSERT_EQ(std::system(make.c_str()), 0);

    Child child = Spawn({program.string(), "check-route", "Ostvale Valley- North Main Line", "--game-root", game,
                         "--no", "--progress"});
    ASSERT_GT(child.pid, 0);
    std::string firstStage = ReadLine(child.errFd);
    kill(child.pid, SIGINT);
    std::string rest;
    for (std::string line = ReadLine(child.errFd); !line.empty(); line = ReadLine(child.errFd)) rest += line + "\n";
    close(child.errFd);
    int status = 0;
    waitpid(child.pid, &status, 0);

    EXPECT_EQ(firstStage, "Scenery");
    ASSERT_TRUE(WIFEXITED(status)) << "the program was killed instead of stopping";
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_NE(rest.find("stopped by Ctrl+C"), std::string::npos) << rest;

    // The scratch XML written before the stop: each file whole, and not every tile done.
    std::size_t kept = 0;
    for (const auto& entry : fs::recursive_directory_iterator(root.path() / "TempFiles")) {
        if (!entry.is_regular_file()) continue;
        const std::string text = ReadAll(entry.path());
        EXPECT_TRUE(text.ends_with("</cRecordSet>\r\n") || text.ends_with("</cRecordSet>\n")) << entry.path();
        ++kept;
    }
    EXPECT_LT(kept, 10000u) << "the check ran to the end: the signal came too late to show anything";
}

TEST(CliInterrupt, TheFirstCtrlCIsCaughtAndOnlyAsksToStop) {
    ForgetInterrupt();
    CatchInterrupt();
    raise(SIGINT);  // the process goes on: the handler only notes it
    EXPECT_TRUE(Interrupted());
    ForgetInterrupt();
    signal(SIGINT, SIG_DFL);
    EXPECT_FALSE(Interrupted());
}

}  // namespace
}  // namespace ferrolund::cli
