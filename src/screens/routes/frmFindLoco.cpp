#include "screens/routes/frmFindLoco.h"

#include <QFont>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "routes/route_check.h"
#include "routes/route_stock.h"
#include "screens/app/qt_text.h"
#include "screens/routes/dlgNotInScenarios.h"

namespace ferrolund::screens {

namespace {

QTableWidget* Grid(QWidget* parent, const char* name, const QStringList& headings) {
    auto* grid = new QTableWidget(0, static_cast<int>(headings.size()), parent);
    grid->setObjectName(name);
    grid->setHorizontalHeaderLabels(headings);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->verticalHeader()->hide();
    grid->horizontalHeader()->setStretchLastSection(true);
    return grid;
}

void Put(QTableWidget* grid, const std::vector<std::string>& cells) {
    const int r = grid->rowCount();
    grid->insertRow(r);
    for (std::size_t c = 0; c < cells.size() && static_cast<int>(c) < grid->columnCount(); ++c)
        grid->setItem(r, static_cast<int>(c), new QTableWidgetItem(ToQt(cells[c])));
}

}  // namespace

frmFindLoco::frmFindLoco(app::AppContext& ctx, const routes::RouteIndex& index, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName("frmFindLoco");
    setWindowTitle("Find loco in routes");
    askIgnore = [this](bool& ignore) { return AskNotInScenarios(this, ignore); };
    auto* layout = new QVBoxLayout(this);
    list1_ = Grid(this, "List1", {"Route Name", "Route Folder"});
    list1_->setFont(QFont("Courier New"));
    for (std::size_t r = 0; r < index.routeFolder.size() && r < index.routeName.size(); ++r)
        Put(list1_, {index.routeName[r], index.routeFolder[r]});
    list1_->sortItems(0);
    if (list1_->rowCount() > 0) list1_->selectRow(0);
    list3_ = Grid(this, "List3", {"Scenario Name", "Scenario Folder"});
    list2_ = new QListWidget(this);
    list2_->setObjectName("List2");
    layout->addWidget(list1_, 2);
    layout->addWidget(list3_, 2);
    layout->addWidget(list2_, 3);

    auto* row = new QHBoxLayout;
    auto add = [&](const char* name, const QString& caption, void (frmFindLoco::*run)()) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(name);
        buttons_[name] = b;
        if (run) connect(b, &QPushButton::clicked, this, run);
        row->addWidget(b);
        return b;
    };
    add("Command1", "List Scenarios in Selected Route", &frmFindLoco::listScenarios);
    add("Command15", "List Stock used by all scenarios", &frmFindLoco::listStock);
    add("Command2", "Check Consist Templates", &frmFindLoco::checkConsists);
    row->addStretch();
    row->addWidget(new QLabel("Items", this));
    label1_ = new QLabel("0", this);
    label1_->setObjectName("Label1");
    row->addWidget(label1_);
    QPushButton* abort = add("Command10", ToQt(ctx_.langText(383, "&Abort", "frmDelRoute")), nullptr);
    connect(abort, &QPushButton::clicked, this, [this] { ctx_.abortFlag = true; });
    abort->hide();
    QPushButton* close = add("CancelButton", "Close", nullptr);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    layout->addLayout(row);
    resize(900, 640);
}

QPushButton* frmFindLoco::button(const std::string& name) const {
    const auto found = buttons_.find(name);
    return found == buttons_.end() ? nullptr : found->second;
}

void frmFindLoco::setRunning(bool on) {
    for (const char* name : {"Command1", "Command15", "Command2"}) buttons_[name]->setEnabled(!on);
    buttons_["Command10"]->setVisible(on);
    if (on) ctx_.abortFlag = false;
}

void frmFindLoco::listScenarios() {
    ctx_.currentRoutine = "Command1_Click";
    list3_->setRowCount(0);
    listed_.clear();
    stock_.clear();
    stockRead_ = false;
    const QList<QTableWidgetItem*> picked = list1_->selectedItems();
    if (picked.isEmpty()) {
        ctx_.ui->message(ctx_.langText(157, {}, "frmDelRoute"), base::Icon::Exclamation);
        return;
    }
    const int r = picked.front()->row();
    const std::string folder = FromQt(list1_->item(r, 1)->text());
    const routes::ScenarioListing listing = routes::ListScenarios(ctx_.gameRoot(), folder, ctx_.prefs.language);
    if (listing.rows.empty()) Put(list3_, {listing.note});
    for (const routes::ScenarioRow& s : listing.rows) Put(list3_, {s.name, s.folder});
    listed_ = listing.rows;
}

void frmFindLoco::listStock() {
    ctx_.currentRoutine = "Command15_Click";
    if (listed_.empty()) {
        ctx_.ui->message("List the scenarios of a route first.", base::Icon::Information);
        return;
    }
    setRunning(true);
    routes::RouteIndex none;
    std::vector<std::string> paths;
    const routes::StockLoop loop = routes::ForEachScenarioStock(
        ctx_, routes::StockScenarios(listed_, none),
        [&](const routes::StockScenario&, std::string_view, const std::vector<routes::StockItem>& stock) {
            for (const routes::StockItem& item : stock) paths.push_back(item.path);
        });
    setRunning(false);
    stock_ = routes::SortUnique(std::move(paths));
    stockRead_ = !loop.aborted;
    showLines(stock_);
}

void frmFindLoco::checkConsists() {
    ctx_.currentRoutine = "Command2_Click";
    bool ignore = false;
    if (!askIgnore(ignore)) return;
    if (!stockRead_ && !listed_.empty()) listStock();
    if (ctx_.abortFlag) return;
    std::vector<std::string> lines;
    if (routes::CheckConsistTemplates(ctx_, stock_, ignore, lines)) showLines(lines);
}

void frmFindLoco::showLines(const std::vector<std::string>& lines) {
    list2_->clear();
    for (const std::string& line : lines) list2_->addItem(ToQt(line));
    label1_->setText(QString::number(list2_->count()));
}

}  // namespace ferrolund::screens
