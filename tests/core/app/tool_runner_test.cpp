#include "app/app_context.h"
#include "tools/tool_runner.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::tools {
namespace {

namespace fs = std::filesystem;

TEST(SplitCommandLine, WindowsQuotingRules) {
    struct Case { const char* line; std::vector<std::string> args; };
    const Case cases[] = {
        {R"(serz.exe "C:\a b\x.bin" xml:"C:\t\x.xml")", {"serz.exe", R"(C:\a b\x.bin)", R"(xml:C:\t\x.xml)"}},
        {R"(a   b	c)", {"a", "b", "c"}},
        {R"("" x)", {"", "x"}},
        {R"(a\\b "c\"d" "e\\" f)", {R"(a\\b)", R"(c"d)", R"(e\)", "f"}},
        {R"(  )", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(SplitCommandLine(c.line), c.args) << c.line;
}

struct Fixture {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Fixture() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
    }
};

TEST(ToolRunner, WaitsForTheToolInTheWorkingFolderAndPumps) {
    Fixture f;
    f.root.write("work/.keep", "");
    SetWorkingFolder(f.ctx, f.root.system() + "\\work");
    const auto start = std::chrono::steady_clock::now();
    const long pid = ToolRunner(f.ctx, R"(/bin/sh -c "sleep 0.3; echo done > out.txt")", true, WindowStyle::Hidden);
    const auto elapsed = std::chrono::steady_clock::now() - start;
    EXPECT_GT(pid, 0);
    EXPECT_EQ(f.root.read("work/out.txt"), "done\n");
    EXPECT_GE(f.ui.pumps, 3);
    EXPECT_GE(elapsed, std::chrono::milliseconds(300));
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(ToolRunner, WithoutPumpingNoEventsGetThrough) {
    Fixture f;
    ToolRunner(f.ctx, "/bin/true", false, WindowStyle::Hidden);
    EXPECT_EQ(f.ui.pumps, 0);
}

TEST(ToolRunner, AProgramWithoutFolderIsFoundInTheWorkingFolder) {
    Fixture f;
    const auto script = f.root.write("tools/maker.sh", "#!/bin/sh\necho \"$1\" > made.txt\n");
    fs::permissions(script, fs::perms::owner_all);
    SetWorkingFolder(f.ctx, f.root.system() + "\\tools");
    EXPECT_GT(ToolRunner(f.ctx, R"(maker.sh "with blank")", true, WindowStyle::Hidden), 0);
    EXPECT_EQ(f.root.read("tools/made.txt"), "with blank\n");
}

TEST(ToolRunner, AToolThatCannotStartIsReportedAndGivesNoProcess) {
    Fixture f;
    f.ctx.currentRoutine = "mnuContents_Click";
    EXPECT_EQ(ToolRunner(f.ctx, R"("no-such-program-anywhere.exe" x)", true, WindowStyle::Normal), 0);
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_EQ(f.ui.shown[0].icon, base::Icon::Critical);
    EXPECT_NE(f.ui.shown[0].text.find("no-such-program-anywhere.exe"), std::string::npos);
    EXPECT_NE(f.root.read("Errors.txt").find("mnuContents_Click"), std::string::npos);
    EXPECT_EQ(ToolRunner(f.ctx, "   ", true, WindowStyle::Hidden), 0);
}

TEST(KillProcessByName, EndsProcessesWhoseNameEndsSo) {
    testing::TempFolder root;
    const fs::path copy = root.path() / "xFerrolundKillProbe";
    fs::copy_file("/bin/sleep", copy);
    fs::permissions(copy, fs::perms::owner_all);
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl(copy.c_str(), copy.c_str(), "30", static_cast<char*>(nullptr));
        ::_exit(127);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(KillProcessByName(""), 0);
    EXPECT_EQ(KillProcessByName("FERROLUNDKILLPROBE"), 1);  // the tail, compared in lower case
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
}

}  // namespace
}  // namespace ferrolund::tools
