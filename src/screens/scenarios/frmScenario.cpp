#include "screens/scenarios/frmScenario.h"

#include <QFont>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "scenarios/scenario_reader.h"
#include "screens/app/qt_text.h"
#include "screens/services/print_preview.h"
#include "services/report_table.h"
#include "tools/files.h"
#include "tools/text_repair.h"

namespace ferrolund::screens {
namespace {

constexpr const char* kModule = "frmScenario";
constexpr int kScenarioDetailsPrintSource = 6;
constexpr const char* kGridFilter =
    "Comma Separated (*.csv)|*.csv|Excel file (*.xls)|*.xls|Tabbed text file (*.txt)|*.txt";

QString Shown(const std::string& fileText) { return ToQt(tools::FixEntitiesCopy(fileText)); }

}  // namespace

frmScenario::frmScenario(app::AppContext& ctx, scenarios::ScenarioTexts texts,
                         const scenarios::ReportOptions& options, QWidget* parent)
    : QDialog(parent), ctx_(ctx), texts_(std::move(texts)) {
    setObjectName("frmScenario");
    setWindowTitle("Scenario Details");

    auto* fields = new QFormLayout;
    const std::pair<int, const char*> captions[] = {{0, "Name"},      {1, "Description"}, {2, "Briefing"},
                                                    {3, "Start Time"}, {4, "Duration"},    {7, "Date"},
                                                    {8, "Season"},     {11, "Weather"}};
    for (const auto& [index, caption] : captions) {
        auto* box = new QLineEdit(this);
        box->setObjectName(QString("Text1_%1").arg(index));
        box->setReadOnly(true);
        text1_[static_cast<std::size_t>(index)] = box;
        fields->addRow(caption, box);
    }
    players_ = new QLineEdit(this);
    players_->setObjectName("PlayersConsist");
    players_->setReadOnly(true);
    fields->addRow("Players Consist:-", players_);
    stock_ = new QListWidget(this);
    stock_->setObjectName("PlayersStock");
    stock_->setMaximumHeight(110);
    fields->addRow("", stock_);

    list1_ = new QListWidget(this);
    list1_->setObjectName("List1");
    auto* servicesBox = new QGroupBox("Services", this);
    auto* servicesLayout = new QVBoxLayout(servicesBox);
    servicesLayout->addWidget(list1_);

    auto* typeBox = new QGroupBox(this);
    auto* typeLayout = new QVBoxLayout(typeBox);
    option_[0] = new QRadioButton("Standard Scenario", typeBox);
    option_[1] = new QRadioButton("Timetable Scenario", typeBox);
    for (QRadioButton* option : option_) typeLayout->addWidget(option);

    vsfg1_ = new QTableWidget(0, 2, this);
    vsfg1_->setObjectName("VSFG1");
    vsfg1_->setHorizontalHeaderLabels({"Title", "Value"});
    vsfg1_->horizontalHeader()->setStretchLastSection(true);
    vsfg1_->verticalHeader()->hide();
    vsfg1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vsfg1_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(vsfg1_, &QTableWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        const QModelIndex cell = vsfg1_->indexAt(at);
        if (cell.isValid()) showCell(cell.row(), cell.column());
    });

