#pragma once
// Whole files through the codec. The target appears only when it is complete: the output
// goes to a temporary name beside it and is renamed at the end, so a failure leaves no
// partial file behind.

#include <filesystem>

#include "serz/codec.h"

namespace ferrolund::serz {

enum class Direction { ToXml, ToBinary };

// The message names the file that failed and the reason.
CodecStatus ConvertFile(const std::filesystem::path& source, const std::filesystem::path& target,
                        Direction direction, const XmlStyle& style = {});

}  // namespace ferrolund::serz
