#include "textures/dds_image.h"

#include <squish.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <thread>

namespace ferrolund::textures {

namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::uint32_t kFourCcFlag = 0x4;
constexpr std::uint32_t kRgbFlag = 0x40;
constexpr std::uint32_t kAlphaPixelsFlag = 0x1;
constexpr int kLargestSide = 32768;
// Below this many rows of blocks a second thread costs more than it saves.
constexpr int kRowsForTwoThreads = 64;

std::uint32_t Word(const std::string& bytes, std::size_t at) {
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data()) + at;
    return p[0] | (p[1] << 8) | (p[2] << 16) | (std::uint32_t{p[3]} << 24);
}

base::RunError Bad(const std::string& what) { return {base::err::kTypeMismatch, what}; }

bool Compressed(DdsFormat format) {
    return format == DdsFormat::Dxt1 || format == DdsFormat::Dxt3 || format == DdsFormat::Dxt5;
}

int PixelBytes(DdsFormat format) { return format == DdsFormat::R8G8B8 ? 3 : 4; }

std::size_t LevelSize(DdsFormat format, int width, int height) {
    if (Compressed(format)) {
        const std::size_t blocks = std::size_t((width + 3) / 4) * std::size_t((height + 3) / 4);
        return blocks * (format == DdsFormat::Dxt1 ? 8 : 16);
    }
    return std::size_t(width) * std::size_t(height) * std::size_t(PixelBytes(format));
}

// The byte a mask of one whole byte selects within a pixel of `pixelBytes`, or -1.
int MaskByte(std::uint32_t mask, int pixelBytes) {
    for (int k = 0; k < pixelBytes; ++k) {
        if (mask == (0xFFu << (8 * k))) return k;
    }
    return -1;
}

base::Status ReadPixelFormat(const std::string& bytes, DdsImage& image) {
    const std::uint32_t flags = Word(bytes, 80);
    if (flags & kFourCcFlag) {
        const std::string fourCc = bytes.substr(84, 4);
        if (fourCc == "DXT1") image.format = DdsFormat::Dxt1;
        else if (fourCc == "DXT3") image.format = DdsFormat::Dxt3;
        else if (fourCc == "DXT5") image.format = DdsFormat::Dxt5;
        else return Bad("The .dds pixel format " + fourCc + " cannot be shown.");
        return {};
    }
    if (!(flags & kRgbFlag)) return Bad("The .dds pixel format cannot be shown: it is neither RGB nor DXT.");
    const std::uint32_t bits = Word(bytes, 88);
    if (bits != 24 && bits != 32) {
        return Bad("The .dds pixel format of " + std::to_string(bits) + " bits a pixel cannot be shown.");
    }
    const int pixelBytes = int(bits / 8);
    image.redByte = MaskByte(Word(bytes, 92), pixelBytes);
    image.greenByte = MaskByte(Word(bytes, 96), pixelBytes);
    image.blueByte = MaskByte(Word(bytes, 100), pixelBytes);
    image.alphaByte = -1;
    if ((flags & kAlphaPixelsFlag) && Word(bytes, 104) != 0) {
        image.alphaByte = MaskByte(Word(bytes, 104), pixelBytes);
        if (image.alphaByte < 0) return Bad("The .dds alpha mask cannot be shown.");
    }
    if (image.redByte < 0 || image.greenByte < 0 || image.blueByte < 0) {
        return Bad("The .dds colour masks cannot be shown: each must be one whole byte.");
    }
    if (bits == 24) {
        if (image.alphaByte >= 0) return Bad("The .dds alpha mask cannot be shown.");
        image.format = DdsFormat::R8G8B8;
    } else {
        image.format = image.alphaByte >= 0 ? DdsFormat::A8R8G8B8 : DdsFormat::X8R8G8B8;
    }
    return {};
}

void DecodePlain(const DdsImage& image, const DdsLevel& level, std::uint8_t* out) {
    const auto* in = reinterpret_cast<const std::uint8_t*>(image.bytes.data()) + level.offset;
    const std::size_t pixels = std::size_t(level.width) * std::size_t(level.height);
    const int step = PixelBytes(image.format);
    for (std::size_t i = 0; i < pixels; ++i, in += step, out += 4) {
        out[0] = in[image.redByte];
        out[1] = in[image.greenByte];
        out[2] = in[image.blueByte];
        out[3] = image.alphaByte >= 0 ? in[image.alphaByte] : 0xFF;
    }
}

