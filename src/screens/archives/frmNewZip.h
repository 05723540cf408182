#pragma once
// frmNewZip, the zip manager: a new, multi-part or opened archive in a list, with files
// and folders added and entries extracted; and, opened for packaging, the package folder
// zipped whole or in parts. The logic is the ZipManager model's; this form holds widgets.

#include <QDialog>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "archives/zip_manager.h"

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QSlider;
class QTableWidget;

namespace ferrolund::screens {

class frmNewZip : public QDialog {
    Q_OBJECT
public:
    // With a package name the screen is in packaging mode: it asks, and OK zips
    // AppRoot\<package> into AppRoot\<package>.zip.
    frmNewZip(app::AppContext& ctx, const std::string& packageName = {}, QWidget* parent = nullptr);

    archives::ZipManager& manager() { return zip_; }
    QTableWidget* list() const { return vsfg1_; }
    QAction* action(const std::string& name) const;
    std::vector<std::size_t> selectedEntries() const;

    void newArchive();
    void newMultiPart();
    void openArchive();
    void addFiles();
    void addFolder();
    void process();
    void closeArchive();
    // Starts the packaging run after the question; false when it was cancelled.
    bool startPackaging();

private:
    QAction* addAction(QMenu* menu, const char* name, const char* caption);
    void fill();
    void setCompression(int level);

    app::AppContext& ctx_;
    archives::ZipManager zip_;
    QTableWidget* vsfg1_;
    QLineEdit* name_;
    QLineEdit* text1_;
    QLineEdit* text2_;
    QCheckBox* multiple_;
    QCheckBox* fullPath_;
    QSlider* slider1_;
    QLabel* label4_;
    QLabel* sb1_;
    std::vector<QAction*> actions_;
};

// Opens the screen, not modal, deleted when closed.
frmNewZip* ShowZipManager(app::AppContext& ctx, QWidget* parent, const std::string& packageName = {});

}  // namespace ferrolund::screens
