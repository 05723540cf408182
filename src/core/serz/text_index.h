#pragma once
// An open-addressed index from texts to small numbers. The owner keeps the texts (the
// index keeps only their numbers and hashes) and says, through a callback, whether the
// text behind a number is the one sought.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace ferrolund::serz {

// A quick hash of a short text, eight bytes a step.
inline std::uint64_t HashText(std::string_view text) {
    std::uint64_t h = 0x9E3779B97F4A7C15ULL ^ text.size();
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t chunk;
        std::memcpy(&chunk, text.data() + i, 8);
        h = (h ^ chunk) * 0xFF51AFD7ED558CCDULL;
        h ^= h >> 29;
    }
    std::uint64_t tail = 0;
    if (i < text.size()) std::memcpy(&tail, text.data() + i, text.size() - i);
    h = (h ^ tail) * 0xC4CEB9FE1A85EC53ULL;
    return h ^ (h >> 32);
}

class TextIndex {
public:
    static constexpr int kNone = -1;

    // The number of the text with `hash` for which `same(number)` holds, or kNone.
    template <typename Same>
    int Find(std::uint64_t hash, Same&& same) const {
        std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            std::uint32_t entry = slots_[at];
            if (entry == 0) return kNone;
            if (hashes_[entry - 1] == hash && same(static_cast<int>(entry - 1))) return static_cast<int>(entry - 1);
        }
    }

    // Adds the next number, `size()`, under `hash`.
    void Add(std::uint64_t hash) {
        hashes_.push_back(hash);
        if (hashes_.size() * 2 > slots_.size()) {
            slots_.assign(slots_.size() * 2, 0);
            for (std::size_t i = 0; i < hashes_.size(); ++i) Place(hashes_[i], static_cast<std::uint32_t>(i + 1));
        } else {
            Place(hash, static_cast<std::uint32_t>(hashes_.size()));
        }
    }

    std::size_t size() const { return hashes_.size(); }

private:
    void Place(std::uint64_t hash, std::uint32_t entry) {
        std::size_t mask = slots_.size() - 1;
        std::size_t at = hash & mask;
        while (slots_[at] != 0) at = (at + 1) & mask;
        slots_[at] = entry;
    }

    std::vector<std::uint32_t> slots_ = std::vector<std::uint32_t>(256, 0);  // number + 1; 0 is free
    std::vector<std::uint64_t> hashes_;
};

}  // namespace ferrolund::serz
