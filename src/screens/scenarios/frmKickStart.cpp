#include "screens/scenarios/frmKickStart.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <filesystem>

#include "screens/app/qt_text.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmKickStart";
constexpr const char* kSeasons[] = {"SEASON_SPRING", "SEASON_SUMMER", "SEASON_AUTUMN", "SEASON_WINTER"};
constexpr const char* kLabels[15] = {"Display Name:", "Description", "Briefing", "Start Time (24 hour)",
                                     "Duration (mins)", "Day", "Month", "Year", "Season", "Weather Provider",
                                     "Weather Product", "Weather Blueprint", "Extension", "", ""};

void Tell(app::AppContext& ctx, const std::string& text, base::Icon icon = base::Icon::Exclamation) {
    if (ctx.ui) ctx.ui->message(text, icon);
}

// The file of a blueprint reference: Assets\Provider\Product\BlueprintID, xml as bin.
std::string BlueprintFile(const app::AppContext& ctx, const std::string& provider, const std::string& product,
                          std::string blueprint) {
    if (blueprint.size() >= 3 && tools::EqualsIgnoreCase(blueprint.substr(blueprint.size() - 3), "xml"))
        blueprint.replace(blueprint.size() - 3, 3, "bin");
    return ctx.gameRoot() + "\\Assets\\" + provider + "\\" + product + "\\" + blueprint;
}

QTableWidgetItem* Cell(const std::string& text) {
    auto* item = new QTableWidgetItem(ToQt(text));
    item->setFlags(item->flags() & ~Qt::ItemIsEditable);
    return item;
}

QTableWidget* Grid(QWidget* parent, const char* name, const QStringList& heads) {
    auto* grid = new QTableWidget(0, static_cast<int>(heads.size()), parent);
    grid->setObjectName(name);
    grid->setHorizontalHeaderLabels(heads);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->verticalHeader()->hide();
    grid->horizontalHeader()->setStretchLastSection(true);
    return grid;
}

}  // namespace

dlgWeather::dlgWeather(app::AppContext& ctx, const std::string& folder, QWidget* parent) : QDialog(parent) {
    setObjectName("dlgWeather");
    setWindowTitle("Set Weather");
    file_ = new QLineEdit(this);
    file_->setObjectName("File1");
    auto* browse = new QPushButton("Browse...", this);
    browse->setObjectName("cmdBrowse");
    connect(browse, &QPushButton::clicked, this, [this, &ctx, folder] {
        if (!ctx.ui) return;
        if (auto chosen = ctx.ui->chooseOpenFile("Set Weather", "Blueprints (*.bin)", folder))
            file_->setText(ToQt(*chosen));
    });
    blank_ = new QCheckBox("Blank Extension Blueprint", this);
    blank_->setObjectName("Check1");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(file_);
    row->addWidget(browse);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(ToQt(folder), this));
    layout->addLayout(row);
    layout->addWidget(blank_);
    layout->addWidget(buttons);
    resize(560, 140);
}

std::string dlgWeather::chosenFile() const { return FromQt(file_->text()); }
bool dlgWeather::blankExtension() const { return blank_->isChecked(); }

