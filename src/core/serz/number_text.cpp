#include "serz/number_text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <cstdlib>
#include <string>

namespace ferrolund::serz {

namespace {

// Writes `pair` (below 100) as two digits.
void WritePair(char* out, unsigned pair) {
    static constexpr char kPairs[] =
        "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
        "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
        "8081828384858687888990919293949596979899";
    std::memcpy(out, kPairs + 2 * pair, 2);
}

// Decimal digits of a positive finite value: value = d[0].d[1]d[2]... x 10^exponent.
struct Digits {
    char d[24];
    int count = 0;
    int exponent = 0;
};

Digits ParseScientific(const char* text, const char* end) {
    Digits out;
    const char* p = text;
    for (; p < end && *p != 'e'; ++p) {
        if (*p != '.') out.d[out.count++] = *p;
    }
    int exponent = 0;
    if (p < end) std::from_chars(p + (p[1] == '+' ? 2 : 1), end, exponent);
    out.exponent = exponent;
    return out;
}

// The shortest digits that read back as the value.
Digits ShortestDigits(double value) {
    char buf[40];
    auto r = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific);
    return ParseScientific(buf, r.ptr);
}

// Seventeen significant digits: what the platform's C library works from before rounding.
Digits SeventeenDigits(double value) {
    char buf[40];
    auto r = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific, 16);
    return ParseScientific(buf, r.ptr);
}

// Cuts `x` to `keep` significant digits, rounding a dropped 5 upwards. `keep` may be zero
// or negative when the value lies wholly below the last printed place.
void RoundHalfUp(Digits& x, int keep) {
    if (x.count <= keep) return;
    if (keep < 0) {
        x.count = 0;
        return;
    }
    bool up = x.d[keep] >= '5';
    x.count = keep;
    if (!up) return;
    int i = keep - 1;
    while (i >= 0 && x.d[i] == '9') --i;
    if (i < 0) {
        // 999.. carried into a new leading digit (or nothing was kept at all).
        x.d[0] = '1';
        x.count = 1;
        ++x.exponent;
        return;
    }
    ++x.d[i];
    x.count = i + 1;
}

// The value rounded to `keep` significant digits, where `keep` comes from `keepFor(exponent)`.
template <typename KeepFor>
Digits RoundedDigits(double value, KeepFor keepFor) {
    Digits x = ShortestDigits(value);
    int keep = keepFor(x.exponent);
    // The shortest digits decide the rounding unless they end in a lone 5 just behind the
    // cut (then only the full expansion tells a true tie from a near one) or the cut lies
    // so far right that the platform's seventeen digits show through.
    bool ambiguous = x.count == keep + 1 && x.d[keep] == '5';
    if (ambiguous || keep >= 16) x = SeventeenDigits(value);
    RoundHalfUp(x, keep);
    while (x.count > 1 && x.d[x.count - 1] == '0') --x.count;
    return x;
}

// The platform's C library prints infinities and not-a-number values as "1.#INF",
// "1.#QNAN", "1.#SNAN" and "-1.#IND", padded with zeros to the precision.
char* WriteNonFinite(char* out, double value, int precision) {
    std::uint64_t bits = std::bit_cast<std::uint64_t>(value);
    bool negative = (bits >> 63) != 0;
    const char* word = "INF";
    if (std::isnan(value)) {
        bool quiet = (bits >> 51) & 1;
        word = !quiet ? "SNAN" : (negative && (bits & ((std::uint64_t{1} << 51) - 1)) == 0) ? "IND" : "QNAN";
    }
    if (negative) *out++ = '-';
    std::memcpy(out, "1.#", 3);
    out += 3;
    std::size_t length = std::strlen(word);
    std::memcpy(out, word, length);
    out += length;
    for (int filled = static_cast<int>(length) + 1; filled < precision; ++filled) *out++ = '0';
    return out;
}

char* WriteExponent(char* out, int exponent, int minDigits) {
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    unsigned magnitude = static_cast<unsigned>(exponent < 0 ? -exponent : exponent);
    int digits = magnitude >= 100 ? 3 : magnitude >= 10 ? 2 : 1;
    for (int i = digits; i < minDigits; ++i) *out++ = '0';
    return WriteUnsigned(out, magnitude);
}

