#include "screens/textures/frmGFX2.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/textures/PicturePane.h"
#include "screens/textures/picture_save.h"
#include "screens/textures/texture_picture.h"
#include "textures/picture_files.h"
#include "textures/texture_batch.h"
#include "textures/texture_commands.h"
#include "textures/tgpcdx_dds.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

namespace {

QPushButton* Button(QWidget* parent, const char* name, const QString& caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

std::string NameOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("\\/");
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

}  // namespace

frmGFX2::frmGFX2(app::AppContext& ctx, QWidget* parent) : QWidget(parent, Qt::Window), ctx_(ctx) {
    setObjectName("frmGFX2");
    setWindowTitle("PicView");
    setAttribute(Qt::WA_DeleteOnClose);
    resize(1100, 760);

    // The files: folder, filter, list, and the folder conversion.
    auto* side = new QWidget(this);
    folderBox_ = new QLineEdit(side);
    folderBox_->setObjectName("Dir1");
    folderBox_->setReadOnly(true);
    auto* choose = Button(side, "Command1", "Choose Folder...");
    filter_ = new QLineEdit(QString::fromLatin1(textures::kPictureFilter), side);
    filter_->setObjectName("Text1");
    files_ = new QListWidget(side);
    files_->setObjectName("File1");
    auto* convertFolder = Button(side, "Command4", "Convert a folder of .TgPcDx to .dds");
    abort_ = Button(side, "Command5", "&Abort");
    abort_->setEnabled(false);
    progress_ = new QProgressBar(side);
    progress_->setObjectName("ProgressBar1");
    progress_->setRange(0, 100);
    progress_->setValue(0);
    events_ = new QListWidget(side);
    events_->setObjectName("List1");
    events_->setMaximumHeight(110);
    auto* sideLayout = new QVBoxLayout(side);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(folderBox_, 1);
    folderRow->addWidget(choose);
    sideLayout->addWidget(new QLabel("Folder", side));
    sideLayout->addLayout(folderRow);
    sideLayout->addWidget(new QLabel("File Filter", side));
    sideLayout->addWidget(filter_);
    sideLayout->addWidget(files_, 1);
    auto* abortRow = new QHBoxLayout;
    abortRow->addWidget(convertFolder, 1);
    abortRow->addWidget(abort_);
    sideLayout->addLayout(abortRow);
    sideLayout->addWidget(progress_);
    sideLayout->addWidget(new QLabel("Events", side));
    sideLayout->addWidget(events_);

    // The picture: its commands above the pane.
    auto* view = new QWidget(this);
    auto* clear = Button(view, "Command2", "Clear Screen");
    panning_ = new QCheckBox("Panning Mode", view);
    panning_->setObjectName("Check1");
    quickBar_ = new QCheckBox("Enable Quick Bar", view);
    quickBar_->setObjectName("Check2");
    auto* zoomOut = Button(view, "Command6", "-");
    auto* zoomIn = Button(view, "Command8", "+");
    for (QPushButton* b : {zoomOut, zoomIn}) b->setMaximumWidth(32);
    zoomOut->setToolTip("Zoom out by 10 %");
    zoomIn->setToolTip("Zoom in by 10 %");
    zoomBox_ = new QLineEdit("100", view);
    zoomBox_->setObjectName("Text2");
    zoomBox_->setValidator(new QIntValidator(PicturePane::kMinZoom, PicturePane::kMaxZoom, zoomBox_));
    zoomBox_->setFixedWidth(zoomBox_->fontMetrics().horizontalAdvance("00000") + 16);
    level_ = new QComboBox(view);
    level_->setObjectName("Combo1");
    level_->setEnabled(false);
    level_->setMinimumContentsLength(18);
    auto* grey = Button(view, "Command9", "Greyscale");
    auto* flip = Button(view, "Command10", "Flip");
    auto* rotate = Button(view, "Command11", "Rotate 90 degrees");
    auto* saveAs = Button(view, "Command12", "Save As");
    auto* print = Button(view, "Command13", "&Print...");
    auto* convert =
        Button(view, "Command3", "If TgPcDx file appears covered by a grid click here to convert to a viewable picture");
    pane_ = new PicturePane(view);

    auto* row1 = new QHBoxLayout;
    row1->addWidget(clear);
    row1->addWidget(panning_);
    row1->addWidget(quickBar_);
    row1->addSpacing(12);
    row1->addWidget(new QLabel("Zoom %", view));
    row1->addWidget(zoomOut);
    row1->addWidget(zoomBox_);
    row1->addWidget(zoomIn);
    row1->addSpacing(12);
    row1->addWidget(new QLabel("Mip level", view));
    row1->addWidget(level_);
    row1->addStretch();
    auto* row2 = new QHBoxLayout;
    for (QPushButton* b : {grey, flip, rotate, saveAs, print}) row2->addWidget(b);
    row2->addStretch();
    auto* viewLayout = new QVBoxLayout(view);
    viewLayout->addLayout(row1);
    viewLayout->addLayout(row2);
    viewLayout->addWidget(convert);
    viewLayout->addWidget(pane_, 1);

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(side);
    splitter->addWidget(view);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({300, 800});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);

