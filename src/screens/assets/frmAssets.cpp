#include "screens/assets/frmAssets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <filesystem>

#include "assets/blueprint.h"
#include "screens/app/qt_text.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/clone_commands.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmAssets";

// Column widths of the list, in twips.
const std::vector<int> kWidths{1995, 1995, 6000, 3000, 1020, 2505, 2505, 600};

// The categories offered in the box; any other may be typed.
const char* const kCategories[] = {"",      "Diesel",   "Electric", "Steam",       "Freight",
                                   "Passenger", "Tender", "Scenery", "No Category"};

// A name made fit for a file name: without ' ; :
std::string PictureName(std::string name) {
    std::erase_if(name, [](char c) { return c == '\'' || c == ';' || c == ':'; });
    return name;
}

}  // namespace

frmAssets::frmAssets(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmAssets");
    setWindowTitle(ToQt(lang(436, "Build List of Assets")));
    setSizeGripEnabled(true);

    AssetGridSetup setup;
    setup.headings.assign(assets::kAssetHeadings.begin(), assets::kAssetHeadings.end());
    setup.widthsTwips = kWidths;
    setup.langModule = kModule;
    setup.printTitle = lang(436, "Build List of Assets");
    grid_ = new AssetGrid(ctx_, setup, this);
    connect(grid_, &AssetGrid::rowClicked, this, &frmAssets::showRow);

    folder_ = new QLineEdit(this);
    folder_->setObjectName("txtFolder");
    auto* browse = FolderButton(ctx_, folder_, lang(436, "Build List of Assets"), this);

    category_ = new QComboBox(this);
    category_->setObjectName("cboCategory");
    category_->setEditable(true);
    for (const char* c : kCategories) category_->addItem(c);
    filter_ = new QLineEdit("*.bin", this);
    filter_->setObjectName("txtFilter");
    connect(filter_, &QLineEdit::editingFinished, this, [this] {
        if (filter_->text().trimmed().isEmpty()) filter_->setText("*.*");
    });
    rollingStock_ = new QCheckBox(ToQt(lang(465, "Rolling stock only")), this);
    rollingStock_->setObjectName("chkRolling");
    defaultFolders_ = new QCheckBox(ToQt(lang(467, "Default folders")), this);
    defaultFolders_->setObjectName("chkDefault");
    defaultFolders_->setEnabled(false);
    connect(rollingStock_, &QCheckBox::toggled, this, [this](bool on) {
        if (!on) defaultFolders_->setChecked(false);
        defaultFolders_->setEnabled(on);
    });
    excludePreLoad_ = new QCheckBox(ToQt(lang(468, "Exclude PreLoad")), this);
    excludePreLoad_->setObjectName("chkPreLoad");

    minLod_ = new QSpinBox(this);
    minLod_->setObjectName("txtMinLOD");
    minLod_->setRange(0, 4000);
    maxLod_ = new QSpinBox(this);
    maxLod_->setObjectName("txtMaxLOD");
    maxLod_->setRange(0, 10000);

    children_ = new QListWidget(this);
    children_->setObjectName("lstChildren");
    children_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    childrenTitle_ = new QLabel(this);
    childrenTitle_->setObjectName("lblChildren");
    children_->hide();
    childrenTitle_->hide();
    preview_ = new QLabel(this);
    preview_->setObjectName("picPreview");
    preview_->setFixedSize(256, 128);
    preview_->setAlignment(Qt::AlignCenter);
    preview_->setFrameShape(QFrame::StyledPanel);
    preview_->hide();

    progress_ = new QProgressBar(this);
    progress_->setObjectName("ProgressBar1");
    progress_->hide();
    abort_ = new QPushButton(ToQt(ctx_.langText(383, "&Abort", "frmDelRoute")), this);
    abort_->setObjectName("cmdAbort");
    abort_->setAutoDefault(false);
    abort_->hide();
    connect(abort_, &QPushButton::clicked, this, [this] { ctx_.abortFlag = true; });

    buildButtons();

    auto* layout = new QVBoxLayout(this);
    auto* bar = new QMenuBar(this);
    layout->setMenuBar(bar);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(new QLabel("Folder", this));
    folderRow->addWidget(folder_, 1);
    folderRow->addWidget(browse);
    layout->addLayout(folderRow);

    auto* options = new QHBoxLayout;
    options->addWidget(new QLabel(ToQt(lang(469, "Category")), this));
    options->addWidget(category_);
    options->addWidget(new QLabel(ToQt(lang(470, "Filter")), this));
    options->addWidget(filter_);
    options->addWidget(rollingStock_);
    options->addWidget(defaultFolders_);
    options->addWidget(excludePreLoad_);
    options->addStretch();
    options->addWidget(new QLabel("Min LOD", this));
    options->addWidget(minLod_);
    options->addWidget(new QLabel("Max LOD", this));
    options->addWidget(maxLod_);
    layout->addLayout(options);

    auto* commands = new QGridLayout;
    const char* order[] = {"cmdAdd",      "cmdZero",     "cmdQD",       "cmdIndex",    "cmdDelete",
                           "cmdRename",   "cmdChildren", "cmdRemoveChildren", "cmdSmoke", "cmdLocoInfo",
                           "cmdMissing",  "cmdPackage"};
    int at = 0;
    for (const char* name : order) {
        if (QPushButton* b = button(name)) commands->addWidget(b, at / 6, at % 6), ++at;
    }
    layout->addLayout(commands);

    auto* middle = new QHBoxLayout;
    middle->addWidget(grid_, 1);
    auto* side = new QVBoxLayout;
    side->addWidget(preview_);
    side->addWidget(childrenTitle_);
    side->addWidget(children_, 1);
    side->addStretch();
    middle->addLayout(side);
    layout->addLayout(middle, 1);
    auto* run = new QHBoxLayout;
    run->addWidget(progress_, 1);
    run->addWidget(abort_);
    layout->addLayout(run);

    (void)bar;
    buildMenus();
    bar->addMenu(findChild<QMenu*>("mnuEdit"));
    bar->addMenu(findChild<QMenu*>("mnuCheck"));
    bar->addMenu(findChild<QMenu*>("mnuClone"));
    bar->addMenu(findChild<QMenu*>("mnuSounds"));

    // What the screen starts with: the game's Assets folder, a fresh TempFiles.
    const std::string assets = ctx_.gameRoot().empty() ? std::string() : ctx_.gameRoot() + "\\Assets\\";
    folder_->setText(ToQt(assets));
    const std::string temp = ctx_.appPath("TempFiles");
    std::error_code error;
    if (std::filesystem::is_directory(tools::HostPath(temp), error)) tools::DeleteFolderTree(ctx_, temp);
    tools::CreatePath(temp);
    showMissingAssetCommands();
    resize(1280, 760);
}