// Writes the digits `x` with the point after digit `exponent` and at least `fraction`
// places behind the point (padding with zeros); no point when nothing follows it.
char* WritePositional(char* out, const Digits& x, int fraction) {
    int exponent = x.exponent;
    if (exponent < 0) {
        *out++ = '0';
    } else {
        for (int i = 0; i <= exponent; ++i) *out++ = i < x.count ? x.d[i] : '0';
    }
    int places = std::max(fraction, x.count - exponent - 1);
    if (places <= 0) return out;
    *out++ = '.';
    for (int place = 1; place <= places; ++place) {
        int index = exponent + place;
        *out++ = (index >= 0 && index < x.count) ? x.d[index] : '0';
    }
    return out;
}

// The number itself: blanks around it and a leading plus sign go.
std::string_view NumberPart(std::string_view text) {
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    return text;
}

template <typename T>
bool ParseInteger(std::string_view text, T& value) {
    // The bare number, the common case, needs no trimming: NumberPart would leave it as it is.
    auto bare = std::from_chars(text.data(), text.data() + text.size(), value);
    if (bare.ec == std::errc{} && bare.ptr == text.data() + text.size()) return true;
    text = NumberPart(text);
    auto r = std::from_chars(text.data(), text.data() + text.size(), value);
    return !text.empty() && r.ec == std::errc{} && r.ptr == text.data() + text.size();
}

// Up to eight leading decimal digits of the eight characters at `p`: their count, and
// their value in `value`. The first character is the low byte of a little-endian load.
inline int LeadingDigits8(const char* p, std::uint64_t& value) {
    constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
    std::uint64_t chunk;
    std::memcpy(&chunk, p, 8);
    // A byte is a digit when its high half is 3 and adding 6 keeps it so. A carry out of a
    // byte can only spoil the bytes after the first one that is not a digit.
    std::uint64_t notDigit = ((chunk & (0xF0 * kOnes)) ^ (0x30 * kOnes)) |
                             (((chunk + 0x06 * kOnes) & (0xF0 * kOnes)) ^ (0x30 * kOnes));
    int count = notDigit == 0 ? 8 : std::countr_zero(notDigit) / 8;
    if (count == 0) {
        value = 0;
        return 0;
    }
    // The digits moved to the top, zeros (leading zero digits) below them, then folded
    // pairwise: two digits per byte pair, four per half word, eight in all.
    std::uint64_t d = (chunk - 0x30 * kOnes) << (8 * (8 - count));
    d = (d * 10 + (d >> 8)) & 0x00FF00FF00FF00FFULL;
    d = (d * 100 + (d >> 16)) & 0x0000FFFF0000FFFFULL;
    d = (d * 10000 + (d >> 32)) & 0xFFFFFFFFULL;
    value = d;
    return count;
}

// The run of digits at `p`, before `end`, appended to `digits` (which wraps past twenty
// digits; the caller refuses so many) and counted in `count`. Gives the end of the run.
inline const char* ReadDigits(const char* p, const char* end, std::uint64_t& digits, int& count) {
    static constexpr std::uint64_t kScale[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    if constexpr (std::endian::native == std::endian::little) {
        while (end - p >= 8) {
            std::uint64_t chunk = 0;
            int n = LeadingDigits8(p, chunk);
            digits = digits * kScale[n] + chunk;
            count += n;
            p += n;
            if (n < 8) return p;
        }
    }
    for (; p < end && *p >= '0' && *p <= '9'; ++p, ++count) digits = digits * 10 + static_cast<unsigned>(*p - '0');
    return p;
}

}  // namespace

const char* ReadPlainDecimal(const char* p, const char* end, double& value) {
    static constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    bool negative = p < end && *p == '-';
    p += negative;
    std::uint64_t digits = 0;
    int count = 0;
    const char* stop = ReadDigits(p, end, digits, count);
    if (stop == p) return nullptr;
    int places = 0;
    if (stop < end && *stop == '.') {
        const char* fraction = stop + 1;
        stop = ReadDigits(fraction, end, digits, count);
        places = static_cast<int>(stop - fraction);
        if (places == 0) return nullptr;
    }
    if (count > 15) return nullptr;
    double magnitude = static_cast<double>(digits) / kPowers[places];
    value = negative ? -magnitude : magnitude;
    return stop;
}

