#include "screens/assets/frmContent.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/clone_commands.h"
#include "screens/assets/frmEdCont.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmContent";

// Column widths of the list, in twips.
const std::vector<int> kWidths{3000, 5400, 3000, 3000, 600};

std::string Joined(const std::vector<std::string>& cells) {
    std::string key;
    for (const std::string& cell : cells) key += cell + '\t';
    return key;
}

}  // namespace

frmContent::frmContent(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmContent");
    setWindowTitle(assets::kContentCaption);
    setSizeGripEnabled(true);

    AssetGridSetup setup;
    setup.headings.assign(assets::kContentHeadings.begin(), assets::kContentHeadings.end());
    setup.widthsTwips = kWidths;
    setup.langModule = kModule;
    setup.printTitle = assets::kContentCaption;
    grid_ = new AssetGrid(ctx_, setup, this);
    connect(grid_->view(), &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.column() == 0) openRow(static_cast<std::size_t>(index.row()));
    });

    folder_ = new QLineEdit(ToQt(assets::ContentList::StartFolder(ctx_)), this);
    folder_->setObjectName("txtFolder");
    auto* browse = FolderButton(ctx_, folder_, assets::kContentCaption, this);

    connect(addButton("cmdAdd", 437, "Add to List"), &QPushButton::clicked, this, &frmContent::addToList);
    connect(addButton("cmdZero", 438, "Find Zero Length Files"), &QPushButton::clicked, this,
            &frmContent::findZeroLength);
    connect(addButton("cmdDelete", 454, "Delete Selected"), &QPushButton::clicked, this, &frmContent::deleteSelected);
    auto* save = new QPushButton("Save .bin grid", this);
    save->setObjectName("cmdBinGrid");
    save->setAutoDefault(false);
    buttons_["cmdBinGrid"] = save;
    connect(save, &QPushButton::clicked, this, &frmContent::saveBinGrid);
    abort_ = new QPushButton(ToQt(ctx_.langText(383, "&Abort", "frmDelRoute")), this);
    abort_->setObjectName("cmdAbort");
    abort_->setAutoDefault(false);
    abort_->hide();
    connect(abort_, &QPushButton::clicked, this, [this] { ctx_.abortFlag = true; });

    auto* layout = new QVBoxLayout(this);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(new QLabel("Folder", this));
    folderRow->addWidget(folder_, 1);
    folderRow->addWidget(browse);
    layout->addLayout(folderRow);
    auto* commands = new QHBoxLayout;
    for (const char* name : {"cmdAdd", "cmdZero", "cmdDelete", "cmdBinGrid"}) commands->addWidget(button(name));
    // The clone commands take the selected files wherever they lie.
    buttons_["cmdClone"] = CloneButton(ctx_, this, [this](assets::CloneLevel) {
        std::vector<assets::CloneSource> sources;
        for (std::size_t index : grid_->selectedRows())
            if (auto source = assets::SourceOfFile(rowFile(index))) sources.push_back(*source);
        return sources;
    });
    commands->addWidget(button("cmdClone"));
    commands->addStretch();
    commands->addWidget(abort_);
    layout->addLayout(commands);
    layout->addWidget(grid_, 1);
    resize(1200, 720);
}

std::string frmContent::lang(int n, const std::string& fallback) const { return ctx_.langText(n, fallback, kModule); }

QPushButton* frmContent::addButton(const std::string& name, int langNumber, const std::string& fallback) {
    auto* b = new QPushButton(ToQt(lang(langNumber, fallback)), this);
    b->setObjectName(QString::fromStdString(name));
    b->setAutoDefault(false);
    buttons_[name] = b;
    return b;
}

QPushButton* frmContent::button(const std::string& name) const {
    const auto it = buttons_.find(name);
    return it == buttons_.end() ? nullptr : it->second;
}

void frmContent::running(bool on) {
    abort_->setVisible(on);
    for (const auto& [name, b] : buttons_) b->setEnabled(!on);
}

void frmContent::takeRows() {
    std::vector<std::vector<std::string>> cells;
    cells.reserve(list_.rows.size());
    for (const assets::ContentRow& row : list_.rows) {
        cells.push_back(row.Cells());
        if (!row.path.empty()) paths_[Joined(cells.back())] = row.path;
    }
    list_.rows.clear();
    grid_->appendRows(std::move(cells));
}

std::vector<assets::ContentRow> frmContent::gridRows() const {
    std::vector<assets::ContentRow> rows;
    for (const auto& cells : grid_->grid().rows()) {
        assets::ContentRow row = assets::ContentRow::FromCells(cells);
        const auto found = paths_.find(Joined(row.Cells()));
        if (found != paths_.end()) row.path = found->second;
        rows.push_back(std::move(row));
    }
    return rows;
}

void frmContent::addToList() {
    running(true);
    list_.rows.clear();
    list_.addToList(ctx_, FromQt(folder_->text()));
    takeRows();
    running(false);
}

void frmContent::findZeroLength() {
    running(true);
    list_.rows.clear();
    list_.findZeroLength(ctx_, FromQt(folder_->text()));
    takeRows();
    running(false);
}

void frmContent::deleteSelected() {
    list_.rows = gridRows();
    running(true);
    const bool done = list_.deleteSelected(ctx_, grid_->selectedRows(), FromQt(folder_->text()));
    running(false);
    if (!done) {
        list_.rows.clear();
        return;
    }
    grid_->clearList();
    paths_.clear();
    takeRows();
}

void frmContent::saveBinGrid() {
    list_.rows = gridRows();
    list_.saveBinGrid(ctx_);
    list_.rows.clear();
}

std::string frmContent::rowFile(std::size_t row) const {
    if (row >= grid_->grid().rowCount()) return {};
    const auto& cells = grid_->grid().rows()[row];
    const auto found = paths_.find(Joined(assets::ContentRow::FromCells(cells).Cells()));
    if (found != paths_.end()) return found->second;
    return assets::ContentRowFile(ctx_.gameRoot(), assets::ContentRow::FromCells(cells));
}

frmEdCont* frmContent::openRow(std::size_t row) {
    const std::string file = rowFile(row);
    if (file.empty()) return nullptr;
    return ShowContentEditor(ctx_, this, file);
}

frmContent* ShowContent(app::AppContext& ctx, QWidget* parent) {
    auto* screen = new frmContent(ctx, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