frmKickStart::frmKickStart(app::AppContext& ctx, scenarios::ScenarioTexts texts, QWidget* parent)
    : QDialog(parent), ctx_(ctx), texts_(std::move(texts)) {
    setObjectName("frmKickStart");
    setWindowTitle(ToQt(langText(557, "Scenario Editor")));
    auto* detailsBox = new QGroupBox(ToQt(langText(558, "Scenario Details")), this);
    detailsBox->setObjectName("Frame1");
    buildDetails(detailsBox);

    consists_ = Grid(this, "Grid1", {"Service", "Start", "Destination", "Vehicles", "Class"});
    stock_ = Grid(this, "Grid2", {"Name", "Number", "Provider", "Product", "Blueprint", "Flipped"});
    connect(consists_, &QTableWidget::itemSelectionChanged, this, [this] { fillStock(consists_->currentRow()); });
    connect(stock_, &QTableWidget::itemSelectionChanged, this, [this] {
        if (details_ && details_->isVisible()) showStockDetails();
    });

    auto* stockCommands = new QHBoxLayout;
    auto* detailsButton = new QPushButton("Details of selected rolling stock", this);
    detailsButton->setObjectName("cmdDetails");
    connect(detailsButton, &QPushButton::clicked, this, &frmKickStart::showStockDetails);
    stockCommands->addWidget(detailsButton);
    // The stock commands of this screen come with the stock operations.
    for (const char* caption : {"Swap", "Delete", "Flip", "Change Number", "Change Start Time", "Change Service Class"}) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QString("cmdStock_") + QString(caption).remove(' '));
        button->setEnabled(false);
        stockCommands->addWidget(button);
    }
    auto* named = new QPushButton("Save as Named Consist", this);
    named->setObjectName("cmdConsist");
    connect(named, &QPushButton::clicked, this, &frmKickStart::saveNamedConsist);
    stockCommands->addWidget(named);

    save_ = new QPushButton(ToQt(langText(560, "Save Changes to Scenario")), this);
    save_->setObjectName("Command1");
    connect(save_, &QPushButton::clicked, this, &frmKickStart::saveChanges);
    close_ = new QPushButton("Close without saving changes", this);
    close_->setObjectName("Command2");
    connect(close_, &QPushButton::clicked, this, &QDialog::close);
    auto* run = new QPushButton("Run RailWorks", this);
    run->setObjectName("Command5");
    connect(run, &QPushButton::clicked, this, &frmKickStart::runRailWorks);
    auto* commands = new QHBoxLayout;
    commands->addWidget(save_);
    commands->addWidget(close_);
    commands->addStretch();
    commands->addWidget(run);

    auto* right = new QWidget(this);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addWidget(consists_, 2);
    rightLayout->addWidget(stock_, 3);
    rightLayout->addLayout(stockCommands);
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(detailsBox);
    split->addWidget(right);
    split->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(split);
    layout->addLayout(commands);
    resize(1250, 720);

    // Enter in a box presses no button.
    for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
    fillDetails();
    fillConsists();
}

std::string frmKickStart::langText(int n, const std::string& fallback) {
    const std::string text = ctx_.langText(n, fallback, kModule);
    return text.empty() ? fallback : text;
}

void frmKickStart::buildDetails(QWidget* page) {
    auto* form = new QFormLayout;
    for (int n = 0; n < 15; ++n) {
        auto* edit = new QLineEdit(page);
        edit->setObjectName(QString("Text1_%1").arg(n));
        text1_[static_cast<std::size_t>(n)] = edit;
        connect(edit, &QLineEdit::textEdited, this, [this] { markDirty(); });
        if (n == 8) {
            season_ = new QComboBox(page);
            season_->setObjectName("Combo1");
            for (const char* season : kSeasons) season_->addItem(season);
            connect(season_, &QComboBox::activated, this, [this] {
                text1_[8]->setText(season_->currentText());
                markDirty();
            });
            auto* row = new QHBoxLayout;
            row->addWidget(edit);
            row->addWidget(season_);
            form->addRow(kLabels[n], row);
            continue;
        }
        form->addRow(kLabels[n], edit);
    }
    text1_[3]->installEventFilter(this);
    text1_[3]->setMaxLength(4);
    author_ = new QLineEdit(page);
    author_->setObjectName("Text3_1");
    startLocation_ = new QLineEdit(page);
    startLocation_->setObjectName("Text3_2");
    authorLabel_ = new QLabel("Author", page);
    startLocationLabel_ = new QLabel("Start Location(Freeroam)", page);
    form->addRow(authorLabel_, author_);
    form->addRow(startLocationLabel_, startLocation_);
    for (QLineEdit* edit : {author_, startLocation_}) connect(edit, &QLineEdit::textEdited, this, [this] { markDirty(); });

    auto* classBox = new QGroupBox("Class", page);
    auto* classLayout = new QHBoxLayout(classBox);
    for (const scenarios::ScenarioClassInfo& info : scenarios::ScenarioClasses()) {
        if (info.option < 0 || info.option > 4) continue;
        auto* option = new QRadioButton(info.caption, classBox);
        option->setObjectName(QString("Option2_%1").arg(info.option));
        classes_[static_cast<std::size_t>(info.option)] = option;
        classLayout->addWidget(option);
        const int index = info.option;
        // The question comes before the option changes: a cancelled change leaves it.
        option->installEventFilter(this);
        option->setProperty("classOption", index);
    }
    auto* weather = new QPushButton("Set Weather", page);
    weather->setObjectName("Command3");
    connect(weather, &QPushButton::clicked, this, &frmKickStart::openWeatherDialog);
    allConsists_ = new QCheckBox("Change for all consists", page);
    allConsists_->setObjectName("Check1");
    suppress_ = new QCheckBox("Suppress messages re saving changes", page);
    suppress_->setObjectName("chkMsg");

    auto* layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addWidget(classBox);
    layout->addWidget(weather);
    layout->addWidget(allConsists_);
    layout->addWidget(suppress_);
    layout->addStretch();
}

