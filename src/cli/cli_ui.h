#pragma once
// The Ui of the command-line front end: messages are printed, questions are answered
// from the options, and nothing waits for a person.

#include <deque>
#include <iosfwd>
#include <string>

#include "base/ui.h"

namespace ferrolund::cli {

// How progress is told on stderr: not at all (the output is not a terminal), one line per
// stage (--progress), or one line updated in place on a terminal.
enum class ProgressStyle { Silent, Lines, Terminal };

class CliUi : public base::Ui {
public:
    CliUi(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}
    ~CliUi() override { endProgressLine(); }

    ProgressStyle progressStyle = ProgressStyle::Silent;
    // The running command's AbortFlag, set at the next pump after a Ctrl+C.
    bool* abortFlag = nullptr;

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
    void progressCount(std::size_t done, std::size_t total, const char* unit) override;
    void status(int panel, const std::string& text) override;
    void busy(bool) override {}
    void pump() override;

    // Clears the line that progress keeps updating on a terminal, if one is shown.
    void endProgressLine();
    // A Ctrl+C reached the running command through AbortFlag.
    bool stoppedByInterrupt() const { return stopped_; }

private:
    std::optional<std::string> takeAnswer(const std::string& what);
    std::string countText_;   // " (12 of 340 tiles)" for the next progress line
    std::string stage_;       // of the last line printed in the Lines style
    bool lineOpen_ = false;   // a progress line stands on the terminal
    bool stopped_ = false;
    std::ostream& out_;
    std::ostream& err_;
};

}  // namespace ferrolund::cli
