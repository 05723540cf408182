#include "screens/archives/frmNewZip.h"

#include <QAction>
#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "archives/extract_command.h"
#include "screens/app/qt_text.h"

namespace ferrolund::screens {

frmNewZip::frmNewZip(app::AppContext& ctx, const std::string& packageName, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName("frmNewZip");
    setWindowTitle("Zip Manager");
    auto* bar = new QMenuBar(this);
    QMenu* file = bar->addMenu("Archive");
    connect(addAction(file, "mnuNew", "New Archive"), &QAction::triggered, this, &frmNewZip::newArchive);
    connect(addAction(file, "mnuMulti", "New Multi-Part Archive"), &QAction::triggered, this,
            &frmNewZip::newMultiPart);
    connect(addAction(file, "mnuOpen", "Open Archive"), &QAction::triggered, this, &frmNewZip::openArchive);
    connect(addAction(file, "mnuClose", "Close Archive"), &QAction::triggered, this, &frmNewZip::closeArchive);
    connect(addAction(file, "mnuExit", "Exit"), &QAction::triggered, this, &QDialog::close);
    QMenu* add = bar->addMenu("Add");
    connect(addAction(add, "mnuAdd", "Add File(s)"), &QAction::triggered, this, &frmNewZip::addFiles);
    connect(addAction(add, "mnuAddFold", "Add Folder"), &QAction::triggered, this, &frmNewZip::addFolder);
    QMenu* ext = bar->addMenu("Extract");
    auto extract = [this](bool selectedOnly, bool here) {
        return [this, selectedOnly, here] {
            if (zip_.extract(ctx_, selectedOnly, selectedEntries(), here)) sb1_->setText(archives::kExtractCompleted);
        };
    };
    connect(addAction(ext, "mnuExt", "Extract All"), &QAction::triggered, this, extract(false, false));
    connect(addAction(ext, "mnuExtSel", "Extract Selected"), &QAction::triggered, this, extract(true, false));
    connect(addAction(ext, "mnuExtCur", "Exract to Current Folder"), &QAction::triggered, this, extract(false, true));

    name_ = new QLineEdit(ToQt(packageName), this);
    name_->setObjectName("txtName");
    text1_ = new QLineEdit(this);
    text1_->setObjectName("Text1");
    text2_ = new QLineEdit(this);
    text2_->setObjectName("Text2");
    multiple_ = new QCheckBox("Produce multiple Zip files?", this);
    multiple_->setObjectName("chkMulti");
    fullPath_ = new QCheckBox("Fullpath", this);
    fullPath_->setObjectName("chkFullPath");
    fullPath_->setChecked(zip_.fullPath);
    connect(fullPath_, &QCheckBox::toggled, this, [this](bool on) { zip_.fullPath = on; });
    slider1_ = new QSlider(Qt::Horizontal, this);
    slider1_->setObjectName("Slider1");
    slider1_->setRange(0, 9);
    slider1_->setToolTip("Adjust zip compression 0=None 9=Highest (but slow)");
    connect(slider1_, &QSlider::valueChanged, this, &frmNewZip::setCompression);
    auto* go = new QPushButton("Process", this);
    go->setObjectName("Command2");
    connect(go, &QPushButton::clicked, this, &frmNewZip::process);
    label4_ = new QLabel(this);
    label4_->setObjectName("Label4");
    sb1_ = new QLabel(this);
    sb1_->setObjectName("SB1");

    vsfg1_ = new QTableWidget(0, 5, this);
    vsfg1_->setObjectName("VSFG1");
    vsfg1_->setHorizontalHeaderLabels(
        {"Index", "File Name", "Compressed Size", "Uncompressed Size", "Modification Date"});
    vsfg1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    vsfg1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vsfg1_->verticalHeader()->hide();
    vsfg1_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    auto* form = new QFormLayout;
    form->addRow("Package / archive name", name_);
    form->addRow("Pattern (Add Folder)", text1_);
    form->addRow("Approx. size of each .zip in Mbytes.", text2_);
    form->addRow("Adjust zip compression 0=None 9=Highest (but slow)", slider1_);
    layout->addLayout(form);
    auto* row = new QHBoxLayout;
    row->addWidget(multiple_);
    row->addWidget(fullPath_);
    row->addStretch();
    row->addWidget(go);
    layout->addLayout(row);
    layout->addWidget(label4_);
    layout->addWidget(vsfg1_, 1);
    layout->addWidget(sb1_);
    resize(820, 520);
    slider1_->setValue(zip_.compressionLevel);
    setCompression(zip_.compressionLevel);
}

QAction* frmNewZip::addAction(QMenu* menu, const char* name, const char* caption) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    actions_.push_back(a);
    return a;
}

QAction* frmNewZip::action(const std::string& name) const {
    const auto it = std::find_if(actions_.begin(), actions_.end(),
                                 [&](QAction* a) { return a->objectName().toStdString() == name; });
    return it == actions_.end() ? nullptr : *it;
}

