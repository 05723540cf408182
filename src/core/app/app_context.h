#pragma once
// The context handed to every command: the two root folders, the settings, the language
// table, the route index, the error log and the way to the person at the screen.

#include <chrono>
#include <functional>
#include <string>

#include "app/language_table.h"
#include "app/preference_set.h"
#include "app/run_error.h"
#include "app/ui.h"
#include "routes/route_index.h"

namespace ferrolund::app {

struct AppContext {
    // The program's own folder, as a system string without a trailing separator.
    std::string appRoot;
    PreferenceSet prefs;  // prefs.gameRoot is the simulator's folder (line 7)
    LanguageTable lang;
    routes::RouteIndex routeIndex;
    Ui* ui = nullptr;

    std::string currentRoutine;  // the running command, named in the error log
    std::string workingFolder;   // where the next tool starts
    bool abortFlag = false;
    std::string commandFile;
    bool commandLineOpen = false;
    std::string languageFile;    // "Lang_<Language>.txt"

    // The clock of the error log; tests set a fixed one.
    std::function<std::chrono::system_clock::time_point()> now = [] {
        return std::chrono::system_clock::now();
    };

    const std::string& gameRoot() const { return prefs.gameRoot; }
    // A path below the program's folder: appRoot + "\" + relative.
    std::string appPath(const std::string& relative) const { return appRoot + "\\" + relative; }
    // Lang(n); a missing text is reported through the error log and gives the fallback.
    std::string langText(int n, const std::string& fallback = {}, const std::string& module = "frmEditor");
    // Turns a failure that a command did not expect into the error log and the stop box,
    // under the name of the running command and of the screen.
    void report(const RunError& error, const std::string& module);
    // The same for a status: nothing happens when it holds no failure.
    void report(const Status& status, const std::string& module) {
        if (status) report(*status, module);
    }
};

}  // namespace ferrolund::app
