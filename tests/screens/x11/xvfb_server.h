#pragma once
// A private Xvfb for tests that need a real X server: it is started on a display number it
// picks itself (-displayfd), listens on no TCP port, and is stopped with the object.

#include <optional>
#include <string>
#include <sys/types.h>

namespace ferrolund::testing {

// The full path of `name` in one of the folders of $PATH, if it is there.
std::optional<std::string> FindProgram(const std::string& name);

class XvfbServer {
public:
    XvfbServer() = default;
    XvfbServer(const XvfbServer&) = delete;
    XvfbServer& operator=(const XvfbServer&) = delete;
    ~XvfbServer() { stop(); }

    // Starts `program` and waits until it accepts clients; on failure error() says why.
    bool start(const std::string& program);
    void stop();

    // ":N", once started.
    const std::string& display() const { return display_; }
    const std::string& error() const { return error_; }

private:
    pid_t pid_ = -1;
    std::string display_;
    std::string error_;
};

}  // namespace ferrolund::testing
