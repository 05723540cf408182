#pragma once
// The element names met in XML text, each turned once into its binary form ("-" becomes
// "::") and kept with its number in the string table, so that a name met again costs one
// hash look-up, or less: the name that came next the last time the reader stood at the
// same place (after the start tag of one name, or after the end tag of one) is tried first.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "serz/binary_writer.h"
#include "serz/text_index.h"

namespace ferrolund::serz {

class XmlNames {
public:
    static constexpr std::uint32_t kNoName = 0xFFFFFFFF;

    // `text` is the XML the names lie in; it must outlive the table.
    explicit XmlNames(std::string_view text) : limit_(text.data() + text.size()) {}

    // A place in the text: after the start tag (which may hold a value and its end tag) or
    // after the end tag of the element `name`.
    static std::uint32_t After(std::uint32_t name, bool endTag) { return 2 * name + (endTag ? 1 : 0); }

    // The number of the name `xml` (a view into the text), added when it is new; `place`
    // is where the reader stood before it (see After), or kNoName.
    std::uint32_t Find(std::string_view xml, std::uint32_t place);

    // The name that came next at `place` last time, or kNoName.
    std::uint32_t Following(std::uint32_t place) const { return place == kNoName ? kNoName : next_[place]; }

    std::string_view Xml(std::uint32_t name) const { return entries_[name].xml; }
    NameRef& Binary(std::uint32_t name) { return entries_[name].binary; }

private:
    struct Entry {
        std::string_view xml;
        NameRef binary;
    };

    std::uint32_t Look(std::string_view xml);

    const char* limit_;
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> next_;  // per place, the name that came next there last time
    TextIndex index_;
    std::deque<std::string> converted_;  // binary forms that differ from the XML
};

}  // namespace ferrolund::serz
