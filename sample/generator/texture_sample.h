#pragma once
// Generated textures in the XML form the converter writes, for the texture conversions'
// tests and benchmark.

#include <functional>
#include <string>
#include <string_view>

namespace ferrolund::sample {

// A texture of format `tag`, `width` x `height` pixels with `levels` mip-map levels, each
// level half the last (at least one block). The pixel bytes follow from `seed`; `extra`
// is put between the elements as text of its own (to test what lies around the pixels).
std::string TextureXml(std::string_view tag, unsigned width, unsigned height, unsigned levels, unsigned seed = 1,
                       std::string_view extra = {});
// The bytes of one level (0 the largest) of the given size.
using LevelPixels = std::function<std::string(unsigned level, unsigned width, unsigned height)>;
// The same frame around pixels of the caller's making; `name` is the texture's Name.
std::string TextureXml(std::string_view tag, unsigned width, unsigned height, unsigned levels, const LevelPixels& pixels,
                       std::string_view name);
// The program's deep snow: a white DXT1 texture of 256 x 256 pixels with all nine levels,
// always the same bytes. Templates\Snow000_Deep.TgPcDx is this, compiled.
std::string SnowTextureXml();
// The bytes of one level: compressed formats take 8 (DXT1) or 16 bytes a 4x4 block, the
// plain ones 3 or 4 bytes a pixel.
std::size_t LevelBytes(std::string_view tag, unsigned width, unsigned height);

}  // namespace ferrolund::sample
