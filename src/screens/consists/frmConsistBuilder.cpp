#include "screens/consists/frmConsistBuilder.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>

#include "assets/asset_row.h"
#include "screens/app/qt_text.h"
#include "screens/consists/dlgConGen.h"
#include "tools/text_repair.h"

namespace ferrolund::screens {

namespace {

QTableWidget* Grid(QWidget* parent, const char* name, const QStringList& heads) {
    auto* grid = new QTableWidget(0, static_cast<int>(heads.size()), parent);
    grid->setObjectName(name);
    grid->setHorizontalHeaderLabels(heads);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->verticalHeader()->setDefaultSectionSize(20);
    grid->horizontalHeader()->setStretchLastSection(true);
    return grid;
}

QStringList Headings(const auto& names) {
    QStringList heads;
    for (std::string_view name : names) heads << QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    return heads;
}

QWidget* Titled(QWidget* parent, const char* title, QWidget* inner) {
    auto* box = new QWidget(parent);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(title, box));
    layout->addWidget(inner, 1);
    return box;
}

}  // namespace

frmConsistBuilder::frmConsistBuilder(app::AppContext& ctx, consists::ConsistBuilder builder, QWidget* parent)
    : QDialog(parent), ctx_(ctx), builder_(std::move(builder)) {
    setObjectName("frmConsistBuilder");
    setWindowTitle("Saved Consists");
    setSizeGripEnabled(true);

    auto* bar = new QMenuBar(this);
    QMenu* files = bar->addMenu("Files");
    files->setObjectName("mnuFiles");
    connect(addAction(files, "mnuSelIndex", "Select Index File"), &QAction::triggered, this,
            &frmConsistBuilder::selectIndexFile);
    pop1_ = bar->addMenu("Edit Consists");
    pop1_->setObjectName("mnuPop1");
    connect(addAction(pop1_, "mnuNew", "Add New Consist"), &QAction::triggered, this, &frmConsistBuilder::addNewConsist);
    connect(addAction(pop1_, "mnuInsert", "Insert after Selected"), &QAction::triggered, this,
            [this] { insertAfter(false); });
    connect(addAction(pop1_, "mnuMulti", "Insert Multiple Times"), &QAction::triggered, this,
            [this] { insertAfter(true); });
    connect(addAction(pop1_, "mnuRep", "Replace Item(s)"), &QAction::triggered, this, &frmConsistBuilder::replaceItems);
    connect(addAction(pop1_, "mnuFlip", "Flip"), &QAction::triggered, this, &frmConsistBuilder::flipItems);
    connect(addAction(pop1_, "mnuRename", "Rename Consist"), &QAction::triggered, this,
            &frmConsistBuilder::renameConsist);
    pop1_->addSeparator();
    connect(addAction(pop1_, "mnuDel", "Delete"), &QAction::triggered, this, &frmConsistBuilder::deleteItems);
    QMenu* build = bar->addMenu("Build Consists");
    build->setObjectName("mnuBuild");
    connect(addAction(build, "mnuPool", "Load Pool of Wagons"), &QAction::triggered, this, &frmConsistBuilder::loadPool);
    connect(addAction(build, "mnuGenCon", "Generate Consist"), &QAction::triggered, this,
            &frmConsistBuilder::generateConsist);
    build->addSeparator();
    connect(addAction(build, "mnuClear", "Clear Grid"), &QAction::triggered, this, &frmConsistBuilder::clearGrid);

    vsfg_ = Grid(this, "VSFG", Headings(consists::kTemplateHeadings));
    vsfg_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(vsfg_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { pop1_->popup(vsfg_->viewport()->mapToGlobal(at)); });
    vsfg1_ = Grid(this, "VSFG1", Headings(assets::kAssetHeadings));
    connect(vsfg1_, &QTableWidget::cellDoubleClicked, this, [this] { addSelectedStock(); });

    search_ = new QLineEdit(this);
    search_->setObjectName("txtSearch");
    connect(search_, &QLineEdit::returnPressed, this, &frmConsistBuilder::search);
    connect(addButton("Command4", "Find"), &QPushButton::clicked, this, &frmConsistBuilder::search);
    connect(addButton("Command3", "Find in Stock"), &QPushButton::clicked, this, &frmConsistBuilder::searchStock);
    connect(addButton("Command2", "Add Selected Stock to Consist"), &QPushButton::clicked, this,
            &frmConsistBuilder::addSelectedStock);
    connect(addButton("Command8", "Save"), &QPushButton::clicked, this, &frmConsistBuilder::save);
    connect(addButton("Command1", "Close"), &QPushButton::clicked, this, &QDialog::close);

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(new QLabel("Search for Name:", this));
    searchRow->addWidget(search_, 1);
    searchRow->addWidget(button("Command4"));
    searchRow->addWidget(button("Command3"));
    searchRow->addSpacing(24);
    searchRow->addWidget(button("Command2"));
    searchRow->addStretch();
    searchRow->addWidget(button("Command8"));
    searchRow->addWidget(button("Command1"));

    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(Titled(split, "Saved consists (right-click to edit)", vsfg_));
    split->addWidget(Titled(split, "Rolling stock", vsfg1_));
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->addWidget(split, 1);
    layout->addLayout(searchRow);
    resize(1200, 760);

    fillConsists();
    fillStock();
}

