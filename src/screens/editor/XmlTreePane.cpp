#include "screens/editor/XmlTreePane.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/editor/XmlTreeModel.h"

namespace ferrolund::screens {

using editor::kNoNode;
using editor::NodeId;

namespace {
constexpr const char* kModule = "frmEditor";
}  // namespace

XmlTreePane::XmlTreePane(app::AppContext& ctx, QWidget* parent) : QWidget(parent), ctx_(ctx) {
    setObjectName("Frame2");
    model_ = new XmlTreeModel(ctx_, editor_, this);
    buildLayout();
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { nodeClicked(current); });
    connect(model_, &XmlTreeModel::renamed, this, [this] { setDirty(true); });
    connect(lstAttributes_, &QListWidget::currentRowChanged, this, [this] { attributeClicked(); });
    connect(txtCharacters_, &QPlainTextEdit::textChanged, this, [this] { charactersEdited(); });
    connect(text2_, &QLineEdit::returnPressed, this, &XmlTreePane::find);
    enableNodeEdit(false);
}

XmlTreePane::~XmlTreePane() = default;

void XmlTreePane::buildLayout() {
    label7_ = new QLabel(this);
    label7_->setObjectName("Label7");
    label7_->setTextInteractionFlags(Qt::TextSelectableByMouse);

    text2_ = new QLineEdit(this);
    text2_->setObjectName("Text2");
    auto* command2 = new QPushButton("Find", this);
    command2->setObjectName("Command2");
    auto* command3 = new QPushButton("Find All", this);
    command3->setObjectName("Command3");
    auto* command4 = new QPushButton("Find in Text", this);
    command4->setObjectName("Command4");
    connect(command2, &QPushButton::clicked, this, &XmlTreePane::find);
    connect(command3, &QPushButton::clicked, this, &XmlTreePane::findAll);
    connect(command4, &QPushButton::clicked, this, &XmlTreePane::findInText);
    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(text2_, 1);
    searchRow->addWidget(command2);
    searchRow->addWidget(command3);
    searchRow->addWidget(command4);

    tree_ = new QTreeView(this);
    tree_->setObjectName("trevwContents");
    tree_->setModel(model_);
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed);
    tree_->setSelectionMode(QAbstractItemView::ExtendedSelection);

    fraAttribs_ = new QGroupBox("Attributes", this);
    fraAttribs_->setObjectName("fraAttribs");
    lstAttributes_ = new QListWidget(fraAttribs_);
    lstAttributes_->setObjectName("lstAttributes");
    lblNames_ = new QLabel("Value:", fraAttribs_);
    lblNames_->setObjectName("lblNames");
    txtAttributeValue_ = new QLineEdit(fraAttribs_);
    txtAttributeValue_->setObjectName("txtAttributeValue");
    txtAttributeValue_->setReadOnly(true);
    auto* attribs = new QVBoxLayout(fraAttribs_);
    attribs->addWidget(lstAttributes_);
    attribs->addWidget(lblNames_);
    attribs->addWidget(txtAttributeValue_);

    fraChars_ = new QGroupBox("Characters", this);
    fraChars_->setObjectName("fraChars");
    txtCharacters_ = new QPlainTextEdit(fraChars_);
    txtCharacters_->setObjectName("txtCharacters");
    auto* chars = new QVBoxLayout(fraChars_);
    chars->addWidget(txtCharacters_);

    auto* right = new QWidget(this);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addWidget(fraAttribs_, 1);
    rightLayout->addWidget(fraChars_, 1);

    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(tree_);
    split->addWidget(right);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label7_);
    layout->addLayout(searchRow);
    layout->addWidget(split, 1);
}

void XmlTreePane::setDocumentName(const std::string& path) { label7_->setText(ToQt(path)); }

void XmlTreePane::load(const std::string& xmlSystemPath) {
    ctx_.currentRoutine = "LoadXMLFile";
    ctx_.ui->busy(true);
    base::Status status;
    model_->reset([&] {
        editor_.selected = kNoNode;
        editor_.bold.clear();
        status = editor_.tree.load(xmlSystemPath);
    });
    enableNodeEdit(false);
    setDirty(false);
    if (editor_.tree.count() > 0) tree_->expand(model_->indexOf(0));
    ctx_.ui->busy(false);
    if (status) ctx_.report(*status, kModule);
}

void XmlTreePane::clear() {
    model_->reset([&] {
        editor_.tree.clear();
        editor_.selected = kNoNode;
        editor_.bold.clear();
    });
    enableNodeEdit(false);
    setDirty(false);
}

