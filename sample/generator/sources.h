#pragma once
// The text sources of the sample installation. The build embeds every file of
// sample/sources; a test may hand the generator a changed copy.

#include <cstddef>
#include <map>
#include <string>

namespace ferrolund::sample {

struct EmbeddedFile {
    const char* name;  // relative to sample/sources, forward slashes
    const unsigned char* data;
    std::size_t size;
};

extern const EmbeddedFile kEmbeddedFiles[];
extern const std::size_t kEmbeddedFileCount;

// Source name to its bytes.
using SourceSet = std::map<std::string, std::string>;

SourceSet EmbeddedSources();

}  // namespace ferrolund::sample
