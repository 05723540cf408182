#include "tools/tool_runner.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "tools/batch_interpreter.h"
#include "tools/codepage.h"
#include "tools/names.h"
#include "tools/host_path.h"

extern char** environ;

namespace ferrolund::tools {

namespace fs = std::filesystem;

std::vector<std::string> SplitCommandLine(const std::string& command) {
    std::vector<std::string> args;
    std::string current;
    bool inQuotes = false;
    bool haveArg = false;
    std::size_t i = 0;
    while (i < command.size()) {
        const char c = command[i];
        if (c == '\\') {
            std::size_t slashes = 0;
            while (i < command.size() && command[i] == '\\') {
                ++slashes;
                ++i;
            }
            if (i < command.size() && command[i] == '"') {
                current.append(slashes / 2, '\\');
                if (slashes % 2 == 1) {
                    current += '"';
                    ++i;
                }
            } else {
                current.append(slashes, '\\');
            }
            haveArg = true;
            continue;
        }
        if (c == '"') {
            inQuotes = !inQuotes;
            haveArg = true;
        } else if ((c == ' ' || c == '\t') && !inQuotes) {
            if (haveArg) args.push_back(current);
            current.clear();
            haveArg = false;
        } else {
            current += c;
            haveArg = true;
        }
        ++i;
    }
    if (haveArg) args.push_back(current);
    return args;
}

void SetWorkingFolder(base::RunContext& ctx, const std::string& folder) { ctx.workingFolder = folder; }

namespace {

// A program named without a folder is looked for in the working folder first, then on
// the search path.
std::string ResolveProgram(const std::string& program, const fs::path& workingFolder) {
    if (program.find('/') != std::string::npos || program.find('\\') != std::string::npos) {
        return HostPath(program).string();
    }
    std::error_code ec;
    if (!workingFolder.empty()) {
        const fs::path local = HostPath(SystemPath(workingFolder) + "\\" + program);
        if (fs::is_regular_file(local, ec)) return local.string();
    }
    return ShownText(program);
}

}  // namespace

long ToolRunner(base::RunContext& ctx, const std::string& command, bool pumpEvents, WindowStyle style) {
    const std::vector<std::string> args = SplitCommandLine(command);
    if (args.empty()) {
        ctx.report(base::err::FileNotFound(command), "ToolRunner");
        return 0;
    }
    // Batch files are run by the built-in interpreter, in the working folder; what failed in
    // them is reported once, as a console would have shown it.
    if (args[0].size() > 4 && EqualsIgnoreCase(std::string_view(args[0]).substr(args[0].size() - 4), ".bat")) {
        BatchOutcome outcome;
        RunBatchFile(ctx, args[0], outcome);
        ctx.report(BatchErrors(outcome), "ToolRunner");
        return 1;
    }
    const fs::path cwd = ctx.workingFolder.empty() ? fs::path() : HostPath(ctx.workingFolder);
    std::vector<std::string> argv;
    argv.push_back(ResolveProgram(args[0], cwd));
    for (std::size_t i = 1; i < args.size(); ++i) argv.push_back(ShownText(args[i]));
    std::vector<char*> cargv;
    for (auto& a : argv) cargv.push_back(a.data());
    cargv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!cwd.empty()) posix_spawn_file_actions_addchdir_np(&actions, cwd.c_str());
    if (style == WindowStyle::Hidden) {
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    }
    pid_t pid = 0;
    const int rc = posix_spawnp(&pid, cargv[0], &actions, nullptr, cargv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) {
        ctx.report(base::err::FileNotFound(args[0]), "ToolRunner");
        return 0;
    }
    while (true) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        if (pumpEvents && ctx.ui) ctx.ui->pump();
        int wstatus = 0;
        const pid_t done = ::waitpid(pid, &wstatus, WNOHANG);
        if (done == pid || done < 0) break;
    }
    ForgetPath(ctx.workingFolder);
    return static_cast<long>(pid);
}

}  // namespace ferrolund::tools
