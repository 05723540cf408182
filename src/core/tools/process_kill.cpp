#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "tools/codepage.h"
#include "tools/tool_runner.h"

namespace ferrolund::tools {

namespace fs = std::filesystem;

int KillProcessByName(const std::string& exeName) {
    if (exeName.empty()) return 0;
    const std::string wanted = LowerCp1252(exeName);
    int ended = 0;
    std::error_code ec;
    for (fs::directory_iterator it("/proc", ec), end; !ec && it != end; it.increment(ec)) {
        const std::string pidText = it->path().filename().string();
        if (pidText.find_first_not_of("0123456789") != std::string::npos) continue;
        std::error_code linkError;
        const fs::path exe = fs::read_symlink(it->path() / "exe", linkError);
        if (linkError) continue;
        const std::string name = LowerCp1252(exe.filename().string());
        if (name.size() < wanted.size() || name.compare(name.size() - wanted.size(), wanted.size(), wanted) != 0) {
            continue;
        }
        if (::kill(static_cast<pid_t>(std::stol(pidText)), SIGTERM) == 0) ++ended;
    }
    return ended;
}

}  // namespace ferrolund::tools
