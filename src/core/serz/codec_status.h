#pragma once
// Failures of the codec travel as values. A message names where the input went wrong:
// the byte offset in a binary file, the line in XML text.

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

namespace ferrolund::serz {

struct CodecError {
    std::string message;
};

// Empty means success.
using CodecStatus = std::optional<CodecError>;

CodecError ErrorAtByte(std::size_t offset, std::string_view reason);
// The line (counted from 1) of `position` within `text`.
CodecError ErrorAtLine(std::string_view text, const char* position, std::string_view reason);

// Runs a conversion that writes into `out`, turning an exception (memory exhausted) into
// an error; on any failure `out` is left empty.
template <typename Conversion>
CodecStatus Guarded(std::string& out, Conversion&& conversion) {
    CodecStatus status;
    try {
        status = conversion();
    } catch (const std::exception& e) {
        status = CodecError{e.what()};
    }
    if (status) out.clear();
    return status;
}

}  // namespace ferrolund::serz
