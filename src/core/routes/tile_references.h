#pragma once
// The rule by which the route check finds the assets a tile names, stated on the lines of
// the tile's XML text: a line holding "<Provider" (any case) gives the provider, the next
// line the product, the line three on from that the blueprint id, each the text between
// the first '>' of its line (behind the tag, on the provider's line) and the next '<'.
// A blank provider (empty or one blank) or blueprint id is passed over; a provider or
// product line whose value does not end on it is a fault that ends the tile. The rule is
// written once, over any source of such lines: the text itself (TextLines), or the
// decoded records of the binary file (RecordLines), which give the same lines.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ferrolund::routes {

struct TileReference {
    std::string provider, product, blueprintId;
    bool operator==(const TileReference&) const = default;
};

// A Provider or Product line without its closing '<'.
struct DescriptionFault {
    std::string what;  // "Provider" or "Product"
    std::string line;  // as written, without its line end
    bool operator==(const DescriptionFault&) const = default;
};

// Position (0-based) of "<Provider" in the line, any case; npos when it holds none.
std::size_t FindProviderTag(std::string_view line);
// The text between the first '>' at or behind `from` and the next '<'. False when there
// is no such '<'.
bool CutValue(std::string_view line, std::size_t from, std::string& value);

// The lines of a text, CR LF or LF, without their line ends.
class TextLines {
public:
    explicit TextLines(std::string_view text) : text_(text) {}
    // Moves to the next line; false after the last.
    bool next();
    // Moves on to the next line that holds "<Provider"; false when none is left.
    bool nextProviderLine();
    // The value behind the tag found on this line, or behind the line's start.
    bool valueAfterTag(std::string& value) const { return CutValue(line_, hit_, value); }
    bool value(std::string& value) const { return CutValue(line_, 0, value); }
    std::string text() const { return std::string(line_); }

private:
    std::string_view text_;
    std::string_view line_;
    std::size_t at_ = 0;
    std::size_t hit_ = 0;
};

// Each reference of the lines, in order, handed to `take(provider, product, blueprintId)`;
// the fault that ended them, if one did.
template <class Lines, class Take>
std::optional<DescriptionFault> FindReferences(Lines& lines, Take&& take) {
    std::string provider, product, blueprintId;
    while (lines.nextProviderLine()) {
        if (!lines.valueAfterTag(provider)) return DescriptionFault{"Provider", lines.text()};
        if (provider.empty() || provider == " ") continue;
        if (!lines.next()) return std::nullopt;
        if (!lines.value(product)) return DescriptionFault{"Product", lines.text()};
        bool complete = true;
        for (int k = 0; k < 3 && complete; ++k) complete = lines.next();
        if (!complete) return std::nullopt;
        if (!lines.value(blueprintId) || blueprintId.empty()) continue;
        take(provider, product, blueprintId);
    }
    return std::nullopt;
}

}  // namespace ferrolund::routes
