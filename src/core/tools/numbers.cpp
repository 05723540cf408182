#include "tools/numbers.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <random>
#include <system_error>
#include <vector>

#include "tools/vb_format.h"

namespace ferrolund::tools {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

std::string Digits(std::uint64_t value, unsigned base) {
    if (value == 0) return "0";
    std::string out;
    while (value > 0) {
        out.insert(out.begin(), kHexDigits[value % base]);
        value /= base;
    }
    return out;
}

std::uint64_t TwosComplement(std::int64_t value) {
    if (value >= 0) return static_cast<std::uint64_t>(value);
    if (value >= INT32_MIN) return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
    return static_cast<std::uint64_t>(value);
}

std::string PadLeft(std::string text, std::optional<int> width) {
    if (width && *width > static_cast<int>(text.size())) {
        text.insert(0, static_cast<std::size_t>(*width) - text.size(), '0');
    }
    return text;
}

}  // namespace

std::string Bin2Hex(std::string_view binaryText) {
    for (char c : binaryText) {
        if (c != '0' && c != '1') return kNotBinaryText;
    }
    std::string bits(binaryText);
    if (bits.size() % 4 != 0) bits.insert(0, 4 - bits.size() % 4, '0');
    std::string out;
    for (std::size_t i = 0; i < bits.size(); i += 4) {
        int nibble = 0;
        for (std::size_t k = 0; k < 4; ++k) nibble = nibble * 2 + (bits[i + k] - '0');
        out += kHexDigits[static_cast<std::size_t>(nibble)];
    }
    return out;
}

std::string Dec2Hex(std::int64_t value, std::optional<int> width) {
    return PadLeft(Digits(TwosComplement(value), 16), width);
}

std::string Dec2Bin(std::int64_t value, std::optional<int> bits) {
    std::string digits = Digits(TwosComplement(value), 2);
    if (bits && static_cast<int>(digits.size()) > *bits) return kTooManyBitsText;
    return PadLeft(std::move(digits), bits);
}

double Hex2Dec(std::string_view hexText) {
    double result = 0;
    double power = 1;
    for (auto i = hexText.size(); i-- > 0;) {
        const char digit = static_cast<char>(std::toupper(static_cast<unsigned char>(hexText[i])));
        const auto place = kHexDigits.find(digit);
        const double value = place == std::string_view::npos ? -1.0 : static_cast<double>(place);
        result += value * power;
        power *= 16;
    }
    return result;
}

std::optional<std::string> HexToDecimalText(std::string_view hexText) {
    if (hexText.empty()) return std::nullopt;
    // Little-endian groups of nine decimal digits.
    std::vector<std::uint32_t> groups{0};
    for (char c : hexText) {
        const auto place = kHexDigits.find(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
        if (place == std::string_view::npos) return std::nullopt;
        std::uint64_t carry = place;
        for (auto& g : groups) {
            const std::uint64_t v = static_cast<std::uint64_t>(g) * 16 + carry;
            g = static_cast<std::uint32_t>(v % 1000000000);
            carry = v / 1000000000;
        }
        if (carry > 0) groups.push_back(static_cast<std::uint32_t>(carry));
    }
    std::string out = std::to_string(groups.back());
    for (auto i = groups.size() - 1; i-- > 0;) {
        const std::string part = std::to_string(groups[i]);
        out += std::string(9 - part.size(), '0') + part;
    }
    return out;
}

double VbVal(std::string_view text) {
    std::string number;
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) number += text[i++];
    bool point = false;
    bool digits = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (std::isdigit(static_cast<unsigned char>(c))) {
            digits = true;
            number += c;
        } else if (c == '.' && !point) {
            point = true;
            number += c;
        } else {
            break;
        }
    }
    if (!digits) return 0;
    if (i + 1 < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t k = i + 1;
        std::string exponent = "e";
        if (text[k] == '-' || text[k] == '+') exponent += text[k++];
        const std::size_t firstDigit = k;
        while (k < text.size() && std::isdigit(static_cast<unsigned char>(text[k]))) exponent += text[k++];
        if (k > firstDigit) number += exponent;
    }
    // Read without regard to the process's locale: a desktop session in a language that
    // writes a decimal comma must not turn "0.5" into 0.
    if (number.front() == '+') number.erase(0, 1);
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    (void)end;
    if (error != std::errc()) return 0;
    return std::isfinite(value) ? value : 0;
}

double RandomUnit() {
    static std::mutex mutex;
    static std::mt19937_64 engine{std::random_device{}()};
    std::lock_guard lock(mutex);
    const double r = std::generate_canonical<double, 53>(engine);
    return r < 1.0 ? r : std::nextafter(1.0, 0.0);
}

std::string NewDeltaId(double random01) {
    return FormatNumber(std::floor(random01 * 900000000.0 + 100000000.0), "000000000");
}

std::string NewDeltaId() { return NewDeltaId(RandomUnit()); }

void ConvertTimeBoxes(TimeBoxes& boxes) {
    if (boxes.clockTime.empty()) {
        const double t = VbVal(boxes.simulatorTime);
        const double hours = std::floor(t / 3600);
        const double minutes = (t - hours * 3600) / 60;
        boxes.clockTime = FormatNumber(hours, "00") + FormatNumber(minutes, "00");
    } else if (boxes.simulatorTime.empty()) {
        const std::string_view clock = boxes.clockTime;
        const double t = VbVal(clock.substr(0, 2)) * 3600 + VbVal(clock.substr(std::min<std::size_t>(2, clock.size()))) * 60;
        boxes.simulatorTime = FormatNumber(t, "00000");
    }
}

}  // namespace ferrolund::tools