std::vector<std::size_t> frmNewZip::selectedEntries() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : vsfg1_->selectionModel()->selectedRows()) {
        rows.push_back(static_cast<std::size_t>(index.row()));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void frmNewZip::setCompression(int level) {
    zip_.compressionLevel = level;
    sb1_->setText("Compression Level = " + QString::number(level));
}

void frmNewZip::fill() {
    const auto& entries = zip_.archive().entries();
    vsfg1_->setRowCount(static_cast<int>(entries.size()));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto& e = entries[i];
        const QString cells[] = {QString::number(e.index), ToQt(e.stored), QString::number(e.compressedSize),
                                 QString::number(e.size), ToQt(archives::FormatEntryTime(e.modified))};
        for (int c = 0; c < 5; ++c) vsfg1_->setItem(static_cast<int>(i), c, new QTableWidgetItem(cells[c]));
    }
    if (zip_.isOpen()) setWindowTitle("Zip Manager - " + ToQt(zip_.archive().path()));
    else setWindowTitle("Zip Manager");
}

void frmNewZip::newArchive() {
    const std::string name = FromQt(name_->text().trimmed());
    std::string path;
    if (!name.empty()) {
        path = ctx_.appPath(name);
    } else if (ctx_.ui) {
        const auto chosen = ctx_.ui->chooseSaveFile("New Archive", "Zip|*.zip", ctx_.appRoot);
        if (!chosen || chosen->empty()) return;
        path = *chosen;
    }
    if (path.empty()) return;
    zip_.createArchive(ctx_, path, 0);
    fill();
}

void frmNewZip::newMultiPart() {
    if (!ctx_.ui) return;
    const auto chosen = ctx_.ui->chooseSaveFile("New Multi-Part Archive", "Zip|*.zip", ctx_.appRoot);
    if (!chosen || chosen->empty()) return;
    const auto size = ctx_.ui->input("Multi-Part Zip", "Enter approx. section length in Mb", "10");
    if (!size) return;
    const std::uint64_t part = archives::PartBytes(*size);
    if (part == 0) return;
    zip_.createArchive(ctx_, *chosen, part);
    fill();
}

void frmNewZip::openArchive() {
    if (!ctx_.ui) return;
    const auto chosen = ctx_.ui->chooseOpenFile("Open Archive", "Zip|*.zip", ctx_.appRoot);
    if (!chosen || chosen->empty()) return;
    zip_.openArchive(ctx_, *chosen);
    fill();
}

void frmNewZip::addFiles() {
    if (!archives::NeedOpenArchive(ctx_, zip_.isOpen(), "Add anything to it!") || !ctx_.ui) return;
    const auto chosen = ctx_.ui->chooseOpenFile("Choose File(s) to Add", "All Files (*.*)|*.*", ctx_.appRoot);
    if (!chosen || chosen->empty()) return;
    zip_.addFiles(ctx_, {*chosen});
    fill();
}

void frmNewZip::addFolder() {
    if (!archives::NeedOpenArchive(ctx_, zip_.isOpen(), "Add anything to it!") || !ctx_.ui) return;
    const auto folder = ctx_.ui->chooseFolder("Select folder to add", ctx_.appRoot);
    if (!folder || folder->empty()) return;
    zip_.addFolder(ctx_, *folder, FromQt(text1_->text().trimmed()));
    fill();
}

void frmNewZip::process() {
    const std::string name = FromQt(name_->text().trimmed());
    if (ctx_.ui) ctx_.ui->busy(true);
    const bool done = zip_.process(ctx_, ctx_.appPath(name), multiple_->isChecked(), FromQt(text2_->text()));
    if (ctx_.ui) ctx_.ui->busy(false);
    if (done) label4_->setText(ToQt(zip_.zipFileLabel));
    fill();
}

void frmNewZip::closeArchive() {
    zip_.closeArchive();
    fill();
}

bool frmNewZip::startPackaging() {
    if (!ctx_.ui) return false;
    const base::Answer a = ctx_.ui->ask("Click OK to start processing zip file (may take a little time)",
                                       base::Buttons::OkCancel, base::Icon::Information);
    if (a != base::Answer::Ok) return false;
    const std::string name = FromQt(name_->text().trimmed());
    if (ctx_.ui) ctx_.ui->busy(true);
    zip_.createArchive(ctx_, ctx_.appPath(name), 0);
    if (zip_.isOpen()) zip_.addFolder(ctx_, ctx_.appPath(name), {});
    if (ctx_.ui) ctx_.ui->busy(false);
    fill();
    return zip_.isOpen();
}

frmNewZip* ShowZipManager(app::AppContext& ctx, QWidget* parent, const std::string& packageName) {
    auto* screen = new frmNewZip(ctx, packageName, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    if (!packageName.empty()) screen->startPackaging();
    return screen;
}

}  // namespace ferrolund::screens
