#pragma once
// The context handed to every command: the run context of the lower layers together with
// the settings, the language table and the route index.

#include <string>

#include "app/language_table.h"
#include "app/preference_set.h"
#include "base/run_context.h"
#include "routes/route_index.h"

namespace ferrolund::app {

struct AppContext : base::RunContext {
    // Also hands the archive access to the batch interpreter, for the "7za" lines.
    AppContext();

    PreferenceSet prefs;  // prefs.gameRoot is the simulator's folder (line 7)
    LanguageTable lang;
    routes::RouteIndex routeIndex;

    std::string commandFile;
    bool commandLineOpen = false;
    std::string languageFile;    // "Lang_<Language>.txt"

    const std::string& gameRoot() const { return prefs.gameRoot; }
    // The language word that picks names out of the game's XML ("English" unless set).
    std::string languageTag() const { return prefs.language.empty() ? "English" : prefs.language; }
    // Lang(n); a missing text is reported through the error log and gives the fallback.
    std::string langText(int n, const std::string& fallback = {}, const std::string& module = "frmEditor");

    using RunContext::report;
    void report(const base::RunError& error, const std::string& module) override;
};

}  // namespace ferrolund::app
