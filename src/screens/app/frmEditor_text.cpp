// The main window's tabs: the text editor with its second pane, and the route list.

#include <QApplication>
#include <QFontDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

#include "editor/route_list.h"
#include "screens/app/frmEditor.h"
#include "tools/codepage.h"
#include "screens/app/menu_commands.h"
#include "screens/app/qt_text.h"
#include "screens/editor/HighlightController.h"
#include "screens/editor/XmlTreePane.h"
#include "screens/services/print_preview.h"

namespace ferrolund::screens {

using editor::Pane;

namespace {

// The print preview's layout for the editor's route list.
constexpr int kRouteListPrintSource = 15;

QPlainTextEdit* MakePane(QWidget* parent, const char* name) {
    auto* pane = new QPlainTextEdit(parent);
    pane->setObjectName(name);
    pane->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont font("Courier New");
    font.setStyleHint(QFont::Monospace);
    font.setPointSize(11);
    pane->setFont(font);
    pane->setContextMenuPolicy(Qt::CustomContextMenu);
    return pane;
}

QPushButton* MakeButton(QWidget* parent, const char* name, const char* caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

}  // namespace

void frmEditor::buildTabs() {
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("SSTab1");
    tabs_->addTab(buildTextTab(), "Text Editor");
    tree_ = new XmlTreePane(ctx_, tabs_);
    tree_->setObjectName("Frame2");
    tabs_->addTab(tree_, "XML Editor");
    tabs_->addTab(buildRouteTab(), "Route List");
    connect(tabs_, &QTabWidget::currentChanged, this, &frmEditor::tabChanged);
    setCentralWidget(tabs_);
}

QWidget* frmEditor::buildTextTab() {
    auto* frame = new QWidget(this);
    frame->setObjectName("Frame1");
    auto* names = new QGridLayout;
    auto* label1 = new QLabel("File Name", frame);
    label1->setObjectName("Label1");
    secondLabel_ = new QLabel("File Name 2", frame);
    secondLabel_->setObjectName("Label4");
    for (int i = 0; i < 2; ++i) {
        name_[i] = new QLineEdit(frame);
        name_[i]->setObjectName(i == 0 ? "Text1" : "Text3");
        name_[i]->setReadOnly(true);
    }
    names->addWidget(label1, 0, 0);
    names->addWidget(name_[0], 0, 1);
    names->addWidget(secondLabel_, 1, 0);
    names->addWidget(name_[1], 1, 1);

    auto* buttons = new QHBoxLayout;
    auto* highlight = MakeButton(frame, "Command1", "Highlight XML");
    auto* font = MakeButton(frame, "Command5", "Change Font");
    auto* clear = MakeButton(frame, "Command6", "Clear screen");
    auto* image = showImage_ = MakeButton(frame, "Command7", "Show Image");
    image->setEnabled(false);  // enabled by a texture's name
    // The texture screens add the command; without them the button stays greyed.
    connect(image, &QPushButton::clicked, this, [this] { runMenuCommand("Command7"); });
    for (QPushButton* b : {highlight, font, clear, image}) buttons->addWidget(b);
    buttons->addStretch();
    connect(font, &QPushButton::clicked, this, &frmEditor::changeFont);
    connect(clear, &QPushButton::clicked, this, [this] { editor::ClearScreen(doc_, *this); });

    splitter_ = new QSplitter(Qt::Horizontal, frame);
    pane_[0] = MakePane(splitter_, "RichTextBox1");
    pane_[1] = MakePane(splitter_, "RTB2");
    for (QPlainTextEdit* pane : pane_) {
        pane->installEventFilter(this);
        connect(pane, &QWidget::customContextMenuRequested, this, [this, pane](const QPoint& at) {
            pane->setFocus();
            menus_.at("mnuPop1")->exec(pane->mapToGlobal(at));
        });
    }
    splitter_->addWidget(pane_[0]);
    splitter_->addWidget(pane_[1]);
    showSecondPane(false);
    highlight_ = new HighlightController(ctx_, highlight, pane_[0], pane_[1],
                                         [this] { return documentName(Pane::Main); }, this);

    auto* layout = new QVBoxLayout(frame);
    layout->addLayout(names);
    layout->addLayout(buttons);
    layout->addWidget(splitter_, 1);
    return frame;
}

QWidget* frmEditor::buildRouteTab() {
    auto* frame = new QWidget(this);
    frame->setObjectName("Frame5");
    routeGrid_ = new QTableWidget(0, 3, frame);
    routeGrid_->setObjectName("VSFG1");
    routeGrid_->setHorizontalHeaderLabels({"Route Name", "Route Folder", "Route Slot"});
    routeGrid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    routeGrid_->setSelectionMode(QAbstractItemView::SingleSelection);
    routeGrid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    routeGrid_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    routeGrid_->verticalHeader()->hide();

    auto* load = MakeButton(frame, "Command9", "Load List");
    auto* open = MakeButton(frame, "Command8", "Open Selected Folder");
    auto* print = MakeButton(frame, "Command10", "Print List");
    auto* save = MakeButton(frame, "Command11", "Save list as .CSV");
    connect(print, &QPushButton::clicked, this,
            [this] { PrintPreviewGrid(this, *routeGrid_->model(), kRouteListPrintSource, "Route List"); });
    auto* clear = MakeButton(frame, "Command12", "Clear List");
    connect(save, &QPushButton::clicked, this, [this] {
        std::vector<editor::RouteRow> rows;
        auto cell = [this](int r, int c) { return routeGrid_->item(r, c) ? FromQt(routeGrid_->item(r, c)->text()) : std::string(); };
        for (int r = 0; r < routeGrid_->rowCount(); ++r) rows.push_back({cell(r, 0), cell(r, 1), cell(r, 2)});
        std::vector<std::string> headings;
        for (int c = 0; c < 3; ++c) headings.push_back(FromQt(routeGrid_->horizontalHeaderItem(c)->text()));
        editor::SaveRouteList(ctx_, rows, headings);
    });
    connect(load, &QPushButton::clicked, this, &frmEditor::loadRouteList);
    connect(open, &QPushButton::clicked, this, &frmEditor::openSelectedRouteFolder);
    connect(clear, &QPushButton::clicked, this, [this] { routeGrid_->setRowCount(0); });
    connect(routeGrid_, &QTableWidget::cellDoubleClicked, this, &frmEditor::openSelectedRouteFolder);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {load, open, print, save, clear}) buttons->addWidget(b);
    buttons->addStretch();

    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(routeGrid_, 1);
    layout->addLayout(buttons);
    return frame;
}

void frmEditor::loadRouteList() {
    routeGrid_->setRowCount(0);
    for (const auto& row : editor::LoadRouteList(ctx_)) {
        const int r = routeGrid_->rowCount();
        routeGrid_->insertRow(r);
        routeGrid_->setItem(r, 0, new QTableWidgetItem(ToQt(row.name)));
        routeGrid_->setItem(r, 1, new QTableWidgetItem(ToQt(row.folder)));
        routeGrid_->setItem(r, 2, new QTableWidgetItem(ToQt(row.slot)));
    }
    routeGrid_->resizeColumnToContents(1);
}

void frmEditor::openSelectedRouteFolder() {
    const int row = routeGrid_->currentRow();
    const QTableWidgetItem* folder = row >= 0 ? routeGrid_->item(row, 1) : nullptr;
    const std::string command = editor::ChooseFileOfRoute(ctx_, doc_, folder ? FromQt(folder->text()) : std::string());
    if (command.empty()) return;
    tabs_->setCurrentIndex(0);
    if (!runMenuCommand(command)) {
        doc_.openFromList = false;
        ctx_.ui->message("This version of Ferrolund cannot open " + ctx_.commandFile + " yet.", base::Icon::Information);
    }
}

void frmEditor::tabChanged(int index) {
    QWidget* tab = tabs_->widget(index);
    if (tab == tree_ && !doc_.treeLoaded && !doc_.strBin.empty()) {
        tree_->setDocumentName(documentName(Pane::Main));
        tree_->load(doc_.strBin + "xml");
        doc_.treeLoaded = true;
    } else if (tab->objectName() == "Frame5") {
        loadRouteList();
    }
}

std::string frmEditor::paneText(Pane pane) const {
    const int i = static_cast<int>(pane);
    std::string text = PaneFromQt(pane_[i]->toPlainText(), PaneEncodingOf(pane_[i]));
    return crlf_[i] ? editor::WithCrLf(text) : text;
}

void frmEditor::setPaneText(Pane pane, const std::string& text) {
    const int i = static_cast<int>(pane);
    crlf_[i] = text.empty() || text.find("\r\n") != std::string::npos;
    // A large document goes in by pieces, without an undo record: much quicker than
    // setting it whole. The CR of each CR LF is left out, so no piece splits a line end.
    const PaneEncoding encoding = PaneEncodingOf(text);
    SetPaneEncoding(pane_[i], encoding);
    QString lines = PaneToQt(text, encoding);
    lines.remove(QLatin1Char('\r'));
    QTextDocument* document = pane_[i]->document();
    document->setUndoRedoEnabled(false);
    pane_[i]->clear();
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    constexpr qsizetype kPiece = 1 << 20;
    for (qsizetype at = 0, length = 0; at < lines.size(); at += length) {
        length = std::min(kPiece, lines.size() - at);
        if (lines[at + length - 1].isHighSurrogate() && at + length < lines.size()) ++length;  // keep a pair whole
        cursor.insertText(lines.mid(at, length));
    }
    cursor.endEditBlock();
    document->setUndoRedoEnabled(true);
    pane_[i]->moveCursor(QTextCursor::Start);
}

void frmEditor::setDocumentName(Pane pane, const std::string& path) {
    name_[static_cast<int>(pane)]->setText(ToQt(path));
    if (pane != Pane::Main) return;
    const bool texture = path.size() >= 6 && tools::EqualsIgnoreCase(path.substr(path.size() - 6), "TgPcDx");
    showImage_->setEnabled(texture && commands_.count("Command7") > 0);
}

std::string frmEditor::documentName(Pane pane) const { return FromQt(name_[static_cast<int>(pane)]->text()); }

void frmEditor::showNormal() {
    if (isMaximized() || isMinimized()) QMainWindow::showNormal();
}

void frmEditor::showSecondPane(bool shown) {
    pane_[1]->setVisible(shown);
    name_[1]->setVisible(shown);
    secondLabel_->setVisible(shown);
    if (shown) splitter_->setSizes({1, 1});
}

bool frmEditor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == pane_[0] && event->type() == QEvent::KeyPress) {
        editor::NoteKeyPress(doc_, documentName(Pane::Main));
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmEditor::changeFont() {
    bool ok = false;
    const QFont font = QFontDialog::getFont(&ok, pane_[0]->font(), this);
    if (!ok) return;
    for (QPlainTextEdit* pane : pane_) pane->setFont(font);
    ctx_.prefs.editorFontSize = std::to_string(font.pointSize());
}

void frmEditor::printPane() {
    ctx_.currentRoutine = "mnuPrint_Click";
    setPaneText(Pane::Main, editor::TextForPrinting(paneText(Pane::Main)));
    pane_[0]->moveCursor(QTextCursor::Start);
    pane_[0]->selectAll();
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog preview(&printer, this);
    preview.setWindowTitle(ToQt(documentName(Pane::Main)));
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* p) { pane_[0]->print(p); });
    preview.exec();
}

