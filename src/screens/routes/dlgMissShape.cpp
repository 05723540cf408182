#include "screens/routes/dlgMissShape.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "tools/text_search.h"
#include "tools/codepage.h"

namespace ferrolund::screens {

namespace {

bool EndsWith(const std::string& text, std::string_view tail) {
    return text.size() >= tail.size() && tools::EqualsIgnoreCase(std::string_view(text).substr(text.size() - tail.size()), tail);
}

}  // namespace

dlgMissShape::dlgMissShape(app::AppContext& ctx, const routes::GridItem& old, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName("dlgMissShape");
    setWindowTitle("Substitute for a missing Asset.");

    auto* item = new QLabel(ToQt(old.ref.provider + "\\" + old.ref.product + "\\" + old.ref.blueprintId), this);
    item->setObjectName("Label4");
    item->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* kinds = new QGroupBox(this);
    auto* kindRow = new QHBoxLayout(kinds);
    const struct {
        int kind;
        const char* caption;
    } options[] = {{routes::kTrackKind, "Track Item"},
                   {routes::kRoadKind, "Road Item"},
                   {routes::kLoftKind, "Loft Item"},
                   {routes::kSceneryKind, "Scenery Item"}};
    for (const auto& o : options) {
        auto* option = new QRadioButton(o.caption, kinds);
        option->setObjectName(QString("Option%1").arg(o.kind));
        kindRow->addWidget(option);
        options_[o.kind - 1] = option;
    }
    const int kind = old.kind >= routes::kSceneryKind && old.kind <= routes::kTrackKind ? old.kind : routes::kSceneryKind;
    options_[kind - 1]->setChecked(true);

    text1_ = new QLineEdit(this);
    text1_->setObjectName("Text1");
    text2_ = new QLineEdit(this);
    text2_->setObjectName("Text2");
    text3_ = new QLineEdit(this);
    text3_->setObjectName("Text3");
    connect(text3_, &QLineEdit::returnPressed, this, [this] { takePath(FromQt(text3_->text())); });
    auto* browse = new QPushButton("...", this);
    browse->setObjectName("Command1");
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, &dlgMissShape::pickFile);

    auto* fields = new QGridLayout;
    fields->addWidget(new QLabel("Provider", this), 0, 0);
    fields->addWidget(text1_, 0, 1, 1, 2);
    fields->addWidget(new QLabel("Product", this), 1, 0);
    fields->addWidget(text2_, 1, 1, 1, 2);
    fields->addWidget(new QLabel("Path of selected Asset", this), 2, 0);
    fields->addWidget(text3_, 2, 1);
    fields->addWidget(browse, 2, 2);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName("OKButton");
    buttons->button(QDialogButtonBox::Ok)->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Cancel)->setObjectName("CancelButton");
    buttons->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &dlgMissShape::acceptChoice);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(item);
    layout->addWidget(kinds);
    layout->addLayout(fields);
    layout->addWidget(buttons);
    resize(620, 240);
}

QRadioButton* dlgMissShape::kindOption(int kind) const {
    return kind >= routes::kSceneryKind && kind <= routes::kTrackKind ? options_[kind - 1] : nullptr;
}

bool dlgMissShape::takePath(const std::string& systemPath) {
    auto ref = routes::SplitGamePath(ctx_.gameRoot(), systemPath);
    if (!ref || ref->provider.empty() || ref->product.empty() || ref->blueprintId.empty()) return false;
    for (char& ch : ref->blueprintId)
        if (ch == '/') ch = '\\';
    if (EndsWith(ref->blueprintId, "bin")) ref->blueprintId.replace(ref->blueprintId.size() - 3, 3, "xml");
    text1_->setText(ToQt(ref->provider));
    text2_->setText(ToQt(ref->product));
    text3_->setText(ToQt(ref->blueprintId));
    return true;
}

void dlgMissShape::pickFile() {
    if (!ctx_.ui) return;
    const auto file = ctx_.ui->chooseOpenFile("Select .bin file", ".bin Files (*.bin)|*.bin", ctx_.gameRoot() + "\\Assets");
    if (!file || file->empty()) return;
    if (!takePath(*file))
        ctx_.ui->message(*file + "\nis not below " + ctx_.gameRoot() + "\\Assets\\<Provider>\\<Product>.",
                         base::Icon::Exclamation);
}

void dlgMissShape::acceptChoice() {
    routes::SubstituteChoice choice;
    choice.replacement = {std::string(tools::TrimBlanks(FromQt(text1_->text()))),
                          std::string(tools::TrimBlanks(FromQt(text2_->text()))),
                          std::string(tools::TrimBlanks(FromQt(text3_->text())))};
    std::string& path = choice.replacement.blueprintId;
    if (EndsWith(path, ".bin")) path.replace(path.size() - 3, 3, "xml");
    if (!path.empty() && !EndsWith(path, ".xml")) {
        if (ctx_.ui)
            ctx_.ui->message("The Path of selected Asset must be the asset's .xml (or .bin) blueprint.",
                             base::Icon::Exclamation);
        return;
    }
    text3_->setText(ToQt(path));
    for (int kind = routes::kSceneryKind; kind <= routes::kTrackKind; ++kind)
        if (options_[kind - 1]->isChecked()) choice.kind = kind;
    choice_ = std::move(choice);
    accept();
}

std::optional<routes::SubstituteChoice> AskSubstitute(app::AppContext& ctx, QWidget* parent,
                                                      const routes::GridItem& old) {
    dlgMissShape dialog(ctx, old, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.choice();
}

}  // namespace ferrolund::screens
