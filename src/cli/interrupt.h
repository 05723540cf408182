#pragma once
// Ctrl+C in a terminal takes the same way as the "&Abort" button: the first one asks the
// running command to stop at its next chance, where it tests AbortFlag between files, so
// every file already written stays whole. A second Ctrl+C ends the program at once.

namespace ferrolund::cli {

// Catches SIGINT for the rest of the run.
void CatchInterrupt();
// A Ctrl+C came since the program started (or since ForgetInterrupt).
bool Interrupted();
void ForgetInterrupt();
// What a signal handler would do, for tests that cannot send themselves a signal.
void RequestInterrupt();

}  // namespace ferrolund::cli
