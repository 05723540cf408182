#include "generator/textures.h"

#include <algorithm>

#include "generator/template_text.h"

namespace ferrolund::sample {

namespace {

std::uint16_t Rgb565(unsigned r, unsigned g, unsigned b) {
    return static_cast<std::uint16_t>(((r >> 3) << 11) | ((g >> 2) << 5) | (b >> 3));
}

void Put16(std::string& out, std::uint32_t value) {
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>((value >> 8) & 0xFF);
}

}  // namespace

std::optional<PixelFormat> ParsePixelFormat(std::string_view word) {
    if (word == "DXT1") return PixelFormat::Dxt1;
    if (word == "DXT3") return PixelFormat::Dxt3;
    if (word == "DXT5") return PixelFormat::Dxt5;
    if (word == "RGB") return PixelFormat::Rgb;
    if (word == "ARGB") return PixelFormat::Argb;
    return std::nullopt;
}

const char* FormatWord(PixelFormat format) {
    switch (format) {
        case PixelFormat::Dxt1:
            return "HC_IMAGE_FORMAT_COMPRESSED";
        case PixelFormat::Dxt3:
            return "HC_IMAGE_FORMAT_COMPRESSED_EXPL_ALPHA";
        case PixelFormat::Dxt5:
            return "HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA";
        case PixelFormat::Rgb:
            return "HC_IMAGE_FORMAT_COL888";
        case PixelFormat::Argb:
            return "HC_IMAGE_FORMAT_COLA8888";
    }
    return "";
}

std::size_t LevelSize(PixelFormat format, int width, int height) {
    const auto w = static_cast<std::size_t>(std::max(width, 1));
    const auto h = static_cast<std::size_t>(std::max(height, 1));
    const std::size_t blocks = ((w + 3) / 4) * ((h + 3) / 4);
    switch (format) {
        case PixelFormat::Dxt1:
            return blocks * 8;
        case PixelFormat::Dxt3:
        case PixelFormat::Dxt5:
            return blocks * 16;
        case PixelFormat::Rgb:
            return w * h * 3;
        case PixelFormat::Argb:
            return w * h * 4;
    }
    return 0;
}

std::string LevelPixels(PixelFormat format, int width, int height, std::string_view seed) {
    const std::uint64_t h = Hash64(seed);
    const unsigned tint = static_cast<unsigned>(h & 0xFF);
    std::string out;
    out.reserve(LevelSize(format, width, height));
    if (format == PixelFormat::Rgb || format == PixelFormat::Argb) {
        for (int y = 0; y < std::max(height, 1); ++y)
            for (int x = 0; x < std::max(width, 1); ++x) {
                const unsigned r = (static_cast<unsigned>(x) * 255u / static_cast<unsigned>(std::max(width, 1)));
                const unsigned g = (static_cast<unsigned>(y) * 255u / static_cast<unsigned>(std::max(height, 1)));
                const unsigned b = ((x / 4 + y / 4) % 2) ? tint : 255u - tint;
                out += static_cast<char>(b);  // stored blue, green, red (and alpha)
                out += static_cast<char>(g);
                out += static_cast<char>(r);
                if (format == PixelFormat::Argb) out += static_cast<char>(0x80u + ((x + y) & 0x7F));
            }
        return out;
    }
    const int bw = std::max((width + 3) / 4, 1), bh = std::max((height + 3) / 4, 1);
    for (int by = 0; by < bh; ++by)
        for (int bx = 0; bx < bw; ++bx) {
            if (format == PixelFormat::Dxt3) {
                for (int i = 0; i < 4; ++i) Put16(out, 0xFFFFu - static_cast<unsigned>(i * 0x1111));
            } else if (format == PixelFormat::Dxt5) {
                out += static_cast<char>(0xFF);
                out += static_cast<char>(0x20);
                for (int i = 0; i < 6; ++i) out += static_cast<char>(0x49 + i);
            }
            const unsigned r = static_cast<unsigned>(bx) * 255u / static_cast<unsigned>(bw);
            const unsigned g = static_cast<unsigned>(by) * 255u / static_cast<unsigned>(bh);
            Put16(out, Rgb565(r, g, tint));
            Put16(out, Rgb565(r / 2, g / 2, 255u - tint));
            const std::uint32_t pattern = ((bx + by) % 2) ? 0x55AA55AAu : 0x1B1B1B1Bu;
            Put16(out, pattern & 0xFFFF);
            Put16(out, pattern >> 16);
        }
    return out;
}

std::string BlobText(std::string_view bytes) {
    static const char kDigits[] = "0123456789ABCDEF";
    std::string out = "<d:blob d:size=\"" + std::to_string(bytes.size()) + "\">";
    out.reserve(out.size() + bytes.size() * 2 + bytes.size() / 8 + 16);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0 && i % 32 == 0) {
            out += '\n';
        } else if (i > 0 && i % 8 == 0) {
            out += ' ';
        }
        const auto byte = static_cast<unsigned char>(bytes[i]);
        out += kDigits[byte >> 4];
        out += kDigits[byte & 0xF];
    }
    return out + "</d:blob>";
}

}  // namespace ferrolund::sample
