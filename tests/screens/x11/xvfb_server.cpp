#include "screens/x11/xvfb_server.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ferrolund::testing {

namespace {

constexpr int kStartTimeoutMs = 15000;

// Reads the display number Xvfb writes to its -displayfd pipe once it is ready: digits and
// a newline. Gives up when the pipe closes (Xvfb failed) or the time runs out.
std::optional<std::string> ReadDisplayNumber(int fd, std::string& error) {
    std::string number;
    while (true) {
        pollfd ready{fd, POLLIN, 0};
        const int polled = poll(&ready, 1, kStartTimeoutMs);
        if (polled < 0 && errno == EINTR) continue;
        if (polled <= 0) {
            error = "Xvfb did not report a display within " + std::to_string(kStartTimeoutMs / 1000) + " s";
            return std::nullopt;
        }
        char c = 0;
        const ssize_t got = read(fd, &c, 1);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) {
            error = "Xvfb exited before it reported a display";
            return std::nullopt;
        }
        if (c == '\n') break;
        if (c < '0' || c > '9') {
            error = "Xvfb reported an unreadable display number";
            return std::nullopt;
        }
        number += c;
    }
    if (number.empty()) {
        error = "Xvfb reported an empty display number";
        return std::nullopt;
    }
    return number;
}

}  // namespace

std::optional<std::string> FindProgram(const std::string& name) {
    const char* path = std::getenv("PATH");
    if (!path) return std::nullopt;
    std::string folders = path;
    std::size_t start = 0;
    while (start <= folders.size()) {
        const std::size_t end = std::min(folders.find(':', start), folders.size());
        const std::string folder = folders.substr(start, end - start);
        start = end + 1;
        if (folder.empty()) continue;
        const std::filesystem::path candidate = std::filesystem::path(folder) / name;
        if (access(candidate.c_str(), X_OK) == 0) return candidate.string();
    }
    return std::nullopt;
}

bool XvfbServer::start(const std::string& program) {
    stop();
    error_.clear();
    int fds[2];
    if (pipe(fds) != 0) {
        error_ = std::string("cannot make a pipe for Xvfb: ") + std::strerror(errno);
        return false;
    }
    const std::string writeEnd = std::to_string(fds[1]);
    const pid_t child = fork();
    if (child < 0) {
        error_ = std::string("cannot start Xvfb: ") + std::strerror(errno);
        close(fds[0]);
        close(fds[1]);
        return false;
    }
    if (child == 0) {
        close(fds[0]);
        // Xvfb's own notices would only clutter the test output.
        const int quiet = open("/dev/null", O_WRONLY);
        if (quiet >= 0) {
            dup2(quiet, STDOUT_FILENO);
            dup2(quiet, STDERR_FILENO);
        }
        execl(program.c_str(), program.c_str(), "-displayfd", writeEnd.c_str(), "-nolisten", "tcp", "-screen", "0",
              "1024x768x24", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(fds[1]);
    pid_ = child;
    const std::optional<std::string> number = ReadDisplayNumber(fds[0], error_);
    close(fds[0]);
    if (!number) {
        stop();
        return false;
    }
    display_ = ":" + *number;
    return true;
}

void XvfbServer::stop() {
    if (pid_ <= 0) return;
    kill(pid_, SIGTERM);
    int status = 0;
    while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    display_.clear();
}

}  // namespace ferrolund::testing
