// Tests of what an X server shows of the screens: they start their own Xvfb (no window
// manager) and run Qt on its xcb platform, not the offscreen one the other screen tests use.
#include <QApplication>
#include <gtest/gtest.h>
#include <memory>

#include "screens/x11/x_session.h"
#include "screens/x11/xvfb_server.h"

namespace ferrolund::testing {

namespace {

XSession session;

// Started when the tests run, not when they are only listed.
class XServerEnvironment : public ::testing::Environment {
public:
    XServerEnvironment(int& argc, char** argv) : argc_(argc), argv_(argv) {}

    void SetUp() override {
        const std::optional<std::string> program = FindProgram("Xvfb");
        if (!program) {
            session.absent = true;
            session.problem = "Xvfb is not installed, so the X server paint tests are skipped";
            return;
        }
        if (!server_.start(*program)) {
            session.problem = "Xvfb (" + *program + ") did not start: " + server_.error();
            return;
        }
        qputenv("DISPLAY", QByteArray::fromStdString(server_.display()));
        qputenv("QT_QPA_PLATFORM", "xcb");
        application_ = std::make_unique<QApplication>(argc_, argv_);
        session.running = true;
    }

    void TearDown() override {
        application_.reset();
        server_.stop();
        session.running = false;
    }

private:
    int& argc_;
    char** argv_;
    XvfbServer server_;
    std::unique_ptr<QApplication> application_;
};

}  // namespace

const XSession& CurrentXSession() { return session; }

}  // namespace ferrolund::testing

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new ferrolund::testing::XServerEnvironment(argc, argv));
    return RUN_ALL_TESTS();
}
