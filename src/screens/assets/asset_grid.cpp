#include "screens/assets/asset_grid.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/services/print_preview.h"
#include "tools/files.h"

namespace ferrolund::screens {

int ListGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(grid_.rowCount());
}

int ListGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(grid_.columnCount());
}

QVariant ListGridModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return ToQt(grid_.cell(static_cast<std::size_t>(index.row()), static_cast<std::size_t>(index.column())));
}

QVariant ListGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    const auto column = static_cast<std::size_t>(section);
    return column < grid_.headings().size() ? ToQt(grid_.headings()[column]) : QVariant();
}

void ListGridModel::rowsAppended(std::size_t before) {
    if (grid_.rowCount() <= before) return;
    beginInsertRows({}, static_cast<int>(before), static_cast<int>(grid_.rowCount() - 1));
    endInsertRows();
}

void ListGridModel::refresh() {
    beginResetModel();
    endResetModel();
}

namespace {
const char* kListFilter = "Comma Separated (*.csv)|*.csv|Excel file (*.xls)|*.xls|Tabbed text file (*.txt)|*.txt";
}

AssetGrid::AssetGrid(app::AppContext& ctx, const AssetGridSetup& setup, QWidget* parent)
    : QWidget(parent), ctx_(ctx), setup_(setup), grid_(setup.headings) {
    model_ = new ListGridModel(grid_, this);
    view_ = new QTableView(this);
    view_->setObjectName("MSFlexGrid1");
    view_->setModel(model_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setWordWrap(false);
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() + 6);
    view_->horizontalHeader()->setStretchLastSection(true);
    view_->installEventFilter(this);
    applyWidths();
    connect(view_, &QTableView::clicked, this, [this](const QModelIndex& index) { emit rowClicked(index.row()); });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { showTotals(); });

    findText_ = new QLineEdit(this);
    findText_->setObjectName("txtFind");
    connect(findText_, &QLineEdit::returnPressed, this, &AssetGrid::findFirstInstance);
    findColumn_ = new QComboBox(this);
    findColumn_->setObjectName("cboColumn");
    for (const auto& heading : setup_.headings) findColumn_->addItem(ToQt(heading));
    total_ = new QLabel("0", this);
    total_->setObjectName("lblTotal");
    selected_ = new QLabel("0", this);
    selected_->setObjectName("lblSelected");

    connect(addButton("cmdFind", 449, "Find First Instance"), &QPushButton::clicked, this,
            &AssetGrid::findFirstInstance);
    connect(addButton("cmdShowAll", 450, "Show All"), &QPushButton::clicked, this, &AssetGrid::showAll);
    connect(addButton("cmdSelectAll", 451, "Select All"), &QPushButton::clicked, this, &AssetGrid::selectAll);
    connect(addButton("cmdUnselect", 452, "Unselect All"), &QPushButton::clicked, this, &AssetGrid::unselectAll);
    connect(addButton("cmdClear", 439, "Clear List"), &QPushButton::clicked, this, &AssetGrid::clearList);
    connect(addButton("cmdSave", 440, "Save List"), &QPushButton::clicked, this, &AssetGrid::saveList);
    connect(addButton("cmdLoad", 441, "Load List"), &QPushButton::clicked, this, &AssetGrid::loadList);
    connect(addButton("cmdRestore", 442, "Restore"), &QPushButton::clicked, this, &AssetGrid::restoreList);
    connect(addButton("cmdPrint", 443, "Print List"), &QPushButton::clicked, this, &AssetGrid::printList);

    hideBox_ = new QGroupBox(ToQt(lang(475, "Hide Columns")), this);
    hideBox_->setObjectName("fraHide");
    auto* hideLayout = new QHBoxLayout(hideBox_);
    hideLayout->setContentsMargins(6, 2, 6, 2);
    for (std::size_t c = 0; c < setup_.headings.size(); ++c) {
        auto* check = new QCheckBox(ToQt(setup_.headings[c]), hideBox_);
        check->setObjectName(QString("chkHide%1").arg(c));
        connect(check, &QCheckBox::toggled, this, [this, c](bool on) {
            grid_.setHidden(c, on);
            view_->setColumnHidden(static_cast<int>(c), on);
        });
        hideLayout->addWidget(check);
        hideChecks_.push_back(check);
    }

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_, 1);
    auto* findRow = new QHBoxLayout;
    findRow->addWidget(new QLabel(ToQt(lang(472, "Find Entry:")), this));
    findRow->addWidget(findText_, 1);
    findRow->addWidget(new QLabel(ToQt(lang(471, "In Column")), this));
    findRow->addWidget(findColumn_);
    findRow->addWidget(button("cmdFind"));
    findRow->addWidget(button("cmdShowAll"));
    layout->addLayout(findRow);
    auto* countRow = new QHBoxLayout;
    countRow->addWidget(button("cmdSelectAll"));
    countRow->addWidget(button("cmdUnselect"));
    countRow->addSpacing(12);
    countRow->addWidget(new QLabel(ToQt(lang(473, "Selected Items:")), this));
    countRow->addWidget(selected_);
    countRow->addSpacing(12);
    countRow->addWidget(new QLabel(ToQt(lang(474, "Total Items:")), this));
    countRow->addWidget(total_);
    countRow->addStretch();
    for (const char* name : {"cmdClear", "cmdSave", "cmdLoad", "cmdRestore", "cmdPrint"}) countRow->addWidget(button(name));
    layout->addLayout(countRow);
    hideLayout->addStretch();
    layout->addWidget(hideBox_);
}

