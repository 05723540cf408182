#include "screens/archives/frmNewAP.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "screens/app/qt_text.h"
#include "screens/archives/ap_entries_model.h"
#include "screens/archives/archive_search.h"

namespace ferrolund::screens {

frmNewAP::frmNewAP(app::AppContext& ctx, const std::string& openAtLoad, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName("frmNewAP");
    model_ = new ApEntriesModel(viewer_, this);
    vsfg1_ = new QTableView(this);
    vsfg1_->setObjectName("VSFG1");
    vsfg1_->setModel(model_);
    vsfg1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    vsfg1_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    vsfg1_->verticalHeader()->setDefaultSectionSize(20);
    vsfg1_->horizontalHeader()->setStretchLastSection(true);
    vsfg1_->setContextMenuPolicy(Qt::CustomContextMenu);
    apFiles_ = new QMenu(this);
    apFiles_->setObjectName("mnuAPFiles");
    connect(addAction(apFiles_, "mnuAPOpen", "Open .bin"), &QAction::triggered, this, [this] { viewRow(menuRow_); });
    connect(vsfg1_, &QTableView::customContextMenuRequested, this, [this](const QPoint& at) {
        if (QMenu* menu = entryMenu(vsfg1_->indexAt(at).row())) menu->popup(vsfg1_->viewport()->mapToGlobal(at));
    });

    auto* bar = new QMenuBar(this);
    QMenu* files = bar->addMenu("Archives");
    files->setObjectName("mnuFiles");
    connect(addAction(files, "mnuOpen", "Open Archive"), &QAction::triggered, this, &frmNewAP::chooseAndOpen);
    connect(addAction(files, "mnuClose", "Close Archive"), &QAction::triggered, this, &frmNewAP::closeArchive);
    connect(addAction(files, "mnuExit", "Exit"), &QAction::triggered, this, &QDialog::close);
    QMenu* process = bar->addMenu("Extract Files");
    process->setObjectName("mnuProcess");
    connect(addAction(process, "mnuExt", "Extract All"), &QAction::triggered, this, [this] { extract(false, false); });
    connect(addAction(process, "mnuExtCur", "Extract ALL  to Same Folder as .AP"), &QAction::triggered, this,
            [this] { extract(false, true); });
    connect(addAction(process, "mnuExtSel", "Extract Selected"), &QAction::triggered, this,
            [this] { extract(true, false); });
    connect(addAction(process, "mnuSelAP", "Extract Selected to same folder as .AP"), &QAction::triggered, this,
            [this] { extract(true, true); });
    QMenu* search = bar->addMenu("Search");
    search->setObjectName("mnuSearch");
    connect(addAction(search, "mnuFindAP", "Find .ap files"), &QAction::triggered, this, &frmNewAP::findApFiles);
    connect(addAction(search, "mnuFind", "Find File"), &QAction::triggered, this, &frmNewAP::findFile);
    connect(addAction(search, "mnuFindFiles", "Find Files(Pattern Match)"), &QAction::triggered, this,
            &frmNewAP::findFiles);

    includeSub_ = new QCheckBox("Include Sub-Directories", this);
    includeSub_->setObjectName("chkSubDirs");
    fullPath_ = new QCheckBox("Fullpath", this);
    fullPath_->setObjectName("chkFullPath");
    connect(includeSub_, &QCheckBox::toggled, this, [this](bool on) { viewer_.includeSubDirectories = on; });
    connect(fullPath_, &QCheckBox::toggled, this, [this](bool on) { viewer_.fullPath = on; });
    auto* refresh = new QPushButton("Refresh", this);
    refresh->setObjectName("Command1");
    connect(refresh, &QPushButton::clicked, this, &frmNewAP::refresh);
    abort_ = new QPushButton("&Abort", this);
    abort_->setObjectName("cmdAbort");
    abort_->setEnabled(false);
    connect(abort_, &QPushButton::clicked, this, [this] { ctx_.abortFlag = true; });

    text_ = new QPlainTextEdit(this);
    text_->setObjectName("RTB1");
    text_->setReadOnly(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFont("Monospace"));

    dirs_ = new QLabel(this);
    dirs_->setObjectName("lblDirs");
    files_ = new QLabel(this);
    files_->setObjectName("lblFiles");
    status_ = new QLabel(this);
    status_->setObjectName("SB1");

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    auto* options = new QHBoxLayout;
    options->addWidget(includeSub_);
    options->addWidget(fullPath_);
    options->addStretch();
    options->addWidget(abort_);
    options->addWidget(refresh);
    layout->addLayout(options);
    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(vsfg1_);
    split->addWidget(text_);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 1);
    layout->addWidget(split, 1);
    auto* hint = new QLabel("To view contents of file, click to select it, then right click.", this);
    hint->setObjectName("Label1");
    layout->addWidget(hint);
    auto* panels = new QHBoxLayout;
    panels->addWidget(dirs_);
    panels->addWidget(files_);
    panels->addWidget(status_, 1);
    layout->addLayout(panels);
    resize(900, 600);
    fill();
    if (!openAtLoad.empty()) openArchive(openAtLoad);
}

