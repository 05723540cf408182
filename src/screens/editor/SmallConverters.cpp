#include "screens/editor/SmallConverters.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/identify_object.h"
#include "screens/app/qt_text.h"
#include "tools/numbers.h"

namespace ferrolund::screens {

namespace {
QPushButton* Button(QWidget* parent, const char* name, const char* caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}
}  // namespace

dlgTime::dlgTime(QWidget* parent) : QDialog(parent) {
    setObjectName("dlgTime");
    setWindowTitle("Convert TS-Classic Time to Hrs/Mins");
    text1_ = new QLineEdit(this);
    text1_->setObjectName("Text1");
    text2_ = new QLineEdit(this);
    text2_->setObjectName("Text2");
    auto* form = new QFormLayout;
    form->addRow("Enter TS-Classic Time:-", text1_);
    form->addRow("24 hour time", text2_);

    QPushButton* convertButton = Button(this, "OKButton", "Convert");
    convertButton->setDefault(true);
    QPushButton* clear = Button(this, "Command1", "Clear");
    QPushButton* cancel = Button(this, "CancelButton", "Cancel");
    connect(convertButton, &QPushButton::clicked, this, &dlgTime::convert);
    connect(clear, &QPushButton::clicked, this, &dlgTime::clearBoxes);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(convertButton);
    buttons->addWidget(clear);
    buttons->addStretch(1);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
}

void dlgTime::convert() {
    tools::TimeBoxes boxes{FromQt(text1_->text()), FromQt(text2_->text())};
    tools::ConvertTimeBoxes(boxes);
    text1_->setText(ToQt(boxes.simulatorTime));
    text2_->setText(ToQt(boxes.clockTime));
}

void dlgTime::clearBoxes() {
    text1_->clear();
    text2_->clear();
}

dlgGUID::dlgGUID(QWidget* parent) : QDialog(parent) {
    setObjectName("dlgGUID");
    setWindowTitle("Generate GUID");
    text1_ = new QPlainTextEdit(this);
    text1_->setObjectName("Text1");
    text1_->setReadOnly(true);
    text1_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text1_->setPlainText(ToQt(editor::NewGuidAndDeltaId()));
    text1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text1_->setFixedHeight(text1_->fontMetrics().lineSpacing() * 3 + 12);
    text1_->selectAll();
    QPushButton* close = Button(this, "Command1", "&Close");
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text1_);
    layout->addLayout(buttons);
    resize(380, sizeHint().height());
}

}  // namespace ferrolund::screens
