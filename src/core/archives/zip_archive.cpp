#include "archives/zip_archive.h"

#include <zip.h>

#include <cstdio>
#include <filesystem>

#include "archives/split_source.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPiece = 256 * 1024;

base::RunError ZipError(const std::string& path, zip_error_t* error) {
    return {base::err::kPathFileAccess, "The archive " + path + " cannot be read: " + zip_error_strerror(error)};
}

base::RunError ZipError(const std::string& path, int code) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    base::RunError result = ZipError(path, &error);
    zip_error_fini(&error);
    return result;
}

}  // namespace

std::string PartName(const std::string& stem, char letter, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%02d", number);
    return stem + "." + letter + digits;
}

struct ZipArchive::Impl {
    zip_t* zip = nullptr;
    ~Impl() {
        if (zip) zip_discard(zip);
    }
};

std::string CompressionName(std::uint16_t method) {
    switch (method) {
    case 0: return "Stored";
    case 8: return "Deflate";
    case 9: return "Deflate64";
    case 12: return "BZip2";
    case 14: return "LZMA";
    case 93: return "Zstandard";
    case 95: return "XZ";
    default: return "Method " + std::to_string(method);
    }
}

std::string FormatEntryTime(std::time_t when) {
    std::tm parts{};
    localtime_r(&when, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts);
    return text;
}

std::vector<std::string> EarlierParts(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    const std::size_t slash = path.find_last_of("\\/");
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return {};
    const std::string stem = path.substr(0, dot);
    std::vector<std::string> parts;
    for (char letter : {'z', '0'}) {
        for (int n = 1; n <= 99 && tools::FileExists(PartName(stem, letter, n)); ++n) {
            parts.push_back(PartName(stem, letter, n));
        }
        if (!parts.empty()) break;
    }
    return parts;
}

std::string SafeEntryPath(std::string_view stored) {
    if (stored.empty() || stored.front() == '/' || stored.front() == '\\') return {};
    std::string result;
    std::size_t from = 0;
    while (from <= stored.size()) {
        std::size_t to = stored.find_first_of("/\\", from);
        if (to == std::string_view::npos) to = stored.size();
        const std::string_view element = stored.substr(from, to - from);
        if (element == "..") return {};
        if (element.find(':') != std::string_view::npos) return {};
        if (!element.empty() && element != ".") {
            if (!result.empty()) result += '\\';
            result.append(element);
        }
        from = to + 1;
    }
    return result;
}

ZipArchive::ZipArchive() = default;
ZipArchive::~ZipArchive() = default;

bool ZipArchive::isOpen() const { return impl_ && impl_->zip; }

void ZipArchive::close() {
    impl_.reset();
    path_.clear();
    parts_.clear();
    entries_.clear();
}

base::Status ZipArchive::open(const std::string& path) {
    close();
    std::vector<std::string> parts = EarlierParts(path);
    parts.push_back(path);
    auto impl = std::make_unique<Impl>();
    if (parts.size() == 1) {
        if (!tools::FileExists(path)) return base::err::FileNotFound(path);
        int code = 0;
        impl->zip = zip_open(tools::HostPath(path).c_str(), ZIP_RDONLY, &code);
        if (!impl->zip) return ZipError(path, code);
    } else {
        base::Status error;
        zip_source_t* source = OpenSplitSource(parts, error);
        if (!source) return error;
        zip_error_t zerr;
        zip_error_init(&zerr);
        impl->zip = zip_open_from_source(source, ZIP_RDONLY, &zerr);
        if (!impl->zip) {
            zip_source_free(source);
            base::RunError result = ZipError(path, &zerr);
            zip_error_fini(&zerr);
            return result;
        }
        zip_error_fini(&zerr);
    }
    const zip_int64_t count = zip_get_num_entries(impl->zip, 0);
    std::vector<ArchiveEntry> entries;
    entries.reserve(static_cast<std::size_t>(count > 0 ? count : 0));
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t st;
        if (zip_stat_index(impl->zip, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS, &st) != 0) {
            return ZipError(path, zip_get_error(impl->zip));
        }
        ArchiveEntry e;
        e.index = static_cast<std::size_t>(i);
        std::string stored = st.name ? st.name : "";
        for (char& c : stored) {
            if (c == '/') c = '\\';
        }
        e.isFolder = !stored.empty() && stored.back() == '\\';
        const std::string trimmed = e.isFolder ? stored.substr(0, stored.size() - 1) : stored;
        const std::size_t cut = trimmed.rfind('\\');
        e.name = cut == std::string::npos ? trimmed : trimmed.substr(cut + 1);
        e.path = cut == std::string::npos ? std::string() : trimmed.substr(0, cut);
        e.stored = std::move(stored);
        e.compressedSize = st.comp_size;
        e.size = st.size;
        e.modified = st.mtime;
        e.method = st.comp_method;
        e.crc = st.crc;
        entries.push_back(std::move(e));
    }
    impl_ = std::move(impl);
    path_ = path;
    parts_ = std::move(parts);
    entries_ = std::move(entries);
    return {};
}

namespace {

base::Status Stream(zip_t* zip, const std::string& path, std::size_t index, zip_flags_t flags, const ByteSink& sink) {
    zip_file_t* file = zip_fopen_index(zip, index, flags);
    if (!file) return ZipError(path, zip_get_error(zip));
    std::vector<char> piece(kPiece);
    base::Status result;
    while (true) {
        const zip_int64_t got = zip_fread(file, piece.data(), piece.size());
        if (got < 0) {
            result = ZipError(path, zip_file_get_error(file));
            break;
        }
        if (got == 0) break;
        result = sink(piece.data(), static_cast<std::size_t>(got));
        if (result) break;
    }
    zip_fclose(file);
    return result;
}

}  // namespace

base::Status ZipArchive::read(std::size_t index, const ByteSink& sink) const {
    if (!isOpen() || index >= entries_.size()) return base::err::SubscriptOutOfRange();
    return Stream(impl_->zip, path_, index, 0, sink);
}

base::Status ZipArchive::readRaw(std::size_t index, const ByteSink& sink) const {
    if (!isOpen() || index >= entries_.size()) return base::err::SubscriptOutOfRange();
    return Stream(impl_->zip, path_, index, ZIP_FL_COMPRESSED, sink);
}

}  // namespace ferrolund::archives
