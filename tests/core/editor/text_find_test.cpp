#include "editor/text_find.h"

#include <gtest/gtest.h>

#include <string>

namespace ferrolund::editor {
namespace {

struct FindCase {
    const char* text;
    const char* what;
    long start;
    bool wholeWord;
    long expected;
};

TEST(FindInText, Cases) {
    const FindCase cases[] = {
        {"abcABC", "abc", 0, false, 0},
        {"abcABC", "abc", 1, false, 3},          // case is ignored
        {"abcABC", "abc", 4, false, -1},
        {"abc", "abc", 3, false, -1},            // start at the end
        {"abc", "abc", 99, false, -1},
        {"abc", "", 0, false, -1},               // no search text, no hit
        {"abc", "abcd", 0, false, -1},
        {"foo foobar foo", "foo", 1, true, 11},  // the word inside foobar is skipped
        {"foo_bar foo", "foo", 0, true, 8},      // the underscore is part of a word
        {"x=foo,", "foo", 0, true, 2},
        {"\xC9t\xE9", "\xE9T\xC9", 0, false, 0},  // the code page's fold: É and é
        {"caf\xE9s caf\xE9", "caf", 0, true, -1}, // é is a letter
    };
    for (const FindCase& c : cases) {
        EXPECT_EQ(FindInText(c.text, c.what, c.start, c.wholeWord), c.expected)
            << c.text << " / " << c.what << " from " << c.start;
    }
}

struct ReplaceCase {
    const char* text;
    const char* what;
    const char* with;
    const char* expected;
    long count;
    long caret;
};

TEST(ReplaceAllInText, SearchesBehindEachReplacement) {
    const ReplaceCase cases[] = {
        // A replacement that holds the searched text ends: each search starts behind it.
        {"x a a a", "a", "aa", "x aa aa aa", 3, 10},
        {"xxab ab", "ab", "abab", "xxabab abab", 2, 11},
        // The search starts at the third character, and one behind each replacement.
        {"aaaa", "a", "b", "aaba", 1, 3},
        {"ab ab", "ab", "X", "ab X", 1, 4},
        // Case is ignored; whole words play no part.
        {"  Foo foobar", "foo", "bar", "  bar barbar", 2, 9},
        {"  none", "zzz", "y", "  none", 0, 1},
        {"  abc", "", "y", "  abc", 0, 1},
    };
    for (const ReplaceCase& c : cases) {
        std::string text = c.text;
        const ReplaceAllResult result = ReplaceAllInText(text, c.what, c.with);
        EXPECT_EQ(text, c.expected) << c.text;
        EXPECT_EQ(result.count, c.count) << c.text;
        EXPECT_EQ(result.caret, c.caret) << c.text;
    }
}

// A pane holding its text in memory, as a text box keeps its selection.
class StringPane : public SearchPane {
public:
    explicit StringPane(std::string text) : text_(std::move(text)) {}
    std::string text() const override { return text_; }
    long selStart() const override { return start_; }
    long selLength() const { return length_; }
    void setSelStart(long position) override {
        start_ = position;
        length_ = 0;
    }
    long find(std::string_view what, long start, bool wholeWord) override {
        const long hit = FindInText(text_, what, start, wholeWord);
        if (hit >= 0) {
            start_ = hit;
            length_ = static_cast<long>(what.size());
        }
        return hit;
    }
    void replaceSelection(std::string_view text) override {
        text_.replace(static_cast<std::size_t>(start_), static_cast<std::size_t>(length_), text);
        start_ += static_cast<long>(text.size());
        length_ = 0;
    }
    void replaceText(const std::string& text) override {
        text_ = text;
        ++wholeReplacements;
    }
    int wholeReplacements = 0;

private:
    std::string text_;
    long start_ = 0;
    long length_ = 0;
};

TEST(TextSearch, FindStartsAtOneAndFindNextBehindTheCaret) {
    StringPane pane("word sword word words");
    TextSearch search;
    search.find(pane, "word", false);
    EXPECT_EQ(search.searchStart, 1);
    EXPECT_EQ(search.searchFound, 6);  // the hit at 0 lies before the start
    search.findNext(pane, "word", false);
    EXPECT_EQ(search.searchStart, 7);
    EXPECT_EQ(search.searchFound, 11);
    search.findNext(pane, "word", false);
    EXPECT_EQ(search.searchFound, 16);
    search.findNext(pane, "word", false);
    EXPECT_EQ(search.searchFound, -1);
    EXPECT_EQ(pane.selStart(), 16);  // a miss leaves the selection
}

TEST(TextSearch, WholeWordIsObeyedByFindAndFindNextOnly) {
    StringPane pane("x sword word words word");
    TextSearch search;
    search.find(pane, "word", true);
    EXPECT_EQ(search.searchFound, 8);
    search.findNext(pane, "word", true);
    EXPECT_EQ(search.searchFound, 19);
    EXPECT_EQ(search.replaceAll(pane, "word", "W"), 4);
    EXPECT_EQ(pane.text(), "x sW W Ws W");
}

TEST(TextSearch, ReplaceChangesTheSelectionAndDoesNotMoveOn) {
    StringPane pane("one two two");
    TextSearch search;
    search.find(pane, "two", false);
    search.replace(pane, "2");
    EXPECT_EQ(pane.text(), "one 2 two");
    EXPECT_EQ(pane.selStart(), 5);
    search.replace(pane, "");  // no replacement text: nothing
    EXPECT_EQ(pane.text(), "one 2 two");
}

TEST(TextSearch, ReplaceAllIsOneStepAndLeavesTheCaretBehindTheLastReplacement) {
    StringPane pane("..ab ab ab");
    TextSearch search;
    EXPECT_EQ(search.replaceAll(pane, "AB", "ab ab"), 3);
    EXPECT_EQ(pane.text(), "..ab ab ab ab ab ab");
    EXPECT_EQ(pane.wholeReplacements, 1);
    EXPECT_EQ(pane.selStart(), 19);
    EXPECT_EQ(search.searchFound, -1);

    StringPane untouched("..ab");
    EXPECT_EQ(search.replaceAll(untouched, "zz", "y"), 0);
    EXPECT_EQ(untouched.wholeReplacements, 0);
    EXPECT_EQ(untouched.selStart(), 1);
    EXPECT_EQ(search.replaceAll(untouched, "ab", ""), 0);  // no replacement text: nothing
    EXPECT_EQ(untouched.text(), "..ab");
}

}  // namespace
}  // namespace ferrolund::editor
