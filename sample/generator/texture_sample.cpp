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

std::string TextureXml(std::string_view tag, unsigned width, unsigned height, unsigned levels, unsigned seed,
                       std::string_view extra) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const std::string w = std::to_string(width), h = std::to_string(height);
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cHcTextureGroup xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
        "\t<Texture>\r\n\t\t<cHcTexture d:id=\"2\">\r\n"
        "\t\t\t<Width d:type=\"sUInt32\">" + w + "</Width>\r\n"
        "\t\t\t<Height d:type=\"sUInt32\">" + h + "</Height>\r\n"
        "\t\t\t<Name d:type=\"cDeltaString\">" + std::string(extra.empty() ? "generated" : extra) + "</Name>\r\n"
        "\t\t\t<Data>\r\n\t\t\t\t<cHcTextureData d:id=\"3\">\r\n\t\t\t\t\t<Mip>\r\n";
    std::uint32_t state = seed * 2654435761u + 1;
    for (unsigned level = 0; level < levels; ++level) {
        const unsigned lw = std::max(1u, width >> level), lh = std::max(1u, height >> level);
        const std::size_t size = LevelBytes(tag, lw, lh);
        xml += "\t\t\t\t\t\t<cHcImageDx d:id=\"" + std::to_string(10 + level) + "\">\r\n";
        xml += "\t\t\t\t\t\t\t<Format d:type=\"cDeltaString\">" + std::string(tag) + "</Format>\r\n";
        xml += "\t\t\t\t\t\t\t<IsSwizzled d:type=\"bool\">0</IsSwizzled>\r\n";
        xml += "\t\t\t\t\t\t\t<Width d:type=\"sUInt16\">" + std::to_string(lw) + "</Width>\r\n";
        xml += "\t\t\t\t\t\t\t<Height d:type=\"sUInt16\">" + std::to_string(lh) + "</Height>\r\n";
        xml += "\t\t\t\t\t\t\t<d:blob d:size=\"" + std::to_string(size) + "\">";
        for (std::size_t i = 0; i < size; ++i) {
            state = state * 1664525u + 1013904223u;
            const unsigned byte = state >> 24;
            xml += kDigits[byte >> 4];
            xml += kDigits[byte & 15];
            if (i + 1 == size) break;
            if (i % 32 == 31) xml += "\r\n";
            else if (i % 8 == 7) xml += ' ';
        }
        xml += "</d:blob>\r\n\t\t\t\t\t\t</cHcImageDx>\r\n";
    }
    xml +=
        "\t\t\t\t\t</Mip>\r\n\t\t\t\t\t<TextureBlob/>\r\n\t\t\t\t\t<Palette>\r\n\t\t\t\t\t\t<d:nil/>\r\n"
        "\t\t\t\t\t</Palette>\r\n\t\t\t\t</cHcTextureData>\r\n\t\t\t</Data>\r\n\t\t</cHcTexture>\r\n"
        "\t</Texture>\r\n</cHcTextureGroup>\r\n";
    return xml;
}

}  // namespace ferrolund::sample
