#include "screens/archives/frmListRS.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "archives/make_batch.h"
#include "assets/file_check.h"
#include "screens/app/qt_text.h"
#include "screens/archives/report_grid_model.h"
#include "screens/routes/dlgMissShape.h"
#include "screens/services/frmReport.h"
#include "screens/services/print_preview.h"
#include "tools/codepage.h"
#include "tools/files.h"

namespace ferrolund::screens {

namespace {
constexpr const char* kModule = "frmListRS";
}

frmListRS::frmListRS(app::AppContext& ctx, archives::ReportGrid grid, QWidget* parent)
    : QDialog(parent), ctx_(ctx), grid_(std::move(grid)) {
    setObjectName("frmListRS");
    setWindowTitle("Report");
    model_ = new ReportGridModel(grid_, this);
    list1_ = new QTableView(this);
    list1_->setObjectName("List1");
    list1_->setModel(model_);
    list1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list1_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list1_->horizontalHeader()->setStretchLastSection(true);
    list1_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(list1_, &QTableView::customContextMenuRequested, this,
            [this](const QPoint& at) { copyRow(list1_->indexAt(at).row()); });
    label4_ = new QLabel(this);
    label4_->setObjectName("Label4");
    text1_ = new QLineEdit(this);
    text1_->setObjectName("Text1");
    connect(text1_, &QLineEdit::returnPressed, this, &frmListRS::findNext);

    auto* bar = new QMenuBar(this);
    QMenu* sort = bar->addMenu("Sort");
    sort->addAction("Sort on File", this, [this] {
        grid_.sortOn(0);
        model_->refresh();
    })->setObjectName("mnuSF");
    sort->addAction("Sort on Date", this, [this] {
        grid_.sortOn(2);
        model_->refresh();
    })->setObjectName("mnuSD");
    // The blueprints of the list's rows checked for the files they need (not for archives).
    if (grid_.mode != archives::kModeApList) {
        QMenu* check = bar->addMenu("Check Assets");
        check->addAction("Check Loco for missing files", this, &frmListRS::checkLoco)->setObjectName("mnuCheckLoco");
    }

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->addWidget(list1_, 1);
    auto* counts = new QHBoxLayout;
    counts->addWidget(new QLabel("Items in list", this));
    counts->addWidget(label4_);
    counts->addStretch();
    if (grid_.mode != archives::kModeApList) counts->addWidget(new QLabel("Missing  items in Cyan", this));
    layout->addLayout(counts);
    auto* findRow = new QHBoxLayout;
    findRow->addWidget(text1_);
    layout->addLayout(findRow);
    auto* buttonGrid = new QGridLayout;
    layout->addLayout(buttonGrid);

    auto lang = [&](int n) { return ctx_.langText(n, {}, kModule); };
    connect(addButton("Command1", lang(201)), &QPushButton::clicked, this, &frmListRS::removeDupes);
    QPushButton* missing = addButton("Command3", lang(202));
    if (grid_.mode == archives::kModeScenarioAssets) missing->setText("Check for Missing Assets");
    connect(missing, &QPushButton::clicked, this, &frmListRS::checkMissing);
    connect(addButton("Command5", lang(564)), &QPushButton::clicked, this, &frmListRS::listProviders);
    connect(addButton("Command7", lang(565)), &QPushButton::clicked, this, &frmListRS::saveList);
    connect(addButton("Command9", lang(567)), &QPushButton::clicked, this, &frmListRS::findNext);
    connect(addButton("Command25", lang(571)), &QPushButton::clicked, this, &frmListRS::loadCsv);
    connect(addButton("Command26", lang(572)), &QPushButton::clicked, this, &frmListRS::clearGrid);
    connect(addButton("Command4", lang(8)), &QPushButton::clicked, this, &frmListRS::printList);
    connect(addButton("Command2", lang(9)), &QPushButton::clicked, this, &QDialog::close);
    // The commands that change the route the list came from.
    connect(addButton("Command6", lang(123)), &QPushButton::clicked, this, &frmListRS::substituteItem);
    connect(addButton("Command8", lang(566)), &QPushButton::clicked, this, [this] { removeItems(routes::kSceneryKind); });
    connect(addButton("Command23", lang(570)), &QPushButton::clicked, this, [this] { removeItems(routes::kLoftKind); });
    connect(addButton("Command11", lang(568)), &QPushButton::clicked, this, &frmListRS::fixProviders);
    const bool route = !grid_.routeFolder.empty();
    const bool items = grid_.mode == archives::kModeRouteItems || grid_.mode == archives::kModeRouteCheck;
    button("Command6")->setEnabled(route && items);
    button("Command8")->setEnabled(route && (items || grid_.mode == archives::kModeRemovals));
    button("Command23")->setEnabled(route && (items || grid_.mode == archives::kModeRemovals));
    // The preload list is rebuilt from a list of everything the route uses, never from a
    // list of missing items or of stock.
    button("Command11")->setEnabled(route && (grid_.mode == archives::kModeRouteItems ||
                                              grid_.mode == archives::kModeRemovals));
    if (grid_.mode == 8) {
        button("Command1")->hide();
        button("Command3")->hide();
    }
    // Wagon numbers are no blueprints: nothing to test against the disk or to count by provider.
    if (grid_.mode == archives::kModeWagonNumbers)
        for (const char* name : {"Command1", "Command3", "Command5"}) button(name)->hide();
    if (grid_.mode == archives::kModeApList) addArchiveCommands();
    abort_ = new QPushButton("&Abort", this);
    abort_->setObjectName("Command10");
    abort_->hide();
    connect(abort_, &QPushButton::clicked, this, [this] { ctx_.abortFlag = true; });
    findRow->addWidget(abort_);
    int i = 0;
    for (const auto& [name, b] : buttons_) {
        if (!b->isHidden()) buttonGrid->addWidget(b, i / 6, i % 6), ++i;
    }
    if (grid_.mode == archives::kModeLocations || grid_.mode == archives::kModeRouteCheck ||
        grid_.mode == archives::kModeRemovals) {
        grid_.removeDuplicates(grid_.mode == archives::kModeLocations);
        model_->refresh();
    }
    const archives::TwipsGeometry g = archives::ReportGeometry(ctx_.prefs);
    setGeometry(g.left / kTwipsPerPixel, g.top / kTwipsPerPixel, g.width / kTwipsPerPixel, g.height / kTwipsPerPixel);
    list1_->resizeColumnsToContents();
    showCount();
}

frmListRS::~frmListRS() = default;

QPushButton* frmListRS::addButton(const std::string& name, const std::string& caption) {
    auto* b = new QPushButton(ToQt(caption), this);
    b->setObjectName(QString::fromStdString(name));
    buttons_[name] = b;
    return b;
}

QPushButton* frmListRS::button(const std::string& name) const {
    const auto it = buttons_.find(name);
    return it == buttons_.end() ? nullptr : it->second;
}

void frmListRS::addArchiveCommands() {
    auto report = [this](const std::string& caption, const std::string& text) { ShowReport(ctx_, this, caption, text); };
    auto bulk = [this, report](archives::BulkKind kind) {
        return [this, report, kind] { archives::BulkExtractionCommand(ctx_, kind, report); };
    };
    auto selected = [this](archives::SelectedKind kind) {
        return [this, kind] {
            tools::BatchOutcome outcome;
            archives::ExtractFromSelected(ctx_, kind, selectedItems(), outcome);
            ctx_.report(tools::BatchErrors(outcome), kModule);
        };
    };
    const struct {
        const char* name;
        std::string caption;
        std::function<void()> run;
    } commands[] = {
        {"Command15", "Extract rolling-stock from all .ap files", bulk(archives::BulkKind::RollingStock)},
        {"Command16", "Extract scenarios from all .ap files", bulk(archives::BulkKind::Scenarios)},
        {"Command13", "Extract RouteProperties.xml for all routes and add route name.",
         bulk(archives::BulkKind::RouteSignposts)},
        {"Command17", "Extract rolling-stock  from selected .ap files", selected(archives::SelectedKind::RollingStock)},
        {"Command18", "Extract scenarios from selected .ap files", selected(archives::SelectedKind::Scenarios)},
        {"Command20", "Extract Loco .geopcdx files", selected(archives::SelectedKind::LocoGeometry)},
        {"Command24", "Extract rolling stock .bin files from selected .ap",
         selected(archives::SelectedKind::StockBinaries)},
        {"Command21", "Extract RouteProperties.xml from selected",
         [this] {
             tools::BatchOutcome outcome;
             archives::RoutePropertiesFromSelected(ctx_, selectedItems(), outcome);
             ctx_.report(tools::BatchErrors(outcome), kModule);
         }},
        {"Command14", ctx_.langText(573, {}, kModule),
         [this] {
             tools::BatchOutcome outcome;
             archives::UnpackSelected(ctx_, selectedItems(), outcome);
             ctx_.report(tools::BatchErrors(outcome), kModule);
         }},
        {"Command19", "List files in .ap file",
         [this, report] {
             const auto items = selectedItems();
             if (items.empty()) return;
             if (const auto text = archives::ListArchive(ctx_, items.front())) report("", *text);
         }},
        {"Command22", ctx_.langText(569, {}, kModule), [this] { selectMainContent(); }},
    };
    for (const auto& c : commands) connect(addButton(c.name, c.caption), &QPushButton::clicked, this, c.run);
}

std::vector<std::size_t> frmListRS::selectedRows() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : list1_->selectionModel()->selectedRows())
        rows.push_back(static_cast<std::size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::vector<std::string> frmListRS::selectedItems() const {
    std::vector<std::string> items;
    for (std::size_t r : selectedRows()) items.push_back(grid_.cell(r, 0));
    return items;
}

void frmListRS::runLong(const std::function<void()>& work) {
    std::vector<QPushButton*> locked;
    for (const auto& [name, b] : buttons_) {
        if (b->isEnabled()) locked.push_back(b);
        b->setEnabled(false);
    }
    abort_->show();
    running_ = true;
    work();
    running_ = false;
    abort_->hide();
    for (QPushButton* b : locked) b->setEnabled(true);
}

void frmListRS::setSubstituteDialog(routes::AskSubstitute ask) { askSubstitute_ = std::move(ask); }

void frmListRS::substituteItem() {
    if (!ctx_.ui) return;
    const std::vector<std::size_t> rows = selectedRows();
    runLong([&] {
        routes::SubstituteItem(ctx_, grid_, rows, [this](const routes::GridItem& old) {
            return askSubstitute_ ? askSubstitute_(old) : AskSubstitute(ctx_, this, old);
        });
    });
}

void frmListRS::removeItems(int kind) {
    if (!ctx_.ui) return;
    const std::vector<std::size_t> rows = selectedRows();
    runLong([&] { routes::RemoveSelectedItems(ctx_, grid_, rows, kind); });
}

void frmListRS::fixProviders() {
    if (!ctx_.ui) return;
    routes::FixRouteProviders(ctx_, grid_);
}

void frmListRS::checkLoco() {
    std::vector<assets::AssetRow> rows;
    for (std::size_t r : selectedRows()) rows.push_back(assets::RowFromGridItem(grid_.cell(r, 0)));
    assets::CheckOutcome outcome;
    runLong([&] {
        ctx_.abortFlag = false;
        outcome = assets::CheckRows(ctx_, rows, assets::RowReport::MissingFiles, assets::ReportGridRows());
    });
    if (outcome.noRows || outcome.emptyRow) return;
    ShowReport(ctx_, this, {}, outcome.report);
}

void frmListRS::showCount() { label4_->setText(QString::number(grid_.rowCount())); }

void frmListRS::removeDupes() {
    label4_->setText(ToQt(ctx_.langText(268, {}, kModule)));
    if (ctx_.ui) ctx_.ui->pump();
    grid_.removeDuplicates();
    model_->refresh();
    showCount();
    if (ctx_.ui) ctx_.ui->status(0, ctx_.langText(269, {}, kModule));
}

void frmListRS::checkMissing() {
    if (ctx_.ui) ctx_.ui->busy(true);
    grid_.checkMissingStock(ctx_);
    if (ctx_.ui) ctx_.ui->busy(false);
    model_->refresh();
    showCount();
}

void frmListRS::listProviders() {
    grid_.listProvidersAndProducts();
    model_->refresh();
    showCount();
}

void frmListRS::findNext() {
    const auto row = grid_.find(FromQt(text1_->text()));
    if (!row) return;
    list1_->selectRow(static_cast<int>(*row));
    list1_->scrollTo(model_->index(static_cast<int>(*row), 0));
}

void frmListRS::saveList() {
    if (!ctx_.ui) return;
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    if (grid_.saveAsBatch) {
        const auto file = ctx_.ui->chooseSaveFile("Save Grid as Batch File", "Batch file (*.bat)|*.bat", reports);
        if (file && !file->empty()) ctx_.report(grid_.saveBatch(*file), kModule);
        return;
    }
    const auto file = ctx_.ui->chooseSaveFile(
        "Save Grid as File",
        "Comma Separated (*.csv)|*.csv|Excel file (*.xls)|*.xls|Tabbed text file (*.txt)|*.txt", reports);
    if (!file || file->empty()) return;
    ctx_.report(grid_.save(*file), kModule);
}

void frmListRS::loadCsv() {
    if (!ctx_.ui) return;
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseOpenFile("Load Grid from File", "Comma Separated (*.csv)|*.csv", reports);
    if (!file || file->size() < 3 || tools::LowerCp1252(file->substr(file->size() - 3)) != "csv") return;
    grid_.loadCsv(tools::ReadTextFile(*file));
    model_->refresh();
    showCount();
}

void frmListRS::clearGrid() {
    grid_.clear();
    model_->refresh();
    showCount();
}

void frmListRS::printList() { PrintPreviewGrid(this, *model_, 2, windowTitle()); }

void frmListRS::selectMainContent() {
    list1_->clearSelection();
    for (std::size_t row : grid_.mainContentRows()) {
        list1_->selectionModel()->select(model_->index(static_cast<int>(row), 0),
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

void frmListRS::copyRow(int row) {
    if (row < 0) return;
    QApplication::clipboard()->setText(ToQt(grid_.rowText(static_cast<std::size_t>(row))));
    if (ctx_.ui) ctx_.ui->message("Data has been sent to clipboard.", base::Icon::Information);
}

void frmListRS::closeEvent(QCloseEvent* event) {
    if (running_) {
        // The screen stays until the work has stopped.
        ctx_.abortFlag = true;
        event->ignore();
        return;
    }
    const QRect g = geometry();
    archives::StoreReportGeometry(ctx_, {g.x() * kTwipsPerPixel, g.y() * kTwipsPerPixel, g.width() * kTwipsPerPixel,
                                         g.height() * kTwipsPerPixel});
    QDialog::closeEvent(event);
}

frmListRS* ShowReportGrid(app::AppContext& ctx, QWidget* parent, archives::ReportGrid grid) {
    auto* screen = new frmListRS(ctx, std::move(grid), parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
