#include "tools/text_search.h"

#include <array>
#include <cstring>
#include <vector>

#include "tools/codepage.h"

namespace ferrolund::tools {

namespace {

const std::array<unsigned char, 256>& FoldTable() {
    static const std::array<unsigned char, 256> table = [] {
        std::array<unsigned char, 256> t{};
        for (int i = 0; i < 256; ++i) t[i] = FoldCp1252(static_cast<unsigned char>(i));
        return t;
    }();
    return table;
}

bool SameFolded(const unsigned char* a, const unsigned char* foldedNeedle, std::size_t n,
                const std::array<unsigned char, 256>& fold) {
    for (std::size_t i = 0; i < n; ++i) {
        if (fold[a[i]] != foldedNeedle[i]) return false;
    }
    return true;
}

// 0-based offset of the first case-blind match at or after `from`, or npos.
std::size_t FindFolded(std::string_view text, std::string_view find, std::size_t from) {
    const auto& fold = FoldTable();
    const std::size_t n = find.size();
    if (n > text.size() || from > text.size() - n) return std::string_view::npos;
    std::string folded(find);
    for (auto& c : folded) c = static_cast<char>(fold[static_cast<unsigned char>(c)]);
    const auto* needle = reinterpret_cast<const unsigned char*>(folded.data());
    const auto* base = reinterpret_cast<const unsigned char*>(text.data());
    const unsigned char first = needle[0];
    const unsigned char firstUpper = UpperCp1252(first);
    const bool caseless = fold[firstUpper] != first || firstUpper == first;
    const std::size_t last = text.size() - n;
    std::size_t i = from;
    while (i <= last) {
        if (caseless) {
            // Tags start with '<': let memchr skip the bytes between candidates.
            const void* hit = std::memchr(base + i, first, last - i + 1);
            if (hit == nullptr) return std::string_view::npos;
            i = static_cast<std::size_t>(static_cast<const unsigned char*>(hit) - base);
        } else if (fold[base[i]] != first) {
            ++i;
            continue;
        }
        if (SameFolded(base + i + 1, needle + 1, n - 1, fold)) return i;
        ++i;
    }
    return std::string_view::npos;
}

std::size_t FindFoldedReverse(std::string_view text, std::string_view find, std::size_t lastStart) {
    const auto& fold = FoldTable();
    std::string folded(find);
    for (auto& c : folded) c = static_cast<char>(fold[static_cast<unsigned char>(c)]);
    const auto* needle = reinterpret_cast<const unsigned char*>(folded.data());
    const auto* base = reinterpret_cast<const unsigned char*>(text.data());
    const unsigned char first = needle[0];
    const unsigned char firstUpper = UpperCp1252(first);
    if (fold[firstUpper] != first || firstUpper == first) {
        // A first byte without another case (tags start with '<'): memrchr finds the candidates.
        for (std::size_t end = lastStart + 1; end > 0;) {
            const void* hit = memrchr(base, first, end);
            if (hit == nullptr) return std::string_view::npos;
            const auto i = static_cast<std::size_t>(static_cast<const unsigned char*>(hit) - base);
            if (SameFolded(base + i + 1, needle + 1, find.size() - 1, fold)) return i;
            end = i;
        }
        return std::string_view::npos;
    }
    for (std::size_t i = lastStart + 1; i-- > 0;) {
        if (fold[base[i]] == first && SameFolded(base + i + 1, needle + 1, find.size() - 1, fold)) {
            return i;
        }
    }
    return std::string_view::npos;
}

}  // namespace

long InStr(long start, std::string_view text, std::string_view find, CaseRule rule) {
    if (start < 1) start = 1;
    const auto from = static_cast<std::size_t>(start - 1);
    if (from >= text.size()) return 0;
    if (find.empty()) return start;
    const std::size_t at = rule == CaseRule::Exact ? text.find(find, from) : FindFolded(text, find, from);
    return at == std::string_view::npos ? 0 : static_cast<long>(at) + 1;
}

long InStrRev(std::string_view text, std::string_view find, long start, CaseRule rule) {
    const long length = static_cast<long>(text.size());
    if (start == -1) start = length;
    if (start < 1 || start > length) return 0;
    if (find.empty()) return start;
    const long lastStart = start - static_cast<long>(find.size());  // 0-based
    if (lastStart < 0) return 0;
    const std::size_t at = rule == CaseRule::Exact
                               ? text.rfind(find, static_cast<std::size_t>(lastStart))
                               : FindFoldedReverse(text, find, static_cast<std::size_t>(lastStart));
    return at == std::string_view::npos ? 0 : static_cast<long>(at) + 1;
}

std::string_view Mid(std::string_view text, long start, long length) {
    if (start < 1) start = 1;
    const auto from = static_cast<std::size_t>(start - 1);
    if (from >= text.size() || length == 0) return {};
    if (length < 0) return text.substr(from);
    return text.substr(from, static_cast<std::size_t>(length));
}

std::string_view TrimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}

bool WildcardMatch(std::string_view mask, std::string_view name) {
    std::size_t m = 0;
    std::size_t n = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (n < name.size()) {
        if (m < mask.size() && (mask[m] == '?' || mask[m] == name[n])) {
            ++m;
            ++n;
        } else if (m < mask.size() && mask[m] == '*') {
            star = m++;
            resume = n;
        } else if (star != std::string_view::npos) {
            m = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (m < mask.size() && mask[m] == '*') ++m;
    return m == mask.size();
}

std::string ReplaceEach(std::string_view text, std::initializer_list<Replacement> pairs, CaseRule rule) {
    std::string out;
    out.reserve(text.size());
    long done = 1;  // 1-based: the first character not yet copied
    std::vector<long> next(pairs.size(), -1);  // each pair's next hit; -1 to be searched
    while (true) {
        long best = 0;
        const Replacement* winner = nullptr;
        std::size_t k = 0;
        for (const Replacement& pair : pairs) {
            long& at = next[k++];
            if (pair.find.empty()) continue;
            if (at != 0 && at < done) at = InStr(done, text, pair.find, rule);
            if (at > 0 && (best == 0 || at < best)) best = at, winner = &pair;
        }
        if (winner == nullptr) break;
        out.append(text.substr(static_cast<std::size_t>(done - 1), static_cast<std::size_t>(best - done)));
        out.append(winner->by);
        done = best + static_cast<long>(winner->find.size());
    }
    if (static_cast<std::size_t>(done - 1) < text.size()) out.append(text.substr(static_cast<std::size_t>(done - 1)));
    return out;
}

}  // namespace ferrolund::tools
