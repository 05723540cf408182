#include "cli/cli_ui.h"

#include <ostream>

#include "tools/names.h"
#include "tools/codepage.h"

namespace ferrolund::cli {

namespace {
// The console shows UTF-8; the core's texts are Windows-1252.
std::string Console(const std::string& text) { return tools::ShownText(text); }
}  // namespace

void CliUi::message(const std::string& text, base::Icon icon, const std::string& title) {
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

void CliUi::progress(int percent, const std::string& caption) {
    err_ << "\r" << Console(caption) << " " << percent << "%" << (percent >= 100 ? "\n" : "") << std::flush;
}

void CliUi::status(int, const std::string&) {}

}  // namespace ferrolund::cli
