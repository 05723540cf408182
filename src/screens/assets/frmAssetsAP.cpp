#include "screens/assets/frmAssetsAP.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <filesystem>

#include "assets/asset_row.h"
#include "screens/app/qt_text.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/clone_commands.h"
#include "screens/services/frmReport.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/text_search.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kInstructions =
    "1. Choose the folder to search (the simulator's Assets folder at first) and click 'Find .ap files'.\n"
    "2. Click an archive in the first list: its entries that pass the entry filter are listed beside it.\n"
    "   The filter takes wildcards ('*' for every entry); 'Rolling stock only' keeps the vehicles.\n"
    "3. Select entries and click 'Add Selected to List': each blueprint is read inside the archive and\n"
    "   gets its row, numbered on from your Index.csv.\n"
    "4. Save the list, or append it to your Index.csv file so that the consist screens know the stock.";

}  // namespace

frmAssetsAP::frmAssetsAP(app::AppContext& ctx, std::function<void(const std::string&)> openInEditor, QWidget* parent)
    : QDialog(parent), ctx_(ctx), openInEditor_(std::move(openInEditor)) {
    setObjectName("frmAssetsAP");
    setWindowTitle("Build List of Assets in .AP files");
    setSizeGripEnabled(true);

    AssetGridSetup setup;
    setup.headings.assign(assets::kAssetHeadings.begin(), assets::kAssetHeadings.end());
    setup.widthsTwips = {1995, 1995, 6000, 3000, 1020, 2505, 2505, 600};
    setup.printTitle = "Build List of Assets in .AP files";
    grid_ = new AssetGrid(ctx_, setup, this);

    folder_ = new QLineEdit(this);
    folder_->setObjectName("txtFolder");
    auto* browse = FolderButton(ctx_, folder_, "Build List of Assets in .AP files", this);
    mask_ = new QLineEdit(assets::kDefaultEntryMask, this);
    mask_->setObjectName("txtFilter");
    connect(mask_, &QLineEdit::editingFinished, this, &frmAssetsAP::refilter);
    rollingStock_ = new QCheckBox(ToQt(ctx_.langText(465, "Rolling stock only", "frmAssets")), this);
    rollingStock_->setObjectName("chkRolling");
    connect(rollingStock_, &QCheckBox::toggled, this, &frmAssetsAP::refilter);

    archives_ = new QListWidget(this);
    archives_->setObjectName("lstAP");
    connect(archives_, &QListWidget::currentRowChanged, this, &frmAssetsAP::chooseArchive);
    entries_ = new QListWidget(this);
    entries_->setObjectName("lstEntries");
    entries_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    archiveLabel_ = new QLabel(this);
    archiveLabel_->setObjectName("lblArchive");

    addButton("cmdFind", "Find .ap files", &frmAssetsAP::findApFiles);
    addButton("cmdAdd", "Add Selected to List", &frmAssetsAP::addSelectedEntries);
    addButton("cmdOpen", "Open in Editor", &frmAssetsAP::openInEditor)->setEnabled(static_cast<bool>(openInEditor_));
    connect(addButton("cmdSaveAP", "Save .ap index", nullptr), &QPushButton::clicked, this,
            [this] { list_.saveApIndex(ctx_); });
    connect(addButton("cmdAppend", "Append to your Index.csv file", nullptr), &QPushButton::clicked, this,
            [this] { list_.appendToIndex(ctx_); });

    auto* instructions = new QGroupBox("INSTRUCTIONS", this);
    auto* instructionsLayout = new QVBoxLayout(instructions);
    instructionsLayout->addWidget(new QLabel(kInstructions, instructions));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(instructions);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(new QLabel("Folder", this));
    folderRow->addWidget(folder_, 1);
    folderRow->addWidget(browse);
    folderRow->addWidget(button("cmdFind"));
    layout->addLayout(folderRow);
    auto* filterRow = new QHBoxLayout;
    filterRow->addWidget(new QLabel("Entry filter", this));
    filterRow->addWidget(mask_);
    filterRow->addWidget(rollingStock_);
    filterRow->addStretch();
    filterRow->addWidget(archiveLabel_);
    layout->addLayout(filterRow);
    auto* lists = new QSplitter(Qt::Horizontal, this);
    lists->addWidget(archives_);
    lists->addWidget(entries_);
    lists->setStretchFactor(1, 2);
    layout->addWidget(lists, 1);
    auto* commands = new QHBoxLayout;
    for (const char* name : {"cmdAdd", "cmdOpen", "cmdSaveAP", "cmdAppend"}) commands->addWidget(button(name));
    buttons_["cmdClone"] = CloneButton(ctx_, this, [this](assets::CloneLevel level) { return cloneSources(level); });
    commands->addWidget(button("cmdClone"));
    commands->addStretch();
    layout->addLayout(commands);
    layout->addWidget(grid_, 2);

    // What the screen starts with: the simulator's Assets, and a fresh TempFiles.
    folder_->setText(ToQt(ctx_.gameRoot().empty() ? std::string() : ctx_.gameRoot() + "\\Assets\\"));
    const std::string temp = ctx_.appPath("TempFiles");
    std::error_code error;
    if (std::filesystem::is_directory(tools::HostPath(temp), error)) tools::DeleteFolderTree(ctx_, temp);
    tools::CreatePath(temp);
    resize(1200, 820);
}