std::string AssetGrid::lang(int n, const std::string& fallback) const {
    return ctx_.langText(n, fallback, setup_.langModule);
}

QPushButton* AssetGrid::addButton(const std::string& name, int langNumber, const std::string& fallback) {
    auto* b = new QPushButton(ToQt(lang(langNumber, fallback)), this);
    b->setObjectName(QString::fromStdString(name));
    b->setAutoDefault(false);
    buttons_[name] = b;
    return b;
}

QPushButton* AssetGrid::button(const std::string& name) const {
    const auto it = buttons_.find(name);
    return it == buttons_.end() ? nullptr : it->second;
}

void AssetGrid::applyWidths() {
    for (std::size_t c = 0; c < setup_.widthsTwips.size() && c < setup_.headings.size(); ++c)
        view_->setColumnWidth(static_cast<int>(c), setup_.widthsTwips[c] / kTwipsPerPixel);
}

std::vector<std::size_t> AssetGrid::selectedRows() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
        rows.push_back(static_cast<std::size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void AssetGrid::selectRows(const std::vector<std::size_t>& rows) {
    QItemSelection selection;
    for (std::size_t row : rows) {
        if (row >= grid_.rowCount()) continue;
        const int r = static_cast<int>(row);
        selection.select(model_->index(r, 0), model_->index(r, static_cast<int>(grid_.columnCount()) - 1));
    }
    view_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    showTotals();
}

void AssetGrid::setCommandsEnabled(bool on) {
    for (auto& [name, b] : buttons_) b->setEnabled(on);
}

void AssetGrid::appendRows(std::vector<std::vector<std::string>> rows) {
    const std::size_t before = grid_.rowCount();
    grid_.append(std::move(rows));
    model_->rowsAppended(before);
    showTotals();
}

void AssetGrid::refresh() {
    model_->refresh();
    applyWidths();
    showTotals();
}

void AssetGrid::showTotals() {
    total_->setText(QString::number(grid_.rowCount()));
    selected_->setText(QString::number(view_->selectionModel()->selectedRows().size()));
}

std::size_t AssetGrid::findColumn() const { return static_cast<std::size_t>(std::max(0, findColumn_->currentIndex())); }

void AssetGrid::findFirstInstance() {
    const auto row = grid_.findFirstInstance(FromQt(findText_->text()), findColumn());
    if (!row) return;
    selectRows({*row});
    view_->setCurrentIndex(model_->index(static_cast<int>(*row), 0));
    view_->scrollTo(model_->index(static_cast<int>(*row), 0));
}

void AssetGrid::showAll() {
    if (grid_.rowCount() == 0) return;
    grid_.keepMatching(FromQt(findText_->text()), findColumn());
    refresh();
}

void AssetGrid::selectAll() {
    view_->selectAll();
    showTotals();
}

void AssetGrid::unselectAll() {
    view_->clearSelection();
    showTotals();
}

void AssetGrid::clearList() {
    grid_.clear();
    refresh();
}

void AssetGrid::saveList() {
    if (!ctx_.ui) return;
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseSaveFile("Save Grid as File", kListFilter, reports);
    if (!file || file->empty()) return;
    ctx_.report(grid_.save(*file), setup_.langModule);
}

void AssetGrid::loadList() {
    if (!ctx_.ui) return;
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseOpenFile("Load Grid from File", kListFilter, reports);
    if (!file || file->empty()) return;
    ctx_.report(grid_.load(*file), setup_.langModule);
    refresh();
}

void AssetGrid::restoreList() {
    ctx_.report(grid_.restore(), setup_.langModule);
    refresh();
}

void AssetGrid::printList() {
    if (grid_.rowCount() == 0) {
        if (ctx_.ui)
            ctx_.ui->message(lang(478, "You do not appear to have added any items to the list below?") + "\r\n" +
                                 lang(479, "Click the 'Add to List' button to enable your stock selection."),
                             base::Icon::Exclamation);
        return;
    }
    PrintPreviewGrid(this, *model_, setup_.printSource, ToQt(setup_.printTitle));
}

void AssetGrid::copySelection() {
    QApplication::clipboard()->setText(ToQt(grid_.clipboardText(selectedRows())));
    if (ctx_.ui) ctx_.ui->message("Data has been sent to clipboard.", base::Icon::Information);
}

bool AssetGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        copySelection();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

QPushButton* FolderButton(app::AppContext& ctx, QLineEdit* box, const std::string& title, QWidget* parent) {
    auto* browse = new QPushButton("...", parent);
    browse->setObjectName("cmdFolder");
    browse->setAutoDefault(false);
    browse->setToolTip("Choose the folder");
    QObject::connect(browse, &QPushButton::clicked, parent, [&ctx, box, title] {
        if (!ctx.ui) return;
        const auto chosen = ctx.ui->chooseFolder(title, FromQt(box->text()));
        if (!chosen || chosen->empty()) return;
        std::string folder = *chosen;
        if (folder.back() != '\\' && folder.back() != '/') folder += '\\';
        box->setText(ToQt(folder));
    });
    return browse;
}

}  // namespace ferrolund::screens
