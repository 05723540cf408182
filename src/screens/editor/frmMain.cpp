#include "screens/editor/frmMain.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

frmMain::frmMain(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmMain");
    setWindowTitle("Search For Assets Details");
    txtPath_ = new QLineEdit(ToQt(ctx_.gameRoot() + "\\Assets"), this);
    txtPath_->setObjectName("txtPath");
    txtPath_->setReadOnly(true);
    cboMask_ = new QComboBox(this);
    cboMask_->setObjectName("cboMask");
    cboMask_->addItem("*.bin");
    txtAsset_ = new QLineEdit(this);
    txtAsset_->setObjectName("txtAsset");
    cmdScan_ = new QPushButton(ToQt(model_.caption), this);
    cmdScan_->setObjectName("cmdScan");
    cmdScan_->setAutoDefault(false);

    auto* form = new QFormLayout;
    form->addRow("Path", txtPath_);
    form->addRow("Mask", cboMask_);
    auto* assetRow = new QHBoxLayout;
    assetRow->addWidget(txtAsset_, 1);
    assetRow->addWidget(cmdScan_);
    form->addRow("Blueprint file", assetRow);

    lstFiles_ = new QTreeWidget(this);
    lstFiles_->setObjectName("lstFiles");
    lstFiles_->setRootIsDecorated(false);
    lstFiles_->setUniformRowHeights(true);
    lstFiles_->setHeaderLabels({"Provider", "Product", "Path", "Name", "Category"});
    lstFiles_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);

    auto* command1 = new QPushButton("Close", this);
    command1->setObjectName("Command1");
    command1->setAutoDefault(false);
    auto* command2 = new QPushButton("Clear", this);
    command2->setObjectName("Command2");
    command2->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(command2);
    buttons->addStretch(1);
    buttons->addWidget(command1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(lstFiles_, 1);
    layout->addLayout(buttons);
    resize(820, 420);

    connect(cmdScan_, &QPushButton::clicked, this, &frmMain::scan);
    connect(txtAsset_, &QLineEdit::returnPressed, this, &frmMain::scan);
    connect(command1, &QPushButton::clicked, this, &QDialog::close);
    connect(command2, &QPushButton::clicked, this, &frmMain::clearList);
}

void frmMain::scan() {
    std::string asset = FromQt(txtAsset_->text());
    const bool starting = model_.caption == editor::IdentifyObject::kScan;
    if (starting) {
        // The caption turns to "Stop" before the walk starts letting clicks through.
        cmdScan_->setText(editor::IdentifyObject::kStop);
        ctx_.ui->busy(true);
    }
    model_.scanClicked(ctx_, asset, [this](const std::string& row) { addRow(row); });
    if (starting) ctx_.ui->busy(false);
    txtAsset_->setText(ToQt(asset));
    cmdScan_->setText(ToQt(model_.caption));
    if (starting && closeAfterScan_) close();
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (model_.caption != editor::IdentifyObject::kStop) {
        event->accept();
        return;
    }
    closeAfterScan_ = true;
    scan();  // the Stop click
    event->ignore();
}

void frmMain::addRow(const std::string& row) {
    QStringList columns = ToQt(row).split('\t');
    lstFiles_->addTopLevelItem(new QTreeWidgetItem(columns));
}

void frmMain::clearList() {
    std::string asset;
    model_.clear(asset);
    txtAsset_->clear();
    lstFiles_->clear();
}

}  // namespace ferrolund::screens
