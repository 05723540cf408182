#include "zip_fixture.h"

#include <zip.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace ferrolund::testing {

void MakeZip(const std::filesystem::path& path, const std::vector<ZipMember>& members, bool stored) {
    std::filesystem::create_directories(path.parent_path());
    int error = 0;
    zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (!zip) throw std::runtime_error("cannot make " + path.string());
    for (const auto& m : members) {
        if (!m.name.empty() && m.name.back() == '/') {
            zip_dir_add(zip, m.name.c_str(), ZIP_FL_ENC_RAW);
            continue;
        }
        zip_source_t* source = zip_source_buffer(zip, m.bytes.data(), m.bytes.size(), 0);
        const zip_int64_t index = zip_file_add(zip, m.name.c_str(), source, ZIP_FL_ENC_RAW | ZIP_FL_OVERWRITE);
        if (index < 0) throw std::runtime_error("cannot add " + m.name);
        zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0);
    }
    if (zip_close(zip) != 0) throw std::runtime_error("cannot write " + path.string());
}

std::string NoiseBytes(std::size_t length, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(length, '\0');
    for (char& c : bytes) c = static_cast<char>(random() & 0xff);
    return bytes;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

bool HaveProgram(const std::string& name) { return Shell("command -v " + name + " > /dev/null 2>&1") == 0; }

int Shell(const std::string& command) {
    const int rc = std::system(command.c_str());
    return WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
}

}  // namespace ferrolund::testing
