#pragma once
// frmFolder5, "Multi-file Search & Replace": a folder's files (Drive1, Dir1, File1), one
// shown as XML in the pane, the search text replaced in every selected file, and the
// selected files saved as XML into TempXML.

#include <QDialog>
#include <string>
#include <vector>

#include "app/app_context.h"

class QComboBox;
class QFileSystemModel;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTreeView;

namespace ferrolund::screens {

class SearchBoxes;

class frmFolder5 : public QDialog {
    Q_OBJECT
public:
    frmFolder5(app::AppContext& ctx, QWidget* parent = nullptr);

    // Dir1_Click: File1 lists the folder (a system path).
    void showFolder(const std::string& folder);
    const std::string& folder() const { return folder_; }
    // The selected files of File1 as full paths, in list order.
    std::vector<std::string> selectedFiles() const;

    void display();             // Command7
    void replaceInSelected();   // Command8
    void saveSelectedAsXml();   // Command9
    void selectAll();

    QListWidget* files() const { return file1_; }
    QPlainTextEdit* pane() const { return richTextBox1_; }
    SearchBoxes* boxes() const { return boxes_; }
    QLabel* runLabel() const { return runLabel_; }

protected:
    // A close during a run aborts it between two files; the screen closes afterwards.
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* buildFolderSide();
    QWidget* buildCommandSide();
    void showProgress(int index, int count, const std::string& path);
    void running(bool on);

    app::AppContext& ctx_;
    std::string folder_;
    QComboBox* drive1_ = nullptr;
    QFileSystemModel* dirModel_ = nullptr;
    QTreeView* dir1_ = nullptr;
    QLabel* label2_ = nullptr;
    QListWidget* file1_ = nullptr;
    QLineEdit* text1_ = nullptr;
    SearchBoxes* boxes_ = nullptr;
    QPlainTextEdit* richTextBox1_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QLabel* runLabel_ = nullptr;
    QPushButton* abort_ = nullptr;
    std::vector<QPushButton*> commands_;
    bool running_ = false;
    bool closeAfterRun_ = false;
};

}  // namespace ferrolund::screens
