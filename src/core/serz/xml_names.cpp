#include "serz/xml_names.h"

#include <cstring>

namespace ferrolund::serz {

std::uint32_t XmlNames::Find(std::string_view xml) {
    std::uint64_t hash = HashText(xml);
    int found = index_.Find(hash, [&](int i) { return entries_[static_cast<std::size_t>(i)].xml == xml; });
    if (found != TextIndex::kNone) return static_cast<std::uint32_t>(found);
    Entry entry{xml, {xml}};
    if (std::memchr(xml.data(), '-', xml.size()) != nullptr) {
        std::string& binary = converted_.emplace_back();
        binary.reserve(xml.size() + 8);
        for (char c : xml) {
            if (c == '-') {
                binary += "::";
            } else {
                binary += c;
            }
        }
        entry.binary.text = binary;
    }
    entries_.push_back(entry);
    index_.Add(hash);
    return static_cast<std::uint32_t>(entries_.size() - 1);
}

}  // namespace ferrolund::serz
