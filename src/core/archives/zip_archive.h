#pragma once
// Read access to a Zip archive (an .ap file is one under another name): the list of its
// entries and the bytes of one entry, handed on in pieces so that no archive is ever held
// whole in memory. A set of parts in the standard split form (<name>.z01, <name>.z02, ...,
// <name>.zip) is read as one archive. Nothing here throws; a file that is not an archive,
// or one cut short, gives an error value.

#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_error.h"

namespace ferrolund::archives {

struct ArchiveEntry {
    std::size_t index = 0;           // the entry's number in the archive
    std::string stored;              // the stored name with backslashes, Windows-1252
    std::string name;                // the last element of the stored name
    std::string path;                // the folder part of the stored name, without a last '\'
    std::uint64_t compressedSize = 0;
    std::uint64_t size = 0;
    std::time_t modified = 0;        // the stored date and time, taken as local time
    std::uint16_t method = 0;        // 0 stored, 8 deflated, ...
    std::uint32_t crc = 0;
    bool isFolder = false;
};

// "Stored", "Deflate", "Deflate64", "BZip2", "LZMA", ... or "Method <n>".
std::string CompressionName(std::uint16_t method);
// "yyyy-mm-dd hh:mm:ss" of a local time.
std::string FormatEntryTime(std::time_t when);

// Receives the bytes of an entry piece by piece; an error stops the reading.
using ByteSink = std::function<base::Status(const char* data, std::size_t length)>;

class ZipArchive {
public:
    ZipArchive();
    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    // Reads the central directory. `path` is a system path; a split set is found from its
    // last part (.zip, or any name whose earlier parts stand beside it as .z01 ... or
    // .001 ...). An open archive is closed first.
    base::Status open(const std::string& path);
    void close();
    bool isOpen() const;
    const std::string& path() const { return path_; }
    // The files of the set, first part first; one for an ordinary archive.
    const std::vector<std::string>& parts() const { return parts_; }
    const std::vector<ArchiveEntry>& entries() const { return entries_; }

    // Streams the entry's uncompressed bytes into `sink`; the checksum is tested at the end.
    base::Status read(std::size_t index, const ByteSink& sink) const;
    // Streams the entry's bytes as stored (still compressed), for copying into another
    // archive without unpacking.
    base::Status readRaw(std::size_t index, const ByteSink& sink) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
    std::string path_;
    std::vector<std::string> parts_;
    std::vector<ArchiveEntry> entries_;
};

// The earlier parts of a split set whose last part is `path`: <stem>.z01, <stem>.z02, ...
// (or .001, .002, ...) while they exist, as system paths. Empty for an ordinary archive.
std::vector<std::string> EarlierParts(const std::string& path);
// "<stem>.z07" for letter 'z' and number 7.
std::string PartName(const std::string& stem, char letter, int number);

// The stored name of an entry as a relative system path ("Scenarios\a\b.bin"), or empty
// when the name would climb out of the folder it is unpacked into: an absolute name, a
// drive letter or other colon, or a ".." element. "." and empty elements are dropped; a
// name that is left with nothing is refused as well.
std::string SafeEntryPath(std::string_view stored);

}  // namespace ferrolund::archives
