#pragma once
// The "XML Editor" tab: the document's elements as a tree (trevwContents), the selected
// element's attributes (lstAttributes, txtAttributeValue) and text (txtCharacters), the
// document's path (Label7) and the three searches over the tree (Text2 with Command2
// "Find", Command3 "Find All", Command4 "Find in Text").
//
// Renaming an entry and typing in txtCharacters change the entries in memory only and
// put the changed mark on the tab; nothing is written back to the document.

#include <QWidget>
#include <functional>
#include <string>

#include "app/app_context.h"
#include "editor/xml_tree.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTreeView;

namespace ferrolund::screens {

class XmlTreeModel;

class XmlTreePane : public QWidget {
    Q_OBJECT
public:
    XmlTreePane(app::AppContext& ctx, QWidget* parent = nullptr);
    ~XmlTreePane() override;

    // LoadXMLFile: reads the XML file (a system path) and shows its first entry opened.
    // A fault in the file is reported; the tree keeps what was read before it.
    void load(const std::string& xmlSystemPath);
    void clear();
    // Label7: the document's path.
    void setDocumentName(const std::string& path);

    // The three searches, as their buttons run them.
    void find();        // Command2
    void findAll();     // Command3
    void findInText();  // Command4

    // dlgFind: asked at each hit of Find and Find in Text; true goes on to the next hit.
    // The screen shows the dialog; a test puts its own answer here.
    std::function<bool()> askContinue;

    const editor::XmlTreeEditor& editor() const { return editor_; }
    QTreeView* tree() const { return tree_; }
    XmlTreeModel* model() const { return model_; }
    QListWidget* attributes() const { return lstAttributes_; }
    QLineEdit* attributeValue() const { return txtAttributeValue_; }
    QPlainTextEdit* characters() const { return txtCharacters_; }
    QLineEdit* searchBox() const { return text2_; }

signals:
    // The changed mark went on or off; the tab's title carries it as well.
    void dirtyChanged(bool dirty);

private:
    void buildLayout();
    void nodeClicked(const QModelIndex& index);
    void attributeClicked();
    void charactersEdited();
    void setDirty(bool dirty);
    void enableNodeEdit(bool enabled);
    void clearMarks();
    void markAndSelect(editor::NodeId node, bool clearSelection);
    bool showFindDialog();

    app::AppContext& ctx_;
    editor::XmlTreeEditor editor_;
    editor::TreeSearch search_;
    XmlTreeModel* model_ = nullptr;
    QTreeView* tree_ = nullptr;
    QGroupBox* fraAttribs_ = nullptr;
    QListWidget* lstAttributes_ = nullptr;
    QLabel* lblNames_ = nullptr;
    QLineEdit* txtAttributeValue_ = nullptr;
    QGroupBox* fraChars_ = nullptr;
    QPlainTextEdit* txtCharacters_ = nullptr;
    QLabel* label7_ = nullptr;
    QLineEdit* text2_ = nullptr;
};

}  // namespace ferrolund::screens
