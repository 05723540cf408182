#include "archives/xls_reader.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>

namespace ferrolund::archives {

namespace {

constexpr std::size_t kMaxRows = 65536;
constexpr std::size_t kMaxColumns = 256;

std::uint16_t Le16(std::string_view b, std::size_t at) {
    return static_cast<std::uint16_t>(static_cast<unsigned char>(b[at]) |
                                      (static_cast<unsigned char>(b[at + 1]) << 8));
}

std::uint32_t Le32(std::string_view b, std::size_t at) {
    return static_cast<std::uint32_t>(Le16(b, at)) | (static_cast<std::uint32_t>(Le16(b, at + 2)) << 16);
}

double LeDouble(std::string_view b, std::size_t at) {
    std::uint64_t bits = 0;
    for (int i = 7; i >= 0; --i) bits = (bits << 8) | static_cast<unsigned char>(b[at + static_cast<std::size_t>(i)]);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::string NumberText(double value) {
    if (!std::isfinite(value)) return {};
    if (value == std::floor(value) && std::fabs(value) < 1e15) {
        return std::to_string(static_cast<long long>(value));
    }
    std::ostringstream out;
    out.precision(15);
    out << value;
    return out.str();
}

// An RK value: a double's high 30 bits or a 30-bit integer, perhaps divided by 100.
double RkValue(std::uint32_t rk) {
    double value = 0;
    if (rk & 2u) {
        value = static_cast<double>(static_cast<std::int32_t>(rk) >> 2);
    } else {
        const std::uint64_t bits = static_cast<std::uint64_t>(rk & 0xfffffffcu) << 32;
        std::memcpy(&value, &bits, sizeof value);
    }
    return (rk & 1u) ? value / 100 : value;
}

// A BIFF8 string of `count` characters from `at`: a flags byte, then 8-bit or 16-bit
// characters; those above 255 become '?'.
bool Biff8Text(std::string_view data, std::size_t at, std::size_t count, std::string& text) {
    if (at >= data.size()) return false;
    const bool wide = (static_cast<unsigned char>(data[at]) & 1u) != 0;
    ++at;
    const std::size_t width = wide ? 2 : 1;
    if (data.size() - at < count * width) return false;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned code = wide ? Le16(data, at + 2 * i) : static_cast<unsigned char>(data[at + i]);
        text.push_back(code > 255 ? '?' : static_cast<char>(code));
    }
    return true;
}

base::RunError Broken(const std::string& why) {
    return {base::err::kTypeMismatch, "The file is not a worksheet that can be read: " + why};
}

}  // namespace

std::variant<services::ReportTable, base::RunError> ParseXls(std::string_view bytes) {
    if (bytes.size() >= 4 && static_cast<unsigned char>(bytes[0]) == 0xd0 &&
        static_cast<unsigned char>(bytes[1]) == 0xcf && static_cast<unsigned char>(bytes[2]) == 0x11 &&
        static_cast<unsigned char>(bytes[3]) == 0xe0) {
        return Broken("a workbook in a compound file");
    }
    std::map<std::pair<std::size_t, std::size_t>, std::string> cells;
    std::size_t at = 0;
    bool begun = false;
    bool ended = false;
    int version = 0;  // 8 for BIFF8, else the older forms
    while (at < bytes.size() && !ended) {
        if (bytes.size() - at < 4) return Broken("cut short");
        const std::uint16_t id = Le16(bytes, at);
        const std::size_t length = Le16(bytes, at + 2);
        if (bytes.size() - at - 4 < length) return Broken("cut short");
        const std::string_view data = bytes.substr(at + 4, length);
        at += 4 + length;
        const bool bof = id == 0x0809 || id == 0x0409 || id == 0x0209 || id == 0x0009;
        if (!begun) {
            if (!bof) return Broken("no beginning of a worksheet");
            begun = true;
            version = id == 0x0809 && length >= 2 && Le16(data, 0) == 0x0600 ? 8 : 5;
            continue;
        }
        auto put = [&](std::size_t row, std::size_t column, std::string text) {
            if (row < kMaxRows && column < kMaxColumns) cells[{row, column}] = std::move(text);
        };
        switch (id) {
            case 0x000a: ended = true; break;
            case 0x0204: {  // LABEL
                if (length < 8) return Broken("a short text cell");
                const std::size_t count = Le16(data, 6);
                std::string text;
                if (version == 8) {
                    if (!Biff8Text(data, 8, count, text)) return Broken("a short text cell");
                } else {
                    if (length < 8 + count) return Broken("a short text cell");
                    text.assign(data.substr(8, count));
                }
                put(Le16(data, 0), Le16(data, 2), std::move(text));
                break;
            }
            case 0x0004: {  // BIFF2 LABEL: row, column, three attribute bytes, a length byte
                if (length < 8) return Broken("a short text cell");
                const std::size_t count = static_cast<unsigned char>(data[7]);
                if (length < 8 + count) return Broken("a short text cell");
                put(Le16(data, 0), Le16(data, 2), std::string(data.substr(8, count)));
                break;
            }
            case 0x0203:  // NUMBER
                if (length < 14) return Broken("a short number cell");
                put(Le16(data, 0), Le16(data, 2), NumberText(LeDouble(data, 6)));
                break;
            case 0x0003:  // BIFF2 NUMBER
                if (length < 15) return Broken("a short number cell");
                put(Le16(data, 0), Le16(data, 2), NumberText(LeDouble(data, 7)));
                break;
            case 0x0002:  // BIFF2 INTEGER
                if (length < 9) return Broken("a short number cell");
                put(Le16(data, 0), Le16(data, 2), std::to_string(Le16(data, 7)));
                break;
            case 0x027e:  // RK
                if (length < 10) return Broken("a short number cell");
                put(Le16(data, 0), Le16(data, 2), NumberText(RkValue(Le32(data, 6))));
                break;
            default:
                if (bof) return Broken("a second worksheet or chart inside the sheet");
                break;
        }
    }
    if (!begun) return Broken("empty");
    if (!ended) return Broken("cut short");
    services::ReportTable table;
    std::size_t rowCount = 0;
    for (const auto& [key, text] : cells) rowCount = std::max(rowCount, key.first + 1);
    std::vector<std::vector<std::string>> rows(rowCount);
    for (auto& [key, text] : cells) {
        auto& row = rows[key.first];
        if (row.size() <= key.second) row.resize(key.second + 1);
        row[key.second] = std::move(text);
    }
    if (!rows.empty()) {
        table.headings = std::move(rows.front());
        table.rows.assign(std::make_move_iterator(rows.begin() + 1), std::make_move_iterator(rows.end()));
    }
    return table;
}

}  // namespace ferrolund::archives
