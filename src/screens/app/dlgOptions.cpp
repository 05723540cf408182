#include "screens/app/dlgOptions.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

dlgOptions::dlgOptions(const app::AppContext& ctx, QWidget* parent) : QDialog(parent) {
    setObjectName("dlgOptions");
    setWindowTitle("Current Options Settings");
    const auto& p = ctx.prefs;
    const std::pair<const char*, const std::string*> rows[] = {
        {"Language:", &p.language},           {"PDF Reader", &p.pdfReaderPath},
        {"PreLoad folder", &p.preLoadFolder}, {"Rail Works", &p.gameRoot},
        {"Rail Works Backup", &p.backupPath}, {"Graphics Editor", &p.graphicsEditorPath},
        {"Graphics Viewer", &p.viewerPath},
    };
    auto* form = new QFormLayout;
    int i = 0;
    for (const auto& [label, value] : rows) {
        auto* field = new QLabel(ToQt(*value), this);
        field->setObjectName(QString("Text%1").arg(++i));
        field->setTextInteractionFlags(Qt::TextSelectableByMouse);
        field->setFrameShape(QFrame::StyledPanel);
        field->setMinimumWidth(360);
        form->addRow(label, field);
    }
    auto* ok = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    ok->button(QDialogButtonBox::Ok)->setObjectName("OKButton");
    connect(ok, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(ok);
}

}  // namespace ferrolund::screens