void DecodeBlocks(const DdsImage& image, const DdsLevel& level, std::uint8_t* out) {
    const int flags = image.format == DdsFormat::Dxt1   ? squish::kDxt1
                      : image.format == DdsFormat::Dxt3 ? squish::kDxt3
                                                        : squish::kDxt5;
    const std::size_t blockBytes = image.format == DdsFormat::Dxt1 ? 8 : 16;
    const int blockRows = (level.height + 3) / 4;
    const std::size_t rowBytes = std::size_t((level.width + 3) / 4) * blockBytes;
    const int pitch = level.width * 4;
    const auto* blocks = reinterpret_cast<const std::uint8_t*>(image.bytes.data()) + level.offset;
    // Rows of blocks [first, last) of the level.
    auto rows = [&](int first, int last) {
        const int top = first * 4;
        const int height = std::min(level.height, last * 4) - top;
        squish::DecompressImage(out + std::size_t(top) * pitch, level.width, height, pitch,
                                blocks + std::size_t(first) * rowBytes, flags);
    };
    if (blockRows < kRowsForTwoThreads) {
        rows(0, blockRows);
        return;
    }
    const int half = blockRows / 2;
    std::thread lower(rows, half, blockRows);
    rows(0, half);
    lower.join();
}

}  // namespace

const char* DdsFormatName(DdsFormat format) {
    switch (format) {
        case DdsFormat::Dxt1: return "DXT1";
        case DdsFormat::Dxt3: return "DXT3";
        case DdsFormat::Dxt5: return "DXT5";
        case DdsFormat::A8R8G8B8: return "A8R8G8B8";
        case DdsFormat::X8R8G8B8: return "X8R8G8B8";
        case DdsFormat::R8G8B8: return "R8G8B8";
    }
    return "";
}

base::Status ReadDds(std::string bytes, DdsImage& result) {
    // A refused file leaves an empty image, not a half-read one.
    result = DdsImage{};
    DdsImage image;
    if (bytes.size() < 4 || bytes.compare(0, 4, "DDS ") != 0) return Bad("This is not a .dds file.");
    if (bytes.size() < kHeaderSize) {
        return base::RunError{base::err::kInputPastEnd, "The .dds file is cut short inside its header."};
    }
    if (Word(bytes, 4) != 124 || Word(bytes, 76) != 32) return Bad("The .dds header is damaged.");
    const std::uint32_t height = Word(bytes, 12);
    const std::uint32_t width = Word(bytes, 16);
    if (width == 0 || height == 0 || width > kLargestSide || height > kLargestSide) {
        return Bad("The .dds size " + std::to_string(width) + "x" + std::to_string(height) + " cannot be shown.");
    }
    if (auto failure = ReadPixelFormat(bytes, image)) return failure;

    int possible = 1;
    while ((std::max(width, height) >> possible) > 0) ++possible;
    const int declared = std::max(1, int(std::min<std::uint32_t>(Word(bytes, 28), 64)));
    if (declared > possible) {
        return Bad("The .dds file declares " + std::to_string(declared) + " mip levels; a picture of " +
                   std::to_string(width) + "x" + std::to_string(height) + " has at most " +
                   std::to_string(possible) + ".");
    }
    std::size_t offset = kHeaderSize;
    for (int i = 0; i < declared; ++i) {
        DdsLevel level;
        level.width = std::max(1, int(width >> i));
        level.height = std::max(1, int(height >> i));
        level.offset = offset;
        level.size = LevelSize(image.format, level.width, level.height);
        offset += level.size;
        if (offset > bytes.size()) {
            return base::RunError{base::err::kInputPastEnd,
                                  "The .dds file is cut short in mip level " + std::to_string(i + 1) + " of " +
                                      std::to_string(declared) + ": " + std::to_string(bytes.size()) +
                                      " bytes where " + std::to_string(offset) + " are needed."};
        }
        image.levels.push_back(level);
    }
    image.width = int(width);
    image.height = int(height);
    image.bytes = std::move(bytes);
    result = std::move(image);
    return {};
}

base::Status LoadDds(const std::filesystem::path& path, DdsImage& image) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return base::err::FileNotFound(path.string());
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) return base::err::PathFileAccess(path.string());
    return ReadDds(std::move(bytes), image);
}

base::Status DecodeDdsLevel(const DdsImage& image, int level, RgbaImage& out) {
    if (level < 0 || level >= int(image.levels.size())) return base::err::SubscriptOutOfRange();
    const DdsLevel& l = image.levels[std::size_t(level)];
    out.width = l.width;
    out.height = l.height;
    // Every pixel is written below: a buffer reused at the same size is not cleared first.
    out.pixels.resize(std::size_t(l.width) * std::size_t(l.height) * 4);
    if (Compressed(image.format)) {
        DecodeBlocks(image, l, out.pixels.data());
    } else {
        DecodePlain(image, l, out.pixels.data());
    }
    return {};
}

}  // namespace ferrolund::textures
