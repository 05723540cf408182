#pragma once
// Writing a Zip archive, whole or in parts of a chosen size in the standard split form:
// the parts <name>.z01, <name>.z02, ... and the last one <name>.zip, which other Zip
// programs read back as one archive. Files are read and compressed piece by piece. The
// parts are written under scratch names and put in place only by finish(), so an old
// archive of the same name survives a failed or abandoned run.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/run_error.h"
#include "archives/zip_archive.h"

namespace ferrolund::archives {

struct ZipWriterOptions {
    int level = 6;                // 0 (stored) to 9
    std::uint64_t partSize = 0;   // bytes of each part; 0 writes one file
};

class ZipWriter {
public:
    ZipWriter();
    ~ZipWriter();  // abandons an unfinished archive
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    // `path` is the system path of the archive (the last part of a split set).
    base::Status create(const std::string& path, const ZipWriterOptions& options);
    // Adds a file from disk under `stored` (backslashes, Windows-1252).
    base::Status addFile(const std::string& source, const std::string& stored);
    // Adds a folder entry ("name\").
    base::Status addFolder(const std::string& stored);
    // Copies an entry of another archive as it is stored, without unpacking it.
    base::Status addRaw(const ZipArchive& from, const ArchiveEntry& entry);
    // Writes the central directory and puts the parts in place, replacing older files of
    // those names (and removing stale later parts of an older set).
    base::Status finish();
    // Removes what was written.
    void abandon();

    // The files finish() made, first part first.
    const std::vector<std::string>& parts() const { return finalParts_; }

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
    std::vector<std::string> finalParts_;
};

}  // namespace ferrolund::archives
