#include "archives/zip_writer.h"

#include <zlib.h>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <sys/stat.h>

#include "archives/zip_format.h"
#include "tools/names.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;
using namespace zipfmt;

namespace {

constexpr std::uint32_t kMax32 = 0xffffffffu;
constexpr std::uint16_t kUtf8Flag = 1 << 11;
constexpr std::uint16_t kDescriptorFlag = 1 << 3;
constexpr std::size_t kPiece = 256 * 1024;

struct Record {
    std::string name;  // as stored: '/' separators, UTF-8 when flagged
    std::uint16_t flags = 0, method = 0, time = 0, date = 0;
    std::uint32_t crc = 0;
    std::uint64_t compressed = 0, size = 0;
    std::uint32_t disk = 0;
    std::uint64_t offset = 0;
    std::uint32_t external = 0;
};

void DosTime(std::time_t when, std::uint16_t& time, std::uint16_t& date) {
    std::tm t{};
    localtime_r(&when, &t);
    if (t.tm_year < 80) {
        t = std::tm{};
        t.tm_year = 80;
        t.tm_mday = 1;
    }
    time = static_cast<std::uint16_t>(t.tm_hour << 11 | t.tm_min << 5 | t.tm_sec / 2);
    date = static_cast<std::uint16_t>((t.tm_year - 80) << 9 | (t.tm_mon + 1) << 5 | t.tm_mday);
}

void ZipName(const std::string& stored, Record& r) {
    std::string name = stored;
    for (char& c : name) {
        if (c == '\\') c = '/';
    }
    bool ascii = true;
    for (unsigned char c : name) ascii = ascii && c < 0x80;
    r.name = ascii ? name : tools::ShownText(name);
    if (!ascii) r.flags |= kUtf8Flag;
}

base::RunError WriteFailed(const std::string& path) { return base::err::PathFileAccess(path); }

}  // namespace

struct ZipWriter::Impl {
    std::string path;
    ZipWriterOptions options;
    std::vector<fs::path> scratch;  // one per part
    std::FILE* out = nullptr;
    std::uint64_t inPart = 0;  // bytes in the current part
    std::vector<Record> records;
    bool failed = false;

    ~Impl() { discard(); }

    void discard() {
        if (out) std::fclose(out);
        out = nullptr;
        std::error_code ec;
        for (const auto& s : scratch) fs::remove(s, ec);
        scratch.clear();
    }
    std::uint32_t disk() const { return static_cast<std::uint32_t>(scratch.size() - 1); }

    base::Status newPart() {
        if (out && std::fclose(out) != 0) return WriteFailed(path);
        fs::path next = tools::HostPath(path);
        next += ".ferrolund-part" + std::to_string(scratch.size() + 1);
        out = std::fopen(next.c_str(), "wb");
        if (!out) return WriteFailed(path);
        scratch.push_back(next);
        inPart = 0;
        return {};
    }
    // Bytes that may run on into the next part.
    base::Status write(const char* data, std::size_t length) {
        while (length > 0) {
            std::uint64_t room = options.partSize ? options.partSize - inPart : length;
            if (room == 0) {
                if (base::Status s = newPart()) return s;
                room = options.partSize;
            }
            const std::size_t now = static_cast<std::size_t>(std::min<std::uint64_t>(room, length));
            if (std::fwrite(data, 1, now, out) != now) return WriteFailed(path);
            inPart += now;
            data += now;
            length -= now;
        }
        return {};
    }
    // A record that must stand whole in one part.
    base::Status writeWhole(const std::string& bytes) {
        if (options.partSize && inPart + bytes.size() > options.partSize) {
            if (base::Status s = newPart()) return s;
        }
        return write(bytes.data(), bytes.size());
    }