void XmlTreePane::enableNodeEdit(bool enabled) {
    lstAttributes_->setEnabled(enabled);
    txtCharacters_->setEnabled(enabled);
    txtAttributeValue_->setEnabled(enabled);
    if (enabled) return;
    editor_.updatingFromNode = true;
    lstAttributes_->clear();
    txtCharacters_->clear();
    txtAttributeValue_->clear();
    editor_.updatingFromNode = false;
}

void XmlTreePane::nodeClicked(const QModelIndex& index) {
    const NodeId node = XmlTreeModel::nodeOf(index);
    if (node == kNoNode) return;
    editor_.updatingFromNode = true;
    lstAttributes_->clear();
    txtCharacters_->clear();
    txtAttributeValue_->clear();
    editor_.updatingFromNode = false;
    enableNodeEdit(true);
    txtAttributeValue_->setEnabled(false);
    const editor::XmlTreeEditor::Boxes boxes = editor_.select(editor_.tree.key(node));
    editor_.updatingFromNode = true;
    for (const std::string& name : boxes.attributeNames) lstAttributes_->addItem(ToQt(name));
    txtCharacters_->setPlainText(ToQt(boxes.characters));
    editor_.updatingFromNode = false;
}

void XmlTreePane::attributeClicked() {
    const int row = lstAttributes_->currentRow();
    if (row < 0) return;
    editor_.updatingFromNode = true;
    txtAttributeValue_->setText(ToQt(editor_.attributeValue(static_cast<std::size_t>(row))));
    editor_.updatingFromNode = false;
    txtAttributeValue_->setEnabled(true);
}

void XmlTreePane::charactersEdited() {
    const bool wasDirty = editor_.dirty;
    editor_.charactersChanged(FromQt(txtCharacters_->toPlainText()));
    if (editor_.dirty && !wasDirty) setDirty(true);
}

void XmlTreePane::setDirty(bool dirty) {
    editor_.dirty = dirty;
    for (QWidget* w = parentWidget(); w; w = w->parentWidget()) {
        auto* tabs = qobject_cast<QTabWidget*>(w);
        if (!tabs) continue;
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->widget(i) == this || tabs->widget(i)->isAncestorOf(this)) {
                tabs->setTabText(i, ToQt(editor::WithDirtyMark(FromQt(tabs->tabText(i)), dirty)));
            }
        }
        break;
    }
    emit dirtyChanged(dirty);
}

void XmlTreePane::clearMarks() {
    const std::vector<NodeId> old(editor_.bold.begin(), editor_.bold.end());
    editor_.bold.clear();
    model_->nodesChanged(old);
}

void XmlTreePane::markAndSelect(NodeId node, bool clearSelection) {
    editor_.bold.insert(node);
    model_->nodesChanged({node});
    const QModelIndex index = model_->indexOf(node);
    tree_->scrollTo(index);
    if (clearSelection) {
        tree_->setCurrentIndex(index);
    } else {
        tree_->selectionModel()->select(index, QItemSelectionModel::Select);
    }
}

bool XmlTreePane::showFindDialog() {
    QDialog dialog(this);
    dialog.setObjectName("dlgFind");
    dialog.setWindowTitle(base::kProgramTitle);
    auto* label = new QLabel("Is this the item you wished to find?", &dialog);
    auto* buttons = new QDialogButtonBox(&dialog);
    QPushButton* more = buttons->addButton("&Continue", QDialogButtonBox::AcceptRole);
    more->setObjectName("Command1");
    QPushButton* ok = buttons->addButton("OK", QDialogButtonBox::RejectRole);
    ok->setObjectName("OKButton");
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(label);
    layout->addWidget(buttons);
    return dialog.exec() == QDialog::Accepted;
}

void XmlTreePane::find() {
    ctx_.currentRoutine = "Command2_Click";
    search_.walk(ctx_, editor_.tree, FromQt(text2_->text()), editor::TreeSearchField::EntryText, [this](NodeId node) {
        clearMarks();
        markAndSelect(node, true);
        ctx_.ui->pump();
        return askContinue ? askContinue() : showFindDialog();
    });
}

void XmlTreePane::findInText() {
    ctx_.currentRoutine = "Command4_Click";
    search_.walk(ctx_, editor_.tree, FromQt(text2_->text()), editor::TreeSearchField::Characters,
                 [this](NodeId node) {
                     clearMarks();
                     markAndSelect(node, true);  // the entry's text shows in txtCharacters
                     ctx_.ui->pump();
                     return askContinue ? askContinue() : showFindDialog();
                 });
}

void XmlTreePane::findAll() {
    ctx_.currentRoutine = "Command3_Click";
    clearMarks();
    const std::vector<NodeId> hits = search_.findAll(ctx_, editor_.tree, FromQt(text2_->text()));
    if (hits.empty()) return;
    tree_->selectionModel()->clearSelection();
    for (const NodeId node : hits) markAndSelect(node, false);
}

}  // namespace ferrolund::screens
