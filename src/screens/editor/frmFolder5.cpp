#include "screens/editor/frmFolder5.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include "editor/multi_file_replace.h"
#include "screens/app/qt_text.h"
#include "screens/editor/SearchBoxes.h"
#include "tools/files.h"

namespace ferrolund::screens {

frmFolder5::frmFolder5(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmFolder5");
    setWindowTitle("Multi-file Search & Replace");
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(buildFolderSide());
    split->addWidget(buildCommandSide());
    split->setStretchFactor(0, 2);
    split->setStretchFactor(1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(split);
    resize(1000, 640);

    tools::CreatePath(ctx_.appPath("TempFiles"));
    showFolder(ctx_.gameRoot().empty() ? SystemPathFromQt(QDir::homePath()) : ctx_.gameRoot());
}

QWidget* frmFolder5::buildFolderSide() {
    auto* side = new QWidget(this);
    drive1_ = new QComboBox(side);
    drive1_->setObjectName("Drive1");
    for (const QFileInfo& drive : QDir::drives()) drive1_->addItem(drive.absoluteFilePath());
    dirModel_ = new QFileSystemModel(side);
    dirModel_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    dirModel_->setRootPath(QDir::rootPath());
    dir1_ = new QTreeView(side);
    dir1_->setObjectName("Dir1");
    dir1_->setModel(dirModel_);
    for (int column = 1; column < dirModel_->columnCount(); ++column) dir1_->hideColumn(column);
    dir1_->setHeaderHidden(true);
    label2_ = new QLabel(side);
    label2_->setObjectName("Label2");
    label2_->setWordWrap(true);
    file1_ = new QListWidget(side);
    file1_->setObjectName("File1");
    file1_->setSelectionMode(QAbstractItemView::ExtendedSelection);

    connect(drive1_, &QComboBox::currentTextChanged, this,
            [this](const QString& drive) { dir1_->setCurrentIndex(dirModel_->index(drive)); });
    connect(dir1_, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { showFolder(SystemPathFromQt(dirModel_->filePath(index))); });
    connect(file1_, &QListWidget::itemDoubleClicked, this, [this] { display(); });

    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(drive1_);
    layout->addWidget(dir1_, 2);
    layout->addWidget(label2_);
    layout->addWidget(file1_, 3);
    return side;
}

QWidget* frmFolder5::buildCommandSide() {
    auto* side = new QWidget(this);
    text1_ = new QLineEdit(side);
    text1_->setObjectName("Text1");
    text1_->setReadOnly(true);
    richTextBox1_ = new QPlainTextEdit(side);
    richTextBox1_->setObjectName("RichTextBox1");
    richTextBox1_->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont font("Courier New");
    font.setStyleHint(QFont::Monospace);
    richTextBox1_->setFont(font);
    richTextBox1_->setTabStopDistance(QFontMetricsF(font).horizontalAdvance(' ') * 4);
    boxes_ = new SearchBoxes(ctx_, richTextBox1_, side);

    auto addCommand = [&](const char* name, const char* caption) {
        auto* button = new QPushButton(caption, side);
        button->setObjectName(name);
        button->setAutoDefault(false);
        commands_.push_back(button);
        return button;
    };
    QPushButton* display = addCommand("Command7", "Display");
    QPushButton* replace = addCommand("Command8", "Replace in all selected files");
    QPushButton* save = addCommand("Command9", "Save Selected as XML");
    QPushButton* selectAll = addCommand("Command10", "Select All");
    connect(display, &QPushButton::clicked, this, &frmFolder5::display);
    connect(replace, &QPushButton::clicked, this, &frmFolder5::replaceInSelected);
    connect(save, &QPushButton::clicked, this, &frmFolder5::saveSelectedAsXml);
    connect(selectAll, &QPushButton::clicked, this, &frmFolder5::selectAll);
    abort_ = new QPushButton("&Abort", side);
    abort_->setObjectName("cmdAbort");
    abort_->setAutoDefault(false);
    abort_->setEnabled(false);
    connect(abort_, &QPushButton::clicked, this, [this] { ctx_.abortFlag = true; });

    auto* commands = new QGridLayout;
    commands->addWidget(display, 0, 0);
    commands->addWidget(selectAll, 0, 1);
    commands->addWidget(replace, 1, 0);
    commands->addWidget(save, 1, 1);
    progress_ = new QProgressBar(side);
    progress_->setObjectName("ProgressBar1");
    progress_->setVisible(false);
    runLabel_ = new QLabel(side);
    runLabel_->setObjectName("lblRun");
    runLabel_->setWordWrap(true);
    auto* run = new QHBoxLayout;
    run->addWidget(progress_, 1);
    run->addWidget(abort_);

    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(boxes_);
    layout->addLayout(commands);
    layout->addLayout(run);
    layout->addWidget(runLabel_);
    layout->addWidget(text1_);
    layout->addWidget(richTextBox1_, 1);
    return side;
}

void frmFolder5::showFolder(const std::string& folder) {
    folder_ = folder;
    while (folder_.size() > 1 && (folder_.back() == '\\' || folder_.back() == '/')) folder_.pop_back();
    const QModelIndex index = dirModel_->index(DiskPathToQt(folder_));
    if (index.isValid()) {
        dir1_->setCurrentIndex(index);
        dir1_->scrollTo(index);
    }
    label2_->setText(ToQt(editor::RailWorksPart(folder_)));
    file1_->clear();
    for (const std::string& name : editor::FolderFiles(folder_)) file1_->addItem(ToQt(name));
}

std::vector<std::string> frmFolder5::selectedFiles() const {
    std::vector<std::string> paths;
    for (int row = 0; row < file1_->count(); ++row) {
        if (file1_->item(row)->isSelected()) paths.push_back(folder_ + "\\" + FromQt(file1_->item(row)->text()));
    }
    return paths;
}

void frmFolder5::selectAll() { file1_->selectAll(); }

void frmFolder5::display() {
    const QListWidgetItem* item = file1_->currentItem();
    if (!item) return;
    const std::string path = folder_ + "\\" + FromQt(item->text());
    ctx_.ui->busy(true);
    text1_->setText(ToQt(path));
    richTextBox1_->setPlainText(ToQt(editor::DisplayAsXml(ctx_, path)));
    ctx_.ui->busy(false);
}

void frmFolder5::running(bool on) {
    running_ = on;
    for (QPushButton* button : commands_) button->setEnabled(!on);
    abort_->setEnabled(on);
    progress_->setVisible(on);
    if (!on && closeAfterRun_) QMetaObject::invokeMethod(this, &QDialog::close, Qt::QueuedConnection);
}

void frmFolder5::closeEvent(QCloseEvent* event) {
    if (!running_) {
        event->accept();
        return;
    }
    ctx_.abortFlag = true;
    closeAfterRun_ = true;
    event->ignore();
}

void frmFolder5::showProgress(int index, int count, const std::string& path) {
    progress_->setRange(0, count);
    progress_->setValue(index);
    text1_->setText(ToQt(path));
}

void frmFolder5::replaceInSelected() {
    const std::vector<std::string> files = selectedFiles();
    const std::string what = FromQt(boxes_->searchFor()->text());
    if (files.empty() || what.empty()) return;
    running(true);
    editor::ReplaceInFilesHooks hooks;
    hooks.progress = [this](int index, int count, const std::string& path) { showProgress(index, count, path); };
    hooks.show = [this](const std::string& xml) { richTextBox1_->setPlainText(ToQt(xml)); };
    const editor::ReplaceInFilesRun run =
        editor::ReplaceInFiles(ctx_, files, what, FromQt(boxes_->replaceWith()->text()), hooks);
    running(false);
    QString summary = QString("%1 of %2 files changed").arg(run.changed.size()).arg(files.size());
    if (run.stopped) summary += "; stopped where the converter failed";
    if (run.aborted) summary += "; aborted";
    if (!run.unreadable.empty()) {
        summary += QString("; %1 could not be read:").arg(run.unreadable.size());
        for (const std::string& path : run.unreadable) summary += " " + ToQt(path.substr(path.find_last_of("\\/") + 1));
    }
    runLabel_->setText(summary);
}

void frmFolder5::saveSelectedAsXml() {
    const std::vector<std::string> files = selectedFiles();
    running(true);
    const int converted = editor::SaveSelectedAsXml(
        ctx_, files, [this](int index, int count, const std::string& path) { showProgress(index, count, path); });
    running(false);
    if (converted >= 0) {
        runLabel_->setText(QString("%1 of %2 files saved as XML in ").arg(converted).arg(files.size()) +
                           ToQt(ctx_.appPath("TempXML")));
    }
}

}  // namespace ferrolund::screens
