#pragma once
// The element names met in XML text, each turned once into its binary form ("-" becomes
// "::") and kept with its number in the string table, so that a name met again costs one
// hash look-up, or less: the name that followed a name last time is tried first.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "serz/binary_writer.h"
#include "serz/text_index.h"

namespace ferrolund::serz {

// Whether the `n` bytes at `a` and at `b` are the same; both may be read up to `limit`.
bool SameBytes(const char* a, const char* b, std::size_t n, const char* limit);

class XmlNames {
public:
    static constexpr std::uint32_t kNoName = 0xFFFFFFFF;

    // `text` is the XML the names lie in; it must outlive the table.
    explicit XmlNames(std::string_view text) : limit_(text.data() + text.size()) {}

    // The number of the name `xml` (a view into the text), added when it is new. `after`
    // is the number of the name read before it, or kNoName.
    std::uint32_t Find(std::string_view xml, std::uint32_t after);

    std::string_view Xml(std::uint32_t name) const { return entries_[name].xml; }
    NameRef& Binary(std::uint32_t name) { return entries_[name].binary; }

private:
    struct Entry {
        std::string_view xml;
        NameRef binary;
        std::uint32_t next = kNoName;  // the name that followed this one last time
    };

    std::uint32_t Look(std::string_view xml);

    const char* limit_;
    std::vector<Entry> entries_;
    TextIndex index_;
    std::deque<std::string> converted_;  // binary forms that differ from the XML
};

}  // namespace ferrolund::serz
