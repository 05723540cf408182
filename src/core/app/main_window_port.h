#pragma once
// What the start-up, exit and option commands need of the main window. The Qt window
// implements it; tests use a recording one.

#include <string>

namespace ferrolund::app {

struct TwipsRect {
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
};

class MainWindowPort {
public:
    virtual ~MainWindowPort() = default;

    virtual void maximise() = 0;
    virtual void setGeometryTwips(const TwipsRect& rect) = 0;
    virtual TwipsRect geometryTwips() const = 0;
    virtual void setCaption(const std::string& caption) = 0;

    virtual void setMenuChecked(const std::string& name, bool checked) = 0;
    virtual void setMenuVisible(const std::string& name, bool visible) = 0;
    virtual void setMenuEnabled(const std::string& name, bool enabled) = 0;
    // Sets the captions of the window from the language table now in the context.
    virtual void applyLanguage() = 0;

    virtual void setEditorFontSize(double points) = 0;
    // Brings the first tab forward in its resting state.
    virtual void selectFirstTab() = 0;
    // Closes the search dialog if it is open.
    virtual void closeSearchDialog() = 0;
    // Runs a command of the menu by its item's name, as a click would. Gives false when
    // the command does not exist in this build.
    virtual bool runMenuCommand(const std::string& name) = 0;
};

}  // namespace ferrolund::app
