#pragma once
// The program's version, set by the build.

namespace ferrolund::app {

inline constexpr int kVersionMajor = FERROLUND_VERSION_MAJOR;
inline constexpr int kVersionMinor = FERROLUND_VERSION_MINOR;
inline constexpr int kVersionRevision = FERROLUND_VERSION_REVISION;

}  // namespace ferrolund::app
