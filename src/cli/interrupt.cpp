#include "cli/interrupt.h"

#include <csignal>

namespace ferrolund::cli {

namespace {

volatile std::sig_atomic_t gInterrupted = 0;

extern "C" void OnInterrupt(int) { gInterrupted = 1; }

}  // namespace

void CatchInterrupt() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    sigemptyset(&action.sa_mask);
    // The handler is taken back once it has run: the next Ctrl+C ends the program.
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    sigaction(SIGINT, &action, nullptr);
}

bool Interrupted() { return gInterrupted != 0; }
void ForgetInterrupt() { gInterrupted = 0; }
void RequestInterrupt() { gInterrupted = 1; }

}  // namespace ferrolund::cli
