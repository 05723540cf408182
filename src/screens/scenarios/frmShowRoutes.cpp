#include "screens/scenarios/frmShowRoutes.h"

#include "scenarios/scenario_report.h"

#include <algorithm>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "archives/make_batch.h"
#include "archives/report_grid.h"
#include "routes/route_index.h"
#include "routes/route_indexer.h"
#include "scenarios/scenario_management.h"
#include "scenarios/scenario_texts.h"
#include "screens/app/qt_text.h"
#include "screens/archives/frmListRS.h"
#include "screens/routes/scenario_grid.h"
#include "screens/services/frmReport.h"
#include "tools/files.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmShowRoutes";
constexpr int kNameWidth = 320;

}  // namespace

frmShowRoutes::frmShowRoutes(app::AppContext& ctx, ScenarioScreens screens, QWidget* parent)
    : QDialog(parent), ctx_(ctx), screens_(std::move(screens)) {
    setObjectName("frmShowRoutes");
    setWindowTitle("Select Route");

    list1_ = MakeGrid(this, "List1", {"Route", "Folder"});
    list1_->setSelectionMode(QAbstractItemView::SingleSelection);
    list1_->setColumnWidth(0, kNameWidth);
    connect(list1_, &QTableWidget::cellDoubleClicked, this, [this] { listScenarios(); });
    // Display name, folder name, and the running number that keys the row.
    list3_ = MakeGrid(this, "List3", {"Scenario", "Folder", "No."});
    list3_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list3_->setColumnWidth(0, kNameWidth);
    list3_->setColumnHidden(2, true);
    file2_ = new QListWidget(this);
    file2_->setObjectName("File2");
    count_ = new QLabel("0", this);
    count_->setObjectName("Label3");

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel("Routes", this));
    layout->addWidget(list1_, 3);

    auto* legend = new QHBoxLayout;
    AddLegend(this, legend, {routes::ScenarioKind::FreeRoam, routes::ScenarioKind::Standard, routes::ScenarioKind::Career,
                             routes::ScenarioKind::QuickDrive, routes::ScenarioKind::Workshop,
                             routes::ScenarioKind::Timetable});
    legend->addStretch();
    legend->addWidget(new QLabel("No. of Scenarios", this));
    legend->addWidget(count_);
    layout->addLayout(legend);

    auto* lower = new QHBoxLayout;
    lower->addWidget(list3_, 3);
    auto* copies = new QVBoxLayout;
    copies->addWidget(new QLabel("Saved Copies of Selected Scenario", this));
    copies->addWidget(file2_);
    lower->addLayout(copies, 1);
    layout->addLayout(lower, 4);

    auto* grid = new QGridLayout;
    layout->addLayout(grid);
    int placed = 0;
    auto place = [&](const std::string& name, const char* caption, std::function<void()> run) {
        QPushButton* b = addCommand(name, caption, std::move(run));
        grid->addWidget(b, placed / 4, placed % 4);
        ++placed;
        return b;
    };
    place("Command1", "List Scenarios in Selected Route", [this] { listScenarios(); });
    place("Command10", "Edit Selected Scenario", [this] { editScenario(); })->setEnabled(bool(screens_.edit));
    place("Command7", "Display Details of Selected Scenario", [this] { showDetails(); })
        ->setEnabled(bool(screens_.details));
    place("Command12", "Display Work Order", [this] { showWorkOrder(); })->setEnabled(bool(screens_.workOrder));
    place("Command8", "Delete Selected Scenario(s)", [this] { deleteScenarios(); });
    place("Command11", "Remove Empty Consists from selected Scenario", [this] { removeEmptyConsists(); });
    place("Command14", "Make Selected Career Scenarios 'Standard'", [this] { makeStandard(false); });
    place("Command16", "Make Selected Timetable Scenarios 'Standard'", [this] { makeStandard(true); });
    place("Command3", "Revert to Default for selected Scenario", [this] { revertScenario(); });
    place("Command2", "Revert to Default for selected Route", [this] { revertRoute(); });
    place("Command15", "Show Saved Copies of Selected Scenario", [this] { showSavedCopies(); });
    place("Command4", "Save CurrentSave.bin As", [this] { saveCurrentSaveAs(); });
    place("Command5", "Overwrite CurrentSave.bin with Selected file", [this] { overwriteCurrentSave(); });
    place("Command6", "Run RailWorks using selected Save file", [this] { runWithSave(); });
    place("Command17", "Extract all ScenarioProperties.xml", [this] { extractProperties(); });
    place("Command13", "Show Invalid Scenarios", [this] { showInvalidScenarios(); });

    auto* closing = new QHBoxLayout;
    closing->addStretch();
    closing->addWidget(addCommand("CancelButton", "Close", [this] { QDialog::close(); }));
    layout->addLayout(closing);
    resize(1000, 700);
}

