#include "screens/editor/HighlightController.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>

#include "editor/xml_colour.h"
#include "screens/app/qt_text.h"
#include "screens/editor/XmlHighlighter.h"

namespace ferrolund::screens {

namespace {
constexpr int kHighlightCaption = 62;
constexpr int kRemoveCaption = 311;
constexpr int kPlainFontSize = 11;
}  // namespace

struct HighlightController::PaneColours {
    QPointer<QPlainTextEdit> pane;
    std::unique_ptr<XmlHighlighter> highlighter;
};

HighlightController::HighlightController(app::AppContext& ctx, QPushButton* button, QPlainTextEdit* pane,
                                         QPlainTextEdit* secondPane, std::function<std::string()> documentName,
                                         QObject* parent)
    : QObject(parent),
      ctx_(ctx),
      button_(button),
      main_(std::make_unique<PaneColours>()),
      second_(std::make_unique<PaneColours>()),
      documentName_(std::move(documentName)) {
    main_->pane = pane;
    second_->pane = secondPane;
    // Made before the language table is loaded, the button keeps its caption until the
    // window relabels it through applyLanguage.
    if (ctx_.lang.count() > 0) applyLanguage();
    if (button_) connect(button_, &QPushButton::clicked, this, &HighlightController::toggle);
    // A document opened while the colours are on is coloured as well, unless it is one
    // whose colouring is refused.
    if (pane) connect(pane, &QPlainTextEdit::textChanged, this, &HighlightController::documentChanged);
}

HighlightController::~HighlightController() = default;

void HighlightController::applyLanguage() {
    if (!button_) return;
    button_->setText(ToQt(ctx_.langText(on_ ? kRemoveCaption : kHighlightCaption)));
}

bool HighlightController::colouring(const QPlainTextEdit* pane) const {
    for (const auto* colours : {main_.get(), second_.get()}) {
        if (colours->pane == pane) return colours->highlighter != nullptr;
    }
    return false;
}

bool HighlightController::secondWindow() const { return second_->pane && !second_->pane->isHidden(); }

void HighlightController::toggle() {
    if (!button_) return;
    if (documentName_ && editor::ColouringRefused(documentName_())) {
        ctx_.ui->message("Do not highlight the text in GeoPcDx or TgPcDx files\n"
                         "as the data blob section causes the option to lock up.",
                         base::Icon::Exclamation);
        return;
    }
    const std::string caption = FromQt(button_->text());
    if (caption == ctx_.langText(kHighlightCaption)) {
        on_ = true;
        button_->setText(ToQt(ctx_.langText(kRemoveCaption)));
        colourPane(*main_);
        if (secondWindow()) colourPane(*second_);
    } else if (caption == ctx_.langText(kRemoveCaption)) {
        on_ = false;
        button_->setText(ToQt(ctx_.langText(kHighlightCaption)));
        removeColours(*main_);
        if (secondWindow()) removeColours(*second_);
    }
}

void HighlightController::colourPane(PaneColours& colours) {
    QPlainTextEdit* pane = colours.pane;
    if (!pane) return;
    if (pane->document()->isEmpty()) {
        ctx_.ui->message("No text selected", base::Icon::None);
        return;
    }
    ctx_.ui->busy(true);
    colours.highlighter = std::make_unique<XmlHighlighter>(pane);
    colours.highlighter->colourAll();
    QTextCursor cursor = pane->textCursor();
    cursor.setPosition(1);
    pane->setTextCursor(cursor);
    ctx_.ui->busy(false);
    ctx_.ui->pump();
}

void HighlightController::removeColours(PaneColours& colours) {
    QPlainTextEdit* pane = colours.pane;
    colours.highlighter.reset();
    if (!pane) return;
    QFont font = pane->font();
    font.setPointSize(kPlainFontSize);
    pane->setFont(font);
}

void HighlightController::documentChanged() {
    if (!main_->highlighter || !documentName_ || !editor::ColouringRefused(documentName_())) return;
    // The colours come off as the button would take them off.
    on_ = false;
    applyLanguage();
    removeColours(*main_);
    removeColours(*second_);
}

}  // namespace ferrolund::screens
