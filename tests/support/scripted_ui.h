#pragma once
// A Ui for tests: answers from queues given in advance and records every message, so a
// test can assert the exact texts and their order.

#include <deque>
#include <string>
#include <vector>

#include "base/ui.h"

namespace ferrolund::testing {

class ScriptedUi : public base::Ui {
public:
    struct Shown {
        std::string text;
        base::Icon icon;
        std::string title;
        bool question;  // asked, not only told
    };

    // Queues, taken front first. An empty queue answers No / Cancel / nothing.
    std::deque<base::Answer> answers;
    std::deque<std::optional<std::string>> inputs;
    std::deque<std::optional<std::string>> files;    // open and save dialogs
    std::deque<std::optional<std::string>> folders;

    std::vector<Shown> shown;                        // messages and questions in order
    std::vector<std::string> dialogTitles;           // titles of the file and folder dialogs
    std::vector<std::pair<int, std::string>> statusTexts;
    std::vector<std::pair<int, std::string>> progressSteps;
    int pumps = 0;
    int busyDepth = 0;

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
    void pump() override { ++pumps; }

    // The texts shown, in order.
    std::vector<std::string> texts() const;
    // The last text shown in a status panel, or empty.
    std::string lastStatus(int panel) const;
};

}  // namespace ferrolund::testing
