#include "screens/routes/frmMix.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

frmMix::frmMix(app::AppContext& ctx, std::string folder, LongRun runLong, QWidget* parent)
    : QDialog(parent), ctx_(ctx), folder_(std::move(folder)), runLong_(std::move(runLong)) {
    setObjectName("frmMix");
    setWindowTitle("Clear MixMap Files");
    folderLabel_ = new QLabel(ToQt(folder_), this);
    folderLabel_->setObjectName("Label1");
    folderLabel_->setWordWrap(true);
    auto* hint = new QLabel("Each marked .bin is given a blank terrain mix; the old file is kept beside it as .bak.",
                            this);
    hint->setObjectName("Label2");
    hint->setWordWrap(true);
    list1_ = new QListWidget(this);
    list1_->setObjectName("List1");
    selectAll_ = new QPushButton("Select All", this);
    selectAll_->setObjectName("Command1");
    process_ = new QPushButton("Process", this);
    process_->setObjectName("Command2");
    close_ = new QPushButton("Close", this);
    close_->setObjectName("Command3");

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(selectAll_);
    buttons->addWidget(process_);
    buttons->addStretch();
    buttons->addWidget(close_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(folderLabel_);
    layout->addWidget(list1_, 1);
    layout->addWidget(hint);
    layout->addLayout(buttons);
    resize(420, 460);

    connect(selectAll_, &QPushButton::clicked, this, [this] { selectAll(); });
    connect(process_, &QPushButton::clicked, this, [this] { process(); });
    connect(close_, &QPushButton::clicked, this, &QDialog::close);
    loadFiles();
}

void frmMix::loadFiles() {
    list1_->clear();
    for (const std::string& name : routes::FolderFileNames(folder_)) {
        auto* item = new QListWidgetItem(ToQt(name), list1_);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
}

void frmMix::selectAll() {
    for (int i = 0; i < list1_->count(); ++i) list1_->item(i)->setCheckState(Qt::Checked);
}

std::vector<std::string> frmMix::markedFiles() const {
    std::vector<std::string> names;
    for (int i = 0; i < list1_->count(); ++i)
        if (list1_->item(i)->checkState() == Qt::Checked) names.push_back(FromQt(list1_->item(i)->text()));
    return names;
}

void frmMix::process() {
    const std::vector<std::string> names = markedFiles();
    if (names.empty()) {
        ctx_.ui->message("No file is marked: mark the MixMap files to clear, or click \"Select All\".",
                         base::Icon::Information);
        return;
    }
    for (QPushButton* b : {selectAll_, process_, close_}) b->setEnabled(false);
    auto work = [&] { last_ = routes::ClearMixMaps(ctx_, folder_, names); };
    if (!runLong_)
        work();
    else if (!runLong_(work))
        ctx_.ui->message("Another command is still running; try again when it has finished.", base::Icon::Information);
    for (QPushButton* b : {selectAll_, process_, close_}) b->setEnabled(true);
    loadFiles();
}

}  // namespace ferrolund::screens
