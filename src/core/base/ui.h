#pragma once
// The one way core commands talk to the person using the program.
// Texts are Windows-1252 bytes, as everywhere in the core.

#include <cstddef>
#include <optional>
#include <string>

namespace ferrolund::base {

enum class Icon { None, Information, Exclamation, Critical, Question };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
enum class Answer { Ok, Cancel, Yes, No, Retry };

class Ui {
public:
    virtual ~Ui() = default;

    // A modal box. An empty title means the program's own title.
    virtual void message(const std::string& text, Icon icon, const std::string& title = {}) = 0;
    virtual Answer ask(const std::string& text, Buttons buttons, Icon icon,
                       const std::string& title = {}) = 0;
    virtual std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                             const std::string& defaultText) = 0;
    // Filters use the "Caption (*.ext)|*.ext" form.
    virtual std::optional<std::string> chooseOpenFile(const std::string& title, const std::string& filter,
                                                      const std::string& startFolder) = 0;
    virtual std::optional<std::string> chooseSaveFile(const std::string& title, const std::string& filter,
                                                      const std::string& startFolder) = 0;
    virtual std::optional<std::string> chooseFolder(const std::string& title, const std::string& startFolder) = 0;
    virtual void progress(int percent, const std::string& caption) = 0;
    // How far a walk over countable things has come ("tiles"), told before the progress
    // it belongs to; a screen whose bar says enough may pass it over.
    virtual void progressCount(std::size_t done, std::size_t total, const char* unit) {
        (void)done, (void)total, (void)unit;
    }
    virtual void status(int panel, const std::string& text) = 0;
    virtual void busy(bool on) = 0;
    // Lets pending events through: the point where "&Abort" and other clicks arrive.
    virtual void pump() = 0;
};

// The program's title, used on boxes that name no other.
inline constexpr const char* kProgramTitle = "Ferrolund";

}  // namespace ferrolund::base
