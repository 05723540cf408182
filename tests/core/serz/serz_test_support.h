#pragma once
// Helpers shared by the codec's tests: the real files beside the checkout and small ways
// of building binary input by hand.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

namespace ferrolund::serz::testing {

inline std::filesystem::path TestData() { return std::filesystem::path(FERROLUND_TESTDATA); }
inline std::filesystem::path SerzSamples() { return TestData() / "serz"; }
inline std::filesystem::path RouteSamples() { return TestData() / "routes"; }
inline std::filesystem::path Fixtures() {
    return std::filesystem::path(FERROLUND_SOURCE_DIR) / "tests" / "fixtures" / "serz";
}

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Text with CR LF line ends turned into LF, for comparing with files stored with LF.
inline std::string WithLf(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        out += text[i];
    }
    return out;
}

// True when every line feed of the text is preceded by a carriage return.
inline bool AllCrLf(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) return false;
    }
    return true;
}

// Builds binary input byte by byte.
class Bytes {
public:
    Bytes() : data_("SERZ\0\0\x01\0", 8) {}
    Bytes& u8(std::initializer_list<int> values) {
        for (int v : values) data_ += static_cast<char>(v);
        return *this;
    }
    Bytes& u16(std::uint16_t v) { return raw(&v, 2); }
    Bytes& u32(std::uint32_t v) { return raw(&v, 4); }
    Bytes& f32(float v) { return raw(&v, 4); }
    Bytes& f64(double v) { return raw(&v, 8); }
    // A new string in place: FFFF, its character count, its bytes.
    Bytes& str(std::string_view s, std::uint32_t characters) {
        u16(0xFFFF).u32(characters);
        data_ += s;
        return *this;
    }
    Bytes& str(std::string_view s) { return str(s, static_cast<std::uint32_t>(s.size())); }
    Bytes& text(std::string_view s) {
        data_ += s;
        return *this;
    }
    const std::string& data() const { return data_; }

private:
    Bytes& raw(const void* p, std::size_t n) {
        data_.append(static_cast<const char*>(p), n);
        return *this;
    }
    std::string data_;
};

}  // namespace ferrolund::serz::testing
