#include "app/error_log.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "app/app_context.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::app {
namespace {

// A fixed instant, read in UTC so the expected text does not depend on the machine.
std::chrono::system_clock::time_point At(int year, int month, int day, int hour, int minute, int second) {
    std::tm tm{};
    tm.tm_year = year - 1900;
    tm.tm_mon = month - 1;
    tm.tm_mday = day;
    tm.tm_hour = hour;
    tm.tm_min = minute;
    tm.tm_sec = second;
    return std::chrono::system_clock::from_time_t(timegm(&tm));
}

class ErrorLog : public ::testing::Test {
protected:
    void SetUp() override {
        const char* tz = std::getenv("TZ");
        if (tz) oldTz_ = tz;
        hadTz_ = tz != nullptr;
        setenv("TZ", "UTC", 1);
        tzset();
    }
    void TearDown() override {
        if (hadTz_) {
            setenv("TZ", oldTz_.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

private:
    std::string oldTz_;
    bool hadTz_ = false;
};

TEST_F(ErrorLog, EntryHasItsExactForm) {
    const std::string entry = FormatErrorLogEntry(At(2026, 3, 7, 14, 5, 9), "File not found", "mnuOpenRS_Click", 53,
                                                  "frmEditor");
    const std::string expected =
        "March 07, 2026  at 02:05:09 PM | Unexpected Error in Ferrolund V1.0.0001\r\n"
        "Error:\r\n53\r\n\r\n"
        "Description:\r\nFile not found\r\n\r\n"
        "Procedure:\r\nmnuOpenRS_Click\r\n\r\n"
        "Module:\r\nfrmEditor\r\n" +
        std::string(80, '=') + "\r\n\r\n";
    EXPECT_EQ(entry, expected);
}

TEST_F(ErrorLog, ClockFormsAroundNoonAndMidnight) {
    struct Case { int hour; const char* text; };
    const Case cases[] = {{0, "12:00:00 AM"}, {11, "11:00:00 AM"}, {12, "12:00:00 PM"}, {23, "11:00:00 PM"}};
    for (const auto& c : cases) {
        const std::string entry = FormatErrorLogEntry(At(2026, 12, 31, c.hour, 0, 0), "x", "r", 1, "m");
        EXPECT_EQ(entry.substr(0, entry.find(" |")), std::string("December 31, 2026  at ") + c.text);
    }
}

TEST_F(ErrorLog, LongDescriptionsAreBrokenAtBlanks) {
    std::string description;
    for (int i = 0; i < 30; ++i) description += "word" + std::to_string(i) + " ";
    description += std::string(90, 'x');
    const std::string entry = FormatErrorLogEntry(At(2026, 1, 1, 0, 0, 0), description, "r", 5, "m");
    const std::size_t from = entry.find("Description:\r\n") + 14;
    const std::string block = entry.substr(from, entry.find("\r\n\r\nProcedure:") - from);
    std::string rejoined;
    std::size_t start = 0;
    int lines = 0;
    while (start <= block.size()) {
        std::size_t end = block.find("\r\n", start);
        if (end == std::string::npos) end = block.size();
        const std::string line = block.substr(start, end - start);
        if (line != std::string(90, 'x')) {
            EXPECT_LE(line.size(), 80u) << line;
        }
        EXPECT_NE(line.front(), ' ');
        rejoined += (rejoined.empty() ? "" : " ") + line;
        ++lines;
        start = end + 2;
    }
    EXPECT_GE(lines, 3);
    EXPECT_EQ(rejoined + " ", description.substr(0, description.size() - 90) + std::string(90, 'x') + " ");
}

TEST_F(ErrorLog, ReportAppendsAndShowsTheStopBox) {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    AppContext ctx;
    ctx.appRoot = root.system();
    ctx.ui = &ui;
    ctx.now = [] { return At(2026, 11, 21, 9, 30, 0); };
    ctx.currentRoutine = "Form_Load";
    ctx.report(base::RunError{62, "Input past end of file"}, "frmEditor");
    ctx.report(base::RunError{6, "Overflow"}, "frmEditor");

    const std::string log = root.read("Errors.txt");
    EXPECT_EQ(log, FormatErrorLogEntry(ctx.now(), "Input past end of file", "Form_Load", 62, "frmEditor") +
                       FormatErrorLogEntry(ctx.now(), "Overflow", "Form_Load", 6, "frmEditor"));
    ASSERT_EQ(ui.shown.size(), 2u);
    EXPECT_EQ(ui.shown[0].text, "Error: #62 Input past end of file\n\nModule: frmEditor\nProcedure: Form_Load\n");
    EXPECT_EQ(ui.shown[0].icon, base::Icon::Critical);
    EXPECT_EQ(ui.shown[0].title, "Unexpected Error in Ferrolund V1.0.0001");
}

TEST_F(ErrorLog, AnUnwritableLogStillShowsTheBox) {
    testing::ScriptedUi ui;
    AppContext ctx;
    ctx.appRoot = "/nonexistent/folder/for/the/log";
    ctx.ui = &ui;
    ReportUnexpectedError(ctx, "Path not found", "x", 76, "m");
    ASSERT_EQ(ui.shown.size(), 1u);
}

}  // namespace
}  // namespace ferrolund::app
