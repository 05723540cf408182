#include "sample_fixture.h"

#include <zip.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "support/temp_folder.h"

namespace ferrolund::sample {

namespace {

struct Made {
    testing::TempFolder folder;
    SampleResult result;
    std::string failure;
    Made() {
        SampleOptions options;
        options.keepXml = true;
        if (auto f = MakeSample(folder.path() / "RailWorks", options, result)) failure = *f;
    }
};

Made& TheSample() {
    static Made made;
    return made;
}

}  // namespace

const std::filesystem::path& SampleRoot() {
    static const std::filesystem::path root = TheSample().folder.path() / "RailWorks";
    return root;
}

const SampleResult& SampleMade() {
    if (!TheSample().failure.empty()) throw std::runtime_error(TheSample().failure);
    return TheSample().result;
}

std::vector<ManifestLine> ManifestLines(const std::filesystem::path& root) {
    std::vector<ManifestLine> lines;
    std::istringstream in(ReadBytes(root / kManifestName));
    for (std::string line; std::getline(in, line);) {
        ManifestLine parsed;
        std::istringstream fields(line);
        for (std::string field; std::getline(fields, field, '\t');) parsed.fields.push_back(field);
        lines.push_back(parsed);
    }
    return lines;
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

std::map<std::string, std::string> ArchiveMembers(const std::filesystem::path& path) {
    std::map<std::string, std::string> members;
    int error = 0;
    std::unique_ptr<zip_t, int (*)(zip_t*)> zip(zip_open(path.c_str(), ZIP_RDONLY, &error), zip_close);
    if (!zip) return members;
    for (zip_int64_t i = 0; i < zip_get_num_entries(zip.get(), 0); ++i) {
        zip_stat_t stat;
        if (zip_stat_index(zip.get(), static_cast<zip_uint64_t>(i), 0, &stat) != 0) continue;
        std::string bytes(stat.size, '\0');
        zip_file_t* file = zip_fopen_index(zip.get(), static_cast<zip_uint64_t>(i), 0);
        if (!file) continue;
        zip_fread(file, bytes.data(), stat.size);
        zip_fclose(file);
        members[stat.name] = bytes;
    }
    return members;
}

std::filesystem::path OnDisk(const std::filesystem::path& root, const std::string& systemPath) {
    std::string relative = systemPath;
    for (char& c : relative)
        if (c == '\\') c = '/';
    return root / relative;
}

}  // namespace ferrolund::sample
