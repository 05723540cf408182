#pragma once
// A fresh folder for one test, removed with everything in it when the test ends.

#include <filesystem>
#include <string>

namespace ferrolund::testing {

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    // The folder as a system string, as the program's routines take it.
    std::string system() const { return path_.string(); }
    // Writes a file below the folder (parents created) and gives its path.
    std::filesystem::path write(const std::string& relative, const std::string& bytes) const;
    std::string read(const std::string& relative) const;

private:
    std::filesystem::path path_;
};

}  // namespace ferrolund::testing