    connect(choose, &QPushButton::clicked, this, &frmGFX2::chooseFolder);
    connect(filter_, &QLineEdit::editingFinished, this, &frmGFX2::filterEdited);
    connect(files_, &QListWidget::currentRowChanged, this, &frmGFX2::fileChosen);
    connect(convertFolder, &QPushButton::clicked, this, &frmGFX2::convertFolder);
    connect(abort_, &QPushButton::clicked, this, [this] { ctx_.abortFlag = true; });
    connect(clear, &QPushButton::clicked, this, [this] {
        pane_->clear();
        levels_.reset();
        level_->clear();
        level_->setEnabled(false);
        setWindowTitle("PicView");
    });
    connect(panning_, &QCheckBox::toggled, pane_, &PicturePane::setPanning);
    connect(quickBar_, &QCheckBox::toggled, pane_, &PicturePane::setQuickBarVisible);
    connect(zoomIn, &QPushButton::clicked, pane_, &PicturePane::zoomIn);
    connect(zoomOut, &QPushButton::clicked, pane_, &PicturePane::zoomOut);
    connect(zoomBox_, &QLineEdit::editingFinished, this, &frmGFX2::zoomTyped);
    connect(pane_, &PicturePane::zoomChanged, this, [this](int percent) {
        events_->addItem(QString("ZoomChanged(%1%)").arg(percent));
        events_->scrollToBottom();
        zoomBox_->setText(QString::number(percent));
    });
    connect(level_, &QComboBox::activated, this, &frmGFX2::levelChosen);
    connect(grey, &QPushButton::clicked, pane_, &PicturePane::greyscale);
    connect(flip, &QPushButton::clicked, pane_, &PicturePane::flip);
    connect(rotate, &QPushButton::clicked, pane_, &PicturePane::rotate90);
    connect(saveAs, &QPushButton::clicked, this, &frmGFX2::saveAs);
    connect(print, &QPushButton::clicked, this, &frmGFX2::print);
    connect(convert, &QPushButton::clicked, this, &frmGFX2::convertForViewing);

    setFolder(ctx_.gameRoot().empty() ? ctx_.appRoot : ctx_.gameRoot() + "\\Assets");
}

void frmGFX2::setFolder(const std::string& folder) {
    folder_ = folder;
    folderBox_->setText(ToQt(folder));
    refillList();
}

void frmGFX2::refillList() {
    const QSignalBlocker quiet(files_);
    files_->clear();
    for (const std::string& name : textures::FilesMatching(folder_, FromQt(filter_->text()))) files_->addItem(ToQt(name));
}

void frmGFX2::filterEdited() {
    if (filter_->text().trimmed().isEmpty()) filter_->setText("*.*");
    refillList();
}

void frmGFX2::chooseFolder() {
    if (!ctx_.ui) return;
    const auto chosen = ctx_.ui->chooseFolder("Choose a folder of pictures", folder_);
    if (chosen && !chosen->empty()) setFolder(*chosen);
}

std::string frmGFX2::selectedPath() const {
    const QListWidgetItem* item = files_->currentItem();
    return item ? folder_ + "\\" + FromQt(item->text()) : std::string();
}

void frmGFX2::fileChosen() {
    const std::string path = selectedPath();
    if (!path.empty()) display(path);
}

void frmGFX2::showFile(const std::string& path) {
    const std::string folder = FolderOf(path);
    if (!folder.empty() && folder != folder_) setFolder(folder);
    const QList<QListWidgetItem*> found = files_->findItems(ToQt(NameOf(path)), Qt::MatchFixedString);
    if (!found.isEmpty()) {
        const QSignalBlocker quiet(files_);
        files_->setCurrentItem(found.front());
    }
    display(path);
}

void frmGFX2::display(const std::string& path) {
    if (ctx_.ui) ctx_.ui->busy(true);
    Picture picture = LoadPicture(path);
    if (ctx_.ui) ctx_.ui->busy(false);
    shownName_ = NameOf(path);
    level_->clear();
    levels_.reset();
    if (picture.image.isNull()) {
        pane_->clear();
        level_->setEnabled(false);
        setWindowTitle("PicView");
        events_->addItem(ToQt(shownName_) + ": " + picture.error);
        events_->scrollToBottom();
        return;
    }
    if (picture.levels) {
        for (const textures::DdsLevel& level : picture.levels->levels)
            level_->addItem(QString("Level %1 (%2x%3)").arg(level_->count() + 1).arg(level.width).arg(level.height));
        levels_ = std::move(picture.levels);
    }
    level_->setEnabled(level_->count() > 1);
    pane_->setImage(picture.image);
    setPictureCaption(shownName_, picture.image);
}

