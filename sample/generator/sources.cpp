#include "generator/sources.h"

namespace ferrolund::sample {

SourceSet EmbeddedSources() {
    SourceSet set;
    for (std::size_t i = 0; i < kEmbeddedFileCount; ++i) {
        const EmbeddedFile& file = kEmbeddedFiles[i];
        set.emplace(file.name, std::string(reinterpret_cast<const char*>(file.data), file.size));
    }
    return set;
}

}  // namespace ferrolund::sample
