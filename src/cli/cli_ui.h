#pragma once
// The Ui of the command-line front end: messages are printed, questions are answered
// from the options, and nothing waits for a person.

#include <deque>
#include <iosfwd>
#include <string>

#include "base/ui.h"

namespace ferrolund::cli {

class CliUi : public base::Ui {
public:
    CliUi(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

    // --yes / --no: the answer to every question that is not answered otherwise.
    std::optional<bool> defaultYes;
    // --answer TEXT, in order: answers to questions ("yes", "no", "ok", "cancel"), and the
    // text or path given to input and file or folder choices.
    std::deque<std::string> answers;

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
    void busy(bool) override {}
    void pump() override {}

private:
    std::optional<std::string> takeAnswer(const std::string& what);
    std::ostream& out_;
    std::ostream& err_;
};

}  // namespace ferrolund::cli
