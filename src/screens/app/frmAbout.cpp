#include "screens/app/frmAbout.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/startup.h"
#include "app/version.h"
#include "tools/files.h"

namespace ferrolund::screens {

frmAbout::frmAbout(app::AppContext& ctx, QWidget* parent) : QDialog(parent) {
    setObjectName("frmAbout");
    setWindowTitle("About Ferrolund");
    ctx.currentRoutine = "Form_Load";
    if (tools::FileExists(ctx.appPath(app::kPreferenceFileName))) app::ReadPreferenceFile(ctx, app::AboutHome::AboutScreen);

    auto* title = new QLabel("Ferrolund", this);
    title->setObjectName("lblTitle");
    QFont big = title->font();
    big.setPointSize(big.pointSize() * 2);
    big.setBold(true);
    title->setFont(big);
    auto* version = new QLabel(QString("Version %1.%2.%3")
                                   .arg(app::kVersionMajor)
                                   .arg(app::kVersionMinor)
                                   .arg(app::kVersionRevision),
                               this);
    version->setObjectName("lblVersion");
    auto* notice = new QLabel(
        "A workbench for the content of RailWorks (Train Simulator Classic): routes, scenarios, "
        "rolling stock, consists, Quick Drive consists and textures.\n\n"
        "Ferrolund changes the simulator's own files. Before any file is replaced its successor is "
        "made and checked, and the old file is kept beside it as a back-up (.bak). Keep a back-up "
        "of your installation all the same.",
        this);
    notice->setObjectName("lblDisclaimer");
    notice->setWordWrap(true);

    check_ = new QCheckBox("Do not show in future", this);
    check_->setObjectName("Check1");
    check_->setChecked(ctx.prefs.aboutFlag);
    connect(check_, &QCheckBox::toggled, this, [&ctx](bool on) { ctx.prefs.aboutFlag = on; });
    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("cmdRW");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(check_);
    bottom->addStretch();
    bottom->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(version);
    layout->addSpacing(8);
    layout->addWidget(notice);
    layout->addStretch();
    layout->addLayout(bottom);
    resize(460, 300);
}

}  // namespace ferrolund::screens