void frmKickStart::fillDetails() {
    const scenarios::ScenarioDetails details =
        scenarios::ReadScenarioDetails(texts_.propertiesXml, ctx_.languageTag());
    const scenarios::DetailEdits edits = scenarios::EditsFromDetails(details);
    const std::string* values[15] = {&edits.displayName,      &edits.description,       &edits.briefing,
                                     &edits.startTime,        &edits.durationMins,      &edits.startDD,
                                     &edits.startMM,          &edits.startYYYY,         &edits.season,
                                     &edits.weatherProvider,  &edits.weatherProduct,    &edits.weatherBlueprintID,
                                     &edits.extensionProvider, &edits.extensionProduct, &edits.extensionBlueprintID};
    for (int n = 0; n < 15; ++n) text1_[static_cast<std::size_t>(n)]->setText(ToQt(*values[n]));
    author_->setText(ToQt(edits.author));
    startLocation_->setText(ToQt(edits.startLocation));
    loadedTime_ = edits.startTime;
    scenarioClass_ = details.scenarioClass;
    const scenarios::ScenarioClassInfo* info = scenarios::ClassInfo(details.kind());
    setClassOption(info ? info->option : -1);
    const int seasonIndex = season_->findText(ToQt(edits.season));
    if (seasonIndex >= 0) season_->setCurrentIndex(seasonIndex);

    const std::string base = ctx_.gameRoot() + "\\Assets\\" + edits.weatherProvider + "\\" + edits.weatherProduct;
    weatherRoot_.clear();
    for (const char* below : {"\\Weather", "\\Environment\\Weather", "\\"}) {
        std::error_code error;
        if (std::filesystem::is_directory(tools::HostPath(base + below), error)) {
            weatherRoot_ = base + below;
            break;
        }
    }
    if (weatherRoot_.empty()) {
        Tell(ctx_, "The Weather folder for this scenario is missing\r\nMaybe it is packed in an .ap file? Missing item:-\r\n" +
                       base + "\\Weather");
    }
}

void frmKickStart::setClassOption(int option) {
    classOption_ = option;
    for (int n = 0; n < 5; ++n) classes_[static_cast<std::size_t>(n)]->setChecked(n == option);
    const bool freeRoam = option == 1;
    const bool author = option == 0 || freeRoam;
    authorLabel_->setVisible(author);
    author_->setVisible(author);
    startLocationLabel_->setVisible(freeRoam);
    startLocation_->setVisible(freeRoam);
}

void frmKickStart::fillConsists() {
    read_ = scenarios::ReadConsists(texts_.scenarioXml, ctx_.languageTag());
    consists_->setRowCount(0);
    consists_->setRowCount(static_cast<int>(read_.consists.size()));
    for (int r = 0; r < consists_->rowCount(); ++r) {
        const scenarios::ConsistRow& row = read_.consists[static_cast<std::size_t>(r)];
        const std::string cells[] = {row.serviceName, row.startTime, row.destination,
                                     std::to_string(row.vehicles.size()), scenarios::ServiceClassWord(row.serviceClass)};
        for (int c = 0; c < 5; ++c) {
            QTableWidgetItem* item = Cell(cells[c]);
            if (row.hasDestination) item->setForeground(Qt::red);
            consists_->setItem(r, c, item);
        }
    }
    consists_->resizeColumnsToContents();
    if (consists_->rowCount() > 0) consists_->selectRow(std::max(read_.drivenConsist, 0));
}

