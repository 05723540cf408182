#pragma once
// "PicView": the texture viewer. The files of a folder that pass the filter box, the one
// chosen shown in the picture pane (a .TgPcDx through its conversion, a .dds at any of
// its mip levels), zoom and pan, the pane's operations, saving and printing the picture,
// and the conversion of a whole folder of textures with progress and "&Abort".

#include <QWidget>
#include <optional>
#include <string>

#include "app/app_context.h"
#include "textures/dds_image.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPrinter;
class QProgressBar;
class QPushButton;

namespace ferrolund::screens {

class PicturePane;

class frmGFX2 : public QWidget {
    Q_OBJECT
public:
    explicit frmGFX2(app::AppContext& ctx, QWidget* parent = nullptr);

    // Lists `folder` (a system path) through the filter.
    void setFolder(const std::string& folder);
    const std::string& folder() const { return folder_; }
    // Shows the file at `path` and selects it in the list of its folder.
    void showFile(const std::string& path);

    PicturePane* pane() const { return pane_; }
    QListWidget* fileList() const { return files_; }
    QListWidget* eventList() const { return events_; }

    // The picture of the pane on a page, as "&Print..." prints it.
    static void PrintPicture(QPrinter& printer, const QImage& image);

private:
    void refillList();
    void filterEdited();
    void fileChosen();
    void display(const std::string& path);
    void levelChosen(int level);
    void convertForViewing();  // Command3
    void convertFolder();
    void chooseFolder();
    void zoomTyped();
    void saveAs();
    void print();
    void setPictureCaption(const std::string& name, const QImage& image);
    std::string selectedPath() const;

    app::AppContext& ctx_;
    std::string folder_;
    std::string shownName_;
    std::optional<textures::DdsImage> levels_;
    QLineEdit* folderBox_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QListWidget* files_ = nullptr;
    QListWidget* events_ = nullptr;
    QLineEdit* zoomBox_ = nullptr;
    QComboBox* level_ = nullptr;
    QCheckBox* panning_ = nullptr;
    QCheckBox* quickBar_ = nullptr;
    QPushButton* abort_ = nullptr;
    QProgressBar* progress_ = nullptr;
    PicturePane* pane_ = nullptr;
};

}  // namespace ferrolund::screens
