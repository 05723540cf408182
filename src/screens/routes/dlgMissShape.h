#pragma once
// dlgMissShape, "Substitute for a missing Asset.": the asset that is to take the place of
// an item of the report grid, and the kind of tile it is looked for in.

#include <QDialog>
#include <optional>

#include "app/app_context.h"
#include "routes/tile_edit_command.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace ferrolund::screens {

class dlgMissShape : public QDialog {
    Q_OBJECT
public:
    // `old` is the item to be replaced; its kind is the one chosen at first.
    dlgMissShape(app::AppContext& ctx, const routes::GridItem& old, QWidget* parent = nullptr);

    QLineEdit* provider() const { return text1_; }
    QLineEdit* product() const { return text2_; }
    QLineEdit* path() const { return text3_; }
    QRadioButton* kindOption(int kind) const;
    // What OK accepted: the three texts and the chosen kind.
    const std::optional<routes::SubstituteChoice>& choice() const { return choice_; }

    // A full path of an asset's .bin (below GameRoot\Assets) fills the three texts;
    // false, with the texts left as they were, for a path outside Assets.
    bool takePath(const std::string& systemPath);
    // "Select .bin file", started in GameRoot\Assets.
    void pickFile();
    // OK: the path is made to end in ".xml", the choice kept and the dialogue closed.
    void acceptChoice();

private:
    app::AppContext& ctx_;
    QLineEdit* text1_;
    QLineEdit* text2_;
    QLineEdit* text3_;
    QRadioButton* options_[4];
    std::optional<routes::SubstituteChoice> choice_;
};

// Shows the dialogue modally for the item; nothing when it was cancelled.
std::optional<routes::SubstituteChoice> AskSubstitute(app::AppContext& ctx, QWidget* parent,
                                                      const routes::GridItem& old);

}  // namespace ferrolund::screens
