#pragma once
// The X server these tests run on, set up once by the program's main: a private Xvfb and
// a QApplication on Qt's xcb platform connected to it.

#include <string>

namespace ferrolund::testing {

struct XSession {
    bool running = false;
    // Xvfb is not installed: the tests are skipped, saying so.
    bool absent = false;
    // Why the session is not running.
    std::string problem;
};

const XSession& CurrentXSession();

}  // namespace ferrolund::testing

// Skips the test when Xvfb is not installed and fails it when Xvfb would not start.
#define FERROLUND_REQUIRE_X_SERVER()                                                        \
    do {                                                                                    \
        const ::ferrolund::testing::XSession& session = ::ferrolund::testing::CurrentXSession(); \
        if (session.absent) GTEST_SKIP() << session.problem;                                \
        if (!session.running) FAIL() << session.problem;                                    \
    } while (false)
