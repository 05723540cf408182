#pragma once
// Pixel data of the sample's textures, made from the texture's name so that every run
// gives the same bytes, and its text as the converter writes a blob.

#include <optional>
#include <string>
#include <string_view>

namespace ferrolund::sample {

enum class PixelFormat { Dxt1, Dxt3, Dxt5, Rgb, Argb };

// "DXT1", "DXT3", "DXT5", "RGB", "ARGB"; nothing for another word.
std::optional<PixelFormat> ParsePixelFormat(std::string_view word);
// The texture's Format element text, such as HC_IMAGE_FORMAT_COMPRESSED.
const char* FormatWord(PixelFormat format);
// Bytes of one mip level of the given size.
std::size_t LevelSize(PixelFormat format, int width, int height);
// The pixels of one level: a gradient with a pattern that depends on `seed`.
std::string LevelPixels(PixelFormat format, int width, int height, std::string_view seed);
// <d:blob d:size="n">, the bytes in upper-case hex in groups of eight, four groups a
// line, and </d:blob>; lines are separated by a bare LF.
std::string BlobText(std::string_view bytes);

}  // namespace ferrolund::sample
