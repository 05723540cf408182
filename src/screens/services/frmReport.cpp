#include "screens/services/frmReport.h"

#include <QFontDatabase>
#include <QFontDialog>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "tools/files.h"

namespace ferrolund::screens {

frmReport::frmReport(app::AppContext& ctx, const std::string& text, bool fromFile, QWidget* parent)
    : QDialog(parent), ctx_(ctx), rtb1_(new QPlainTextEdit(this)) {
    setObjectName("frmReport");
    setWindowTitle("Report:-");
    rtb1_->setObjectName("RTB1");
    rtb1_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    rtb1_->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* buttons = new QHBoxLayout;
    const std::pair<const char*, const char*> names[] = {
        {"Command1", "Close"}, {"Command2", "Save"}, {"Command3", "&Print"}, {"Command4", "Change Font"}};
    for (const auto& [name, caption] : names) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(name);
        buttons->addWidget(b);
    }
    buttons->addStretch();
    connect(findChild<QPushButton*>("Command1"), &QPushButton::clicked, this, &QDialog::accept);
    connect(findChild<QPushButton*>("Command2"), &QPushButton::clicked, this, &frmReport::save);
    connect(findChild<QPushButton*>("Command3"), &QPushButton::clicked, this, &frmReport::print);
    connect(findChild<QPushButton*>("Command4"), &QPushButton::clicked, this, &frmReport::changeFont);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(rtb1_);
    layout->addLayout(buttons);
    resize(800, 560);
    std::string shown = text;
    if (fromFile && ctx_.ui) {
        const auto file =
            ctx_.ui->chooseOpenFile("Open Report", "Text Files (*.txt)|*.txt", ctx_.appPath("Reports"));
        shown = file ? tools::ReadTextFile(*file) : std::string();
    }
    rtb1_->setPlainText(ToQt(shown));
}

void frmReport::save() {
    if (!ctx_.ui) return;
    const auto file = ctx_.ui->chooseSaveFile("Save Object File", "Text Files (*.txt)|*.txt", ctx_.appPath("Reports"));
    if (!file || file->empty() || rtb1_->toPlainText().isEmpty()) return;
    // The pane's lines, with the line ends of the report.
    QString text = rtb1_->toPlainText();
    text.replace("\n", "\r\n");
    tools::WriteTextFile(ctx_, *file, FromQt(text));
}

void frmReport::print() {
    QPrinter printer;
    if (printer.printerName().isEmpty()) printer.setOutputFormat(QPrinter::PdfFormat);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    rtb1_->print(&printer);
}

void frmReport::changeFont() {
    bool ok = false;
    const QFont font = QFontDialog::getFont(&ok, rtb1_->font(), this);
    if (ok) rtb1_->setFont(font);
}

void ShowReport(app::AppContext& ctx, QWidget* parent, const std::string& caption, const std::string& text) {
    auto* report = new frmReport(ctx, text, false, parent);
    report->setAttribute(Qt::WA_DeleteOnClose);
    if (!caption.empty()) report->setWindowTitle(ToQt(caption));
    report->show();
}

}  // namespace ferrolund::screens