void frmKickStart::fillStock(int consist) {
    stock_->setRowCount(0);
    if (consist < 0 || consist >= static_cast<int>(read_.consists.size())) return;
    const scenarios::ConsistRow& row = read_.consists[static_cast<std::size_t>(consist)];
    if (row.vehicles.empty()) {
        stock_->setRowCount(1);
        stock_->setItem(0, 0, Cell(scenarios::kEmptyConsist));
        return;
    }
    stock_->setRowCount(static_cast<int>(row.vehicles.size()));
    for (int r = 0; r < stock_->rowCount(); ++r) {
        const scenarios::VehicleRow& v = row.vehicles[static_cast<std::size_t>(r)];
        const bool missing = !tools::FileExists(BlueprintFile(ctx_, v.provider, v.product, v.blueprintID));
        const std::string cells[] = {v.name, v.uniqueNumber, v.provider, v.product,
                                     missing ? v.blueprintID + "  (missing)" : v.blueprintID, v.flipped};
        for (int c = 0; c < 6; ++c) {
            QTableWidgetItem* item = Cell(cells[c]);
            if (missing) item->setBackground(QColor(255, 200, 200));
            stock_->setItem(r, c, item);
        }
    }
    stock_->resizeColumnsToContents();
}

void frmKickStart::showStockDetails() {
    const int k = consists_->currentRow(), j = stock_->currentRow();
    if (k < 0 || j < 0 || k >= static_cast<int>(read_.consists.size())) return;
    const scenarios::ConsistRow& row = read_.consists[static_cast<std::size_t>(k)];
    if (j >= static_cast<int>(row.vehicles.size())) return;
    const scenarios::VehicleRow& v = row.vehicles[static_cast<std::size_t>(j)];
    if (!details_) {
        details_ = new QDialog(this);
        details_->setObjectName("frmStockDetails");
        details_->setWindowTitle("Details of selected rolling stock");
        auto* text = new QPlainTextEdit(details_);
        text->setObjectName("Text1");
        text->setReadOnly(true);
        (new QVBoxLayout(details_))->addWidget(text);
        details_->resize(560, 300);
    }
    std::string lines = "Name: " + v.name + "\nProvider: " + v.provider + "\nProduct: " + v.product +
                        "\nBlueprint: " + v.blueprintID + "\nNumber: " + v.uniqueNumber + "\nFlipped: " + v.flipped +
                        "\nLoadable: " + v.loadable + "\nPreloaded: " + v.isPreloaded;
    if (!v.reskinBlueprintID.empty())
        lines += "\nReskin: " + v.reskinProvider + "\\" + v.reskinProduct + "\\" + v.reskinBlueprintID;
    lines += "\nService: " + row.serviceName + "\nDestination: " + row.destination + "\nStart Time: " + row.startTime +
             "\nService Class: " + scenarios::ServiceClassWord(row.serviceClass);
    details_->findChild<QPlainTextEdit*>("Text1")->setPlainText(ToQt(lines));
    details_->show();  // not modal: it stays open beside the screen
    details_->raise();
}

