#include "app/value_reader.h"

#include <cmath>
#include <cstdlib>

#include "tools/codepage.h"

namespace ferrolund::app {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }
}  // namespace

void ValueReader::skipDelimiter() {
    while (pos_ < text_.size() && IsBlank(text_[pos_])) ++pos_;
    if (pos_ >= text_.size()) return;
    if (text_[pos_] == ',') {
        ++pos_;
    } else if (text_[pos_] == '\r') {
        ++pos_;
        if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
    } else if (text_[pos_] == '\n') {
        ++pos_;
    }
}

std::optional<RawValue> ValueReader::next() {
    while (pos_ < text_.size() && IsBlank(text_[pos_])) ++pos_;
    if (pos_ >= text_.size()) return std::nullopt;

    RawValue value;
    if (text_[pos_] == '"') {
        const std::size_t close = text_.find('"', pos_ + 1);
        const std::size_t end = close == std::string_view::npos ? text_.size() : close;
        value.text = std::string(text_.substr(pos_ + 1, end - pos_ - 1));
        value.quoted = true;
        pos_ = end == text_.size() ? end : end + 1;
        // Whatever stands between the closing quote and the delimiter is passed over.
        while (pos_ < text_.size() && text_[pos_] != ',' && !IsLineEnd(text_[pos_])) ++pos_;
    } else {
        std::size_t end = pos_;
        while (end < text_.size() && text_[end] != ',' && !IsLineEnd(text_[end])) ++end;
        std::size_t last = end;
        while (last > pos_ && IsBlank(text_[last - 1])) --last;
        value.text = std::string(text_.substr(pos_, last - pos_));
        pos_ = end;
    }
    skipDelimiter();
    return value;
}

base::Status ToInt16(const RawValue& value, std::int16_t& out) {
    const std::string& t = value.text;
    if (value.quoted) return base::err::TypeMismatch();
    if (t.empty()) {
        out = 0;
        return std::nullopt;
    }
    if (tools::EqualsIgnoreCase(t, "#TRUE#")) {
        out = -1;
        return std::nullopt;
    }
    if (tools::EqualsIgnoreCase(t, "#FALSE#")) {
        out = 0;
        return std::nullopt;
    }
    char* end = nullptr;
    const double number = std::strtod(t.c_str(), &end);
    if (end == t.c_str() || *end != '\0' || !std::isfinite(number)) return base::err::TypeMismatch();
    const double rounded = std::nearbyint(number);  // half to even, as the classic runtime does
    if (rounded < -32768.0 || rounded > 32767.0) return base::err::Overflow();
    out = static_cast<std::int16_t>(rounded);
    return std::nullopt;
}

base::Status ToBool(const RawValue& value, bool& out) {
    const std::string& t = value.text;
    if (tools::EqualsIgnoreCase(t, "#TRUE#") || (value.quoted && tools::EqualsIgnoreCase(t, "True"))) {
        out = true;
        return std::nullopt;
    }
    if (tools::EqualsIgnoreCase(t, "#FALSE#") || (value.quoted && tools::EqualsIgnoreCase(t, "False")) ||
        (!value.quoted && t.empty())) {
        out = false;
        return std::nullopt;
    }
    if (!value.quoted) {
        char* end = nullptr;
        const double number = std::strtod(t.c_str(), &end);
        if (end != t.c_str() && *end == '\0') {
            out = number != 0.0;
            return std::nullopt;
        }
    }
    return base::err::TypeMismatch();
}

}  // namespace ferrolund::app