frmNewAP::~frmNewAP() = default;

QAction* frmNewAP::addAction(QMenu* menu, const char* name, const char* caption) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    actions_.push_back(a);
    return a;
}

QAction* frmNewAP::action(const std::string& name) const {
    for (QAction* a : actions_) {
        if (a->objectName().toStdString() == name) return a;
    }
    return nullptr;
}

std::vector<std::size_t> frmNewAP::selectedEntries() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : vsfg1_->selectionModel()->selectedRows()) {
        rows.push_back(static_cast<std::size_t>(index.row()));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void frmNewAP::fill() {
    model_->refresh();
    setWindowTitle(ToQt(viewer_.caption()));
    dirs_->setText("Dirs: " + QString::number(viewer_.folderCount()));
    files_->setText("Files: " + QString::number(viewer_.fileCount()));
    if (viewer_.isOpen()) vsfg1_->resizeColumnsToContents();
    syncOptions();
}

void frmNewAP::syncOptions() {
    includeSub_->setChecked(viewer_.includeSubDirectories);
    fullPath_->setChecked(viewer_.fullPath);
}

void frmNewAP::openArchive(const std::string& path) {
    if (ctx_.ui) ctx_.ui->busy(true);
    viewer_.openArchive(ctx_, path);
    if (ctx_.ui) ctx_.ui->busy(false);
    text_->clear();
    fill();
}

void frmNewAP::chooseAndOpen() {
    if (!ctx_.ui) return;
    const auto file = ctx_.ui->chooseOpenFile(
        "Open Archive", "AP Files (*.ap)|*.ap|Zip Files (*.zip)|*.zip|All Files (*.*)|*.*", ctx_.gameRoot());
    if (!file || file->empty()) return;
    openArchive(*file);
}

void frmNewAP::closeArchive() {
    viewer_.closeArchive();
    text_->clear();
    fill();
}

void frmNewAP::refresh() {
    if (!viewer_.isOpen()) return;
    // Reopening keeps the options the user set.
    const bool sub = viewer_.includeSubDirectories;
    const bool full = viewer_.fullPath;
    const std::string path = viewer_.archive().path();  // closing the archive clears its own
    openArchive(path);
    viewer_.includeSubDirectories = sub;
    viewer_.fullPath = full;
    syncOptions();
}

void frmNewAP::extract(bool selectedOnly, bool toArchiveFolder) {
    ctx_.abortFlag = false;
    abort_->setEnabled(true);
    const bool done = viewer_.extract(ctx_, selectedOnly, selectedEntries(), toArchiveFolder);
    abort_->setEnabled(false);
    if (done) status_->setText(ToQt(archives::kExtractCompleted));
}

void frmNewAP::findFile() {
    if (!ctx_.ui || !viewer_.isOpen()) return;
    const auto name = ctx_.ui->input("Search For", "Filename: ", {});
    if (!name || name->empty()) return;
    const auto row = viewer_.findFile(ctx_, *name);
    if (!row) return;
    vsfg1_->selectRow(static_cast<int>(*row));
    vsfg1_->scrollTo(model_->index(static_cast<int>(*row), 0));
}

void frmNewAP::findFiles() {
    if (!ctx_.ui || !viewer_.isOpen()) return;
    const auto pattern = ctx_.ui->input("Search For", "Pattern: ", {});
    if (!pattern || pattern->empty()) return;
    vsfg1_->clearSelection();
    const auto rows = viewer_.findFiles(*pattern);
    for (std::size_t row : rows) {
        vsfg1_->selectionModel()->select(model_->index(static_cast<int>(row), 0),
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    if (!rows.empty()) vsfg1_->scrollTo(model_->index(static_cast<int>(rows.front()), 0));
}

void frmNewAP::findApFiles() {
    abort_->setEnabled(true);
    FindArchivesCommand(ctx_, this, ctx_.gameRoot(), "*.ap");
    abort_->setEnabled(false);
}

void frmNewAP::viewRow(int row) {
    if (row < 0) return;
    vsfg1_->selectRow(row);
    const auto text = viewer_.viewEntry(ctx_, static_cast<std::size_t>(row));
    if (!text) return;
    text_->setPlainText(ToQt(*text));
    status_->setText("File Loaded: " + ToQt(viewer_.archive().entries()[static_cast<std::size_t>(row)].name));
}

QMenu* frmNewAP::entryMenu(int row) {
    if (row < 0) return nullptr;
    menuRow_ = row;
    vsfg1_->selectRow(row);
    return apFiles_;
}

frmNewAP* ShowArchiveScreen(app::AppContext& ctx, QWidget* parent, const std::string& openAtLoad) {
    auto* screen = new frmNewAP(ctx, openAtLoad, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
