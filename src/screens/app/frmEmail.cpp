#include "screens/app/frmEmail.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "tools/files.h"

namespace ferrolund::screens {

frmEmail::frmEmail(const app::AppContext& ctx, QWidget* parent) : QDialog(parent) {
    setObjectName("frmEmail");
    setWindowTitle("Send me Email");
    const std::string logPath = ctx.appPath("Errors.txt");
    const bool haveLog = tools::FileExists(logPath);
    auto* text = new QLabel(
        haveLog ? "When you write to report a problem, attach the error log below to your message and say "
                  "what you were doing when it happened. The log holds one entry for each unexpected error, "
                  "with its date, the command and the screen."
                : "No unexpected error has been logged, so there is no error log to send. When you write to "
                  "report a problem, say what you were doing and which file you were working on.",
        this);
    text->setObjectName("Label1");
    text->setWordWrap(true);
    auto* path = new QLineEdit(DiskPathToQt(logPath), this);
    path->setObjectName("Text1");
    path->setReadOnly(true);
    path->setEnabled(haveLog);

    auto* copy = new QPushButton("Copy Path", this);
    copy->setObjectName("cmdCopy");
    copy->setEnabled(haveLog);
    connect(copy, &QPushButton::clicked, this, [path] { QApplication::clipboard()->setText(path->text()); });
    auto* open = new QPushButton("Open Folder", this);
    open->setObjectName("cmdOpen");
    connect(open, &QPushButton::clicked, this, [path] {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path->text()).absolutePath()));
    });
    auto* close = new QPushButton("Close", this);
    close->setObjectName("cmdClose");
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(copy);
    buttons->addWidget(open);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(path);
    layout->addLayout(buttons);
    resize(520, 180);
}

}  // namespace ferrolund::screens
