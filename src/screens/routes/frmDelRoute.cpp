#include "screens/routes/frmDelRoute.h"

#include <algorithm>
#include <cstdlib>

#include <QCloseEvent>
#include <QColor>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "archives/report_grid.h"
#include "routes/route_indexer.h"
#include "screens/app/qt_text.h"
#include "screens/archives/frmListRS.h"
#include "screens/routes/asset_commands.h"
#include "screens/routes/maintenance_commands.h"
#include "screens/routes/route_listing.h"
#include "screens/routes/scenario_grid.h"
#include "screens/routes/stock_commands.h"
#include "screens/services/frmReport.h"
#include "services/report_table.h"
#include "tools/files.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmDelRoute";
constexpr int kNameWidth = 320;  // pixels; a name column never narrower

}  // namespace

// While a check runs, its progress goes to the screen's own bar as well, and every other
// call to the person at the screen is passed on unchanged.
class frmDelRoute::RunUi : public base::Ui {
public:
    RunUi(frmDelRoute& form, base::Ui* inner) : form_(form), inner_(inner) {}
    void message(const std::string& text, base::Icon icon, const std::string& title) override {
        inner_->message(text, icon, title);
    }
    base::Answer ask(const std::string& text, base::Buttons buttons, base::Icon icon, const std::string& title) override {
        return inner_->ask(text, buttons, icon, title);
    }
    std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                     const std::string& defaultText) override {
        return inner_->input(title, prompt, defaultText);
    }
    std::optional<std::string> chooseOpenFile(const std::string& title, const std::string& filter,
                                              const std::string& startFolder) override {
        return inner_->chooseOpenFile(title, filter, startFolder);
    }
    std::optional<std::string> chooseSaveFile(const std::string& title, const std::string& filter,
                                              const std::string& startFolder) override {
        return inner_->chooseSaveFile(title, filter, startFolder);
    }
    std::optional<std::string> chooseFolder(const std::string& title, const std::string& startFolder) override {
        return inner_->chooseFolder(title, startFolder);
    }
    void progress(int percent, const std::string& caption) override {
        form_.showProgress(percent, caption);
        inner_->progress(percent, caption);
    }
    void status(int panel, const std::string& text) override { inner_->status(panel, text); }
    void busy(bool on) override { inner_->busy(on); }
    void pump() override { inner_->pump(); }

private:
    frmDelRoute& form_;
    base::Ui* inner_;
};

