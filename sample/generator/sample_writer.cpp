#include "generator/sample_writer.h"

#include <zip.h>
#include <zlib.h>

#include <fstream>

namespace ferrolund::sample {

namespace {

std::uint32_t Crc32(std::string_view bytes) {
    uLong crc = crc32(0L, Z_NULL, 0);
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t step = std::min<std::size_t>(bytes.size() - done, 1u << 30);
        crc = crc32(crc, reinterpret_cast<const Bytef*>(bytes.data() + done), static_cast<uInt>(step));
        done += step;
    }
    return static_cast<std::uint32_t>(crc);
}

std::string Slashed(std::string path) {
    for (char& c : path)
        if (c == '\\') c = '/';
    return path;
}

// Members carry one fixed time, so that every run gives the same archive.
constexpr time_t kMemberTime = 1577880000;  // 2020-01-01 12:00 UTC

}  // namespace

SampleWriter::SampleWriter(std::filesystem::path root) : root_(std::move(root)) {}

SampleWriter::~SampleWriter() = default;

std::filesystem::path SampleWriter::HostPath(const std::string& path) const {
    return root_ / Slashed(path);
}

Failure SampleWriter::Put(const std::string& path, std::string bytes) {
    if (!InArchive()) return WriteLoose(path, bytes);
    const std::string folder = archivePath_.substr(0, archivePath_.rfind('\\') + 1);
    if (path.compare(0, folder.size(), folder) != 0)
        return "sample file " + path + " lies outside the folder of the archive " + archivePath_;
    // Inside an archive the separator is the zip format's own.
    std::string member = Slashed(path.substr(folder.size()));
    files_.push_back({member, archivePath_, bytes.size(), Crc32(bytes)});
    members_.emplace_back(std::move(member), std::move(bytes));
    return std::nullopt;
}

Failure SampleWriter::WriteLoose(const std::string& path, std::string_view bytes) {
    const std::filesystem::path host = HostPath(path);
    const std::filesystem::path folder = host.parent_path();
    if (madeFolders_.insert(folder).second) {
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        if (error) return "cannot make the folder " + folder.string() + ": " + error.message();
    }
    std::ofstream out(host, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) return "cannot write " + host.string();
    files_.push_back({path, "", bytes.size(), Crc32(bytes)});
    return std::nullopt;
}

Failure SampleWriter::BeginArchive(const std::string& path) {
    if (InArchive()) return "the archive " + archivePath_ + " is still open when " + path + " begins";
    archivePath_ = path;
    members_.clear();
    return std::nullopt;
}

Failure SampleWriter::EndArchive() {
    if (!InArchive()) return std::string("an archive ends that was never begun");
    const std::string path = archivePath_;
    archivePath_.clear();
    // The archive is built in memory and written like any other file.
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* zip = buffer ? zip_open_from_source(buffer, ZIP_TRUNCATE, &error) : nullptr;
    if (!zip) {
        if (buffer) zip_source_free(buffer);
        zip_error_fini(&error);
        return "cannot make the archive " + path;
    }
    zip_source_keep(buffer);
    Failure failure;
    for (const auto& [name, bytes] : members_) {
        zip_source_t* source = zip_source_buffer(zip, bytes.data(), bytes.size(), 0);
        const zip_int64_t index = source ? zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
        if (index < 0) {
            if (source) zip_source_free(source);
            failure = "cannot add " + name + " to the archive " + path;
            break;
        }
        zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 6);
        zip_file_set_mtime(zip, static_cast<zip_uint64_t>(index), kMemberTime, 0);
    }
    std::string bytes;
    if (failure) {
        zip_discard(zip);
    } else if (zip_close(zip) != 0) {
        failure = "cannot write the archive " + path + ": " + zip_strerror(zip);
        zip_discard(zip);
    } else if (zip_source_open(buffer) == 0) {
        zip_stat_t stat;
        zip_stat_init(&stat);
        if (zip_source_stat(buffer, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE)) {
            bytes.resize(stat.size);
            if (zip_source_read(buffer, bytes.data(), stat.size) != static_cast<zip_int64_t>(stat.size))
                failure = "cannot read back the archive " + path;
        }
        zip_source_close(buffer);
    }
    zip_source_free(buffer);
    zip_error_fini(&error);
    members_.clear();
    if (failure) return failure;
    return WriteLoose(path, bytes);
}

}  // namespace ferrolund::sample
