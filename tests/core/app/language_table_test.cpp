#include "app/language_table.h"

#include <gtest/gtest.h>

namespace ferrolund::app {
namespace {

TEST(LanguageTable, RecordsFillTheTableInFileOrder) {
    struct Case {
        const char* name;
        std::string text;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {"plain", "1,\"&Files\"\r\n2,\"Open\"\r\n", {"&Files", "Open"}},
        {"comma inside quotes", "1,\"Yes, really\"\r\n", {"Yes, really"}},
        {"numbers do not place records", "5,\"first\"\r\n3,\"second\"\r\n", {"first", "second"}},
        {"record 0 ends the table", "1,\"a\"\r\n0,\"end\"\r\n3,\"never\"\r\n", {"a"}},
        {"no line end at the end", "1,\"a\"\r\n2,\"b\"", {"a", "b"}},
        {"number without text", "1,\"a\"\r\n2", {"a"}},
        {"number that is no number", "1,\"a\"\r\nx,\"b\"\r\n", {"a"}},
        {"empty file", "", {}},
        {"Windows-1252 text read as a person reads it", "1,\"Gr\xF6\xDF" "e\"\r\n", {"Gr\xC3\xB6\xC3\x9F" "e"}},
        {"UTF-8 text kept", "1,\"\xC4\x8C" "esk\xC3\xA9\"\r\n", {"\xC4\x8C" "esk\xC3\xA9"}},
    };
    for (const auto& c : cases) {
        LanguageTable table;
        table.parse(c.text);
        ASSERT_EQ(table.count(), static_cast<int>(c.expected.size())) << c.name;
        for (int i = 1; i <= table.count(); ++i) EXPECT_EQ(*table.text(i), c.expected[i - 1]) << c.name;
    }
}

TEST(LanguageTable, OutsideTheTableThereIsNoText) {
    LanguageTable table;
    table.parse("1,\"a\"\r\n");
    EXPECT_FALSE(table.text(0));
    EXPECT_FALSE(table.text(2));
    EXPECT_TRUE(table.text(1));
}

}  // namespace
}  // namespace ferrolund::app
