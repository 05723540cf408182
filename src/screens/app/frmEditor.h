#pragma once
// The main window: the menu that indexes every command, the editor's tabs and the status
// bar. What the commands do to it goes through DocumentWindow (and so MainWindowPort).

#include <QMainWindow>
#include <functional>
#include <map>
#include <string>

#include "app/app_context.h"
#include "editor/document.h"

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QSplitter;
class QTabWidget;
class QTableWidget;

namespace ferrolund::screens {

class QtUi;
class XmlTreePane;
class HighlightController;

class frmEditor : public QMainWindow, public editor::DocumentWindow {
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

    // DocumentWindow
    std::string paneText(editor::Pane pane) const override;
    void setPaneText(editor::Pane pane, const std::string& text) override;
    void setDocumentName(editor::Pane pane, const std::string& path) override;
    std::string documentName(editor::Pane pane) const override;
    void showNormal() override;
    void showSecondPane(bool shown) override;
    void setMenuCaption(const std::string& item, const std::string& caption) override;

    QAction* menuAction(const std::string& name) const;
    // The main text pane, where the open document's text stands.
    QPlainTextEdit* textPane() const { return pane_[0]; }
    QPlainTextEdit* secondPane() const { return pane_[1]; }
    QTabWidget* tabs() const { return tabs_; }
    XmlTreePane* treePane() const { return tree_; }
    QString statusText(int panel) const;
    editor::EditorDocument& document() { return doc_; }

    // The route list tab.
    void loadRouteList();
    void openSelectedRouteFolder();
    // "Print": the pane's text without tabs, through the print preview.
    void runPrint() { printPane(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenu();
    void buildTabs();
    QWidget* buildTextTab();
    QWidget* buildRouteTab();
    void buildStatusBar();
    void registerCommands();
    void showStatus(int panel, const QString& text);
    void changeFont();
    void printPane();
    void tabChanged(int index);

    app::AppContext& ctx_;
    QtUi& ui_;
    editor::EditorDocument doc_;
    std::map<std::string, QAction*> actions_;
    std::map<std::string, QMenu*> menus_;
    std::map<std::string, std::function<void()>> commands_;
    QTabWidget* tabs_ = nullptr;
    QPlainTextEdit* pane_[2] = {nullptr, nullptr};
    QLineEdit* name_[2] = {nullptr, nullptr};
    // The pane shows lines without their CR; a text that came with CR LF goes back with it.
    bool crlf_[2] = {true, true};
    QLabel* secondLabel_ = nullptr;
    QPushButton* showImage_ = nullptr;  // "Show Image", for a texture's name
    QSplitter* splitter_ = nullptr;
    QTableWidget* routeGrid_ = nullptr;
    XmlTreePane* tree_ = nullptr;
    HighlightController* highlight_ = nullptr;
    std::vector<QLabel*> panels_;
};

}  // namespace ferrolund::screens