    std::string localHeader(const Record& r, bool zip64, bool descriptor) const {
        std::string h;
        Put32(h, kLocalHeader);
        Put16(h, zip64 ? 45 : 20);
        Put16(h, r.flags);
        Put16(h, r.method);
        Put16(h, r.time);
        Put16(h, r.date);
        Put32(h, descriptor ? 0 : r.crc);
        Put32(h, descriptor ? 0 : (zip64 ? kMax32 : static_cast<std::uint32_t>(r.compressed)));
        Put32(h, descriptor ? 0 : (zip64 ? kMax32 : static_cast<std::uint32_t>(r.size)));
        Put16(h, static_cast<std::uint16_t>(r.name.size()));
        Put16(h, zip64 ? 20 : 0);
        h += r.name;
        if (zip64) {
            Put16(h, kZip64Extra);
            Put16(h, 16);
            Put64(h, descriptor ? 0 : r.size);
            Put64(h, descriptor ? 0 : r.compressed);
        }
        return h;
    }

    // Starts a record: the local header goes where the next whole record fits.
    base::Status begin(Record& r, bool zip64, bool descriptor) {
        const std::string header = localHeader(r, zip64, descriptor);
        if (options.partSize && inPart + header.size() > options.partSize) {
            if (base::Status s = newPart()) return s;
        }
        r.disk = disk();
        r.offset = inPart;
        return write(header.data(), header.size());
    }
};

ZipWriter::ZipWriter() = default;
ZipWriter::~ZipWriter() { abandon(); }

void ZipWriter::abandon() { impl_.reset(); }

base::Status ZipWriter::create(const std::string& path, const ZipWriterOptions& options) {
    impl_ = std::make_unique<Impl>();
    finalParts_.clear();
    impl_->path = path;
    impl_->options = options;
    impl_->options.level = std::clamp(options.level, 0, 9);
    if (options.partSize && options.partSize < 65536) impl_->options.partSize = 65536;
    const std::size_t cut = path.find_last_of("\\/");
    if (cut != std::string::npos && !tools::CreatePath(path.substr(0, cut))) return base::err::PathNotFound(path);
    if (base::Status s = impl_->newPart()) return s;
    if (impl_->options.partSize) {
        std::string mark;
        Put32(mark, kDataDescriptor);
        return impl_->write(mark.data(), mark.size());
    }
    return {};
}

base::Status ZipWriter::addFolder(const std::string& stored) {
    if (!impl_) return base::err::SubscriptOutOfRange();
    Record r;
    ZipName(stored.empty() || stored.back() == '\\' ? stored : stored + "\\", r);
    DosTime(std::time(nullptr), r.time, r.date);
    r.external = 0x10;
    if (base::Status s = impl_->begin(r, false, false)) return s;
    impl_->records.push_back(r);
    return {};
}

