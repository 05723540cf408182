#pragma once
// The picture writer of "Add LocoInformation": a thumbnail in any format Qt reads,
// written as PNG.

#include <string>

namespace ferrolund::screens {

// Reads `jpg` and writes it as the PNG file `png` (system paths, resolved without
// regard to case). False when the picture cannot be read or the file not written.
bool ThumbnailToPng(const std::string& jpg, const std::string& png);

}  // namespace ferrolund::screens