frmDelRoute::frmDelRoute(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmDelRoute");
    setWindowTitle("Check Routes or Scenarios");
    auto lang = [this](int n) { return ToQt(ctx_.langText(n, {}, kModule)); };

    list1_ = MakeGrid(this, "List1", {lang(116), lang(117), lang(81)});
    list1_->setColumnHidden(2, true);
    connect(list1_, &QTableWidget::cellClicked, this, [this] {
        if (!running_) listScenarios();
    });
    list3_ = MakeGrid(this, "List3", {lang(118), lang(119), lang(117), lang(117)});
    list3_->setColumnHidden(2, true);
    list3_->setColumnHidden(3, true);
    list1_->setColumnWidth(0, kNameWidth);
    list3_->setColumnWidth(0, kNameWidth);
    label7_ = new QLabel("0", this);
    label7_->setObjectName("Label7");
    label9_ = new QLabel("0", this);
    label9_->setObjectName("Label9");
    notes_ = new QPlainTextEdit(this);
    notes_->setObjectName("Text1");
    notes_->setReadOnly(true);
    notes_->setMaximumHeight(90);
    notes_->hide();
    progress_ = new QProgressBar(this);
    progress_->setObjectName("ProgressBar1");
    progress_->setRange(0, 100);
    progress_->hide();

    label5_ = new QLabel("0", this);
    label5_->setObjectName("Label5");

    auto* bar = new QMenuBar(this);
    misc_ = bar->addMenu(lang(147));
    misc_->setObjectName("mnuMix");

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    auto* routeHead = new QHBoxLayout;
    auto* routeCaption = new QLabel(lang(115), this);
    routeCaption->setObjectName("Label1");
    routeHead->addWidget(routeCaption);
    routeHead->addStretch();
    routeHead->addWidget(new QLabel(lang(138), this));
    routeHead->addWidget(label7_);
    layout->addLayout(routeHead);
    layout->addWidget(list1_, 3);

    auto* legend = new QHBoxLayout;
    AddLegend(this, legend, {routes::ScenarioKind::QuickDrive, routes::ScenarioKind::FreeRoam, routes::ScenarioKind::Career,
                             routes::ScenarioKind::Workshop, routes::ScenarioKind::Standard,
                             routes::ScenarioKind::Timetable});
    legend->addStretch();
    legend->addWidget(new QLabel(lang(139), this));
    legend->addWidget(label9_);
    layout->addLayout(legend);
    layout->addWidget(list3_, 4);
    layout->addWidget(notes_);
    layout->addWidget(progress_);

    buttonGrid_ = new QGridLayout;
    layout->addLayout(buttonGrid_);
    auto langText = [&](int n) { return ctx_.langText(n, {}, kModule); };
    addCommand("Command1", langText(120), [this] { listScenarios(); });
    addCommand("Command4", langText(122), [this] { checkSelectedRoute(); });
    addCommand("Command26", langText(133), [this] { listClassTable(); });
    addCommand("Command12", langText(134), [this] { printRouteList(); });
    addCommand("Command2", langText(135), [this] { deleteScenarios(); });
    addCommand("Command20", langText(136), [this] { saveLowerGrid(); });
    AddStockCommands(*this);
    AddAssetCommands(*this);
    AddMaintenanceCommands(*this);

    auto* closing = new QHBoxLayout;
    closing->addWidget(new QLabel(lang(140), this));
    closing->addWidget(label5_);
    closing->addStretch();
    QPushButton* abort = addButton("Command10", FromQt(lang(383)));
    connect(abort, &QPushButton::clicked, this, &frmDelRoute::abortRun);
    closing->addWidget(abort);
    QPushButton* close = addButton("CancelButton", FromQt(lang(9)));
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    closing->addWidget(close);
    layout->addLayout(closing);
    abort->hide();
    resize(900, 640);
}

frmDelRoute::~frmDelRoute() = default;

QPushButton* frmDelRoute::addButton(const std::string& name, const std::string& caption) {
    auto* b = new QPushButton(ToQt(caption), this);
    b->setObjectName(QString::fromStdString(name));
    buttons_[name] = b;
    return b;
}

QPushButton* frmDelRoute::addCommand(const std::string& name, const std::string& caption, std::function<void()> run,
                                     bool locked) {
    QPushButton* b = addButton(name, caption);
    connect(b, &QPushButton::clicked, this, std::move(run));
    if (locked) locked_.push_back(b);
    constexpr int kColumns = 5;
    buttonGrid_->addWidget(b, placed_ / kColumns, placed_ % kColumns);
    ++placed_;
    return b;
}

QAction* frmDelRoute::addMiscCommand(const std::string& name, const std::string& caption, std::function<void()> run) {
    QAction* action = misc_->addAction(ToQt(caption));
    action->setObjectName(QString::fromStdString(name));
    connect(action, &QAction::triggered, this, std::move(run));
    return action;
}

QPushButton* frmDelRoute::button(const std::string& name) const {
    const auto found = buttons_.find(name);
    return found == buttons_.end() ? nullptr : found->second;
}

bool frmDelRoute::loadRoutes() {
    routes::RouteIndex index;
    if (!routes::LoadRouteIndexFile(ctx_, index)) return false;
    list1_->setSortingEnabled(false);
    list1_->setRowCount(0);
    for (int r = 0; r < index.count(); ++r) {
        AddRow(list1_, {index.routeName[r], index.routeFolder[r], index.routeSlot[r]});
        if (QTableWidgetItem* slot = list1_->item(r, 2)) slot->setData(Qt::DisplayRole, std::atoi(index.routeSlot[r].c_str()));
    }
    label7_->setText(QString::number(list1_->rowCount()));
    list1_->sortItems(0, Qt::AscendingOrder);
    list1_->resizeColumnToContents(0);
    list1_->setColumnWidth(0, std::max(list1_->columnWidth(0), kNameWidth));
    if (list1_->rowCount() > 0) list1_->selectRow(0);
    return true;
}

