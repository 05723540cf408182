#pragma once
// The .dds container as the texture viewer needs it: the header's size, pixel format and
// mip levels, and any level decoded into 8-bit RGBA for display. Block-compressed levels
// (DXT1/BC1, DXT3/BC2, DXT5/BC3) are decoded by libsquish; 24- and 32-bit levels here.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/run_error.h"

namespace ferrolund::textures {

enum class DdsFormat { Dxt1, Dxt3, Dxt5, A8R8G8B8, X8R8G8B8, R8G8B8 };

// The name of a format as a user reads it ("DXT5", "A8R8G8B8", ...).
const char* DdsFormatName(DdsFormat format);

struct DdsLevel {
    int width = 0;
    int height = 0;
    std::size_t offset = 0;  // from the start of the file
    std::size_t size = 0;    // bytes
};

struct DdsImage {
    DdsFormat format = DdsFormat::Dxt1;
    int width = 0;
    int height = 0;
    std::vector<DdsLevel> levels;  // the largest first; never empty once read
    // Uncompressed formats: the byte of each channel within a pixel, -1 for none (alpha).
    int redByte = 0, greenByte = 0, blueByte = 0, alphaByte = -1;
    std::string bytes;  // the whole file
};

// Rows top to bottom, four bytes a pixel in the order R, G, B, A.
struct RgbaImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

// Reads the container from a file's bytes. A file that is no .dds, is cut short, or has a
// format not listed above gives an error whose text says which.
base::Status ReadDds(std::string bytes, DdsImage& image);
// The same from a file on disk (a path already resolved).
base::Status LoadDds(const std::filesystem::path& path, DdsImage& image);

// Decodes level `level` (0 the largest) into `out`.
base::Status DecodeDdsLevel(const DdsImage& image, int level, RgbaImage& out);

}  // namespace ferrolund::textures
