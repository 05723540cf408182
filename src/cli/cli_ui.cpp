#include "cli/cli_ui.h"

#include <ostream>

#include "cli/interrupt.h"
#include "tools/codepage.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {
// The console shows UTF-8; names in the core's texts may be held in Windows-1252.
std::string Console(const std::string& text) { return tools::ShownText(text); }
}  // namespace

void CliUi::message(const std::string& text, base::Icon icon, const std::string& title) {
    endProgressLine();
    std::ostream& to = (icon == base::Icon::Critical || icon == base::Icon::Exclamation) ? err_ : out_;
    if (!title.empty()) to << Console(title) << ": ";
    to << Console(text) << (text.empty() || text.back() != '\n' ? "\n" : "");
}

base::Answer CliUi::ask(const std::string& text, base::Buttons buttons, base::Icon, const std::string&) {
    const bool yesNo = buttons == base::Buttons::YesNo || buttons == base::Buttons::YesNoCancel;
    std::optional<bool> yes = defaultYes;
    std::string given;
    if (!answers.empty()) {
        given = tools::LowerCp1252(answers.front());
        answers.pop_front();
        yes = given == "yes" || given == "y" || given == "ok";
    }
    endProgressLine();
    out_ << Console(text) << "\n";
    if (buttons == base::Buttons::Ok) return base::Answer::Ok;
    if (!yes) {
        out_ << "  (no answer given: taking " << (yesNo ? "No" : "Cancel") << "; use --yes or --answer)\n";
        yes = false;
    }
    if (yesNo && buttons == base::Buttons::YesNoCancel && given == "cancel") return base::Answer::Cancel;
    if (buttons == base::Buttons::RetryCancel) {
        out_ << "  -> " << (*yes || given == "retry" ? "Retry" : "Cancel") << "\n";
        return *yes || given == "retry" ? base::Answer::Retry : base::Answer::Cancel;
    }
    const base::Answer answer = yesNo ? (*yes ? base::Answer::Yes : base::Answer::No)
                                     : (*yes ? base::Answer::Ok : base::Answer::Cancel);
    out_ << "  -> " << (answer == base::Answer::Yes ? "Yes" : answer == base::Answer::No ? "No"
                                                   : answer == base::Answer::Ok           ? "OK"
                                                                                         : "Cancel")
         << "\n";
    return answer;
}

std::optional<std::string> CliUi::takeAnswer(const std::string& what) {
    endProgressLine();
    if (answers.empty()) {
        out_ << Console(what) << "\n  (no answer given: cancelled; use --answer)\n";
        return std::nullopt;
    }
    std::string value = answers.front();
    answers.pop_front();
    out_ << Console(what) << "\n  -> " << Console(value) << "\n";
    return value;
}

std::optional<std::string> CliUi::input(const std::string& title, const std::string& prompt, const std::string&) {
    return takeAnswer(title + ": " + prompt);
}

std::optional<std::string> CliUi::chooseOpenFile(const std::string& title, const std::string&, const std::string&) {
    return takeAnswer(title);
}

std::optional<std::string> CliUi::chooseSaveFile(const std::string& title, const std::string&, const std::string&) {
    return takeAnswer(title);
}

std::optional<std::string> CliUi::chooseFolder(const std::string& title, const std::string&) {
    return takeAnswer(title);
}

namespace {
// The caption without its figures: "Scenery 45 %" is the stage "Scenery".
std::string StageOf(const std::string& caption) {
    std::string stage = caption.substr(0, caption.find_first_of("0123456789%"));
    while (!stage.empty() && stage.back() == ' ') stage.pop_back();
    return stage;
}
}  // namespace

void CliUi::progressCount(std::size_t done, std::size_t total, const char* unit) {
    countText_ = " (" + std::to_string(done) + " of " + std::to_string(total) + " " + unit + ")";
}

void CliUi::progress(int percent, const std::string& caption) {
    std::string count;
    count.swap(countText_);
    if (percent < 0 || caption.empty()) {  // the bar is cleared
        endProgressLine();
        return;
    }
    if (progressStyle == ProgressStyle::Terminal) {
        // Back to the start of the line and clear it, so a shorter line leaves nothing behind.
        err_ << "\r\x1b[K" << Console(caption) << count << std::flush;
        lineOpen_ = true;
    } else if (progressStyle == ProgressStyle::Lines) {
        const std::string stage = StageOf(caption);
        if (stage != stage_) {
            stage_ = stage;
            err_ << Console(stage.empty() ? caption : stage) << "\n" << std::flush;
        }
    }
}

void CliUi::endProgressLine() {
    if (!lineOpen_) return;
    err_ << "\r\x1b[K" << std::flush;
    lineOpen_ = false;
}

void CliUi::pump() {
    if (abortFlag != nullptr && Interrupted()) *abortFlag = stopped_ = true;
}

void CliUi::status(int, const std::string&) {}

}  // namespace ferrolund::cli
