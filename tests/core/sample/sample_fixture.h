#pragma once
// One default sample, made once for all the tests that only read it.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "generator/make_sample.h"

namespace ferrolund::sample {

struct ManifestLine {
    std::vector<std::string> fields;
};

// The default sample with its compiled XML kept; made on first use, removed at exit.
const std::filesystem::path& SampleRoot();
const SampleResult& SampleMade();
std::vector<ManifestLine> ManifestLines(const std::filesystem::path& root);
std::string ReadBytes(const std::filesystem::path& path);
// Members of an .ap: name to bytes.
std::map<std::string, std::string> ArchiveMembers(const std::filesystem::path& path);
// A system path (backslashes) below the root, as a path on disk.
std::filesystem::path OnDisk(const std::filesystem::path& root, const std::string& systemPath);

}  // namespace ferrolund::sample
