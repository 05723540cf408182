#include "screens/archives/folder_screens.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <filesystem>

#include "archives/folder_choices.h"
#include "screens/app/qt_text.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

namespace fs = std::filesystem;

namespace {

QPushButton* AddButton(QWidget* owner, QBoxLayout* row, const char* name, const char* caption) {
    auto* b = new QPushButton(caption, owner);
    b->setObjectName(name);
    row->addWidget(b);
    return b;
}

}  // namespace

frmFolder6::frmFolder6(app::AppContext& ctx, QWidget* parent)
    : QDialog(parent), ctx_(ctx), folder_(archives::GameTempFolder(ctx)) {
    setObjectName("frmFolder6");
    setWindowTitle("Select Temp Folder");
    auto* layout = new QVBoxLayout(this);
    auto* where = new QLabel(ToQt(folder_), this);
    where->setObjectName("lblFolder");
    layout->addWidget(where);
    file1_ = new QListWidget(this);
    file1_->setObjectName("File1");
    file1_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    layout->addWidget(file1_, 1);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    connect(AddButton(this, row, "Command1", "Delete Selected"), &QPushButton::clicked, this,
            &frmFolder6::deleteSelected);
    connect(AddButton(this, row, "Command2", "Delete All"), &QPushButton::clicked, this, &frmFolder6::deleteAll);
    connect(AddButton(this, row, "Command3", "Close"), &QPushButton::clicked, this, &QDialog::close);
    resize(560, 420);
    refill();
}

void frmFolder6::refill() {
    file1_->clear();
    if (folder_.empty()) return;
    std::error_code ec;
    const fs::path root = tools::HostPath(folder_);
    std::vector<std::string> names;
    for (fs::recursive_directory_iterator it(root, ec), end; !ec && it != end; it.increment(ec)) {
        if (!it->is_regular_file(ec)) continue;
        std::string relative = tools::SystemPath(it->path().lexically_relative(root));
        for (char& c : relative) c = c == '/' ? '\\' : c;
        names.push_back(std::move(relative));
    }
    std::sort(names.begin(), names.end());
    for (const auto& name : names) file1_->addItem(ToQt(name));
}

void frmFolder6::deleteSelected() {
    std::vector<std::string> files;
    for (const QListWidgetItem* item : file1_->selectedItems()) files.push_back(folder_ + "\\" + FromQt(item->text()));
    if (files.empty()) return;
    archives::DeleteSelectedFiles(ctx_, folder_, files);
    refill();
}

void frmFolder6::deleteAll() {
    if (ctx_.ui) ctx_.ui->busy(true);
    archives::ClearFolder(ctx_, folder_);
    if (ctx_.ui) ctx_.ui->busy(false);
    refill();
}

frmFolder2::frmFolder2(app::AppContext& ctx, const std::string& startFolder, bool withNewFolder, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName("frmFolder2");
    setWindowTitle("Save Unpacked Files in:-");
    auto* layout = new QVBoxLayout(this);
    auto* pick = new QHBoxLayout;
    layout->addLayout(pick);
    dir1_ = new QLineEdit(ToQt(startFolder), this);
    dir1_->setObjectName("Dir1");
    pick->addWidget(dir1_, 1);
    connect(AddButton(this, pick, "cmdBrowse", "Browse..."), &QPushButton::clicked, this, &frmFolder2::browse);
    auto* label = new QLabel("Add new folder", this);
    label->setObjectName("Label1");
    text1_ = new QLineEdit(this);
    text1_->setObjectName("Text1");
    layout->addWidget(label);
    layout->addWidget(text1_);
    label->setVisible(withNewFolder);
    text1_->setVisible(withNewFolder);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    row->addStretch();
    connect(AddButton(this, row, "Command1", "Confirm"), &QPushButton::clicked, this, &frmFolder2::confirm);
    connect(AddButton(this, row, "Command2", "Cancel"), &QPushButton::clicked, this, &QDialog::reject);
    resize(520, 160);
}

void frmFolder2::browse() {
    if (!ctx_.ui) return;
    const auto chosen = ctx_.ui->chooseFolder("Save Unpacked Files in:-", FromQt(dir1_->text()));
    if (chosen && !chosen->empty()) dir1_->setText(ToQt(*chosen));
}

void frmFolder2::confirm() {
    const std::string name = text1_->isHidden() ? std::string() : FromQt(text1_->text().trimmed());
    result_ = archives::ConfirmUnpackFolder(ctx_, FromQt(dir1_->text().trimmed()), name);
    if (result_) accept();
}

std::optional<std::string> ChooseUnpackFolder(app::AppContext& ctx, QWidget* parent, const std::string& startFolder,
                                              bool withNewFolder) {
    frmFolder2 screen(ctx, startFolder, withNewFolder, parent);
    if (screen.exec() != QDialog::Accepted) return std::nullopt;
    return screen.result();
}

}  // namespace ferrolund::screens
