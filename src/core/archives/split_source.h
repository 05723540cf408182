#pragma once
// A split archive (parts .z01, .z02, ..., .zip) seen as one ordinary archive: the parts
// are read one after the other as a single stream, and the central directory at its end
// is given back rewritten as if the archive had one part, every disk number 0 and every
// offset counted from the start of the first part. The parts on disk are never changed.

#include <zip.h>

#include <string>
#include <vector>

#include "base/run_error.h"

namespace ferrolund::archives {

// A libzip source over the parts (system paths, first part first, the .zip last), or
// null with `error` set when the parts do not make a split archive.
zip_source_t* OpenSplitSource(const std::vector<std::string>& parts, base::Status& error);

}  // namespace ferrolund::archives
