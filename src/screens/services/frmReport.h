#pragma once
// frmReport, "Report:-": a text report in a fixed-pitch pane, with save, font and print.

#include <QDialog>
#include <string>

#include "app/app_context.h"

class QPlainTextEdit;

namespace ferrolund::screens {

class frmReport : public QDialog {
    Q_OBJECT
public:
    // With `fromFile` a report file is asked for in AppRoot\Reports and shown; otherwise `text`.
    frmReport(app::AppContext& ctx, const std::string& text, bool fromFile, QWidget* parent = nullptr);
    QPlainTextEdit* pane() const { return rtb1_; }
    // Command2: the pane as plain text, to a file chosen in AppRoot\Reports.
    void save();
    void print();
    void changeFont();

private:
    app::AppContext& ctx_;
    QPlainTextEdit* rtb1_;
};

// Opens the report with a caption of its own (the overlength list, a listing, ...).
void ShowReport(app::AppContext& ctx, QWidget* parent, const std::string& caption, const std::string& text);

}  // namespace ferrolund::screens