    auto* save = new QPushButton("Save to Excel", this);
    save->setObjectName("cmdSave");
    connect(save, &QPushButton::clicked, this, &frmScenario::saveGrid);
    auto* printButton = new QPushButton("&Print", this);
    printButton->setObjectName("cmdPrint");
    connect(printButton, &QPushButton::clicked, this, &frmScenario::print);
    auto* close = new QPushButton("Close", this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* left = new QVBoxLayout;
    left->addLayout(fields);
    left->addWidget(typeBox);
    left->addWidget(servicesBox, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(printButton);
    buttons->addWidget(close);
    auto* right = new QVBoxLayout;
    right->addWidget(vsfg1_, 1);
    right->addLayout(buttons);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 2);
    layout->addLayout(right, 3);
    resize(1100, 700);

    fillFields();
    fillConsists();
    fillReport(options);
    timetable_ = scenarios::MentionsTimetable(texts_.propertiesXml);
    option_[timetable_ ? 1 : 0]->setChecked(true);
    for (int i = 0; i < 2; ++i)
        connect(option_[static_cast<std::size_t>(i)], &QRadioButton::clicked, this,
                [this, i] { chooseTimetable(i == 1); });
}

void frmScenario::fillFields() {
    const scenarios::ScenarioDetails d = scenarios::ReadScenarioDetails(texts_.propertiesXml, ctx_.languageTag());
    const std::pair<int, std::string> values[] = {
        {0, d.displayName},
        {1, d.description},
        {2, d.briefing},
        {3, scenarios::SecondsToHHMM(d.startTime)},
        {4, d.durationMins},
        {7, d.startDD + "/" + d.startMM + "/" + d.startYYYY},
        {8, d.season},
        {11, d.weatherBlueprintID.empty() ? std::string()
                                          : d.weatherProvider + "/" + d.weatherProduct + "/" + d.weatherBlueprintID},
    };
    for (const auto& [index, value] : values) field(index)->setText(Shown(value));
}

void frmScenario::fillConsists() {
    const scenarios::ScenarioConsists read =
        scenarios::ReadConsists(texts_.scenarioXml, ctx_.languageTag(), {}, scenarios::kDetailsWalk);
    for (const scenarios::ConsistRow& row : read.consists)
        if (!row.loose) list1_->addItem(Shown(row.serviceName));
    if (read.drivenConsist < 0) return;
    const scenarios::ConsistRow& driven = read.consists[static_cast<std::size_t>(read.drivenConsist)];
    players_->setText(Shown(driven.serviceName));
    // The asset is the last Provider ahead of the name: in the game's files that is the
    // reskin's, empty for a vehicle that is no reskin, and then only the name is shown.
    for (const scenarios::VehicleRow& vehicle : driven.vehicles) {
        std::string line = vehicle.name;
        if (!vehicle.blueprintID.empty())
            line += "    " + vehicle.provider + "/" + vehicle.product + "/" + vehicle.blueprintID;
        stock_->addItem(Shown(line));
    }
}

void frmScenario::fillReport(const scenarios::ReportOptions& options) {
    const auto rows = scenarios::ReportRows(scenarios::ScenarioReport(texts_.scenarioXml, options));
    vsfg1_->setRowCount(static_cast<int>(rows.size()));
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < 2; ++c) {
            auto* item = new QTableWidgetItem(Shown(rows[r][static_cast<std::size_t>(c)]));
            // The first line of a consist's block stands out.
            if (rows[r][0] == "Service Name") {
                QFont bold = item->font();
                bold.setBold(true);
                item->setFont(bold);
            }
            vsfg1_->setItem(static_cast<int>(r), c, item);
        }
    }
    vsfg1_->resizeColumnToContents(0);
}

void frmScenario::chooseTimetable(bool timetable) {
    if (timetable == timetable_) return;
    if (timetable && ctx_.ui &&
        ctx_.ui->ask(scenarios::kTimetableQuestion, base::Buttons::OkCancel, base::Icon::Question) !=
            base::Answer::Ok) {
        option_[0]->setChecked(true);
        return;
    }
    scenarios::SetTimetabled(texts_.scenarioXml, timetable);
    timetable_ = timetable;
    option_[timetable ? 1 : 0]->setChecked(true);
}

void frmScenario::saveGrid() {
    if (!ctx_.ui) return;
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseSaveFile("Save Grid as File", kGridFilter, reports);
    if (!file || file->empty()) return;
    services::ReportTable table;
    for (int r = 0; r < vsfg1_->rowCount(); ++r) {
        std::vector<std::string> row;
        for (int c = 0; c < 2; ++c) row.push_back(FromQt(vsfg1_->item(r, c) ? vsfg1_->item(r, c)->text() : QString()));
        table.rows.push_back(std::move(row));
    }
    ctx_.report(services::SaveReportTable(*file, table), kModule);
}

void frmScenario::showCell(int row, int column) {
    const QTableWidgetItem* item = vsfg1_->item(row, column);
    if (!item) return;
    auto* window = new QDialog(this);
    window->setObjectName("txtScroll");
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(vsfg1_->item(row, 0) ? vsfg1_->item(row, 0)->text() : QString());
    auto* text = new QPlainTextEdit(item->text(), window);
    text->setReadOnly(true);
    auto* layout = new QVBoxLayout(window);
    layout->addWidget(text);
    window->resize(420, 220);
    window->show();
}

void frmScenario::print() {
    PrintPreviewGrid(this, *vsfg1_->model(), kScenarioDetailsPrintSource, windowTitle());
}

void ShowScenarioDetails(app::AppContext& ctx, QWidget* parent, const std::string& routeFolder,
                         const std::string& scenarioFolder, bool includeLoose) {
    const std::string folder = scenarios::ScenarioFolderPath(ctx, routeFolder, scenarioFolder);
    scenarios::ReportOptions options;
    options.includeLoose = includeLoose;
    options.languageTag = ctx.languageTag();
    scenarios::MarkerIndex markers;
    bool cancelled = false;
    if (base::Status failed = scenarios::LoadMarkerIndex(ctx, routeFolder, markers, cancelled)) {
        // Without the index every origin is shown as its tile.
        if (ctx.ui) ctx.ui->message(failed->description, base::Icon::Exclamation);
    } else if (cancelled) {
        return;
    } else {
        options.markers = scenarios::LookupIn(std::move(markers));
    }
    scenarios::ScenarioTexts texts;
    if (base::Status failed = scenarios::LoadScenarioTexts(ctx, folder, texts)) {
        if (ctx.ui) ctx.ui->message(failed->description, base::Icon::Critical);
        return;
    }
    frmScenario screen(ctx, std::move(texts), options, parent);
    screen.exec();
}

}  // namespace ferrolund::screens
