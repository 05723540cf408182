#include "screens/assets/frmEdCont.h"

#include <QAction>
#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QVBoxLayout>

#include "editor/document.h"
#include "screens/app/qt_text.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

frmEdCont::frmEdCont(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("frmEdCont");
    auto* bar = new QMenuBar(this);
    QMenu* files = bar->addMenu("&File");
    files->setObjectName("mnuFile");
    save_ = files->addAction("&Save");
    save_->setObjectName("mnuSaveRS");
    save_->setShortcut(QKeySequence::Save);
    save_->setEnabled(false);
    connect(save_, &QAction::triggered, this, &frmEdCont::save);
    QAction* exit = files->addAction("E&xit");
    exit->setObjectName("mnuExit");
    connect(exit, &QAction::triggered, this, &QDialog::close);

    text_ = new QPlainTextEdit(this);
    text_->setObjectName("RTB1");
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setTabStopDistance(4 * QFontMetricsF(text_->font()).horizontalAdvance(' '));
    picture_ = new QLabel(this);
    picture_->setObjectName("Picture1");
    picture_->setAlignment(Qt::AlignCenter);
    picture_->hide();
    log_ = new QListWidget(this);
    log_->setObjectName("List1");

    auto* split = new QSplitter(Qt::Vertical, this);
    auto* top = new QWidget(split);
    auto* topLayout = new QVBoxLayout(top);
    topLayout->setContentsMargins(0, 0, 0, 0);
    topLayout->addWidget(text_);
    topLayout->addWidget(picture_);
    split->addWidget(top);
    split->addWidget(log_);
    split->setStretchFactor(0, 5);
    split->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->addWidget(split);
    resize(900, 650);
}

bool frmEdCont::openFile(const std::string& path) {
    log_->clear();
    if (!editor_.open(ctx_, path)) return false;
    display(path);
    return true;
}

void frmEdCont::display(const std::string& path) {
    setWindowTitle(ToQt(path));
    const bool picture = editor_.kind == assets::ContentKind::Picture;
    text_->setVisible(!picture);
    picture_->setVisible(picture);
    save_->setEnabled(!picture);
    if (picture) {
        const QImage image(QString::fromStdString(tools::HostPath(path).string()));
        picture_->setPixmap(QPixmap::fromImage(image));
        if (image.isNull()) picture_->setText("The picture cannot be read.");
        return;
    }
    const PaneEncoding encoding = PaneEncodingOf(editor_.text);
    SetPaneEncoding(text_, encoding);
    text_->setPlainText(PaneToQt(editor_.text, encoding));
}

bool frmEdCont::save() {
    const std::string text = PaneFromQt(text_->toPlainText(), PaneEncodingOf(text_));
    // The pane gives its lines back with LF alone; the converter's XML, and a text file
    // that had them, get CR LF again.
    const bool crLf = editor_.kind == assets::ContentKind::Serz || editor_.text.find("\r\n") != std::string::npos;
    const bool saved = editor_.save(ctx_, crLf ? editor::WithCrLf(text) : text);
    log_->clear();
    for (const std::string& line : editor_.log) log_->addItem(ToQt(line));
    return saved;
}

frmEdCont* ShowContentEditor(app::AppContext& ctx, QWidget* parent, const std::string& path) {
    auto* screen = new frmEdCont(ctx, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    if (!screen->openFile(path)) {
        delete screen;
        return nullptr;
    }
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
