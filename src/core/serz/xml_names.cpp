#include "serz/xml_names.h"

#include <cstring>

#include "serz/text_scan.h"

namespace ferrolund::serz {

std::uint32_t XmlNames::Find(std::string_view xml, std::uint32_t place) {
    std::uint32_t guess = Following(place);
    if (guess != kNoName && entries_[guess].xml.size() == xml.size() &&
        SameBytes(entries_[guess].xml.data(), xml.data(), xml.size(), limit_)) {
        return guess;
    }
    std::uint32_t found = Look(xml);
    if (place != kNoName) next_[place] = found;
    return found;
}

std::uint32_t XmlNames::Look(std::string_view xml) {
    std::uint64_t hash = HashText(xml);
    int found = index_.Find(hash, [&](int i) {
        std::string_view known = entries_[static_cast<std::size_t>(i)].xml;
        return known.size() == xml.size() && SameBytes(known.data(), xml.data(), xml.size(), limit_);
    });
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
    next_.resize(2 * entries_.size(), kNoName);
    index_.Add(hash);
    return static_cast<std::uint32_t>(entries_.size() - 1);
}

}  // namespace ferrolund::serz
