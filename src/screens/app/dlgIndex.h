#pragma once
// "Notice:-": the reminder to extract and index the route properties, with the two
// commands at hand.

#include <QDialog>
#include <functional>

#include "app/app_context.h"

class QCheckBox;
class QPushButton;

namespace ferrolund::screens {

class dlgIndex : public QDialog {
    Q_OBJECT
public:
    // A command given as empty is not part of this build: its button is greyed.
    dlgIndex(app::AppContext& ctx, std::function<void()> extractRouteProperties,
             std::function<void()> indexRoutes, QWidget* parent = nullptr);
    QCheckBox* dontShow() const { return check_; }
    QPushButton* extractButton() const { return extract_; }
    QPushButton* indexButton() const { return index_; }
    QPushButton* continueButton() const { return continue_; }

private:
    QCheckBox* check_ = nullptr;
    QPushButton* extract_ = nullptr;
    QPushButton* index_ = nullptr;
    QPushButton* continue_ = nullptr;
};

}  // namespace ferrolund::screens