void frmGFX2::levelChosen(int level) {
    if (!levels_ || level < 0) return;
    QString error;
    const QImage image = DdsLevelImage(*levels_, level, error);
    if (image.isNull()) {
        events_->addItem(ToQt(shownName_) + ": " + error);
        return;
    }
    pane_->setImage(image);
    setPictureCaption(shownName_, image);
}

void frmGFX2::setPictureCaption(const std::string& name, const QImage& image) {
    setWindowTitle("PicView - " + ToQt(name) + " (" + QString::number(image.width()) + "x" +
                   QString::number(image.height()) + ")");
}

void frmGFX2::convertForViewing() {
    ctx_.currentRoutine = "Command3_Click";
    const std::string path = selectedPath().empty() ? folder_ + "\\" + shownName_ : selectedPath();
    if (shownName_.empty() && selectedPath().empty()) {
        if (ctx_.ui) ctx_.ui->message(textures::kNotATexture, base::Icon::Exclamation);
        return;
    }
    if (textures::KindOfPicture(path) != textures::PictureKind::Texture) {
        if (ctx_.ui) ctx_.ui->message(textures::kNotATexture, base::Icon::Exclamation);
        return;
    }
    if (ctx_.ui) ctx_.ui->busy(true);
    const textures::ConversionResult result = textures::TgPcDxToDds(path, textures::TempDdsFolder(ctx_));
    if (ctx_.ui) ctx_.ui->busy(false);
    if (!result.error.empty()) {
        if (ctx_.ui) ctx_.ui->message(result.error, base::Icon::Exclamation);
        return;
    }
    display(result.output);
}

void frmGFX2::convertFolder() {
    ctx_.currentRoutine = "Command4_Click";
    if (!ctx_.ui) return;
    const auto chosen = ctx_.ui->chooseFolder("Convert a folder of .TgPcDx to .dds", folder_);
    if (!chosen || chosen->empty()) return;
    const std::vector<std::string> textures = textures::TexturesInFolder(*chosen);
    if (textures.empty()) {
        ctx_.ui->message("There are no .TgPcDx files in " + *chosen, base::Icon::Information);
        return;
    }
    const std::string out = textures::TempDdsFolder(ctx_);
    std::string failures;
    std::size_t seen = 0;
    ctx_.abortFlag = false;
    abort_->setEnabled(true);
    ctx_.ui->busy(true);
    const textures::BatchSummary summary = textures::ConvertTextures(
        ctx_, textures, out, [&](const std::string& file, const textures::ConversionResult& result) {
            progress_->setValue(static_cast<int>(++seen * 100 / textures.size()));
            if (!result.error.empty()) failures += "\n" + NameOf(file) + ": " + result.error;
        });
    ctx_.ui->busy(false);
    abort_->setEnabled(false);
    ctx_.abortFlag = false;
    const std::string done = std::to_string(summary.converted) + " of " + std::to_string(textures.size()) +
                             " textures converted to " + out + ".";
    ctx_.ui->message((summary.aborted ? "Stopped: " : "") + done + failures,
                     failures.empty() ? base::Icon::Information : base::Icon::Exclamation);
}

void frmGFX2::zoomTyped() {
    bool ok = false;
    const int percent = zoomBox_->text().toInt(&ok);
    if (ok) pane_->setZoom(percent);
    zoomBox_->setText(QString::number(pane_->zoom()));
}

void frmGFX2::saveAs() {
    if (!pane_->hasImage() || !ctx_.ui) return;
    const auto chosen = ctx_.ui->chooseSaveFile(
        "Save As", "PNG Files (*.png)|*.png|Bitmap Files (*.bmp)|*.bmp|JPEG Files (*.jpg)|*.jpg", folder_);
    if (!chosen || chosen->empty()) return;
    const std::string error = SavePicture(pane_->image(), *chosen);
    if (!error.empty()) ctx_.ui->message(error, base::Icon::Exclamation);
}

void frmGFX2::PrintPicture(QPrinter& printer, const QImage& image) {
    QPainter painter(&printer);
    const QRect page = painter.viewport();
    QSize size = image.size();
    size.scale(page.size(), Qt::KeepAspectRatio);
    painter.setViewport(page.x(), page.y(), size.width(), size.height());
    painter.setWindow(image.rect());
    painter.drawImage(0, 0, image);
}

void frmGFX2::print() {
    if (!pane_->hasImage()) return;
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog dialog(&printer, this);
    dialog.setWindowTitle("Print Preview");
    const QImage image = pane_->image();
    connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&image](QPrinter* p) { PrintPicture(*p, image); });
    dialog.exec();
}

}  // namespace ferrolund::screens
