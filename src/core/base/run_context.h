#pragma once
// What every command needs from its surroundings, whatever layer it lives in: the
// program's own folder, the way to the person at the screen, the abort flag, and the
// place where an unexpected failure is reported. The program's full context (settings,
// language table, route index) extends it one layer up.

#include <chrono>
#include <functional>
#include <string>

#include "base/run_error.h"
#include "base/ui.h"

namespace ferrolund::base {

struct RunContext {
    RunContext() = default;
    RunContext(const RunContext&) = default;
    RunContext& operator=(const RunContext&) = default;
    virtual ~RunContext() = default;

    // The program's own folder, as a system string without a trailing separator.
    std::string appRoot;
    Ui* ui = nullptr;

    std::string currentRoutine;  // the running command, named in the error log
    std::string workingFolder;   // where the next tool starts
    bool abortFlag = false;

    // The clock of the error log; tests set a fixed one.
    std::function<std::chrono::system_clock::time_point()> now = [] {
        return std::chrono::system_clock::now();
    };

    // A path below the program's folder: appRoot + "\" + relative.
    std::string appPath(const std::string& relative) const { return appRoot + "\\" + relative; }

    // Turns a failure that a command did not expect into the error log and the stop box,
    // under the name of the running command and of the screen.
    virtual void report(const RunError& error, const std::string& module) = 0;
    // The same for a status: nothing happens when it holds no failure.
    void report(const Status& status, const std::string& module) {
        if (status) report(*status, module);
    }
};

}  // namespace ferrolund::base
