#include "generator/texture_sample.h"

#include <algorithm>
#include <cstdint>

namespace ferrolund::sample {

std::size_t LevelBytes(std::string_view tag, unsigned width, unsigned height) {
    const std::size_t blocks = std::size_t{std::max(1u, (width + 3) / 4)} * std::max(1u, (height + 3) / 4);
    if (tag == "HC_IMAGE_FORMAT_COMPRESSED") return blocks * 8;
    if (tag == "HC_IMAGE_FORMAT_COL888") return std::size_t{width} * height * 3;
    if (tag == "HC_IMAGE_FORMAT_COLA8888") return std::size_t{width} * height * 4;
    return blocks * 16;
}

namespace {

// The bytes as the converter writes a blob's text: upper-case hex in groups of eight
// bytes, four groups a line.
void AppendHex(std::string& xml, std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned byte = static_cast<unsigned char>(bytes[i]);
        xml += kDigits[byte >> 4];
        xml += kDigits[byte & 15];
        if (i + 1 == bytes.size()) break;
        if (i % 32 == 31) xml += "\r\n";
        else if (i % 8 == 7) xml += ' ';
    }
}

}  // namespace

std::string TextureXml(std::string_view tag, unsigned width, unsigned height, unsigned levels, const LevelPixels& pixels,
                       std::string_view name) {
    const std::string w = std::to_string(width), h = std::to_string(height);
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cHcTextureGroup xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
        "\t<Texture>\r\n\t\t<cHcTexture d:id=\"2\">\r\n"
        "\t\t\t<Width d:type=\"sUInt32\">" + w + "</Width>\r\n"
        "\t\t\t<Height d:type=\"sUInt32\">" + h + "</Height>\r\n"
        "\t\t\t<Name d:type=\"cDeltaString\">" + std::string(name) + "</Name>\r\n"
        "\t\t\t<Data>\r\n\t\t\t\t<cHcTextureData d:id=\"3\">\r\n\t\t\t\t\t<Mip>\r\n";
    for (unsigned level = 0; level < levels; ++level) {
        const unsigned lw = std::max(1u, width >> level), lh = std::max(1u, height >> level);
        const std::string bytes = pixels(level, lw, lh);
        xml += "\t\t\t\t\t\t<cHcImageDx d:id=\"" + std::to_string(10 + level) + "\">\r\n";
        xml += "\t\t\t\t\t\t\t<Format d:type=\"cDeltaString\">" + std::string(tag) + "</Format>\r\n";
        xml += "\t\t\t\t\t\t\t<IsSwizzled d:type=\"bool\">0</IsSwizzled>\r\n";
        xml += "\t\t\t\t\t\t\t<Width d:type=\"sUInt16\">" + std::to_string(lw) + "</Width>\r\n";
        xml += "\t\t\t\t\t\t\t<Height d:type=\"sUInt16\">" + std::to_string(lh) + "</Height>\r\n";
        xml += "\t\t\t\t\t\t\t<d:blob d:size=\"" + std::to_string(bytes.size()) + "\">";
        AppendHex(xml, bytes);
        xml += "</d:blob>\r\n\t\t\t\t\t\t</cHcImageDx>\r\n";
    }
    xml +=
        "\t\t\t\t\t</Mip>\r\n\t\t\t\t\t<TextureBlob/>\r\n\t\t\t\t\t<Palette>\r\n\t\t\t\t\t\t<d:nil/>\r\n"
        "\t\t\t\t\t</Palette>\r\n\t\t\t\t</cHcTextureData>\r\n\t\t\t</Data>\r\n\t\t</cHcTexture>\r\n"
        "\t</Texture>\r\n</cHcTextureGroup>\r\n";
    return xml;
}

std::string TextureXml(std::string_view tag, unsigned width, unsigned height, unsigned levels, unsigned seed,
                       std::string_view extra) {
    std::uint32_t state = seed * 2654435761u + 1;
    const LevelPixels noise = [&](unsigned, unsigned lw, unsigned lh) {
        std::string bytes(LevelBytes(tag, lw, lh), '\0');
        for (char& byte : bytes) {
            state = state * 1664525u + 1013904223u;
            byte = static_cast<char>(state >> 24);
        }
        return bytes;
    };
    return TextureXml(tag, width, height, levels, noise, extra.empty() ? "generated" : extra);
}

std::string SnowTextureXml() {
    // DXT1 blocks between pure white and a faint blue-grey, the grey picked sparsely so
    // that the surface reads as fresh snow with a little grain.
    std::uint32_t state = 20261125u;
    auto next = [&state] {
        state = state * 1664525u + 1013904223u;
        return state >> 8;
    };
    const LevelPixels snow = [&](unsigned, unsigned lw, unsigned lh) {
        const std::size_t blocks = LevelBytes("HC_IMAGE_FORMAT_COMPRESSED", lw, lh) / 8;
        std::string bytes;
        bytes.reserve(blocks * 8);
        for (std::size_t b = 0; b < blocks; ++b) {
            const unsigned grey = next();
            const unsigned red = 27 + grey % 4, green = 56 + (grey >> 2) % 6, blue = 29 + (grey >> 5) % 3;
            const unsigned second = red << 11 | green << 5 | blue;  // below white, so four-colour blocks
            for (const unsigned colour : {0xFFFFu, second}) {
                bytes += static_cast<char>(colour & 0xFF);
                bytes += static_cast<char>(colour >> 8);
            }
            for (int row = 0; row < 4; ++row) {
                unsigned indices = 0;
                for (int px = 0; px < 4; ++px) {
                    const unsigned roll = next() % 16;
                    // 0 white, 2 nearly white, 3 between, 1 the grey
                    const unsigned index = roll < 9 ? 0 : roll < 13 ? 2 : roll < 15 ? 3 : 1;
                    indices |= index << (2 * px);
                }
                bytes += static_cast<char>(indices);
            }
        }
        return bytes;
    };
    return TextureXml("HC_IMAGE_FORMAT_COMPRESSED", 256, 256, 9, snow, "Snow000_Deep");
}

}  // namespace ferrolund::sample