// The commands of the Files menu that act on the document, and of the panes' pop-up.
void RegisterDocumentCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    frmEditor& w = menu.window;
    menu.add("mnuOpenRS", [&] { editor::OpenGameFile(ctx, w.document(), w); });
    menu.add("mnuSaveRS", [&] { editor::SaveGameFile(ctx, w.document(), w); });
    menu.add("mnuItSaveAs", [&] { editor::SaveGameFileAs(ctx, w.document(), w); });
    menu.add("mnuXML", [&] { editor::OpenXmlFile(ctx, w.document(), w); });
    menu.add("mnuSavexml", [&] { editor::SaveXmlFile(ctx, w, editor::XmlSaveDialog::Xml); });
    menu.add("mnuSaveAs", [&] { editor::SaveXmlFile(ctx, w, editor::XmlSaveDialog::Krs); });
    menu.add("mnu2bin", [&] { editor::ToggleSecondWindow(w.document(), w); });
    menu.add("mnuFile2", [&] { editor::OpenSecondGameFile(ctx, w.document(), w); });
    menu.add("mnuClear", [&] { editor::ClearScreen(w.document(), w); });
    menu.add("mnuPrint", [&w] { w.runPrint(); });
    auto focused = [&w] {
        auto* pane = qobject_cast<QPlainTextEdit*>(QApplication::focusWidget());
        return pane ? pane : w.textPane();
    };
    menu.add("mnuCopy", [focused] { focused()->copy(); });
    menu.add("mnuCut", [focused] { focused()->cut(); });
    menu.add("mnuPaste", [focused] { focused()->paste(); });
    menu.add("mnuDelete", [focused] { focused()->textCursor().removeSelectedText(); });
    menu.add("mnuSelAll", [focused] { focused()->selectAll(); });
}

}  // namespace ferrolund::screens