base::Status ZipWriter::addFile(const std::string& source, const std::string& stored) {
    if (!impl_) return base::err::SubscriptOutOfRange();
    Impl& w = *impl_;
    const fs::path host = tools::HostPath(source);
    struct stat info{};
    std::FILE* in = ::stat(host.c_str(), &info) == 0 ? std::fopen(host.c_str(), "rb") : nullptr;
    if (!in) return base::err::FileNotFound(source);
    Record r;
    ZipName(stored, r);
    DosTime(info.st_mtime, r.time, r.date);
    r.flags |= kDescriptorFlag;
    r.method = w.options.level == 0 ? 0 : 8;
    r.external = (static_cast<std::uint32_t>(info.st_mode & 0777) | 0100000u) << 16;
    const bool zip64 = static_cast<std::uint64_t>(info.st_size) >= kMax32 - (1u << 20);
    base::Status status = w.begin(r, zip64, true);
    z_stream z{};
    const bool deflating = r.method == 8;
    if (!status && deflating && deflateInit2(&z, w.options.level, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        status = WriteFailed(w.path);
    }
    std::vector<char> piece(kPiece), packed(kPiece);
    uLong crc = crc32(0L, Z_NULL, 0);
    bool more = !status;
    while (more) {
        const std::size_t got = std::fread(piece.data(), 1, piece.size(), in);
        if (got < piece.size() && std::ferror(in)) {
            status = base::err::PathFileAccess(source);
            break;
        }
        more = got == piece.size();
        crc = crc32(crc, reinterpret_cast<const Bytef*>(piece.data()), static_cast<uInt>(got));
        r.size += got;
        if (!deflating) {
            status = w.write(piece.data(), got);
            r.compressed += got;
            if (status) break;
            continue;
        }
        z.next_in = reinterpret_cast<Bytef*>(piece.data());
        z.avail_in = static_cast<uInt>(got);
        const int flush = more ? Z_NO_FLUSH : Z_FINISH;
        int rc = Z_OK;
        do {
            z.next_out = reinterpret_cast<Bytef*>(packed.data());
            z.avail_out = static_cast<uInt>(packed.size());
            rc = deflate(&z, flush);
            const std::size_t have = packed.size() - z.avail_out;
            r.compressed += have;
            if ((status = w.write(packed.data(), have))) break;
        } while (z.avail_out == 0 || (flush == Z_FINISH && rc != Z_STREAM_END));
        if (status) break;
    }
    if (deflating) deflateEnd(&z);
    std::fclose(in);
    if (status) return status;
    r.crc = static_cast<std::uint32_t>(crc);
    std::string descriptor;
    Put32(descriptor, kDataDescriptor);
    Put32(descriptor, r.crc);
    if (zip64) {
        Put64(descriptor, r.compressed);
        Put64(descriptor, r.size);
    } else {
        Put32(descriptor, static_cast<std::uint32_t>(r.compressed));
        Put32(descriptor, static_cast<std::uint32_t>(r.size));
    }
    if (base::Status s = w.writeWhole(descriptor)) return s;
    w.records.push_back(r);
    return {};
}

base::Status ZipWriter::addRaw(const ZipArchive& from, const ArchiveEntry& entry) {
    if (!impl_) return base::err::SubscriptOutOfRange();
    Impl& w = *impl_;
    if (entry.isFolder) return addFolder(entry.stored);
    Record r;
    ZipName(entry.stored, r);
    DosTime(entry.modified, r.time, r.date);
    r.method = entry.method;
    r.crc = entry.crc;
    r.size = entry.size;
    r.compressed = entry.compressedSize;
    r.external = 0100644u << 16;
    const bool zip64 = r.size >= kMax32 || r.compressed >= kMax32;
    if (base::Status s = w.begin(r, zip64, false)) return s;
    std::uint64_t copied = 0;
    if (base::Status s = from.readRaw(entry.index, [&](const char* data, std::size_t length) {
            copied += length;
            return w.write(data, length);
        })) {
        return s;
    }
    if (copied != r.compressed) return base::err::InputPastEnd();
    w.records.push_back(r);
    return {};
}

base::Status ZipWriter::finish() {
    if (!impl_) return base::err::SubscriptOutOfRange();
    Impl& w = *impl_;
    std::uint64_t cdOffset = w.inPart;
    std::uint32_t cdStartDisk = w.disk();
    std::uint64_t cdSize = 0;
    std::uint64_t onLastDisk = 0;  // directory records in the part that ends the set
    bool first = true;
    for (const Record& r : w.records) {
        const bool big = r.size >= kMax32 || r.compressed >= kMax32 || r.offset >= kMax32 || r.disk >= 0xffff;
        std::string extra;
        if (big) {
            std::string fields;
            if (r.size >= kMax32) Put64(fields, r.size);
            if (r.compressed >= kMax32) Put64(fields, r.compressed);
            if (r.offset >= kMax32) Put64(fields, r.offset);
            if (r.disk >= 0xffff) Put32(fields, r.disk);
            Put16(extra, kZip64Extra);
            Put16(extra, static_cast<std::uint16_t>(fields.size()));
            extra += fields;
        }
        std::string h;
        Put32(h, kCentralHeader);
        Put16(h, 0x031e);  // made on a Unix-like system, format 3.0
        Put16(h, big ? 45 : 20);
        Put16(h, r.flags);
        Put16(h, r.method);
        Put16(h, r.time);
        Put16(h, r.date);
        Put32(h, r.crc);
        Put32(h, r.compressed >= kMax32 ? kMax32 : static_cast<std::uint32_t>(r.compressed));
        Put32(h, r.size >= kMax32 ? kMax32 : static_cast<std::uint32_t>(r.size));
        Put16(h, static_cast<std::uint16_t>(r.name.size()));
        Put16(h, static_cast<std::uint16_t>(extra.size()));
        Put16(h, 0);
        Put16(h, r.disk >= 0xffff ? 0xffff : static_cast<std::uint16_t>(r.disk));
        Put16(h, 0);
        Put32(h, r.external);
        Put32(h, r.offset >= kMax32 ? kMax32 : static_cast<std::uint32_t>(r.offset));
        h += r.name;
        h += extra;
        if (w.options.partSize && w.inPart + h.size() > w.options.partSize) {
            if (base::Status s = w.newPart()) return s;
            onLastDisk = 0;
        }
        if (first) {
            cdOffset = w.inPart;
            cdStartDisk = w.disk();
            first = false;
        }
        if (base::Status s = w.write(h.data(), h.size())) return s;
        cdSize += h.size();
        ++onLastDisk;
    }
    const std::uint64_t count = w.records.size();
    const bool zip64 = count >= 0xffff || cdSize >= kMax32 || cdOffset >= kMax32 || w.disk() + 1 >= 0xffff;
    const std::size_t endLength = 22 + (zip64 ? 56 + 20 : 0);
    if (w.options.partSize && w.inPart + endLength > w.options.partSize) {
        if (base::Status s = w.newPart()) return s;
        onLastDisk = 0;
    }
    const std::uint32_t lastDisk = w.disk();
    std::string end;
    if (zip64) {
        const std::uint64_t end64Offset = w.inPart;
        Put32(end, kEnd64);
        Put64(end, 44);
        Put16(end, 0x031e);
        Put16(end, 45);
        Put32(end, lastDisk);
        Put32(end, cdStartDisk);
        Put64(end, onLastDisk);
        Put64(end, count);
        Put64(end, cdSize);
        Put64(end, cdOffset);
        Put32(end, kEnd64Locator);
        Put32(end, lastDisk);
        Put64(end, end64Offset);
        Put32(end, lastDisk + 1);
    }
    Put32(end, kEndOfDirectory);
    Put16(end, static_cast<std::uint16_t>(std::min<std::uint32_t>(lastDisk, 0xffff)));
    Put16(end, static_cast<std::uint16_t>(std::min<std::uint32_t>(cdStartDisk, 0xffff)));
    Put16(end, static_cast<std::uint16_t>(std::min<std::uint64_t>(onLastDisk, 0xffff)));
    Put16(end, static_cast<std::uint16_t>(std::min<std::uint64_t>(count, 0xffff)));
    Put32(end, static_cast<std::uint32_t>(std::min<std::uint64_t>(cdSize, kMax32)));
    Put32(end, static_cast<std::uint32_t>(std::min<std::uint64_t>(cdOffset, kMax32)));
    Put16(end, 0);
    if (base::Status s = w.write(end.data(), end.size())) return s;
    if (std::fclose(w.out) != 0) {
        w.out = nullptr;
        return WriteFailed(w.path);
    }
    w.out = nullptr;
    // A set that fits in one part is an ordinary archive: its start mark says so.
    if (w.options.partSize && w.scratch.size() == 1) {
        std::FILE* f = std::fopen(w.scratch[0].c_str(), "r+b");
        if (!f) return WriteFailed(w.path);
        std::string mark;
        Put32(mark, 0x30304b50);
        const bool ok = std::fwrite(mark.data(), 1, 4, f) == 4;
        if (std::fclose(f) != 0 || !ok) return WriteFailed(w.path);
    }
    // Put the parts in place: .z01, .z02, ... and the archive's own name last.
    const std::size_t dot = w.path.rfind('.');
    const std::string stem = dot == std::string::npos ? w.path : w.path.substr(0, dot);
    std::vector<std::string> names;
    for (std::size_t i = 0; i + 1 < w.scratch.size(); ++i) {
        names.push_back(PartName(stem, 'z', static_cast<int>(i + 1)));
    }
    names.push_back(w.path);
    for (const std::string& old : EarlierParts(w.path)) {
        std::error_code ec;
        fs::remove(tools::HostPath(old), ec);
        tools::ForgetPath(old);
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::error_code ec;
        fs::rename(w.scratch[i], tools::HostPath(names[i]), ec);
        tools::ForgetPath(names[i]);
        if (ec) return WriteFailed(names[i]);
    }
    w.scratch.clear();
    finalParts_ = names;
    impl_.reset();
    return {};
}

}  // namespace ferrolund::archives
