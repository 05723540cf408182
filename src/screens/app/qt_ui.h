#pragma once
// The Ui of the desktop program: Qt's dialogs, the status bar and the busy cursor.

#include <QPointer>
#include <QWidget>
#include <functional>

#include "base/ui.h"

class QProgressBar;

namespace ferrolund::screens {

class QtUi : public base::Ui {
public:
    explicit QtUi(QWidget* parent = nullptr) : parent_(parent) {}

    void setParent(QWidget* parent) { parent_ = parent; }
    // Where status texts and progress go; the main window sets these.
    std::function<void(int, const QString&)> showStatus;
    QPointer<QProgressBar> progressBar;

    void message(const std::string& text, base::Icon icon, const std::string& title) override;
    base::Answer ask(const std::string& text, base::Buttons buttons, base::Icon icon,
                    const std::string& title) override;
    std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                     const std::string& defaultText) override;
    std::optional<std::string> chooseOpenFile(const std::string& title, const std::string& filter,
                                              const std::string& startFolder) override;
    std::optional<std::string> chooseSaveFile(const std::string& title, const std::string& filter,
                                              const std::string& startFolder) override;
    std::optional<std::string> chooseFolder(const std::string& title, const std::string& startFolder) override;
    void progress(int percent, const std::string& caption) override;
    void status(int panel, const std::string& text) override;
    void busy(bool on) override;
    void pump() override;

private:
    QPointer<QWidget> parent_;
};

}  // namespace ferrolund::screens