bool frmKickStart::eventFilter(QObject* watched, QEvent* event) {
    if (watched == text1_[3] && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Return || key == Qt::Key_Enter) startTimeLeft();
        // Enter belongs to the box: it must not press a button of the screen.
        if (key == Qt::Key_Return || key == Qt::Key_Enter) return true;
    }
    const QVariant option = watched->property("classOption");
    if (option.isValid() && event->type() == QEvent::MouseButtonPress) {
        chooseClass(option.toInt());
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmKickStart::startTimeLeft() {
    double seconds = 0;
    if (base::Status bad = scenarios::StartTimeShift(FromQt(text1_[3]->text()), loadedTime_, seconds)) {
        Tell(ctx_, bad->description);
        return;
    }
    // The loaded time stays: a second Enter moves every consist again by the same amount.
    if (seconds == 0) return;
    scenarios::ShiftStartTimes(texts_.scenarioXml, seconds, static_cast<int>(read_.consists.size()));
    markDirty();
    const int selected = consists_->currentRow();
    fillConsists();
    if (selected >= 0) consists_->selectRow(selected);
}

bool frmKickStart::chooseClass(int option) {
    if (ctx_.ui && ctx_.ui->ask(scenarios::kClassChangeQuestion, base::Buttons::OkCancel, base::Icon::Question) !=
                       base::Answer::Ok)
        return false;
    scenarioClass_ = scenarios::ClassOfOption(option);
    setClassOption(option);
    scenarios::ChangeClass(texts_.propertiesXml, scenarioClass_);
    markDirty();
    return true;
}

void frmKickStart::openWeatherDialog() {
    std::string folder = weatherRoot_.empty() ? ctx_.gameRoot() + "\\Assets" : weatherRoot_;
    dlgWeather dialog(ctx_, folder, this);
    if (dialog.exec() != QDialog::Accepted) return;
    applyWeather(dialog.chosenFile(), dialog.blankExtension());
}

void frmKickStart::applyWeather(const std::string& file, bool blankExtension) {
    scenarios::WeatherChoice choice;
    if (!file.empty()) {
        if (!scenarios::WeatherFromPath(file, choice)) {
            Tell(ctx_, "The chosen file does not lie in an Assets folder:\r\n" + file);
            return;
        }
        text1_[9]->setText(ToQt(choice.provider));
        text1_[10]->setText(ToQt(choice.product));
        text1_[11]->setText(ToQt(choice.blueprintID));
    }
    if (blankExtension)
        for (int n = 12; n <= 14; ++n) text1_[static_cast<std::size_t>(n)]->clear();
    markDirty();
}

bool frmKickStart::saveChanges() {
    scenarios::DetailEdits edits;
    std::string* fields[15] = {&edits.displayName,       &edits.description,      &edits.briefing,
                               &edits.startTime,         &edits.durationMins,     &edits.startDD,
                               &edits.startMM,           &edits.startYYYY,        &edits.season,
                               &edits.weatherProvider,   &edits.weatherProduct,   &edits.weatherBlueprintID,
                               &edits.extensionProvider, &edits.extensionProduct, &edits.extensionBlueprintID};
    for (int n = 0; n < 15; ++n) *fields[n] = FromQt(text1_[static_cast<std::size_t>(n)]->text());
    edits.author = FromQt(author_->text());
    edits.startLocation = FromQt(startLocation_->text());
    edits.scenarioClass = scenarioClass_;
    edits.preload = preload_;
    scenarios::SaveTemplates templates;
    std::string properties = texts_.propertiesXml;
    base::Status status = scenarios::ReadSaveTemplates(ctx_, templates);
    if (!status) status = scenarios::ApplyDetailEdits(properties, edits, templates, ctx_.languageTag());
    for (int n = 0; n < 3; ++n) text1_[static_cast<std::size_t>(n)]->setText(ToQt(*fields[n]));
    if (status) {
        Tell(ctx_, status->description);
        return false;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const scenarios::SaveOutcome out = scenarios::SaveScenario(ctx_, texts_.folder, properties, texts_.scenarioXml);
    QApplication::restoreOverrideCursor();
    if (out.error) {
        Tell(ctx_, out.error->description, base::Icon::Critical);
        return false;
    }
    saved_ = true;
    dirty_ = false;
    close_->setText("Exit");
    save_->setEnabled(false);
    Tell(ctx_, langText(563, scenarios::kSavedMessage), base::Icon::Information);
    texts_.propertiesXml.clear();
    texts_.scenarioXml.clear();
    if (details_) details_->close();
    close();
    return true;
}

void frmKickStart::runRailWorks() {
    std::string program;
    std::vector<std::string> arguments;
    if (base::Status missing = scenarios::RailWorksLaunch(ctx_, program, arguments)) {
        Tell(ctx_, missing->description);
        return;
    }
    QStringList args;
    for (const std::string& a : arguments) args << QString::fromStdString(a);
    if (!QProcess::startDetached(QString::fromStdString(program), args)) Tell(ctx_, "Steam could not be started.");
}

void frmKickStart::closeEvent(QCloseEvent* event) {
    if (dirty_ && ctx_.ui &&
        ctx_.ui->ask(langText(561, "You have made changes to this Scenario, but have not saved them.") + "\r\n" +
                         langText(562, "Do you really wish to exit?"),
                     base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes) {
        event->ignore();
        return;
    }
    if (details_) details_->close();
    texts_.propertiesXml.clear();
    texts_.scenarioXml.clear();
    event->accept();
}

frmKickStart* ShowScenarioEditor(app::AppContext& ctx, QWidget* parent, const std::string& folder) {
    scenarios::ScenarioTexts texts;
    if (base::Status failed = scenarios::LoadScenarioTexts(ctx, folder, texts)) {
        Tell(ctx, failed->description, base::Icon::Critical);
        return nullptr;
    }
    const scenarios::ScenarioDetails details =
        scenarios::ReadScenarioDetails(texts.propertiesXml, ctx.languageTag());
    if (ctx.ui) {
        if (scenarios::RefuseQuickDrive(*ctx.ui, details)) return nullptr;
        scenarios::WarnIfCareer(*ctx.ui, texts.propertiesXml);
    }
    auto* screen = new frmKickStart(ctx, std::move(texts), parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