QPushButton* frmConsistBuilder::addButton(const std::string& name, const char* caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(QString::fromStdString(name));
    b->setAutoDefault(false);
    buttons_[name] = b;
    return b;
}

QAction* frmConsistBuilder::addAction(QMenu* menu, const std::string& name, const char* caption) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(QString::fromStdString(name));
    actions_[name] = a;
    return a;
}

QPushButton* frmConsistBuilder::button(const std::string& name) const {
    const auto it = buttons_.find(name);
    return it == buttons_.end() ? nullptr : it->second;
}

QAction* frmConsistBuilder::action(const std::string& name) const {
    const auto it = actions_.find(name);
    return it == actions_.end() ? nullptr : it->second;
}

void frmConsistBuilder::fillConsists(const std::vector<std::size_t>& select) {
    const auto& rows = builder_.rows();
    vsfg_->clearSelection();
    vsfg_->setRowCount(static_cast<int>(rows.size()));
    // Neighbouring consists in turn on two backgrounds, so that where one ends shows.
    const std::vector<consists::ConsistSpan> spans = consists::ConsistSpans(rows);
    for (std::size_t s = 0; s < spans.size(); ++s) {
        const QBrush background = s % 2 ? QBrush(QColor(232, 240, 250)) : QBrush();
        for (std::size_t r = spans[s].first; r < spans[s].end; ++r) {
            const bool missing = consists::StockMissing(ctx_.gameRoot(), rows[r]);
            std::vector<std::string> cells = rows[r].Cells();
            cells[0] = tools::FixEntitiesCopy(cells[0]);
            for (std::size_t c = 0; c < cells.size(); ++c) {
                auto* item = new QTableWidgetItem(ToQt(cells[c]));
                item->setBackground(background);
                if (missing) {
                    item->setForeground(Qt::red);
                    item->setToolTip("Not installed: " + ToQt(consists::StockFile(ctx_.gameRoot(), rows[r])));
                }
                vsfg_->setItem(static_cast<int>(r), static_cast<int>(c), item);
            }
        }
    }
    vsfg_->resizeColumnsToContents();
    for (std::size_t r : select) vsfg_->selectionModel()->select(vsfg_->model()->index(static_cast<int>(r), 0),
                                                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
    if (!select.empty()) showRow(vsfg_, select.front());
}

void frmConsistBuilder::fillStock() {
    const auto& stock = builder_.stock();
    vsfg1_->clearSelection();
    vsfg1_->setRowCount(static_cast<int>(stock.size()));
    for (std::size_t r = 0; r < stock.size(); ++r) {
        const std::vector<std::string> cells = stock[r].Cells();
        for (std::size_t c = 0; c < cells.size(); ++c)
            vsfg1_->setItem(static_cast<int>(r), static_cast<int>(c), new QTableWidgetItem(ToQt(cells[c])));
    }
    vsfg1_->resizeColumnsToContents();
}

std::vector<std::size_t> frmConsistBuilder::selectedRows(const QTableWidget* grid) const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : grid->selectionModel()->selectedRows()) rows.push_back(static_cast<std::size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::optional<std::size_t> frmConsistBuilder::currentRow(const QTableWidget* grid) const {
    const std::vector<std::size_t> rows = selectedRows(grid);
    if (rows.empty()) return std::nullopt;
    const int current = grid->currentRow();
    if (current >= 0 && std::find(rows.begin(), rows.end(), static_cast<std::size_t>(current)) != rows.end())
        return static_cast<std::size_t>(current);
    return rows.front();
}

void frmConsistBuilder::showRow(QTableWidget* grid, std::size_t row) {
    const QModelIndex index = grid->model()->index(static_cast<int>(row), 0);
    grid->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    grid->scrollTo(index);
}

void frmConsistBuilder::selectIndexFile() {
    if (builder_.selectIndexFile()) fillStock();
}

void frmConsistBuilder::loadPool() {
    if (builder_.loadPool()) fillStock();
}

void frmConsistBuilder::generateConsist() {
    if (!builder_.beginNewConsist()) return;
    dlgConGen dialog(this);
    if (dialog.exec() != QDialog::Accepted) return;
    if (!random_) {
        const auto seed = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
        random_ = consists::SeededRandom(seed);
    }
    const std::size_t before = builder_.rows().size();
    const std::size_t added = builder_.generate(dialog.wagons(), dialog.randomness(), random_);
    std::vector<std::size_t> select;
    for (std::size_t r = before; r < before + added; ++r) select.push_back(r);
    fillConsists(select);
}

void frmConsistBuilder::clearGrid() {
    builder_.clearGrid();
    fillConsists();
}

void frmConsistBuilder::addNewConsist() { builder_.addNewConsist(); }

void frmConsistBuilder::addSelectedStock() {
    const std::size_t before = builder_.rows().size();
    if (!builder_.addSelectedStock(selectedRows(vsfg1_))) return;
    std::vector<std::size_t> select;
    for (std::size_t r = before; r < builder_.rows().size(); ++r) select.push_back(r);
    fillConsists(select);
}

void frmConsistBuilder::insertAfter(bool multiple) {
    const std::vector<std::size_t> added = builder_.insertAfter(currentRow(vsfg_), selectedRows(vsfg1_), multiple);
    if (!added.empty()) fillConsists(added);
}

void frmConsistBuilder::replaceItems() {
    const std::vector<std::size_t> placed = builder_.replaceItems(selectedRows(vsfg_), selectedRows(vsfg1_));
    if (!placed.empty()) fillConsists(placed);
}

void frmConsistBuilder::deleteItems() {
    if (builder_.deleteItems(selectedRows(vsfg_))) fillConsists();
}

void frmConsistBuilder::flipItems() {
    const std::vector<std::size_t> selected = selectedRows(vsfg_);
    if (builder_.flipItems(selected)) fillConsists(selected);
}

void frmConsistBuilder::renameConsist() {
    const std::vector<std::size_t> selected = selectedRows(vsfg_);
    if (builder_.renameConsist(selected)) fillConsists(selected);
}

void frmConsistBuilder::search() {
    const int current = vsfg_->currentRow();
    const auto found = builder_.search(FromQt(search_->text()),
                                       current < 0 ? std::nullopt : std::optional<std::size_t>(current));
    if (!found) return;
    vsfg_->selectRow(static_cast<int>(*found));
    showRow(vsfg_, *found);
}

void frmConsistBuilder::searchStock() {
    const int current = vsfg1_->currentRow();
    const auto found = builder_.searchStock(FromQt(search_->text()),
                                            current < 0 ? std::nullopt : std::optional<std::size_t>(current));
    if (!found) return;
    vsfg1_->selectRow(static_cast<int>(*found));
    showRow(vsfg1_, *found);
}

void frmConsistBuilder::save() {
    if (builder_.save().written) close();
}

frmConsistBuilder* ShowConsistBuilder(app::AppContext& ctx, QWidget* parent) {
    const bool suppress =
        ctx.ui->ask(consists::kSuppressQuestion, base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes;
    consists::ConsistBuilder builder(ctx);
    if (!builder.open(suppress)) return nullptr;
    auto* screen = new frmConsistBuilder(ctx, std::move(builder), parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