frmAssets::~frmAssets() = default;

std::string frmAssets::lang(int n, const std::string& fallback) const { return ctx_.langText(n, fallback, kModule); }

QPushButton* frmAssets::addButton(const std::string& name, int langNumber, const std::string& fallback,
                                  std::function<void()> command) {
    auto* b = new QPushButton(ToQt(lang(langNumber, fallback)), this);
    b->setObjectName(QString::fromStdString(name));
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, [command = std::move(command)] { command(); });
    buttons_[name] = b;
    return b;
}

QAction* frmAssets::addAction(QMenu* menu, const std::string& name, int langNumber, const std::string& fallback,
                              std::function<void()> command) {
    QAction* a = menu->addAction(ToQt(langNumber > 0 ? lang(langNumber, fallback) : fallback));
    a->setObjectName(QString::fromStdString(name));
    if (command) connect(a, &QAction::triggered, this, [command = std::move(command)] { command(); });
    else a->setEnabled(false);  // comes with the commands that edit rolling stock
    actions_[name] = a;
    return a;
}

QPushButton* frmAssets::button(const std::string& name) const {
    const auto it = buttons_.find(name);
    return it == buttons_.end() ? grid_->button(name) : it->second;
}

QAction* frmAssets::action(const std::string& name) const {
    const auto it = actions_.find(name);
    return it == actions_.end() ? nullptr : it->second;
}

assets::AssetRow frmAssets::row(std::size_t index) const {
    return index < grid_->grid().rowCount() ? assets::AssetRow::FromCells(grid_->grid().rows()[index])
                                            : assets::AssetRow{};
}

std::vector<std::size_t> frmAssets::selectedRows() const { return grid_->selectedRows(); }

