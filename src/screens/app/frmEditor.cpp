#include "screens/app/frmEditor.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QPushButton>
#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTime>
#include <QTimer>

#include "app/menu_table.h"
#include "app/startup.h"
#include "screens/app/qt_text.h"
#include "screens/app/qt_ui.h"
#include "screens/editor/HighlightController.h"
#include "app/menu_table.h"

namespace ferrolund::screens {

namespace {
// Texts of the tabs in the language table.
constexpr int kTextTab = 65;
constexpr int kTreeTab = 66;
constexpr int kRouteTab = 115;
constexpr int kMinimumPanelTwips = 2000;
// The labels and buttons of the tabs and the texts that caption them.
const std::pair<int, const char*> kCaptionTexts[] = {
    {61, "Label1"},   {63, "Command5"}, {64, "Command6"}, {413, "Command7"}, {414, "Label4"},
    {74, "Command9"}, {75, "Command8"}, {76, "Command10"}, {77, "Command11"}, {78, "Command12"},
};
}  // namespace

frmEditor::frmEditor(app::AppContext& ctx, QtUi& ui, QWidget* parent) : QMainWindow(parent), ctx_(ctx), ui_(ui) {
    setObjectName("frmEditor");
    setWindowTitle(base::kProgramTitle);
    resize(1024, 720);  // the design size, kept on a first run
    registerCommands();
    buildMenu();
    buildTabs();
    buildStatusBar();
    ui_.setParent(this);
    ui_.showStatus = [this](int panel, const QString& text) { showStatus(panel, text); };
}

void frmEditor::buildStatusBar() {
    auto* bar = statusBar();
    bar->setObjectName("StatusBar1");
    const int minimum = kMinimumPanelTwips / kTwipsPerPixel;
    for (int i = 0; i < 5; ++i) {
        auto* panel = new QLabel(bar);
        panel->setObjectName(QString("Panel%1").arg(i + 1));
        panel->setFrameShape(QFrame::StyledPanel);
        panel->setFrameShadow(QFrame::Sunken);
        if (i < 2) panel->setMinimumWidth(minimum);
        bar->addWidget(panel, i == 4 ? 1 : 0);
        panels_.push_back(panel);
    }
    panels_[1]->setAccessibleName("Time panel");
    auto updateTime = [this] { panels_[1]->setText(QTime::currentTime().toString("hh:mm")); };
    updateTime();
    auto* clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this, updateTime);
    clock->start(1000);

    auto* progress = new QProgressBar(bar);
    progress->setObjectName("ProgressBar1");
    progress->setMaximumWidth(200);
    progress->setVisible(false);
    bar->addPermanentWidget(progress);
    ui_.progressBar = progress;
}

void frmEditor::showStatus(int panel, const QString& text) {
    if (panel >= 0 && panel < static_cast<int>(panels_.size()) && panel != 1) panels_[panel]->setText(text);
}

QString frmEditor::statusText(int panel) const {
    return panel >= 0 && panel < static_cast<int>(panels_.size()) ? panels_[panel]->text() : QString();
}

void frmEditor::maximise() { setWindowState(windowState() | Qt::WindowMaximized); }

void frmEditor::setGeometryTwips(const app::TwipsRect& r) {
    move(static_cast<int>(r.left / kTwipsPerPixel), static_cast<int>(r.top / kTwipsPerPixel));
    resize(static_cast<int>(r.width / kTwipsPerPixel), static_cast<int>(r.height / kTwipsPerPixel));
}

app::TwipsRect frmEditor::geometryTwips() const {
    const QRect g = frameGeometry();
    return {static_cast<long>(g.left()) * kTwipsPerPixel, static_cast<long>(g.top()) * kTwipsPerPixel,
            static_cast<long>(g.width()) * kTwipsPerPixel, static_cast<long>(g.height()) * kTwipsPerPixel};
}

void frmEditor::setCaption(const std::string& caption) { setWindowTitle(ToQt(caption)); }

QAction* frmEditor::menuAction(const std::string& name) const {
    const auto it = actions_.find(name);
    return it == actions_.end() ? nullptr : it->second;
}

void frmEditor::setMenuChecked(const std::string& name, bool checked) {
    if (auto* a = menuAction(name)) {
        a->setCheckable(true);
        a->setChecked(checked);
    }
}

void frmEditor::setMenuVisible(const std::string& name, bool visible) {
    if (auto* a = menuAction(name)) a->setVisible(visible);
}

void frmEditor::setMenuEnabled(const std::string& name, bool enabled) {
    // A command this build does not have stays greyed whatever a command asks.
    const auto* item = app::FindMenuItem(name);
    const bool available = item && (item->handler.empty() || commands_.count(name) > 0);
    if (auto* a = menuAction(name)) a->setEnabled(enabled && available);
}

void frmEditor::setMenuCaption(const std::string& item, const std::string& caption) {
    if (auto* a = menuAction(item)) a->setText(ToQt(caption));
}

void frmEditor::applyLanguage() {
    for (const auto& item : app::MainMenu()) {
        if (item.langIndex == 0) continue;
        QAction* a = menuAction(std::string(item.name));
        if (!a) continue;
        a->setText(ToQt(ctx_.langText(item.langIndex, std::string(item.caption))));
    }
    // The captions of the tabs, their labels and buttons, by the widgets' names.
    for (const auto& [index, name] : kCaptionTexts) {
        QWidget* widget = findChild<QWidget*>(name);
        const QString text = ToQt(ctx_.langText(index));
        if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            button->setText(text);
        } else if (auto* label = qobject_cast<QLabel*>(widget)) {
            label->setText(text);
        }
    }
    tabs_->setTabText(0, ToQt(ctx_.langText(kTextTab, "Text Editor")));
    tabs_->setTabText(1, ToQt(ctx_.langText(kTreeTab, "XML Editor")));
    highlight_->applyLanguage();
    // The colouring button takes either of its two captions without a change of width.
    if (auto* highlight = findChild<QPushButton*>("Command1")) {
        const QFontMetrics metrics(highlight->font());
        const int widest = std::max(metrics.horizontalAdvance(ToQt(ctx_.langText(62, "Highlight XML"))),
                                    metrics.horizontalAdvance(ToQt(ctx_.langText(311, "Remove Highlighting"))));
        highlight->setMinimumWidth(widest + 24);
    }
    tabs_->setTabText(tabs_->count() - 1, ToQt(ctx_.langText(kRouteTab, "Route List")));
    if (routeGrid_) {
        routeGrid_->setHorizontalHeaderLabels(
            {ToQt(ctx_.langText(79)), ToQt(ctx_.langText(80)), ToQt(ctx_.langText(81))});
    }
}

void frmEditor::setEditorFontSize(double points) {
    for (QPlainTextEdit* pane : pane_) {
        QFont font = pane->font();
        font.setPointSizeF(points);
        pane->setFont(font);
    }
}

void frmEditor::selectFirstTab() { tabs_->setCurrentIndex(0); }

void frmEditor::closeSearchDialog() {
    if (auto* search = findChild<QWidget*>("dlgSearch")) search->close();
}

bool frmEditor::runMenuCommand(const std::string& name) {
    const auto it = commands_.find(name);
    if (it == commands_.end()) return false;
    it->second();
    return true;
}

void frmEditor::closeEvent(QCloseEvent* event) {
    if (app::ExitSequence(ctx_, *this, {doc_.editedFlag, doc_.savedFlag})) {
        event->accept();
    } else {
        event->ignore();
    }
}

}  // namespace ferrolund::screens
