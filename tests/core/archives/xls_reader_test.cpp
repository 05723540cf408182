#include "archives/xls_reader.h"

#include <gtest/gtest.h>

#include <cstring>

#include "archives/report_grid.h"

namespace ferrolund::archives {
namespace {

std::string Le16(unsigned v) { return {static_cast<char>(v & 0xff), static_cast<char>((v >> 8) & 0xff)}; }

std::string Record(unsigned id, const std::string& data) { return Le16(id) + Le16(static_cast<unsigned>(data.size())) + data; }

std::string Bof(unsigned version = 0x0500) { return Record(0x0809, Le16(version) + Le16(0x10) + Le16(0) + Le16(0)); }
const std::string kEof = Record(0x000a, "");

std::string Double(double value) {
    std::string bytes(8, '\0');
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    for (int i = 0; i < 8; ++i) bytes[static_cast<std::size_t>(i)] = static_cast<char>((bits >> (8 * i)) & 0xff);
    return bytes;
}

services::ReportTable Parsed(const std::string& bytes) {
    auto result = ParseXls(bytes);
    if (auto* error = std::get_if<base::RunError>(&result)) {
        ADD_FAILURE() << error->description;
        return {};
    }
    return std::get<services::ReportTable>(result);
}

struct RoundTrip {
    const char* what;
    services::ReportTable table;
};

class XlsRoundTrip : public ::testing::TestWithParam<RoundTrip> {};

TEST_P(XlsRoundTrip, WhatTheGridSavesComesBack) {
    const services::ReportTable& table = GetParam().table;
    const services::ReportTable back = Parsed(services::XlsBytes(table));
    EXPECT_EQ(back.headings, table.headings);
    EXPECT_EQ(back.rows, table.rows);
}

INSTANTIATE_TEST_SUITE_P(
    Tables, XlsRoundTrip,
    ::testing::Values(
        RoundTrip{"plain", {{"File", "Size", "Date"}, {{"C:\\RW\\a.ap", "10", "2024-01-01"}, {"b.ap", "2", "x"}}}},
        RoundTrip{"commas quotes and code page", {{"Name"}, {{"a, \"b\""}, {"caf\xe9 \x80"}}}},
        RoundTrip{"an empty cell in the middle", {{"A", "B", "C"}, {{"1", "", "3"}}}},
        RoundTrip{"headings only", {{"File"}, {}}}),
    [](const auto& info) {
        std::string name = info.param.what;
        for (char& c : name) c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
        return name;
    });

TEST(XlsReader, ALongCellComesBackCutAt255AsItWasSaved) {
    const services::ReportTable back = Parsed(services::XlsBytes({{"H"}, {{std::string(300, 'x')}}}));
    ASSERT_EQ(back.rows.size(), 1u);
    EXPECT_EQ(back.rows[0][0], std::string(255, 'x'));
}

TEST(XlsReader, NumbersOfEveryFormBecomeText) {
    const std::string bytes = Bof() + Record(0x0204, Le16(0) + Le16(0) + Le16(15) + Le16(1) + "N") +
                              Record(0x0203, Le16(1) + Le16(0) + Le16(15) + Double(2.5)) +
                              Record(0x0203, Le16(2) + Le16(0) + Le16(15) + Double(1024)) +
                              // RK: the integer 12345 over 100
                              Record(0x027e, Le16(3) + Le16(0) + Le16(15) + Le16(((12345u << 2) | 3u) & 0xffff) +
                                                 Le16(((12345u << 2) | 3u) >> 16)) +
                              kEof;
    const services::ReportTable back = Parsed(bytes);
    ASSERT_EQ(back.rows.size(), 3u);
    EXPECT_EQ(back.rows[0][0], "2.5");
    EXPECT_EQ(back.rows[1][0], "1024");
    EXPECT_EQ(back.rows[2][0], "123.45");
}

TEST(XlsReader, Biff8TextCellsInEightAndSixteenBitForms) {
    const std::string narrow = Le16(0) + Le16(0) + Le16(15) + Le16(3) + std::string(1, '\0') + "abc";
    const std::string wide = Le16(1) + Le16(0) + Le16(15) + Le16(2) + std::string(1, '\1') + "o" + std::string(1, '\0') +
                             "\xac" + std::string(1, '\x20');  // 'o' and the euro sign, which has no byte here
    const services::ReportTable back = Parsed(Bof(0x0600) + Record(0x0204, narrow) + Record(0x0204, wide) + kEof);
    EXPECT_EQ(back.headings, std::vector<std::string>{"abc"});
    ASSERT_EQ(back.rows.size(), 1u);
    EXPECT_EQ(back.rows[0][0], "o?");
}

TEST(XlsReader, EveryCutOfAGoodFileIsAnErrorNotACrash) {
    const std::string bytes = services::XlsBytes({{"File", "Size"}, {{"a.ap", "1"}, {"b.ap", "2"}}});
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_TRUE(std::holds_alternative<base::RunError>(ParseXls(bytes.substr(0, length)))) << length;
    }
}

TEST(XlsReader, FilesItDoesNotReadAreRefused) {
    const struct {
        const char* what;
        std::string bytes;
    } cases[] = {
        {"compound file", std::string("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1", 8) + std::string(504, '\0')},
        {"comma text", "File,Size\r\na.ap,1\r\n"},
        {"a cell that claims more text than it holds",
         Bof() + Record(0x0204, Le16(0) + Le16(0) + Le16(15) + Le16(40) + "short") + kEof},
        {"a second sheet begins inside the first", Bof() + Bof() + kEof},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(std::holds_alternative<base::RunError>(ParseXls(c.bytes))) << c.what;
    }
}

TEST(XlsReader, TheGridTakesTheSheetWithItsHeadings) {
    ReportGrid grid;
    grid.loadTable(Parsed(services::XlsBytes({{"File", "Size"}, {{"a.ap", "1"}}})));
    EXPECT_EQ(grid.table.headings, (std::vector<std::string>{"File", "Size"}));
    ASSERT_EQ(grid.rowCount(), 1u);
    EXPECT_EQ(grid.cell(0, 1), "1");
}

}  // namespace
}  // namespace ferrolund::archives
