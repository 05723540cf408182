#include "screens/simdata/frmGraphs.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/simdata/PlotXy.h"
#include "screens/simdata/plot_paint.h"
#include "tools/codepage.h"

namespace ferrolund::screens {

namespace {

// The buttons' names: Command1 to Command4 for diesel and electric, Command9 to Command12
// for steam.
QString CurveButtonName(int curve) { return QString("Command%1").arg(curve < 4 ? curve + 1 : curve + 5); }

QString CurveCaption(int curve) {
    const std::string file = simdata::kCurves[static_cast<std::size_t>(curve)].file;
    return ToQt(file.substr(0, file.rfind('.')));
}

QPushButton* Button(QWidget* parent, const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.find_last_of("\\/");
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

}  // namespace

frmGraphs::frmGraphs(app::AppContext& ctx, const std::string& locoName, bool steam, const simdata::CurveFiles& files,
                     QWidget* parent)
    : QDialog(parent), ctx_(ctx), model_(locoName, steam, files) {
    setObjectName("frmGraphs");
    setWindowTitle("Graphs");
    setSizeGripEnabled(true);

    auto* commands = new QVBoxLayout;
    for (int curve = 0; curve < static_cast<int>(simdata::kCurveCount); ++curve) {
        QPushButton* button = Button(this, CurveButtonName(curve), CurveCaption(curve));
        curveButtons_[static_cast<std::size_t>(curve)] = button;
        button->setVisible(simdata::kCurves[static_cast<std::size_t>(curve)].steam == steam);
        commands->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, curve] { loadCurve(curve); });
    }
    commands->addSpacing(12);
    QPushButton* redrawButton = Button(this, "Command7", "Redraw");
    redrawButton->setStyleSheet("QPushButton { background-color: rgb(0, 200, 0); color: black; }");
    saveButton_ = Button(this, "Command8", "Save .DCSV File");
    QPushButton* clearButton = Button(this, "Command5", "Clear");
    QPushButton* printButton = Button(this, "Command13", "Print");
    QPushButton* pngButton = Button(this, "cmdSavePng", "Save Chart as PNG...");
    QPushButton* svgButton = Button(this, "cmdSaveSvg", "Save Chart as SVG...");
    QPushButton* closeButton = Button(this, "Command6", "Close");
    for (QPushButton* button : {redrawButton, saveButton_, clearButton, printButton, pngButton, svgButton})
        commands->addWidget(button);
    commands->addStretch(1);
    commands->addWidget(closeButton);

    label_ = new QLabel(this);
    label_->setObjectName("Label1");
    QFont bold = label_->font();
    bold.setBold(true);
    label_->setFont(bold);
    plot_ = new PlotXy(this);
    values_ = new QLabel(this);
    values_->setObjectName("lblValues");
    values_->setMinimumWidth(260);
    plot_->showValues = [this](const QString& text) { values_->setText(text); };

    points_ = new QTableWidget(static_cast<int>(simdata::kShownPoints), 2, this);
    points_->setObjectName("Points");
    points_->setHorizontalHeaderLabels({"X", "Y"});
    points_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    points_->verticalHeader()->setDefaultSectionSize(points_->fontMetrics().height() + 6);
    points_->setMinimumWidth(220);
    for (int row = 0; row < points_->rowCount(); ++row)
        for (int column = 0; column < 2; ++column) points_->setItem(row, column, new QTableWidgetItem);
    connect(points_, &QTableWidget::itemChanged, this, [this] {
        if (!filling_) takeBoxes();
    });

    auto* chart = new QVBoxLayout;
    chart->addWidget(label_);
    chart->addWidget(plot_, 1);
    chart->addWidget(values_);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(commands);
    layout->addLayout(chart, 1);
    layout->addWidget(points_);
    resize(1180, 640);

    connect(redrawButton, &QPushButton::clicked, this, &frmGraphs::redraw);
    connect(saveButton_, &QPushButton::clicked, this, &frmGraphs::save);
    connect(clearButton, &QPushButton::clicked, this, &frmGraphs::clearAll);
    connect(printButton, &QPushButton::clicked, this, &frmGraphs::print);
    connect(pngButton, &QPushButton::clicked, this, [this] { exportChart(false); });
    connect(svgButton, &QPushButton::clicked, this, [this] { exportChart(true); });
    connect(closeButton, &QPushButton::clicked, this, &QDialog::close);
    showModel();
}

