#pragma once
// Reads a text the way the classic BASIC "Input #" statement does: value after value, each
// ended by a comma or a line end, a value in double quotes taken whole (commas included).
// The preference file and the language tables are read with it.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/run_error.h"

namespace ferrolund::app {

struct RawValue {
    std::string text;
    bool quoted = false;
};

class ValueReader {
public:
    explicit ValueReader(std::string_view text) : text_(text) {}

    // The next value; nullopt once the text is used up ("Input past end of file").
    std::optional<RawValue> next();
    bool atEnd() const { return pos_ >= text_.size(); }

private:
    void skipDelimiter();
    std::string_view text_;
    std::size_t pos_ = 0;
};

// Conversions of a raw value to the type of the field it is read into.
base::Status ToInt16(const RawValue& value, std::int16_t& out);
base::Status ToBool(const RawValue& value, bool& out);
// Any value can be read as a string.
inline void ToString(const RawValue& value, std::string& out) { out = value.text; }

}  // namespace ferrolund::app
