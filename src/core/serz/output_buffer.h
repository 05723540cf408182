#pragma once
// A growing byte buffer over a std::string that hands out raw room to write into, so that
// the hot loops of the codec write with plain pointer stores. The expected size is only
// reserved; the string's length runs ahead of what is written by a step at a time, so the
// zeros a resize puts in are still in the cache when they are overwritten.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace ferrolund::serz {

class OutputBuffer {
public:
    OutputBuffer(std::string& target, std::size_t expected) : target_(target) {
        target_.clear();
        target_.reserve(std::min(std::max(expected, kStep), kLimit));
    }

    // Room for at least `bytes` more; write there, then hand the end back to Commit.
    char* Reserve(std::size_t bytes) {
        if (target_.size() - used_ < bytes) Grow(bytes);
        return target_.data() + used_;
    }
    void Commit(char* end) { used_ = static_cast<std::size_t>(end - target_.data()); }

    void Append(std::string_view bytes) {
        if (bytes.empty()) return;  // an empty view may hold no pointer at all
        char* out = Reserve(bytes.size());
        std::memcpy(out, bytes.data(), bytes.size());
        used_ += bytes.size();
    }
    void Put(char c) { *Reserve(1) = c; ++used_; }

    std::size_t size() const { return used_; }
    char* At(std::size_t offset) { return target_.data() + offset; }
    const char* At(std::size_t offset) const { return target_.data() + offset; }
    // Cuts the string to what was written.
    void Finish() { target_.resize(used_); }

private:
    // A few cached records can name a long string many times over; past this size the
    // output is refused rather than left to exhaust the machine's memory.
    static constexpr std::size_t kLimit = std::size_t{1} << 32;
    static constexpr std::size_t kStep = std::size_t{64} << 10;

    void Grow(std::size_t bytes) {
        if (used_ + bytes > kLimit) throw std::length_error("the output would pass 4 GB");
        std::size_t length = std::min(used_ + std::max(bytes, kStep), kLimit);
        if (length > target_.capacity()) target_.reserve(std::min(std::max(length, 2 * target_.capacity()), kLimit));
        target_.resize(length);
    }

    std::string& target_;
    std::size_t used_ = 0;
};

}  // namespace ferrolund::serz
