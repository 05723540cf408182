#pragma once
// Small Zip archives made with libzip for the archive tests.

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace ferrolund::testing {

struct ZipMember {
    std::string name;   // stored as given, '/' separators
    std::string bytes;  // a name ending in '/' makes a folder entry
};

// Writes the archive; members are deflated unless `stored`.
void MakeZip(const std::filesystem::path& path, const std::vector<ZipMember>& members, bool stored = false);
// Bytes that do not compress, from a fixed seed.
std::string NoiseBytes(std::size_t length, unsigned seed = 1);
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);
// True when the program can be found on the search path.
bool HaveProgram(const std::string& name);
// Runs a shell command line; its exit code.
int Shell(const std::string& command);

}  // namespace ferrolund::testing