bool frmDelRoute::selectedRoute(routes::CheckedRoute& route) const {
    const QList<QTableWidgetSelectionRange> ranges = list1_->selectedRanges();
    int first = -1;
    for (const QTableWidgetSelectionRange& range : ranges)
        if (first < 0 || range.topRow() < first) first = range.topRow();
    if (first < 0) return false;
    route.name = Cell(list1_, first, 0);
    route.folder = Cell(list1_, first, 1);
    route.scenarioFolders.clear();
    for (const routes::ScenarioRow& row : listedScenarios())
        if (row.routeFolder == route.folder) route.scenarioFolders.push_back(row.folder);
    return true;
}

std::vector<routes::ScenarioRow> frmDelRoute::listedScenarios() const {
    std::vector<routes::ScenarioRow> rows;
    for (int r = 0; r < list3_->rowCount(); ++r) {
        routes::ScenarioRow row{Cell(list3_, r, 0), Cell(list3_, r, 1), Cell(list3_, r, 2), Cell(list3_, r, 3)};
        if (!row.folder.empty()) rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<routes::ScenarioRow> frmDelRoute::selectedScenarios() const {
    std::vector<int> selected;
    for (const QModelIndex& index : list3_->selectionModel()->selectedRows()) selected.push_back(index.row());
    std::sort(selected.begin(), selected.end());
    std::vector<routes::ScenarioRow> rows;
    for (int r : selected) {
        routes::ScenarioRow row{Cell(list3_, r, 0), Cell(list3_, r, 1), Cell(list3_, r, 2), Cell(list3_, r, 3)};
        if (!row.folder.empty()) rows.push_back(std::move(row));
    }
    return rows;
}

void frmDelRoute::showScenarios(const routes::ScenarioListing& listing) {
    list3_->setRowCount(0);
    if (listing.rows.empty()) {
        AddRow(list3_, {listing.note});
        label9_->setText("0");
        return;
    }
    QColor colour(0, 0, 0);
    for (const routes::ScenarioRow& row : listing.rows) {
        // A class outside the legend keeps the colour of the row before it.
        if (const routes::ScenarioLegend* legend = routes::LegendOf(row.kind)) colour = ColourOf(legend->rgb);
        AddRow(list3_, {row.name, row.devString, row.folder, row.routeFolder}, &colour);
    }
    label9_->setText(QString::number(list3_->rowCount()));
    list3_->resizeColumnToContents(0);
    list3_->setColumnWidth(0, std::max(list3_->columnWidth(0), kNameWidth));
}

void frmDelRoute::listScenarios() {
    routes::CheckedRoute route;
    if (!selectedRoute(route)) return;
    ctx_.currentRoutine = "Command1_Click";
    showScenarios(routes::ListScenarios(ctx_.gameRoot(), route.folder, ctx_.prefs.language));
}

routes::RouteIndex frmDelRoute::listedRoutes() const {
    routes::RouteIndex index;
    for (int r = 0; r < list1_->rowCount(); ++r) {
        index.routeName.push_back(Cell(list1_, r, 0));
        index.routeFolder.push_back(Cell(list1_, r, 1));
        index.routeSlot.push_back(Cell(list1_, r, 2));
    }
    return index;
}

void frmDelRoute::listClassTable() {
    ctx_.currentRoutine = "Command26_Click";
    ShowReport(ctx_, this, {}, routes::ClassTable(ctx_.gameRoot(), listedRoutes()));
}

void frmDelRoute::printRouteList() {
    ctx_.currentRoutine = "Command12_Click";
    ShowReport(ctx_, this, {}, PrintedRouteList(ctx_.gameRoot(), listedRoutes()));
}

void frmDelRoute::deleteScenarios() {
    ctx_.currentRoutine = "Command2_Click";
    std::vector<std::string> folders;
    for (const routes::ScenarioRow& row : selectedScenarios())
        if (!row.routeFolder.empty())
            folders.push_back(ctx_.gameRoot() + "\\Content\\Routes\\" + row.routeFolder + "\\Scenarios\\" + row.folder);
    if (folders.empty()) {
        ctx_.ui->message(ctx_.langText(156, {}, kModule), base::Icon::Exclamation);
        return;
    }
    if (ctx_.ui->ask(ctx_.langText(155, {}, kModule), base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes)
        return;
    for (const std::string& folder : folders) ctx_.report(tools::DeleteFolderTree(ctx_, folder), kModule);
    listScenarios();
}

void frmDelRoute::saveLowerGrid() {
    ctx_.currentRoutine = "Command20_Click";
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseSaveFile("Save Grid", "Comma Separated (*.csv)|*.csv", reports);
    if (!file || file->empty()) return;
    services::ReportTable table;
    for (int r = 0; r < list3_->rowCount(); ++r) {
        std::vector<std::string>& row = table.rows.emplace_back();
        for (int c = 0; c < list3_->columnCount(); ++c) row.push_back(Cell(list3_, r, c));
    }
    ctx_.report(services::SaveReportTable(*file, table), kModule);
}

void frmDelRoute::setRunning(bool on) {
    running_ = on;
    for (QPushButton* b : locked_) b->setEnabled(!on);
    button("Command10")->setVisible(on);
    if (!on) progress_->hide();
}

bool frmDelRoute::runLong(const std::function<void()>& work) {
    if (running_) return false;
    setRunning(true);
    ctx_.abortFlag = false;
    base::Ui* screenUi = ctx_.ui;
    RunUi relay(*this, screenUi);
    ctx_.ui = &relay;
    struct Restore {
        frmDelRoute& form;
        base::Ui* ui;
        ~Restore() {
            form.ctx_.ui = ui;
            form.setRunning(false);
        }
    } restore{*this, screenUi};
    work();
    return true;
}

void frmDelRoute::showNotes(const std::string& text) {
    notes_->setPlainText(ToQt(text).trimmed());
    notes_->setVisible(!notes_->toPlainText().isEmpty());
}

void frmDelRoute::showStockCount(std::size_t count) { label5_->setText(QString::number(count)); }

void frmDelRoute::showProgress(int percent, const std::string& caption) {
    // The bar stays up until the run ends: 100 % is given as the last file is begun.
    progress_->setVisible(running_ && percent >= 0);
    progress_->setValue(percent);
    progress_->setFormat(ToQt(caption));
}

void frmDelRoute::abortRun() {
    ctx_.abortFlag = true;
    for (QPushButton* b : locked_) b->setEnabled(true);
}

frmListRS* frmDelRoute::showListing(const routes::CheckedRoute& route, const routes::ReportListing& listing, int mode) {
    archives::ReportGrid grid;
    grid.mode = mode;
    grid.heading = listing.heading;
    grid.routeName = route.name;
    grid.routeFolder = route.folder;
    grid.scenarioFolders = route.scenarioFolders;
    grid.table.headings = {listing.heading};
    grid.setRows(listing.rows);
    if (listing.missingItems) grid.missing.assign(grid.rowCount(), true);
    else if (listing.missingRows.size() == grid.rowCount()) grid.missing = listing.missingRows;
    if (!listing.suffix.empty()) {
        const std::string saved = routes::SaveListing(ctx_, route.name, listing);
        if (!saved.empty()) ctx_.ui->status(1, saved);
    }
    return ShowReportGrid(ctx_, this, std::move(grid));
}

void frmDelRoute::checkSelectedRoute() {
    routes::CheckedRoute route;
    if (running_) return;
    if (!selectedRoute(route)) {
        ctx_.ui->message(ctx_.langText(157, {}, kModule), base::Icon::Exclamation);
        return;
    }
    showNotes({});
    // The lower grid is cleared; the scenario folders it listed are still checked.
    list3_->setRowCount(0);
    label9_->setText("0");
    runLong([&] { lastCheck_ = routes::CheckSelectedRoute(ctx_, route); });
    showNotes(lastCheck_.missingText);
    for (const routes::ReportListing& listing : lastCheck_.lists)
        showListing(route, listing, listing.missingItems ? archives::kModeRouteCheck : archives::kModeRouteItems);
    if (lastCheck_.unpacked) loadRoutes();
}

void frmDelRoute::closeEvent(QCloseEvent* event) {
    // The check runs inside this screen's own calls: closing waits for it to stop.
    if (running_) {
        ctx_.abortFlag = true;
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

frmDelRoute* ShowDelRoute(app::AppContext& ctx, QWidget* parent) {
    auto* screen = new frmDelRoute(ctx, parent);
    if (!screen->loadRoutes()) {
        delete screen;
        ctx.ui->message("Run 'Index route properties' before using this option.", base::Icon::Information);
        return nullptr;
    }
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
