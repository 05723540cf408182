#pragma once
// The main window: the menu that indexes every command, the editor's tabs and the status
// bar. What the start-up and the Options commands do to it goes through MainWindowPort.

#include <QMainWindow>
#include <functional>
#include <map>
#include <string>

#include "app/app_context.h"
#include "app/main_window_port.h"

class QAction;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QTabWidget;

namespace ferrolund::screens {

class QtUi;

class frmEditor : public QMainWindow, public app::MainWindowPort {
    Q_OBJECT
public:
    frmEditor(app::AppContext& ctx, QtUi& ui, QWidget* parent = nullptr);

    // MainWindowPort
    void maximise() override;
    void setGeometryTwips(const app::TwipsRect& rect) override;
    app::TwipsRect geometryTwips() const override;
    void setCaption(const std::string& caption) override;
    void setMenuChecked(const std::string& name, bool checked) override;
    void setMenuVisible(const std::string& name, bool visible) override;
    void setMenuEnabled(const std::string& name, bool enabled) override;
    void applyLanguage() override;
    void setEditorFontSize(double points) override;
    void selectFirstTab() override;
    void closeSearchDialog() override;
    bool runMenuCommand(const std::string& name) override;

    QAction* menuAction(const std::string& name) const;
    // The main text pane, where the open document's text stands.
    QPlainTextEdit* textPane() const { return text1_; }
    QString statusText(int panel) const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenu();
    void buildTabs();
    void buildStatusBar();
    void registerCommands();
    void showStatus(int panel, const QString& text);

    app::AppContext& ctx_;
    QtUi& ui_;
    std::map<std::string, QAction*> actions_;
    std::map<std::string, QMenu*> menus_;
    std::map<std::string, std::function<void()>> commands_;
    QTabWidget* tabs_ = nullptr;
    QPlainTextEdit* text1_ = nullptr;
    std::vector<QLabel*> panels_;
};

}  // namespace ferrolund::screens
