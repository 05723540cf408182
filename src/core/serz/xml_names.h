#pragma once
// The element names met in XML text, each turned once into its binary form ("-" becomes
// "::") and kept with its number in the string table, so that a name met again costs one
// hash look-up.

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
    // The number of the name `xml`, added when it is new. The text is kept as a view: it
    // must outlive the table (it lies in the XML being read).
    std::uint32_t Find(std::string_view xml);

    std::string_view Xml(std::uint32_t name) const { return entries_[name].xml; }
    NameRef& Binary(std::uint32_t name) { return entries_[name].binary; }

private:
    struct Entry {
        std::string_view xml;
        NameRef binary;
    };

    std::vector<Entry> entries_;
    TextIndex index_;
    std::deque<std::string> converted_;  // binary forms that differ from the XML
};

}  // namespace ferrolund::serz
