#pragma once
// Targa (.tga) pictures for the texture viewer: true-colour (24 and 32 bits) and grey
// (8 bits), plain or run-length packed, either row order. Colour-mapped files are refused.

#include <string_view>

#include "base/run_error.h"
#include "textures/dds_image.h"

namespace ferrolund::textures {

// Decodes the file's bytes into `out` (rows top to bottom, R, G, B, A).
base::Status DecodeTga(std::string_view bytes, RgbaImage& out);

}  // namespace ferrolund::textures