namespace {

bool ParseNonFinite(std::string_view text, double& value) {
    bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    if (text.substr(0, 3) != "1.#") return false;
    text.remove_prefix(3);
    while (!text.empty() && text.back() == '0') text.remove_suffix(1);
    std::uint64_t bits;
    if (text == "INF") {
        bits = 0x7FF0000000000000ULL;
    } else if (text == "QNAN" || text == "IND") {
        bits = 0x7FF8000000000000ULL;
    } else if (text == "SNAN") {
        bits = 0x7FF4000000000000ULL;
    } else {
        return false;
    }
    if (negative) bits |= 0x8000000000000000ULL;
    value = std::bit_cast<double>(bits);
    return true;
}

}  // namespace

namespace {

constexpr int kGeneralPrecision = 6;

// The six significant digits of `value` (positive) decided exactly in integers, for the
// common case: from 1e-4 to below 1e6 with a mantissa of at most 25 bits (every float has
// one). Then value x 10^9 splits into a whole part below 10^15 and a binary fraction below
// 2^39, and the dropped digits say at once whether they reach half a unit. False when
// the value is outside that case.
bool ShortMantissaDigits(double value, Digits& x) {
    if (!(value >= 1e-4 && value < 1e6)) return false;
    std::uint64_t bits = std::bit_cast<std::uint64_t>(value);
    std::uint64_t mantissa = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    int shift = static_cast<int>(bits >> 52) - 1075;  // value = mantissa x 2^shift
    int zeros = std::countr_zero(mantissa);
    mantissa >>= zeros;
    shift += zeros;
    if (mantissa >= (std::uint64_t{1} << 25)) return false;
    std::uint64_t scaled = mantissa * 1000000000ULL;
    std::uint64_t whole = scaled;  // floor(value x 10^9)
    bool fractionHalf = false;     // the fraction of value x 10^9 is at least one half
    if (shift >= 0) {
        whole = scaled << shift;
    } else {
        int right = -shift;
        whole = scaled >> right;
        fractionHalf = ((scaled >> (right - 1)) & 1) != 0;
    }
    int digits = 1;
    for (std::uint64_t power = 10; digits < 20 && whole >= power; power *= 10) ++digits;
    int dropped = digits - kGeneralPrecision;  // 0 when the value is below 1e-3
    std::uint64_t kept = whole;
    bool up = fractionHalf;
    if (dropped > 0) {
        std::uint64_t unit = 1;
        for (int i = 0; i < dropped; ++i) unit *= 10;
        kept = whole / unit;
        // The binary fraction cannot lift the dropped digits over half: half is whole.
        up = whole % unit >= unit / 2;
    }
    kept += up;
    x.exponent = digits - 10;
    if (kept == 1000000) {
        kept = 100000;
        ++x.exponent;
    }
    for (int i = kGeneralPrecision - 1; i >= 0; --i) {
        x.d[i] = static_cast<char>('0' + kept % 10);
        kept /= 10;
    }
    x.count = kGeneralPrecision;
    while (x.count > 1 && x.d[x.count - 1] == '0') --x.count;
    return true;
}

char* WriteGeneralDigits(char* out, double value, int exponentDigits, bool shortPath) {
    if (!std::isfinite(value)) return WriteNonFinite(out, value, 0);  // %g drops the padding zeros
    if (std::signbit(value)) *out++ = '-';
    value = std::fabs(value);
    if (value == 0) {
        *out++ = '0';
        return out;
    }
    Digits x;
    if (!shortPath || !ShortMantissaDigits(value, x)) x = RoundedDigits(value, [](int) { return kGeneralPrecision; });
    if (x.exponent < -4 || x.exponent >= kGeneralPrecision) {
        *out++ = x.d[0];
        if (x.count > 1) {
            *out++ = '.';
            std::memcpy(out, x.d + 1, static_cast<std::size_t>(x.count - 1));
            out += x.count - 1;
        }
        return WriteExponent(out, x.exponent, exponentDigits);
    }
    return WritePositional(out, x, 0);
}

}  // namespace

char* WriteGeneral(char* out, double value, int exponentDigits) {
    return WriteGeneralDigits(out, value, exponentDigits, true);
}

char* WriteGeneralByShortestDigits(char* out, double value, int exponentDigits) {
    return WriteGeneralDigits(out, value, exponentDigits, false);
}

