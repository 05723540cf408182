#pragma once
// "Highlight XML" (Command1 of the editor): the button's caption is the state. With
// Lang(62) it colours the main pane, and the second pane while that is shown, and offers
// Lang(311); with Lang(311) it takes the colours off again and sets the panes' font size
// to 11. Geometry and texture documents are refused with a warning.

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <string>

#include "app/app_context.h"

class QPlainTextEdit;
class QPushButton;

namespace ferrolund::screens {

class XmlHighlighter;

class HighlightController : public QObject {
    Q_OBJECT
public:
    // `documentName` gives the main document's path, as the name box above the pane shows
    // it. `secondPane` may be null.
    HighlightController(app::AppContext& ctx, QPushButton* button, QPlainTextEdit* pane, QPlainTextEdit* secondPane,
                        std::function<std::string()> documentName, QObject* parent = nullptr);
    ~HighlightController() override;

    // The button's click.
    void toggle();
    bool colouring(const QPlainTextEdit* pane) const;
    // Puts the caption of the present state in the present language.
    void applyLanguage();

private:
    struct PaneColours;
    void colourPane(PaneColours& colours);
    void removeColours(PaneColours& colours);
    void documentChanged();
    bool secondWindow() const;

    app::AppContext& ctx_;
    QPointer<QPushButton> button_;
    std::unique_ptr<PaneColours> main_;
    std::unique_ptr<PaneColours> second_;
    std::function<std::string()> documentName_;
    bool on_ = false;
};

}  // namespace ferrolund::screens