void frmGraphs::showModel() {
    filling_ = true;
    for (std::size_t row = 0; row < simdata::kShownPoints; ++row) {
        points_->item(static_cast<int>(row), 0)->setText(ToQt(model_.XValues[row]));
        points_->item(static_cast<int>(row), 1)->setText(ToQt(model_.YValues[row]));
    }
    filling_ = false;
    label_->setText(ToQt(model_.label()));
    plot_->setPicture(model_.picture());
    saveButton_->setEnabled(model_.curve() >= 0);
}

void frmGraphs::takeBoxes() {
    for (std::size_t row = 0; row < simdata::kShownPoints; ++row) {
        model_.XValues[row] = FromQt(points_->item(static_cast<int>(row), 0)->text());
        model_.YValues[row] = FromQt(points_->item(static_cast<int>(row), 1)->text());
    }
}

void frmGraphs::loadCurve(int curve) {
    if (model_.loadCurve(ctx_, curve)) showModel();
}

void frmGraphs::redraw() {
    takeBoxes();
    model_.redraw();
    plot_->setPicture(model_.picture());
}

void frmGraphs::save() {
    takeBoxes();
    ctx_.ui->busy(true);
    model_.save(ctx_);
    ctx_.ui->busy(false);
    plot_->setPicture(model_.picture());
}

void frmGraphs::clearAll() {
    model_.clear();
    showModel();
}

simdata::PlotPicture frmGraphs::titledPicture() const {
    simdata::PlotPicture picture = plot_->picture();
    picture.title = model_.label();
    return picture;
}

void frmGraphs::printTo(QPrinter* printer) const {
    QPainter painter(printer);
    if (!painter.isActive()) return;
    // The chart keeps its own units: the page is scaled to a canvas 1,000 units wide.
    const QRect page = painter.viewport();
    constexpr double kCanvasWidth = 1000;
    const double scale = page.width() / kCanvasWidth;
    painter.scale(scale, scale);
    PaintPlot(painter, QSizeF(kCanvasWidth, page.height() / scale), titledPicture());
}

void frmGraphs::print() {
    if (ctx_.ui->ask("You must switch your printer to Landscape format\r\nbefore using this option.",
                     base::Buttons::OkCancel, base::Icon::Exclamation) != base::Answer::Ok)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    if (printer.printerName().isEmpty()) printer.setOutputFormat(QPrinter::PdfFormat);
    QPrintPreviewDialog dialog(&printer, this);
    dialog.setObjectName("fEZPrint");
    dialog.setWindowTitle("Print Preview");
    connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [this](QPrinter* p) { printTo(p); });
    dialog.exec();
}

void frmGraphs::exportChart(bool svg) {
    const int curve = model_.curve();
    const std::string start = curve >= 0 ? FolderOf(model_.files()[static_cast<std::size_t>(curve)]) : ctx_.appRoot;
    const std::string extension = svg ? ".svg" : ".png";
    const std::optional<std::string> chosen =
        ctx_.ui->chooseSaveFile(svg ? "Save Chart as SVG" : "Save Chart as PNG",
                                svg ? "SVG drawing (*.svg)|*.svg" : "PNG picture (*.png)|*.png", start);
    if (!chosen) return;
    std::string path = *chosen;
    if (path.size() < 4 || !tools::EqualsIgnoreCase(std::string_view(path).substr(path.size() - 4), extension))
        path += extension;
    ctx_.ui->busy(true);
    const base::Status failed = ExportPlot(titledPicture(), path, svg ? PlotFormat::Svg : PlotFormat::Png);
    ctx_.ui->busy(false);
    if (failed) ctx_.report(*failed, "frmGraphs");
}

void ShowGraphs(app::AppContext& ctx, QWidget* parent, const std::string& locoName, bool steam,
                const simdata::CurveFiles& files) {
    auto* screen = new frmGraphs(ctx, locoName, steam, files, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
}

}  // namespace ferrolund::screens
