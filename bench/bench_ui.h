#pragma once
// The Ui of the benchmarks: it gives one answer to every question (No unless set), shows
// nothing, counts the event pumps and measures the longest time between two of them (the
// chances to abort), and can click "&Abort" once a run has lasted a given time.

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>

#include "base/ui.h"

namespace ferrolund::bench {

class BenchUi : public base::Ui {
public:
    using Clock = std::chrono::steady_clock;

    base::Answer answer = base::Answer::No;
    long pumps = 0;
    double longestGap = 0;  // seconds
    Clock::time_point started = Clock::now();
    Clock::time_point clicked;

    // With an abort flag and a time, the flag is raised at the first pump after that time.
    void abortAfter(bool* flag, double seconds) {
        abortFlag_ = flag;
        abortAfter_ = seconds;
        started = Clock::now();
    }
    // A new run: the gap is measured afresh.
    void reset() {
        pumped_ = false;
        longestGap = 0;
    }

    void message(const std::string&, base::Icon, const std::string&) override {}
    base::Answer ask(const std::string&, base::Buttons, base::Icon, const std::string&) override {
        return answer;
    }
    std::optional<std::string> input(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::optional<std::string> chooseOpenFile(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    std::optional<std::string> chooseSaveFile(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override { return {}; }
    void progress(int, const std::string&) override {}
    void status(int, const std::string&) override {}
    void busy(bool) override {}
    void pump() override {
        ++pumps;
        const auto now = Clock::now();
        if (pumped_) longestGap = std::max(longestGap, std::chrono::duration<double>(now - last_).count());
        last_ = now;
        pumped_ = true;
        if (abortFlag_ && abortAfter_ > 0 && !*abortFlag_ &&
            std::chrono::duration<double>(now - started).count() >= abortAfter_) {
            *abortFlag_ = true;
            clicked = now;
        }
    }

private:
    bool pumped_ = false;
    Clock::time_point last_;
    bool* abortFlag_ = nullptr;
    double abortAfter_ = 0;
};

}  // namespace ferrolund::bench