char* WriteFixed7(char* out, double value) {
    if (!std::isfinite(value)) return WriteNonFinite(out, value, 7);
    if (std::signbit(value)) *out++ = '-';
    value = std::fabs(value);
    if (value == 0) {
        std::memcpy(out, "0.0000000", 9);
        return out + 9;
    }
    Digits x = RoundedDigits(value, [](int exponent) { return exponent + 1 + 7; });
    if (x.count == 0) x.exponent = 0;  // rounded away entirely
    return WritePositional(out, x, 7);
}

char* WriteFixed7(char* out, float value) {
    std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    int biased = static_cast<int>((bits >> 23) & 0xFF);
    std::uint64_t mantissa = bits & 0x7FFFFF;
    if (biased != 0) mantissa |= 0x800000;
    int shift = (biased == 0 ? 1 : biased) - 127 - 23;  // value = mantissa x 2^shift
    // Exact when value x 10^7 fits 64 bits: a 24-bit mantissa times 10^7 stays below 2^48.
    if (biased == 0xFF || shift > 0) return WriteFixed7(out, static_cast<double>(value));
    std::uint64_t scaled = mantissa * 10000000ULL;
    int right = -shift;
    std::uint64_t units = right == 0    ? scaled
                          : right >= 49 ? 0
                                        : (scaled + (std::uint64_t{1} << (right - 1))) >> right;
    if (bits >> 31) *out++ = '-';
    std::uint64_t whole = units / 10000000ULL;
    if (whole < 10) {
        *out++ = static_cast<char>('0' + whole);
    } else {
        out = WriteUnsigned(out, whole);
    }
    *out++ = '.';
    auto fraction = static_cast<std::uint32_t>(units % 10000000ULL);
    out[0] = static_cast<char>('0' + fraction / 1000000);
    fraction %= 1000000;
    WritePair(out + 1, fraction / 10000);
    WritePair(out + 3, fraction / 100 % 100);
    WritePair(out + 5, fraction % 100);
    return out + 7;
}

char* WriteAltEncoding(char* out, double value) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::uint64_t bits = std::bit_cast<std::uint64_t>(value);
    for (int i = 0; i < 8; ++i) {
        auto byte = static_cast<unsigned>((bits >> (8 * i)) & 0xFF);
        *out++ = kHex[byte >> 4];
        *out++ = kHex[byte & 0xF];
    }
    return out;
}

char* WriteUnsigned(char* out, std::uint64_t value) {
    // Two digits a step, from the back of a scratch buffer.
    char digits[20];
    char* p = digits + sizeof digits;
    while (value >= 100) {
        p -= 2;
        WritePair(p, static_cast<unsigned>(value % 100));
        value /= 100;
    }
    if (value >= 10) {
        p -= 2;
        WritePair(p, static_cast<unsigned>(value));
    } else {
        *--p = static_cast<char>('0' + value);
    }
    auto length = static_cast<std::size_t>(digits + sizeof digits - p);
    std::memcpy(out, p, length);
    return out + length;
}

char* WriteSigned(char* out, std::int64_t value) {
    if (value < 0) {
        *out++ = '-';
        return WriteUnsigned(out, std::uint64_t{0} - static_cast<std::uint64_t>(value));
    }
    return WriteUnsigned(out, static_cast<std::uint64_t>(value));
}

bool ParseDouble(std::string_view text, double& value) {
    text = NumberPart(text);
    if (text.empty()) return false;
    const char* end = text.data() + text.size();
    if (ReadPlainDecimal(text.data(), end, value) == end) return true;
    auto r = std::from_chars(text.data(), end, value);
    if (r.ptr != end) return ParseNonFinite(text, value);
    if (r.ec == std::errc::result_out_of_range) {
        // Beyond a double's range: the C library's reading gives infinity or zero.
        value = std::strtod(std::string(text).c_str(), nullptr);
    }
    return r.ec == std::errc{} || r.ec == std::errc::result_out_of_range;
}

bool ParseUnsigned(std::string_view text, std::uint64_t& value) { return ParseInteger(text, value); }

bool ParseSigned(std::string_view text, std::int64_t& value) { return ParseInteger(text, value); }

}  // namespace ferrolund::serz
