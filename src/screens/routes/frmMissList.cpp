#include "screens/routes/frmMissList.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "routes/route_stock.h"
#include "screens/app/qt_text.h"
#include "services/report_table.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmMissList";
const std::vector<std::string> kHeadings{"Route", "Scenario", "Missing Rolling Stock"};

bool EndsInCsv(const std::string& name) {
    if (name.size() < 3) return false;
    std::string end = name.substr(name.size() - 3);
    for (char& c : end) c = static_cast<char>(c | 0x20);
    return end == "csv";
}

}  // namespace

frmMissList::frmMissList(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmMissList");
    setWindowTitle("Missing Rolling Stock in All Scenarios");
    auto* layout = new QVBoxLayout(this);
    list1_ = new QTableWidget(0, static_cast<int>(kHeadings.size()), this);
    list1_->setObjectName("List1");
    QStringList headings;
    for (const std::string& h : kHeadings) headings << ToQt(h);
    list1_->setHorizontalHeaderLabels(headings);
    list1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list1_->verticalHeader()->hide();
    list1_->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(list1_);

    auto* row = new QHBoxLayout;
    auto add = [&](const char* name, const char* caption, void (frmMissList::*run)()) {
        auto* b = new QPushButton(QString::fromLatin1(caption), this);
        b->setObjectName(name);
        buttons_[name] = b;
        connect(b, &QPushButton::clicked, this, run);
        row->addWidget(b);
    };
    add("Command4", "Load CSV", &frmMissList::loadCsv);
    add("Command5", "Save CSV", &frmMissList::saveGrid);
    add("Command1", "Remove Duplicate Rows", &frmMissList::removeDuplicates);
    add("Command3", "Clear Grid", &frmMissList::clearGrid);
    row->addStretch();
    row->addWidget(new QLabel("Rows", this));
    label2_ = new QLabel("0", this);
    label2_->setObjectName("Label2");
    row->addWidget(label2_);
    auto* close = new QPushButton("Close", this);
    close->setObjectName("Command6");
    buttons_["Command6"] = close;
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    row->addWidget(close);
    layout->addLayout(row);
    resize(900, 500);

    const std::string test = ctx_.appPath("TempFiles\\Test.csv");
    if (tools::FileExists(test)) showCsv(tools::ReadTextFile(test));
}

QPushButton* frmMissList::button(const std::string& name) const {
    const auto found = buttons_.find(name);
    return found == buttons_.end() ? nullptr : found->second;
}

std::vector<std::vector<std::string>> frmMissList::rows() const {
    std::vector<std::vector<std::string>> all;
    for (int r = 0; r < list1_->rowCount(); ++r) {
        std::vector<std::string>& cells = all.emplace_back();
        for (int c = 0; c < list1_->columnCount(); ++c) {
            const QTableWidgetItem* item = list1_->item(r, c);
            cells.push_back(item ? FromQt(item->text()) : std::string());
        }
    }
    return all;
}

void frmMissList::setRows(const std::vector<std::vector<std::string>>& rows) {
    list1_->setRowCount(0);
    for (const auto& cells : rows) {
        const int r = list1_->rowCount();
        list1_->insertRow(r);
        for (std::size_t c = 0; c < cells.size() && static_cast<int>(c) < list1_->columnCount(); ++c)
            list1_->setItem(r, static_cast<int>(c), new QTableWidgetItem(ToQt(cells[c])));
    }
    label2_->setText(QString::number(list1_->rowCount()));
}

void frmMissList::showCsv(const std::string& text) {
    services::ReportTable table = services::ParseCsv(text);
    // Test.csv has no heading row: its first line is a row like the others.
    if (!table.headings.empty() && table.headings != kHeadings) table.rows.insert(table.rows.begin(), table.headings);
    setRows(table.rows);
}

void frmMissList::loadCsv() {
    ctx_.currentRoutine = "Command4_Click";
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseOpenFile("Load Grid from File", "Comma Separated (*.csv)|*.csv", reports);
    if (!file || !EndsInCsv(*file)) return;
    if (!tools::FileExists(*file)) {
        ctx_.ui->message(*file + "\ncan't be found.", base::Icon::Exclamation);
        return;
    }
    showCsv(tools::ReadTextFile(*file));
}

void frmMissList::saveGrid() {
    ctx_.currentRoutine = "Command5_Click";
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseSaveFile("Save Grid as File", "Comma Separated (*.csv)|*.csv", reports);
    if (!file || file->empty()) return;
    services::ReportTable table{kHeadings, rows()};
    ctx_.report(services::SaveReportTable(*file, table), kModule);
    tools::ForgetPath(*file);
}

void frmMissList::removeDuplicates() {
    std::vector<std::vector<std::string>> all = rows();
    routes::RemoveDuplicateRows(all);
    setRows(all);
}

void frmMissList::clearGrid() { setRows({}); }

}  // namespace ferrolund::screens