QPushButton* frmAssetsAP::addButton(const std::string& name, const std::string& caption,
                                    void (frmAssetsAP::*command)()) {
    auto* b = new QPushButton(ToQt(caption), this);
    b->setObjectName(QString::fromStdString(name));
    b->setAutoDefault(false);
    if (command) connect(b, &QPushButton::clicked, this, command);
    buttons_[name] = b;
    return b;
}

QPushButton* frmAssetsAP::button(const std::string& name) const {
    const auto it = buttons_.find(name);
    return it == buttons_.end() ? grid_->button(name) : it->second;
}

void frmAssetsAP::findApFiles() {
    archives_->clear();
    entries_->clear();
    if (ctx_.ui) ctx_.ui->busy(true);
    list_.findApFiles(ctx_, FromQt(folder_->text().trimmed()));
    if (ctx_.ui) ctx_.ui->busy(false);
    // Each archive by its place below the folder searched; the whole path in its tip.
    const std::string folder = FromQt(folder_->text().trimmed());
    for (const auto& file : list_.apFiles()) {
        std::string shown = file;
        if (shown.size() > folder.size() && shown.compare(0, folder.size(), folder) == 0) shown = shown.substr(folder.size());
        if (!shown.empty() && (shown.front() == '\\' || shown.front() == '/')) shown.erase(0, 1);
        auto* item = new QListWidgetItem(ToQt(shown), archives_);
        item->setToolTip(ToQt(file));
    }
    if (ctx_.ui && list_.apFiles().empty())
        ctx_.ui->message("No .ap files were found in " + FromQt(folder_->text()), base::Icon::Information);
}

void frmAssetsAP::refilter() {
    list_.filter.mask = FromQt(mask_->text().trimmed());
    list_.filter.rollingStockOnly = rollingStock_->isChecked();
    if (archives_->currentRow() < 0) return;
    list_.refreshEntries();
    entries_->clear();
    for (const auto& entry : list_.entries()) entries_->addItem(ToQt(entry.stored));
}

void frmAssetsAP::chooseArchive(int row) {
    entries_->clear();
    if (row < 0 || static_cast<std::size_t>(row) >= list_.apFiles().size()) return;
    list_.filter.mask = FromQt(mask_->text().trimmed());
    list_.filter.rollingStockOnly = rollingStock_->isChecked();
    const std::string& file = list_.apFiles()[static_cast<std::size_t>(row)];
    archiveLabel_->setText(ToQt(file));
    if (!list_.chooseArchive(ctx_, file)) return;
    for (const auto& entry : list_.entries()) entries_->addItem(ToQt(entry.stored));
}

void frmAssetsAP::addSelectedEntries() {
    std::vector<std::size_t> indices;
    for (int i = 0; i < entries_->count(); ++i) {
        if (entries_->item(i)->isSelected()) indices.push_back(list_.entries()[static_cast<std::size_t>(i)].index);
    }
    if (indices.empty()) {
        if (ctx_.ui) ctx_.ui->message(ctx_.langText(466, {}, "frmAssets"), base::Icon::Exclamation);
        return;
    }
    const std::size_t before = list_.rows().size();
    std::vector<std::string> problems;
    ctx_.abortFlag = false;
    list_.addEntries(ctx_, indices, problems);
    std::vector<std::vector<std::string>> cells;
    for (std::size_t i = before; i < list_.rows().size(); ++i) cells.push_back(list_.rows()[i].Cells());
    grid_->appendRows(std::move(cells));
    if (!problems.empty()) {
        std::string report;
        for (const auto& p : problems) report += p + "\r\n";
        ShowReport(ctx_, this, "Entries that could not be listed", report);
    }
}

void frmAssetsAP::openInEditor() {
    const int row = entries_->currentRow();
    if (list_.archive().isOpen() && row < 0) {
        if (ctx_.ui) ctx_.ui->message("Select the entry to open in the list of entries first.", base::Icon::Exclamation);
        return;
    }
    // Without an open archive the core says what to do first.
    const std::size_t index = row < 0 ? list_.archive().entries().size() : list_.entries()[static_cast<std::size_t>(row)].index;
    const std::optional<std::string> file = list_.openInEditor(ctx_, index);
    if (file && openInEditor_) openInEditor_(*file);
}

std::vector<assets::CloneSource> frmAssetsAP::cloneSources(assets::CloneLevel level) const {
    // An item that is not installed loose is unpacked from the open archive first; its
    // clone goes to the simulator's Assets all the same.
    const std::string unpacked = ctx_.appPath("TempFiles\\Unpacked");
    std::vector<assets::CloneSource> sources;
    for (std::size_t index : grid_->selectedRows()) {
        const assets::AssetRow row = assets::AssetRow::FromCells(grid_->grid().rows()[index]);
        if (tools::TrimBlanks(row.provider).empty()) continue;
        assets::CloneSource source = assets::SourceOfRow(ctx_, row);
        if (!tools::FileExists(source.file())) {
            const auto place = assets::PlaceOf(source, level);
            if (place && list_.unpackFolder(ctx_, place->folder, unpacked) > 0) {
                source.targetRoot = source.root;
                source.root = unpacked;
            }
        }
        sources.push_back(std::move(source));
    }
    return sources;
}

void ShowAssetsAP(app::AppContext& ctx, QWidget* parent, std::function<void(const std::string&)> openInEditor) {
    auto* screen = new frmAssetsAP(ctx, std::move(openInEditor), parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
}

}  // namespace ferrolund::screens