void frmAssets::setRunning(bool on) {
    progress_->setVisible(on);
    abort_->setVisible(on);
    for (auto& [name, b] : buttons_) b->setEnabled(!on);
    grid_->setCommandsEnabled(!on);
    if (QMenuBar* bar = findChild<QMenuBar*>()) bar->setEnabled(!on);
    if (on) ctx_.abortFlag = false;
}

void frmAssets::showMissingAssetCommands() {
    const bool present = tools::FileExists(ctx_.appPath("Reports\\MissingAssets.csv"));
    for (const char* name : {"cmdMissing", "cmdPackage"}) {
        if (QPushButton* b = button(name)) b->setVisible(present);
    }
}

void frmAssets::showRow(int rowIndex) {
    if (rowIndex < 0) return;
    const assets::AssetRow r = row(static_cast<std::size_t>(rowIndex));
    QImage picture;
    const std::string thumbnail = ctx_.appPath("Thumbnails\\" + PictureName(r.name) + ".jpg");
    if (tools::FileExists(thumbnail)) picture.load(DiskPathToQt(thumbnail));
    if (picture.isNull() && !r.provider.empty()) {
        std::string folder = r.path;
        const std::size_t cut = folder.find_last_of('\\');
        folder = cut == std::string::npos ? std::string() : folder.substr(0, cut + 1);
        const std::string image = ctx_.gameRoot() + "\\Assets\\" + r.provider + "\\" + r.product + "\\" + folder +
                                  "LocoInformation\\image.png";
        if (tools::FileExists(image)) picture.load(DiskPathToQt(image));
    }
    preview_->show();
    if (picture.isNull()) {
        preview_->setPixmap({});
        preview_->setText("No picture");
        return;
    }
    preview_->setPixmap(QPixmap::fromImage(picture.scaled(preview_->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void frmAssets::buildButtons() {
    addButton("cmdAdd", 437, "Add to List", [this] { addToList(); });
    addButton("cmdZero", 438, "Find Zero Length Files", [this] { findZeroLength(); });
    addButton("cmdQD", 463, "List QD consists", [this] { listQuickDrive(); });
    addButton("cmdIndex", 448, "Save Stock Index", [this] { saveStockIndex(); });
    addButton("cmdDelete", 454, "Delete Selected", [this] { deleteSelected(); });
    addButton("cmdRename", 453, "Rename Selected Asset", [this] { changeName(); });
    addButton("cmdChildren", 455, "Display Child Entries.", [this] { displayChildEntries(); });
    addButton("cmdRemoveChildren", 456, " Remove Selected Child Entries.", [this] { removeChildEntries(); });
    addButton("cmdSmoke", 457, "Correct Selected Smoke Stack", [this] { correctSmokeStack(); });
    addButton("cmdLocoInfo", 458, "Add LocoInformation", [this] { addLocoInformation(); });
    addButton("cmdMissing", 459, "Process Missing Assets File", [this] { processMissingAssets(); });
    addButton("cmdPackage", 460, "Package Missing Assets", [this] { packageMissingAssets(); });
}

void frmAssets::buildMenus() {
    // The Edit menu: the commands that rewrite the selected rolling stock. Those not in
    // this build stay greyed.
    auto* edit = new QMenu("Edit", this);
    edit->setObjectName("mnuEdit");
    struct Entry {
        const char* name;
        int lang;
        const char* fallback;
    };
    for (const Entry& e : {Entry{"mnuAdd", 515, "Add Passengers to Carriages"}, Entry{"mnuDead", 516, "Make Selected Stock Dead"},
                           Entry{"mnuCond", 517, "Add Conductor to US Diesel"},
                           Entry{"mnuMass", 518, "Correct Mass/Capacity of Selected"},
                           Entry{"mnuSce", 519, "Convert Selected stock into a  Scenery Item"},
                           Entry{"mnuSlip", 520, "Add WheelSlip to Steam Loco"},
                           Entry{"mnuUSAir", 521, "Change US Diesel airbrake settings"},
                           Entry{"mnuOcc", 522, "Add Cab Occlusions"}, Entry{"mnuHead", 523, "Add head-lights"},
                           Entry{"mnuTail", 524, "Add tail-lights"}, Entry{"mnuZero", 525, "Zero EmissiveAsVec"},
                           Entry{"mnuLod", 526, "Change LODs"}, Entry{"mnuSnow", 527, "Make Better Snow"},
                           Entry{"mnuCategory", 528, "Change Category"}, Entry{"mnuInScene", 529, "Use in Scenarios"},
                           Entry{"mnuChangeName", 530, "Change Name"},
                           Entry{"mnuCNLK", 531, "Change Loco Name/Localized/Key"},
                           Entry{"mnuEnglish", 532, "Make English Only"},
                           Entry{"mnuLocoScript", 0, "Add Loco Script (Diesel)"},
                           Entry{"mnuWagScript", 0, "Add Wagon Script"}}) {
        if (std::string_view(e.name) == "mnuOcc") {
            // One command for the cabs it knows, the class given by the entry.
            QMenu* occlusions = edit->addMenu(ToQt(lang(e.lang, e.fallback)));
            occlusions->setObjectName(e.name);
            addAction(occlusions, "mnuAdd37", 0, "Add Class 37 Occlusions", editCommand("mnuAdd37"));
            addAction(occlusions, "mnuAdd47", 0, "Add Class 47 Occlusions", editCommand("mnuAdd47"));
            continue;
        }
        addAction(edit, e.name, e.lang, e.fallback, editCommand(e.name));
    }
    auto* check = new QMenu(ToQt(lang(488, "Check Assets")), this);
    check->setObjectName("mnuCheck");
    for (const Entry& e : {Entry{"mnuCheckLoco", 489, "Check Loco for missing files"},
                           Entry{"mnuShowFiles", 490, "Show Files Used by Locos"},
                           Entry{"mnuWag", 491, "Show Files Used by Wagons"}, Entry{"mnuSFA", 492, "Show files used by Asset"},
                           Entry{"mnuLoft", 493, "Show files used by Lofts"}, Entry{"mnuwhere", 494, "Where is it used?"}}) {
        addAction(check, e.name, e.lang, e.fallback, checkCommand(e.name));
    }
    check->addSeparator();
    addAction(check, "mnuPhysics", 0, "Display Physics", [this] { displayPhysics(); });
    auto* clone = new QMenu("Clone", this);
    clone->setObjectName("mnuClone");
    for (const CloneEntry& e : kCloneEntries) addAction(clone, e.name, e.lang, e.caption, cloneCommand(e.name));
    auto* sounds = new QMenu("Update Sounds", this);
    sounds->setObjectName("mnuSounds");
    // Freight wagons, coaches, any bogie, then the diesel classes; a null name is a separator.
    for (const Entry& e : {Entry{"mnuNewWag", 0, "New Wagon Sounds"}, Entry{"mnuOldH", 0, "Old heavy wagons"},
                           Entry{"mnuOHR", 0, "Old Heavy Rattly"}, Entry{"mnuCntrFlats", 0, "Container Flats"},
                           Entry{"mnu4WW", 0, "4 Wheel Wagons"}, Entry{nullptr, 0, nullptr},
                           Entry{"mnuMK1", 0, "Add MK1 && Mk2a/b/c Coach Sounds"},
                           Entry{"mnuMK2", 0, "Add Mk2d/e/f (air cond) Coach Sounds"},
                           Entry{"mnuMK3", 0, "Add Mk3 Coach Sounds"}, Entry{"mnuApp", 0, "Add Appropriate Coach Sounds"},
                           Entry{nullptr, 0, nullptr}, Entry{"mnuBacn", 0, "Change BogieAudioControlName"},
                           Entry{nullptr, 0, nullptr}, Entry{"mnuSnd37", 0, "Class 37 Sounds"},
                           Entry{"mnuCL47", 0, "Class 47 Sounds"}, Entry{"mnuHST", 0, "Class 43/HST Sounds"}}) {
        if (!e.name) {
            sounds->addSeparator();
            continue;
        }
        addAction(sounds, e.name, e.lang, e.fallback, soundCommand(e.name));
    }
    action("mnuApp")->setToolTip("Mk3 Coach Packs as appropriate");
}

void ShowAssets(app::AppContext& ctx, QWidget* parent) {
    auto* screen = new frmAssets(ctx, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
}

}  // namespace ferrolund::screens
