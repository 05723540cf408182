#include "temp_folder.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <random>

namespace ferrolund::testing {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::random_device rd;
    path_ = fs::temp_directory_path() / ("ferrolund-test-" + std::to_string(::getpid()) + "-" + std::to_string(rd()));
    fs::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ec;
    for (auto it = fs::recursive_directory_iterator(path_, ec); !ec && it != fs::recursive_directory_iterator();
         it.increment(ec)) {
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
    }
    fs::remove_all(path_, ec);
}

fs::path TempFolder::write(const std::string& relative, const std::string& bytes) const {
    const fs::path file = path_ / relative;
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << bytes;
    return file;
}

std::string TempFolder::read(const std::string& relative) const {
    std::ifstream in(path_ / relative, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace ferrolund::testing
