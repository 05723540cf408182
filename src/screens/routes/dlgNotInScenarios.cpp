#include "screens/routes/dlgNotInScenarios.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ferrolund::screens {

dlgNotInScenarios::dlgNotInScenarios(QWidget* parent) : QDialog(parent) {
    setObjectName("dlgNotInScenarios");
    setWindowTitle("Find loco in routes");
    auto* layout = new QVBoxLayout(this);
    auto* line = new QLabel("Ignore assets listed in Scenarios", this);
    line->setObjectName("Label1");
    layout->addWidget(line);
    auto* row = new QHBoxLayout;
    ok_ = new QPushButton("OK", this);
    ok_->setObjectName("OKButton");
    ok_->setDefault(true);
    all_ = new QPushButton("CHECK  ALL ASSETS", this);
    all_->setObjectName("CancelButton");
    row->addWidget(ok_);
    row->addWidget(all_);
    layout->addLayout(row);
    connect(ok_, &QPushButton::clicked, this, [this] {
        ignoreListed_ = true;
        accept();
    });
    connect(all_, &QPushButton::clicked, this, [this] {
        ignoreListed_ = false;
        accept();
    });
}

bool AskNotInScenarios(QWidget* parent, bool& ignoreListed) {
    dlgNotInScenarios dialog(parent);
    if (dialog.exec() != QDialog::Accepted) return false;
    ignoreListed = dialog.ignoreListed();
    return true;
}

}  // namespace ferrolund::screens
