#include "scripted_ui.h"

namespace ferrolund::testing {

namespace {
template <typename T>
T TakeFront(std::deque<T>& queue, T whenEmpty) {
    if (queue.empty()) return whenEmpty;
    T value = std::move(queue.front());
    queue.pop_front();
    return value;
}
}  // namespace

void ScriptedUi::message(const std::string& text, base::Icon icon, const std::string& title) {
    shown.push_back({text, icon, title, false});
}

base::Answer ScriptedUi::ask(const std::string& text, base::Buttons buttons, base::Icon icon,
                            const std::string& title) {
    shown.push_back({text, icon, title, true});
    const base::Answer fallback = buttons == base::Buttons::Ok ? base::Answer::Ok
                                 : (buttons == base::Buttons::OkCancel || buttons == base::Buttons::RetryCancel)
                                     ? base::Answer::Cancel
                                     : base::Answer::No;
    return TakeFront(answers, fallback);
}

std::optional<std::string> ScriptedUi::input(const std::string& title, const std::string&, const std::string&) {
    dialogTitles.push_back(title);
    return TakeFront(inputs, std::optional<std::string>());
}

std::optional<std::string> ScriptedUi::chooseOpenFile(const std::string& title, const std::string&,
                                                      const std::string&) {
    dialogTitles.push_back(title);
    return TakeFront(files, std::optional<std::string>());
}

std::optional<std::string> ScriptedUi::chooseSaveFile(const std::string& title, const std::string&,
                                                      const std::string&) {
    dialogTitles.push_back(title);
    return TakeFront(files, std::optional<std::string>());
}

std::optional<std::string> ScriptedUi::chooseFolder(const std::string& title, const std::string&) {
    dialogTitles.push_back(title);
    return TakeFront(folders, std::optional<std::string>());
}

void ScriptedUi::progress(int percent, const std::string& caption) { progressSteps.emplace_back(percent, caption); }

void ScriptedUi::status(int panel, const std::string& text) { statusTexts.emplace_back(panel, text); }

void ScriptedUi::busy(bool on) { busyDepth += on ? 1 : -1; }

std::vector<std::string> ScriptedUi::texts() const {
    std::vector<std::string> out;
    for (const auto& s : shown) out.push_back(s.text);
    return out;
}

std::string ScriptedUi::lastStatus(int panel) const {
    for (auto it = statusTexts.rbegin(); it != statusTexts.rend(); ++it) {
        if (it->first == panel) return it->second;
    }
    return {};
}

}  // namespace ferrolund::testing
