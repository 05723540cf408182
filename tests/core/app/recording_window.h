#pragma once
// A main window for tests: remembers what the commands did to it.

#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/main_window_port.h"

namespace ferrolund::testing {

class RecordingWindow : public app::MainWindowPort {
public:
    bool maximised = false;
    app::TwipsRect geometry{1000, 1000, 9600, 7200};
    std::string caption;
    std::map<std::string, bool> checked, visible, enabled;
    int languageApplied = 0;
    double fontSize = 0;
    int firstTabSelected = 0;
    int searchClosed = 0;
    std::vector<std::string> commandsRun;
    std::set<std::string> availableCommands{"mnuOpenRS", "mnuOpenTex", "mnuXML"};

    void maximise() override { maximised = true; }
    void setGeometryTwips(const app::TwipsRect& r) override { geometry = r; }
    app::TwipsRect geometryTwips() const override { return geometry; }
    void setCaption(const std::string& c) override { caption = c; }
    void setMenuChecked(const std::string& n, bool v) override { checked[n] = v; }
    void setMenuVisible(const std::string& n, bool v) override { visible[n] = v; }
    void setMenuEnabled(const std::string& n, bool v) override { enabled[n] = v; }
    void applyLanguage() override { ++languageApplied; }
    void setEditorFontSize(double p) override { fontSize = p; }
    void selectFirstTab() override { ++firstTabSelected; }
    void closeSearchDialog() override { ++searchClosed; }
    bool runMenuCommand(const std::string& name) override {
        commandsRun.push_back(name);
        return availableCommands.count(name) > 0;
    }
};

}  // namespace ferrolund::testing
