#pragma once
// The two small folder screens of the archives: frmFolder6, "Select Temp Folder", which
// empties the simulator's Temp folder, and frmFolder2, "Save Unpacked Files in:-", which
// picks the folder unpacked files go to. Their logic is in archives/folder_choices.h.

#include <QDialog>
#include <optional>
#include <string>

#include "app/app_context.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace ferrolund::screens {

class frmFolder6 : public QDialog {
    Q_OBJECT
public:
    explicit frmFolder6(app::AppContext& ctx, QWidget* parent = nullptr);
    QListWidget* files() const { return file1_; }
    // Lists the files below the Temp folder again.
    void refill();
    void deleteSelected();
    void deleteAll();

private:
    app::AppContext& ctx_;
    std::string folder_;
    QListWidget* file1_;
};

class frmFolder2 : public QDialog {
    Q_OBJECT
public:
    // Without `withNewFolder` the "Add new folder" box is hidden.
    frmFolder2(app::AppContext& ctx, const std::string& startFolder, bool withNewFolder, QWidget* parent = nullptr);
    QLineEdit* folderBox() const { return dir1_; }
    QLineEdit* newFolderBox() const { return text1_; }
    // The folder confirmed, once Confirm has succeeded.
    const std::optional<std::string>& result() const { return result_; }
    void browse();
    void confirm();

private:
    app::AppContext& ctx_;
    QLineEdit* dir1_;
    QLineEdit* text1_;
    std::optional<std::string> result_;
};

// Opens frmFolder2 modally; the folder confirmed, or nothing.
std::optional<std::string> ChooseUnpackFolder(app::AppContext& ctx, QWidget* parent, const std::string& startFolder,
                                              bool withNewFolder);

}  // namespace ferrolund::screens
