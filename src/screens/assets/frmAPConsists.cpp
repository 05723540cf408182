#include "screens/assets/frmAPConsists.h"

#include <QAction>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "screens/app/qt_text.h"
#include "screens/assets/asset_grid.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmAPConsists";

// Column widths of the main grid, in twips.
const std::vector<int> kWidths{5400, 5400, 3000, 3000, 6000};

QListWidget* MakeList(QWidget* parent, const char* name) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return list;
}

QWidget* Titled(QWidget* parent, const char* title, QWidget* inside) {
    auto* box = new QGroupBox(title, parent);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(inside);
    return box;
}

}  // namespace

frmAPConsists::frmAPConsists(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmAPConsists");
    setWindowTitle(assets::kApConsistsCaption);
    setSizeGripEnabled(true);

    AssetGridSetup setup;
    setup.headings.assign(assets::kApDetailHeadings.begin(), assets::kApDetailHeadings.end());
    setup.widthsTwips = kWidths;
    setup.langModule = kModule;
    setup.printTitle = assets::kApConsistsCaption;
    grid_ = new AssetGrid(ctx_, setup, this);

    folder_ = new QLineEdit(ToQt(ctx_.gameRoot().empty() ? std::string("C:") : ctx_.gameRoot() + "\\"), this);
    folder_->setObjectName("txtFolder");
    auto* browse = FolderButton(ctx_, folder_, assets::kApConsistsCaption, this);
    archives_ = MakeList(this, "lstAP");
    properties_ = MakeList(this, "lstXML");
    connect(addButton("cmdFindAP", "Find .ap files"), &QPushButton::clicked, this, &frmAPConsists::findArchives);
    connect(addButton("Command1", "Find Scenario Properties"), &QPushButton::clicked, this,
            &frmAPConsists::findScenarioProperties);
    connect(addButton("cmdDetails", "Add Scenario Details"), &QPushButton::clicked, this, &frmAPConsists::addDetails);

    auto* bar = new QMenuBar(this);
    QAction* index = bar->addAction("Build Route Index");
    index->setObjectName("mnuRInd");
    connect(index, &QAction::triggered, this, [this] { assets::BuildRouteIndex(ctx_); });

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(new QLabel("Folder", this));
    folderRow->addWidget(folder_, 1);
    folderRow->addWidget(browse);
    for (const char* name : {"cmdFindAP", "Command1", "cmdDetails"}) folderRow->addWidget(button(name));
    layout->addLayout(folderRow);
    auto* split = new QSplitter(Qt::Vertical, this);
    auto* lists = new QSplitter(Qt::Horizontal, split);
    lists->addWidget(Titled(lists, ".ap files", archives_));
    lists->addWidget(Titled(lists, "ScenarioProperties.xml files", properties_));
    split->addWidget(lists);
    auto* bottom = new QWidget(split);
    auto* bottomLayout = new QHBoxLayout(bottom);
    bottomLayout->setContentsMargins(0, 0, 0, 0);
    bottomLayout->addWidget(grid_, 1);
    split->addWidget(bottom);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 2);
    layout->addWidget(split, 1);
    resize(1200, 760);
}

QPushButton* frmAPConsists::addButton(const std::string& name, const char* caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(QString::fromStdString(name));
    b->setAutoDefault(false);
    buttons_[name] = b;
    return b;
}

QPushButton* frmAPConsists::button(const std::string& name) const {
    const auto it = buttons_.find(name);
    return it == buttons_.end() ? nullptr : it->second;
}

std::vector<std::size_t> frmAPConsists::Chosen(const QListWidget* list) {
    std::vector<std::size_t> rows;
    for (const QListWidgetItem* item : list->selectedItems()) rows.push_back(static_cast<std::size_t>(list->row(item)));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void frmAPConsists::findArchives() {
    model_.findArchives(ctx_, FromQt(folder_->text()));
    archives_->clear();
    for (const std::string& archive : model_.archives) archives_->addItem(ToQt(archive));
}

void frmAPConsists::findScenarioProperties() {
    const std::size_t before = model_.properties.size();
    model_.findScenarioProperties(ctx_, Chosen(archives_));
    for (std::size_t i = before; i < model_.properties.size(); ++i) {
        const assets::ArchivedProperties& found = model_.properties[i];
        properties_->addItem(ToQt(found.stored + "   (" + found.archive + ")"));
    }
}

void frmAPConsists::addDetails() {
    const std::size_t before = model_.details.size();
    model_.addDetails(ctx_, Chosen(properties_));
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = before; i < model_.details.size(); ++i) rows.push_back(model_.details[i].Cells());
    grid_->appendRows(std::move(rows));
}

frmAPConsists* ShowApConsists(app::AppContext& ctx, QWidget* parent) {
    auto* screen = new frmAPConsists(ctx, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
