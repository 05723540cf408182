#include "app/preference_set.h"

#include <gtest/gtest.h>

#include "app/value_reader.h"

namespace ferrolund::app {
namespace {

std::string Lines(std::initializer_list<const char*> lines) {
    std::string out;
    for (const char* l : lines) out += std::string(l) + "\r\n";
    return out;
}

// The text with line `number` (from 1) replaced.
std::string WithLine(const std::string& text, int number, const std::string& value) {
    std::size_t start = 0;
    for (int i = 1; i < number; ++i) start = text.find("\r\n", start) + 2;
    const std::size_t end = text.find("\r\n", start);
    return text.substr(0, start) + value + text.substr(end);
}

// A file as the program writes it, every kind of value present.
const std::string kFullFile = Lines({
    "12000", "9000", "-120", "300", "\"C:\\Tools\\paint.exe\"", "\"\"", "\"C:\\Games\\RailWorks\"", "#TRUE#",
    "\"spare, with comma\"", "\"/usr/bin/evince\"", "\"\"", "\"German\"", "\"D:\\Backup\"", "#TRUE#", "#FALSE#",
    "\"12\"", "\"\"", "2", "11000", "8500", "500", "600", "#TRUE#", "#FALSE#", "\"E:\\PreLoad\"", "#TRUE#",
    "#FALSE#", "9000", "7000", "100", "200", "#TRUE#"});

TEST(PreferenceSet, DefaultsAreWrittenInTheFileForm) {
    const std::string expected = Lines({
        "0", "0", "0", "0", "\"\"", "\"\"", "\"\"", "#FALSE#", "\"\"", "\"\"", "\"\"", "\"English\"", "\"\"",
        "#FALSE#", "#FALSE#", "\"\"", "\"\"", "0", "0", "0", "0", "0", "#FALSE#", "#FALSE#", "\"\"", "#FALSE#",
        "#FALSE#", "0", "0", "0", "0", "#FALSE#"});
    EXPECT_EQ(FormatPreferences(PreferenceSet{}, AboutHome::Shadow), expected);
}

TEST(PreferenceSet, ReadAndWrittenBackByteForByte) {
    PreferenceSet prefs;
    EXPECT_TRUE(ParsePreferences(kFullFile, prefs, AboutHome::Shadow).empty());
    EXPECT_EQ(FormatPreferences(prefs, AboutHome::Shadow), kFullFile);
    EXPECT_EQ(prefs.editorLeft, -120);
    EXPECT_EQ(prefs.gameRoot, "C:\\Games\\RailWorks");
    EXPECT_EQ(prefs.spareText1, "spare, with comma");
    EXPECT_EQ(prefs.language, "German");
    EXPECT_EQ(prefs.editorWindowState, 2);
    EXPECT_EQ(prefs.preLoadFolder, "E:\\PreLoad");
    EXPECT_TRUE(prefs.routesIndexed);
}

TEST(PreferenceSet, ReadByValueNotByLine) {
    // Values may share a line when commas separate them.
    std::string text = "100,200,300,400\r\n\"a\",\"b\"\r\n";
    for (int i = 7; i <= 32; ++i) text += (i == 12 ? "\"English\"" : "0") + std::string("\r\n");
    PreferenceSet prefs;
    const auto errors = ParsePreferences(text, prefs, AboutHome::Shadow);
    // Lines 7.. hold "0" where strings and booleans are wanted: strings take it as text,
    // booleans as false, so nothing fails.
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(prefs.editorTop, 400);
    EXPECT_EQ(prefs.graphicsEditorPath, "a");
    EXPECT_EQ(prefs.viewerPath, "b");
    EXPECT_EQ(prefs.gameRoot, "0");
}

TEST(PreferenceSet, LineFourteenHasTwoHomes) {
    PreferenceSet prefs;
    ParsePreferences(kFullFile, prefs, AboutHome::Shadow);
    EXPECT_TRUE(prefs.aboutFlagShadow);
    EXPECT_FALSE(prefs.aboutFlag);
    // The exit writes the About screen's flag, so the value read at start is not kept.
    EXPECT_EQ(FormatPreferences(prefs, AboutHome::AboutScreen), WithLine(kFullFile, 14, "#FALSE#"));

    PreferenceSet about;
    ParsePreferences(kFullFile, about, AboutHome::AboutScreen);
    EXPECT_TRUE(about.aboutFlag);
    EXPECT_FALSE(about.aboutFlagShadow);
}

TEST(PreferenceSet, ShortFileReportsEachMissingValueAndKeepsDefaults) {
    struct Case { int present; };
    for (const Case c : {Case{0}, Case{1}, Case{20}, Case{31}}) {
        std::string text;
        for (int i = 1; i <= c.present; ++i) text += (i == 12 ? "\"French\"" : "5") + std::string("\r\n");
        PreferenceSet prefs;
        const auto errors = ParsePreferences(text, prefs, AboutHome::Shadow);
        ASSERT_EQ(static_cast<int>(errors.size()), 32 - c.present) << c.present;
        for (const auto& e : errors) EXPECT_EQ(e.number, 62);
        EXPECT_FALSE(prefs.routesIndexed);
        if (c.present < 31) {
            EXPECT_EQ(prefs.reportTop, 0);
        }
        if (c.present < 12) {
            EXPECT_EQ(prefs.language, "English");
        }
    }
}

TEST(PreferenceSet, LongerFileIgnoresTheSurplus) {
    const std::string text = kFullFile + "\"a later value\"\r\n#TRUE#\r\n77\r\n";
    PreferenceSet prefs;
    EXPECT_TRUE(ParsePreferences(text, prefs, AboutHome::Shadow).empty());
    EXPECT_EQ(FormatPreferences(prefs, AboutHome::Shadow), kFullFile);
}

TEST(PreferenceSet, ValuesThatDoNotFitAreReportedAndLeaveTheField) {
    struct Case { const char* width; int errorNumber; };
    const Case cases[] = {{"40000", 6}, {"-32769", 6}, {"\"wide\"", 13}, {"abc", 13}};
    for (const auto& c : cases) {
        const std::string text = WithLine(kFullFile, 1, c.width);
        PreferenceSet prefs;
        prefs.editorWidth = 77;
        const auto errors = ParsePreferences(text, prefs, AboutHome::Shadow);
        ASSERT_EQ(errors.size(), 1u) << c.width;
        EXPECT_EQ(errors[0].number, c.errorNumber) << c.width;
        EXPECT_EQ(prefs.editorWidth, 77) << c.width;
        EXPECT_EQ(prefs.editorHeight, 9000);
    }
}

TEST(PreferenceSet, ZeroMeansDefaultOnAllThreeScreens) {
    PreferenceSet prefs;
    prefs.scenarioEditorLeft = 5;
    ApplyGeometryDefaults(prefs);
    EXPECT_EQ(prefs.editorWidth, 10000);
    EXPECT_EQ(prefs.editorHeight, 8000);
    EXPECT_EQ(prefs.editorLeft, 1000);
    EXPECT_EQ(prefs.editorTop, 1000);
    EXPECT_EQ(prefs.scenarioEditorWidth, 10000);
    EXPECT_EQ(prefs.scenarioEditorLeft, 5);
    EXPECT_EQ(prefs.reportHeight, 8000);
    EXPECT_EQ(prefs.reportTop, 1000);
}

TEST(PreferenceSet, StoreTwipsOverflowKeepsTheOldValue) {
    std::int16_t field = 1234;
    EXPECT_FALSE(StoreTwips(field, 32767));
    EXPECT_EQ(field, 32767);
    const base::Status s = StoreTwips(field, 32768);
    ASSERT_TRUE(s);
    EXPECT_EQ(s->number, 6);
    EXPECT_EQ(field, 32767);
}

TEST(ValueReader, FieldForms) {
    struct Case { std::string text; std::vector<std::string> values; };
    const Case cases[] = {
        {"1,\"a, b\"\r\n", {"1", "a, b"}},
        {"  42  ,x\n", {"42", "x"}},
        {"\"q\" trailing,next", {"q", "next"}},
        {"\r\n\"after blank\"\r\n", {"", "after blank"}},
        {"\"unclosed", {"unclosed"}},
        {"", {}},
    };
    for (const auto& c : cases) {
        ValueReader reader(c.text);
        std::vector<std::string> got;
        while (auto v = reader.next()) got.push_back(v->text);
        EXPECT_EQ(got, c.values) << c.text;
    }
}

}  // namespace
}  // namespace ferrolund::app