frmShowRoutes::~frmShowRoutes() = default;

QPushButton* frmShowRoutes::addCommand(const std::string& name, const std::string& caption, std::function<void()> run) {
    auto* b = new QPushButton(ToQt(caption), this);
    b->setObjectName(QString::fromStdString(name));
    connect(b, &QPushButton::clicked, this, std::move(run));
    buttons_[name] = b;
    return b;
}

QPushButton* frmShowRoutes::button(const std::string& name) const {
    const auto found = buttons_.find(name);
    return found == buttons_.end() ? nullptr : found->second;
}

bool frmShowRoutes::loadRoutes() {
    routes::RouteIndex index;
    if (!routes::LoadRouteIndexFile(ctx_, index)) return false;
    list1_->setRowCount(0);
    for (int r = 0; r < index.count(); ++r)
        if (!index.routeFolder[r].empty()) AddRow(list1_, {index.routeName[r], index.routeFolder[r]});
    list1_->sortItems(0, Qt::AscendingOrder);
    if (list1_->rowCount() > 0) list1_->selectRow(0);
    return true;
}

std::string frmShowRoutes::selectedRoute() const {
    const QList<QTableWidgetItem*> items = list1_->selectedItems();
    return items.empty() ? std::string() : Cell(list1_, items.front()->row(), 1);
}

std::vector<std::string> frmShowRoutes::selectedScenarios() const {
    std::vector<int> rows;
    for (const QModelIndex& index : list3_->selectionModel()->selectedRows()) rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    std::vector<std::string> folders;
    for (int r : rows) {
        const std::string folder = Cell(list3_, r, 1);
        if (!folder.empty()) folders.push_back(scenarios::ScenarioFolderPath(ctx_, listedRoute_, folder));
    }
    return folders;
}

std::string frmShowRoutes::selectedCopy() const {
    const QListWidgetItem* item = file2_->currentItem();
    if (!item || !item->isSelected() || copiesFolder_.empty()) return {};
    return copiesFolder_ + "\\" + FromQt(item->text());
}

void frmShowRoutes::listScenarios() {
    ctx_.currentRoutine = "Command1_Click";
    tools::CreatePath(ctx_.appPath("TempFiles"));
    list3_->setRowCount(0);
    file2_->clear();
    copiesFolder_.clear();
    listedRoute_ = selectedRoute();
    if (listedRoute_.empty()) return;
    const routes::ScenarioListing listing = routes::ListScenarios(ctx_.gameRoot(), listedRoute_, ctx_.prefs.language);
    if (listing.rows.empty()) {
        const bool noFolder = listing.note == "No Scenarios folder found";
        ctx_.ui->message(noFolder ? listing.note : "No Scenarios were found for this route.", base::Icon::Information);
        count_->setText("0");
        return;
    }
    QColor colour(0, 0, 0);
    int number = 0;
    for (const routes::ScenarioRow& row : listing.rows) {
        if (const routes::ScenarioLegend* legend = routes::LegendOf(row.kind)) colour = ColourOf(legend->rgb);
        AddRow(list3_, {row.name, row.folder, std::to_string(number++)}, &colour);
    }
    count_->setText(QString::number(list3_->rowCount()));
}

std::string frmShowRoutes::oneScenario() {
    const std::vector<std::string> folders = selectedScenarios();
    if (folders.empty()) {
        ctx_.ui->message("No Scenarios were found.", base::Icon::Information);
        return {};
    }
    return folders.front();
}

void frmShowRoutes::editScenario() {
    ctx_.currentRoutine = "Command10_Click";
    const std::string folder = oneScenario();
    if (!folder.empty() && screens_.edit) screens_.edit(folder);
}

void frmShowRoutes::showDetails() {
    ctx_.currentRoutine = "Command7_Click";
    const std::string folder = oneScenario();
    if (folder.empty() || !screens_.details) return;
    const bool loose = ctx_.ui->ask(scenarios::kLooseConsistQuestion, base::Buttons::YesNo, base::Icon::Question) ==
                       base::Answer::Yes;
    if (tools::FileLength(folder + "\\Scenario.bin") < 0) {
        ctx_.ui->message(std::string(scenarios::kNoScenarioBin1) + "\r\n" + scenarios::kNoScenarioBin2,
                         base::Icon::Exclamation);
        return;
    }
    screens_.details(folder, loose);
}

