#include "screens/app/dlgIndex.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ferrolund::screens {

dlgIndex::dlgIndex(app::AppContext& ctx, std::function<void()> extractRouteProperties,
                   std::function<void()> indexRoutes, QWidget* parent)
    : QDialog(parent) {
    setObjectName("dlgIndex");
    setWindowTitle("Notice:-");
    auto* text = new QLabel(
        "Please note that the first time you run this program, or any time you add routes which are in .ap "
        "files, you should run the options 'Extract Route Properties'and 'Extract ScenarioProperties'\n\n"
        "Or any time you add/delete other routes or delete .ap Routes then you must run 'Index Route "
        "Properties' to update the RouteIndex.csv file to update route list.",
        this);
    text->setObjectName("Label1");
    text->setWordWrap(true);

    extract_ = new QPushButton("Extract  Route Properties", this);
    extract_->setObjectName("Command1");
    index_ = new QPushButton("Index Routes", this);
    index_->setObjectName("Command2");
    continue_ = new QPushButton("Continue", this);
    continue_->setObjectName("OKButton");
    continue_->setDefault(true);
    check_ = new QCheckBox("Don't display this warning in        future", this);
    check_->setObjectName("Check1");

    // The dialogue stays open after either command, until Continue.
    extract_->setEnabled(static_cast<bool>(extractRouteProperties));
    index_->setEnabled(static_cast<bool>(indexRoutes));
    if (extractRouteProperties) connect(extract_, &QPushButton::clicked, this, extractRouteProperties);
    if (indexRoutes) connect(index_, &QPushButton::clicked, this, indexRoutes);
    connect(continue_, &QPushButton::clicked, this, [this, &ctx] {
        if (check_->isChecked()) ctx.prefs.routesIndexed = true;
        accept();
    });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(extract_);
    buttons->addWidget(index_);
    buttons->addStretch();
    buttons->addWidget(continue_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(check_);
    layout->addLayout(buttons);
    resize(520, 220);
}

}  // namespace ferrolund::screens
