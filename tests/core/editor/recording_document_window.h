#pragma once
// An editor window for tests: keeps the panes' texts and names, and what the commands did
// to the menu.

#include <map>
#include <string>

#include "core/app/recording_window.h"
#include "editor/document.h"

namespace ferrolund::editor {

class RecordingDocumentWindow : public testing::RecordingWindow, public DocumentWindow {
public:
    std::string panes[2];
    std::string names[2];
    bool secondShown = false;
    int normalShown = 0;
    std::map<std::string, std::string> captions;

    std::string paneText(Pane p) const override { return panes[static_cast<int>(p)]; }
    void setPaneText(Pane p, const std::string& t) override { panes[static_cast<int>(p)] = t; }
    void setDocumentName(Pane p, const std::string& n) override { names[static_cast<int>(p)] = n; }
    std::string documentName(Pane p) const override { return names[static_cast<int>(p)]; }
    void showNormal() override { ++normalShown; }
    void showSecondPane(bool shown) override { secondShown = shown; }
    void setMenuCaption(const std::string& item, const std::string& caption) override { captions[item] = caption; }

    // MainWindowPort, as the recording window keeps it.
    void maximise() override { RecordingWindow::maximise(); }
    void setGeometryTwips(const app::TwipsRect& r) override { RecordingWindow::setGeometryTwips(r); }
    app::TwipsRect geometryTwips() const override { return RecordingWindow::geometryTwips(); }
    void setCaption(const std::string& c) override { RecordingWindow::setCaption(c); }
    void setMenuChecked(const std::string& n, bool v) override { RecordingWindow::setMenuChecked(n, v); }
    void setMenuVisible(const std::string& n, bool v) override { RecordingWindow::setMenuVisible(n, v); }
    void setMenuEnabled(const std::string& n, bool v) override { RecordingWindow::setMenuEnabled(n, v); }
    void applyLanguage() override { RecordingWindow::applyLanguage(); }
    void setEditorFontSize(double p) override { RecordingWindow::setEditorFontSize(p); }
    void selectFirstTab() override { RecordingWindow::selectFirstTab(); }
    void closeSearchDialog() override { RecordingWindow::closeSearchDialog(); }
    bool runMenuCommand(const std::string& n) override { return RecordingWindow::runMenuCommand(n); }
};

}  // namespace ferrolund::editor
