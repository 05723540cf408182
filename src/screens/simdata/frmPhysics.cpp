#include "screens/simdata/frmPhysics.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

namespace {

using simdata::PhysicsGrid;

constexpr int kItemColumn = 0;
constexpr int kDataColumn = 1;
constexpr int kKeyColumn = 2;

// The question before unsaved edits are left behind, with what would happen next.
std::string UnsavedQuestion(const std::string& before) {
    return "You have changed some Data, do you wish to SAVE it before\n" + before;
}

}  // namespace

frmPhysics::frmPhysics(app::AppContext& ctx, simdata::PhysicsDocument doc, QWidget* parent)
    : QDialog(parent), ctx_(ctx), doc_(std::move(doc)) {
    setObjectName("frmPhysics");
    setWindowTitle("Display Physics");
    setSizeGripEnabled(true);

    auto* stock = new QLabel("Stock being checked", this);
    stock->setObjectName("lblStock");
    name_ = new QLabel(ToQt(doc_.name), this);
    name_->setObjectName("lblName");
    QFont bold = name_->font();
    bold.setBold(true);
    name_->setFont(bold);

    vsfg1_ = makeGrid("VSFG1", PhysicsGrid::Blueprint);
    vsfg2_ = makeGrid("VSFG2", PhysicsGrid::Simulation);

    auto makeButton = [this](const char* name, const char* caption, auto command) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(name);
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, command);
        return b;
    };
    addSim_ = makeButton("Command2", "Add Simulation File to Grid", [this] { addSimulation(); });
    steamSim_ = makeButton("Command6", "Steam Simulation", [this] { addSimulation(); });
    saveBlueprint_ = makeButton("Command4", "Save Changes", [this] { save(PhysicsGrid::Blueprint); });
    saveSimulation_ = makeButton("Command5", "Save Changes", [this] { save(PhysicsGrid::Simulation); });
    graphsButton_ = makeButton("Command3", "Show Graphs", [this] { showGraphs(); });
    auto* close = makeButton("Command1", "Close", [this] { this->close(); });
    // The simulation is read by the command of its kind of locomotive.
    addSim_->setVisible(!doc_.steam);
    steamSim_->setVisible(doc_.steam);

    auto* layout = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    head->addWidget(stock);
    head->addWidget(name_, 1);
    layout->addLayout(head);

    auto* upper = new QGroupBox(ToQt(doc_.blueprint.path), this);
    upper->setObjectName("fraBlueprint");
    auto* upperLayout = new QVBoxLayout(upper);
    upperLayout->addWidget(vsfg1_, 1);
    auto* upperButtons = new QHBoxLayout;
    upperButtons->addStretch();
    upperButtons->addWidget(saveBlueprint_);
    upperLayout->addLayout(upperButtons);
    layout->addWidget(upper, 1);

    auto* lower = new QGroupBox(doc_.simulation.path.empty() ? QString("Simulation")
                                                             : ToQt(doc_.simulation.path), this);
    lower->setObjectName("fraSimulation");
    auto* lowerLayout = new QVBoxLayout(lower);
    lowerLayout->addWidget(vsfg2_, 1);
    auto* lowerButtons = new QHBoxLayout;
    lowerButtons->addWidget(addSim_);
    lowerButtons->addWidget(steamSim_);
    lowerButtons->addWidget(graphsButton_);
    lowerButtons->addStretch();
    lowerButtons->addWidget(saveSimulation_);
    lowerLayout->addLayout(lowerButtons);
    layout->addWidget(lower, 1);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(close);
    layout->addLayout(bottom);

    fill(PhysicsGrid::Blueprint);
    enableCommands();
    resize(760, 820);
}

QTableWidget* frmPhysics::makeGrid(const char* name, PhysicsGrid which) {
    auto* grid = new QTableWidget(0, 3, this);
    grid->setObjectName(name);
    // The header string "<Item", "<Data", "<Key": left-aligned columns, the key hidden.
    grid->setHorizontalHeaderLabels({"Item", "Data", "Key"});
    grid->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    grid->setColumnWidth(kItemColumn, 4200 / kTwipsPerPixel);
    grid->horizontalHeader()->setSectionResizeMode(kDataColumn, QHeaderView::Stretch);
    grid->setColumnHidden(kKeyColumn, true);
    grid->verticalHeader()->hide();
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 6);
    grid->setSelectionBehavior(QAbstractItemView::SelectItems);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    connect(grid, &QTableWidget::itemChanged, this, [this, which](QTableWidgetItem* item) { cellChanged(which, item); });
    return grid;
}

QTableWidget* frmPhysics::grid(PhysicsGrid which) const { return which == PhysicsGrid::Blueprint ? vsfg1_ : vsfg2_; }

QPushButton* frmPhysics::button(const char* name) const { return findChild<QPushButton*>(name); }

