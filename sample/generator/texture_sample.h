#pragma once
// Generated textures in the XML form the converter writes, for the texture conversions'
// tests and benchmark.

#include <string>
#include <string_view>

namespace ferrolund::sample {

// A texture of format `tag`, `width` x `height` pixels with `levels` mip-map levels, each
// level half the last (at least one block). The pixel bytes follow from `seed`; `extra`
// is put between the elements as text of its own (to test what lies around the pixels).
std::string TextureXml(std::string_view tag, unsigned width, unsigned height, unsigned levels, unsigned seed = 1,
                       std::string_view extra = {});
// The bytes of one level: compressed formats take 8 (DXT1) or 16 bytes a 4x4 block, the
// plain ones 3 or 4 bytes a pixel.
std::size_t LevelBytes(std::string_view tag, unsigned width, unsigned height);

}  // namespace ferrolund::sample