void frmShowRoutes::showWorkOrder() {
    ctx_.currentRoutine = "Command12_Click";
    const std::string folder = oneScenario();
    if (!folder.empty() && screens_.workOrder) screens_.workOrder(folder);
}

void frmShowRoutes::deleteScenarios() {
    if (scenarios::DeleteScenarios(ctx_, selectedScenarios()) > 0) listScenarios();
}

void frmShowRoutes::removeEmptyConsists() {
    const std::string folder = oneScenario();
    if (!folder.empty()) scenarios::RemoveEmptyConsistsCommand(ctx_, folder);
}

void frmShowRoutes::makeStandard(bool timetable) {
    const std::vector<std::string> folders = selectedScenarios();
    if (folders.empty()) {
        ctx_.ui->message("No Scenarios were found.", base::Icon::Information);
        return;
    }
    scenarios::MakeScenariosStandard(ctx_, folders,
                                     timetable ? scenarios::StandardFrom::Timetable : scenarios::StandardFrom::Career);
    listScenarios();
}

void frmShowRoutes::tellRevert(int reverted, int deleted) {
    ctx_.ui->message(std::to_string(reverted) + " scenario(s) reverted to default, " + std::to_string(deleted) +
                         " numbered back-up(s) deleted.",
                     base::Icon::Information);
}

void frmShowRoutes::revertScenario() {
    ctx_.currentRoutine = "Command3_Click";
    const std::string folder = oneScenario();
    if (folder.empty()) return;
    const scenarios::RevertOutcome outcome = scenarios::RevertScenario(folder);
    ctx_.report(outcome.error, kModule);
    tellRevert(outcome.reverted, outcome.backupsDeleted);
}

void frmShowRoutes::revertRoute() {
    ctx_.currentRoutine = "Command2_Click";
    const std::string route = selectedRoute();
    if (route.empty()) return;
    const scenarios::RevertOutcome outcome = scenarios::RevertRoute(ctx_, route);
    ctx_.report(outcome.error, kModule);
    tellRevert(outcome.reverted, outcome.backupsDeleted);
}

void frmShowRoutes::showSavedCopies() {
    ctx_.currentRoutine = "Command15_Click";
    file2_->clear();
    copiesFolder_ = oneScenario();
    if (copiesFolder_.empty()) return;
    for (const std::string& name : scenarios::SavedCopies(copiesFolder_)) file2_->addItem(ToQt(name));
}

void frmShowRoutes::saveCurrentSaveAs() {
    const std::string folder = oneScenario();
    if (folder.empty()) return;
    scenarios::SaveCurrentSaveAs(ctx_, folder);
    if (folder == copiesFolder_) showSavedCopies();
}

void frmShowRoutes::overwriteCurrentSave() {
    const std::string folder = oneScenario();
    if (!folder.empty() && scenarios::OverwriteCurrentSave(ctx_, folder, selectedCopy()) && folder == copiesFolder_)
        showSavedCopies();
}

void frmShowRoutes::runWithSave() {
    const std::string folder = oneScenario();
    if (!folder.empty()) scenarios::RunWithSave(ctx_, folder, selectedCopy());
}

void frmShowRoutes::extractProperties() {
    ctx_.currentRoutine = "Command17_Click";
    archives::BulkExtractionCommand(ctx_, archives::BulkKind::ScenarioProperties,
                                    [this](const std::string& caption, const std::string& text) {
                                        ShowReport(ctx_, this, caption, text);
                                    });
}

void frmShowRoutes::showInvalidScenarios() {
    const std::string route = selectedRoute();
    if (route.empty()) return;
    archives::ReportGrid grid;
    grid.heading = "Invalid Scenarios";
    grid.routeFolder = route;
    std::vector<std::vector<std::string>> rows;
    for (const scenarios::InvalidScenario& invalid : scenarios::FindInvalidScenarios(ctx_, route))
        rows.push_back({invalid.folder, invalid.reason});
    if (rows.empty()) {
        ctx_.ui->message("No invalid scenarios were found in this route.", base::Icon::Information);
        return;
    }
    grid.setRows(std::move(rows));
    // Modal to this screen, without holding up the caller.
    auto* shown = new frmListRS(ctx_, std::move(grid), this);
    shown->setAttribute(Qt::WA_DeleteOnClose);
    shown->setWindowModality(Qt::WindowModal);
    shown->show();
}

frmShowRoutes* ShowShowRoutes(app::AppContext& ctx, ScenarioScreens screens, QWidget* parent) {
    auto* screen = new frmShowRoutes(ctx, std::move(screens), parent);
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