void frmPhysics::fill(PhysicsGrid which) {
    QTableWidget* table = grid(which);
    const std::vector<simdata::GridRow>& rows = doc_.file(which).rows;
    filling_ = true;
    table->setRowCount(static_cast<int>(rows.size()));
    QFont headingFont = table->font();
    headingFont.setBold(true);
    for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
        const simdata::GridRow& row = rows[static_cast<std::size_t>(r)];
        auto* item = new QTableWidgetItem(ToQt(row.item));
        auto* data = new QTableWidgetItem(ToQt(simdata::ShownData(row.data)));
        auto* key = new QTableWidgetItem(row.key ? QString::number(*row.key) : QString());
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        key->setFlags(Qt::ItemIsEnabled);
        if (row.heading()) {
            item->setFont(headingFont);
            item->setBackground(table->palette().alternateBase());
            data->setBackground(table->palette().alternateBase());
            data->setFlags(Qt::ItemIsEnabled);
        } else {
            data->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
        }
        table->setItem(r, kItemColumn, item);
        table->setItem(r, kDataColumn, data);
        table->setItem(r, kKeyColumn, key);
    }
    filling_ = false;
}

void frmPhysics::cellChanged(PhysicsGrid which, QTableWidgetItem* item) {
    if (filling_ || item->column() != kDataColumn) return;
    const auto index = static_cast<std::size_t>(item->row());
    std::vector<simdata::GridRow>& rows = doc_.file(which).rows;
    if (index >= rows.size() || rows[index].heading()) return;
    const simdata::EditOutcome outcome = simdata::EditPhysics(doc_, which, index, FromQt(item->text()));
    // A new reference to the simulation file is the one the lower grid reads from now on.
    if (outcome.changed && rows[index].item == "EngineSimulationContainer")
        doc_.simulation.path = simdata::SimulationFile(doc_.blueprint.text, ctx_.gameRoot());
    filling_ = true;
    // The cell shows what the text now holds: the new value, or the old one after a refusal.
    item->setText(ToQt(simdata::ShownData(rows[index].data)));
    QTableWidget* table = grid(which);
    for (int r = 0; r < table->rowCount(); ++r) {
        const auto& key = rows[static_cast<std::size_t>(r)].key;
        if (QTableWidgetItem* cell = table->item(r, kKeyColumn)) cell->setText(key ? QString::number(*key) : QString());
    }
    filling_ = false;
    if (!outcome.message.empty() && ctx_.ui) ctx_.ui->message(outcome.message, base::Icon::Critical);
    enableCommands();
}

void frmPhysics::enableCommands() {
    saveBlueprint_->setEnabled(doc_.blueprint.changed);
    saveSimulation_->setEnabled(doc_.simulation.changed);
    graphsButton_->setEnabled(graphs_ && doc_.simulation.loaded());
}

void frmPhysics::setGraphsHandler(GraphsHandler handler) {
    graphs_ = std::move(handler);
    enableCommands();
}

void frmPhysics::addSimulation() {
    if (doc_.changed() && ctx_.ui &&
        ctx_.ui->ask(UnsavedQuestion("adding the Simulation File to the grid?"), base::Buttons::YesNo,
                     base::Icon::Question) == base::Answer::Yes) {
        return;
    }
    if (ctx_.ui) ctx_.ui->busy(true);
    const auto problem = simdata::AddSimulation(ctx_, doc_);
    if (ctx_.ui) ctx_.ui->busy(false);
    if (problem) {
        if (ctx_.ui) ctx_.ui->message(*problem, base::Icon::Exclamation);
        return;
    }
    fill(PhysicsGrid::Simulation);
    enableCommands();
}

void frmPhysics::save(PhysicsGrid which) {
    if (ctx_.ui) ctx_.ui->busy(true);
    const simdata::PhysicsSaved saved = simdata::SavePhysics(ctx_, doc_, which);
    if (ctx_.ui) ctx_.ui->busy(false);
    enableCommands();
    if (!ctx_.ui) return;
    if (!saved.error.empty()) {
        ctx_.ui->message(saved.error, base::Icon::Critical);
        return;
    }
    std::string text = "The changes have been saved to " + doc_.file(which).path + ".";
    if (!saved.backup.empty()) text += "\nThe old file is now " + saved.backup + ".";
    ctx_.ui->message(text, base::Icon::Information);
}

void frmPhysics::showGraphs() {
    if (graphs_ && doc_.simulation.loaded()) graphs_(doc_.name, doc_.steam, doc_.curves);
}

void frmPhysics::closeEvent(QCloseEvent* event) {
    if (!doc_.changed() || !ctx_.ui) {
        event->accept();
        return;
    }
    const base::Answer answer =
        ctx_.ui->ask(UnsavedQuestion("closing this screen?"), base::Buttons::YesNoCancel, base::Icon::Question);
    if (answer == base::Answer::Cancel) {
        event->ignore();
        return;
    }
    if (answer == base::Answer::Yes) {
        for (PhysicsGrid which : {PhysicsGrid::Blueprint, PhysicsGrid::Simulation}) {
            if (!doc_.file(which).changed) continue;
            save(which);
            if (doc_.file(which).changed) {  // not saved: the screen stays, with the edits
                event->ignore();
                return;
            }
        }
    }
    event->accept();
}

frmPhysics* ShowPhysics(app::AppContext& ctx, QWidget* parent, const std::string& path,
                        frmPhysics::GraphsHandler graphs) {
    simdata::PhysicsDocument doc;
    if (ctx.ui) ctx.ui->busy(true);
    const auto problem = simdata::OpenPhysics(ctx, path, doc);
    if (ctx.ui) ctx.ui->busy(false);
    if (problem) {
        if (ctx.ui) ctx.ui->message(*problem, base::Icon::Exclamation);
        return nullptr;
    }
    auto* screen = new frmPhysics(ctx, std::move(doc), parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->setGraphsHandler(std::move(graphs));
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
