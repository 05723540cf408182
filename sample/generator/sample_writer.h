#pragma once
// Puts the sample's files on disk, or into the .ap archive that is open, and keeps the
// list of everything written for the manifest. Paths are the game's: relative to the
// installation's folder, backslashes, ASCII.

#include <cstdint>
#include <deque>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "generator/template_text.h"

namespace ferrolund::sample {

struct WrittenFile {
    std::string path;     // a file of the installation, or a member of `archive` (with '/')
    std::string archive;  // empty for a loose file
    std::uint64_t size;
    std::uint32_t crc32;
};

class SampleWriter {
public:
    explicit SampleWriter(std::filesystem::path root);
    ~SampleWriter();
    SampleWriter(const SampleWriter&) = delete;
    SampleWriter& operator=(const SampleWriter&) = delete;

    // Files put while an archive is open go into it, named relative to its folder; the
    // archive is written when it is ended.
    Failure Put(const std::string& path, std::string bytes);
    Failure BeginArchive(const std::string& path);
    Failure EndArchive();
    bool InArchive() const { return !archivePath_.empty(); }

    const std::vector<WrittenFile>& Files() const { return files_; }
    const std::filesystem::path& Root() const { return root_; }
    std::filesystem::path HostPath(const std::string& path) const;

private:
    Failure WriteLoose(const std::string& path, std::string_view bytes);

    std::filesystem::path root_;
    std::set<std::filesystem::path> madeFolders_;
    std::vector<WrittenFile> files_;
    std::string archivePath_;
    std::deque<std::pair<std::string, std::string>> members_;
};

}  // namespace ferrolund::sample
