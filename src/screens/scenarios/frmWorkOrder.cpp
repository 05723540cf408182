#include "screens/scenarios/frmWorkOrder.h"

#include <QComboBox>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextCharFormat>
#include <QTextEdit>
#include <QVBoxLayout>

#include "scenarios/work_order.h"
#include "screens/app/qt_text.h"
#include "tools/files.h"
#include "tools/text_repair.h"

namespace ferrolund::screens {
namespace {

const std::pair<const char*, Qt::GlobalColor> kColours[] = {
    {"Black", Qt::black}, {"Blue", Qt::blue}, {"Red", Qt::red}, {"Green", Qt::darkGreen}};

}  // namespace

frmWorkOrder::frmWorkOrder(app::AppContext& ctx, const std::vector<std::string>& lines, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName("frmWorkOrder");
    setWindowTitle("Work Order");
    rtb1_ = new QTextEdit(this);
    rtb1_->setObjectName("RTB1");
    QString text;
    for (const std::string& line : lines) text += ToQt(tools::FixEntitiesCopy(line)) + "\n";
    rtb1_->setPlainText(text);

    fonts_ = new QFontComboBox(this);
    fonts_->setObjectName("cboFont");
    connect(fonts_, &QFontComboBox::currentFontChanged, this, [this](const QFont& font) { applyFont(font.family()); });
    sizes_ = new QComboBox(this);
    sizes_->setObjectName("cboSize");
    for (int points : {8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36}) sizes_->addItem(QString::number(points));
    sizes_->setCurrentText("10");
    connect(sizes_, &QComboBox::textActivated, this, [this](const QString& points) { applySize(points.toInt()); });
    colours_ = new QComboBox(this);
    colours_->setObjectName("cboColour");
    for (const auto& [name, colour] : kColours) colours_->addItem(name);
    connect(colours_, &QComboBox::textActivated, this, &frmWorkOrder::applyColour);

    auto* printButton = new QPushButton("&Print", this);
    printButton->setObjectName("cmdPrint");
    connect(printButton, &QPushButton::clicked, this, &frmWorkOrder::print);
    auto* saveButton = new QPushButton("Save", this);
    saveButton->setObjectName("Command3");
    connect(saveButton, &QPushButton::clicked, this, &frmWorkOrder::save);
    auto* close = new QPushButton("Close", this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* bar = new QHBoxLayout;
    bar->addWidget(new QLabel("Font", this));
    bar->addWidget(fonts_, 1);
    bar->addWidget(new QLabel("Size", this));
    bar->addWidget(sizes_);
    bar->addWidget(new QLabel("Colour", this));
    bar->addWidget(colours_);
    bar->addStretch();
    bar->addWidget(printButton);
    bar->addWidget(saveButton);
    bar->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(rtb1_, 1);
    resize(760, 700);
}

void frmWorkOrder::applyFont(const QString& family) {
    QTextCharFormat format;
    format.setFontFamilies({family});
    rtb1_->mergeCurrentCharFormat(format);
}

void frmWorkOrder::applySize(int points) {
    if (points <= 0) return;
    QTextCharFormat format;
    format.setFontPointSize(points);
    rtb1_->mergeCurrentCharFormat(format);
}

void frmWorkOrder::applyColour(const QString& colour) {
    for (const auto& [name, value] : kColours) {
        if (colour != name) continue;
        QTextCharFormat format;
        format.setForeground(QColor(value));
        rtb1_->mergeCurrentCharFormat(format);
    }
}

void frmWorkOrder::save() {
    if (!ctx_.ui) return;
    const std::string reports = ctx_.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx_.ui->chooseSaveFile("Save Object File", "Text Files (*.txt)|*.txt", reports);
    if (!file || file->empty()) return;
    QString text = rtb1_->toPlainText();
    text.replace("\n", "\r\n");
    tools::WriteTextFile(ctx_, *file, FromQt(text));
}

void frmWorkOrder::print() {
    QPrinter printer;
    if (printer.printerName().isEmpty()) printer.setOutputFormat(QPrinter::PdfFormat);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    rtb1_->print(&printer);
}

void ShowWorkOrder(app::AppContext& ctx, QWidget* parent, const std::string& routeFolder,
                   const std::string& scenarioFolder) {
    std::vector<std::string> lines;
    if (base::Status failed = scenarios::LoadWorkOrder(ctx, routeFolder, scenarioFolder, lines)) {
        if (ctx.ui) ctx.ui->message(failed->description, base::Icon::Critical);
        return;
    }
    frmWorkOrder screen(ctx, lines, parent);
    screen.exec();
}

}  // namespace ferrolund::screens
