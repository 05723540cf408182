#include "tools/vb_format.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace ferrolund::tools {

namespace {

struct Pattern {
    std::size_t minIntegerDigits = 0;
    bool point = false;
    std::size_t fractionDigits = 0;
    std::size_t minFractionDigits = 0;
};

std::optional<Pattern> ParsePattern(std::string_view text) {
    Pattern p;
    const auto point = text.find('.');
    const std::string_view integer = text.substr(0, point);
    const std::string_view fraction = point == std::string_view::npos ? std::string_view{} : text.substr(point + 1);
    if (integer.empty() && fraction.empty()) return std::nullopt;
    auto placeholders = [](std::string_view part) {
        return std::all_of(part.begin(), part.end(), [](char c) { return c == '0' || c == '#'; });
    };
    if (!placeholders(integer) || !placeholders(fraction)) return std::nullopt;
    p.minIntegerDigits = static_cast<std::size_t>(std::count(integer.begin(), integer.end(), '0'));
    p.point = point != std::string_view::npos;
    p.fractionDigits = fraction.size();
    const auto lastZero = fraction.find_last_of('0');
    p.minFractionDigits = lastZero == std::string_view::npos ? 0 : lastZero + 1;
    return p;
}

// Adds one unit in the last place of a string of decimal digits; may grow it by one.
void Increment(std::string& digits) {
    for (auto i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
}

}  // namespace

std::optional<std::string> VbFormat(double value, std::string_view patternText) {
    const auto pattern = ParsePattern(patternText);
    if (!pattern || !std::isfinite(value)) return std::nullopt;

    // Fifteen significant digits, as the platform's formatting took them.
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
    std::string digits;
    digits += buffer[0];
    digits.append(buffer + 2, 14);
    const int exponent = std::atoi(buffer + 17);
    const int pointAt = exponent + 1;  // digits ahead of the decimal point

    std::string integer;
    std::string fraction;
    if (pointAt <= 0) {
        fraction = std::string(static_cast<std::size_t>(-pointAt), '0') + digits;
    } else if (pointAt >= static_cast<int>(digits.size())) {
        integer = digits + std::string(static_cast<std::size_t>(pointAt) - digits.size(), '0');
    } else {
        integer = digits.substr(0, static_cast<std::size_t>(pointAt));
        fraction = digits.substr(static_cast<std::size_t>(pointAt));
    }

    const std::size_t keep = pattern->fractionDigits;
    if (fraction.size() > keep) {
        const bool up = fraction[keep] >= '5';
        fraction.resize(keep);
        if (up) {
            std::string all = integer + fraction;
            const std::size_t before = all.size();
            Increment(all);
            const std::size_t integerLength = integer.size() + (all.size() - before);
            integer = all.substr(0, integerLength);
            fraction = all.substr(integerLength);
        }
    }
    fraction.resize(keep, '0');
    while (fraction.size() > pattern->minFractionDigits && fraction.back() == '0') fraction.pop_back();

    integer.erase(0, std::min(integer.find_first_not_of('0'), integer.size()));
    if (integer.size() < pattern->minIntegerDigits) {
        integer.insert(0, pattern->minIntegerDigits - integer.size(), '0');
    }

    const bool zero = std::all_of(integer.begin(), integer.end(), [](char c) { return c == '0'; }) &&
                      std::all_of(fraction.begin(), fraction.end(), [](char c) { return c == '0'; });
    std::string out = (value < 0 && !zero) ? "-" : "";
    out += integer;
    if (pattern->point) out += '.' + fraction;
    return out;
}

std::string FormatNumber(double value, std::string_view pattern) {
    if (auto text = VbFormat(value, pattern)) return *text;
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    return buffer;
}

}  // namespace ferrolund::tools
