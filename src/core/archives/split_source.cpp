#include "archives/split_source.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "archives/zip_format.h"
#include "tools/host_path.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;
using namespace zipfmt;

namespace {

// The longest central directory this program takes into memory.
constexpr std::uint64_t kMaxDirectory = 512ull << 20;

base::RunError NotSplit(const std::string& path, const std::string& why) {
    return {base::err::kPathFileAccess, "The parts of " + path + " do not make an archive: " + why};
}

struct PartFiles {
    std::vector<fs::path> files;
    std::vector<std::uint64_t> starts;  // of each part in the joined stream, and the total last
    std::FILE* open = nullptr;
    std::size_t openIndex = 0;

    ~PartFiles() {
        if (open) std::fclose(open);
    }
    std::uint64_t total() const { return starts.back(); }

    // Reads up to `length` bytes at `at` of the joined stream; fewer only at its end or on
    // a failure (-1).
    long long read(std::uint64_t at, char* into, std::uint64_t length) {
        std::uint64_t done = 0;
        while (done < length && at + done < total()) {
            const std::uint64_t pos = at + done;
            const std::size_t part =
                static_cast<std::size_t>(std::upper_bound(starts.begin(), starts.end(), pos) - starts.begin() - 1);
            if (!open || openIndex != part) {
                if (open) std::fclose(open);
                open = std::fopen(files[part].c_str(), "rb");
                openIndex = part;
                if (!open) return -1;
            }
            const std::uint64_t inPart = pos - starts[part];
            const std::uint64_t want = std::min(length - done, starts[part + 1] - pos);
            if (fseeko(open, static_cast<off_t>(inPart), SEEK_SET) != 0) return -1;
            const std::size_t got = std::fread(into + done, 1, static_cast<std::size_t>(want), open);
            if (got == 0) return -1;
            done += got;
        }
        return static_cast<long long>(done);
    }
    bool readExactly(std::uint64_t at, std::string& into, std::uint64_t length) {
        into.assign(static_cast<std::size_t>(length), '\0');
        return read(at, into.data(), length) == static_cast<long long>(length);
    }
};

struct SplitState {
    PartFiles parts;
    std::uint64_t directoryStart = 0;  // where the rewritten tail begins
    std::string directory;             // the rewritten tail: central directory and end records
    std::uint64_t position = 0;
    zip_error_t error{};

    std::uint64_t length() const { return parts.total(); }
};

// Finds the end record in the last part; gives its place in the joined stream.
bool FindEnd(PartFiles& parts, std::uint64_t& endAt, std::string& end) {
    const std::uint64_t lastStart = parts.starts[parts.starts.size() - 2];
    const std::uint64_t lastSize = parts.total() - lastStart;
    if (lastSize < 22) return false;
    const std::uint64_t span = std::min<std::uint64_t>(lastSize, 22 + 0xffff);
    std::string tail;
    if (!parts.readExactly(parts.total() - span, tail, span)) return false;
    for (std::size_t i = tail.size() - 22 + 1; i-- > 0;) {
        if (Get32(tail, i) == kEndOfDirectory && i + 22 + Get16(tail, i + 20) == tail.size()) {
            endAt = parts.total() - span + i;
            end = tail.substr(i, 22);
            return true;
        }
    }
    return false;
}

// Rewrites the disk numbers and offsets of the central directory in `dir` (which starts
// with it) as single-part values.
bool RewriteDirectory(SplitState& s, std::uint64_t entries, std::uint64_t size, std::string& why) {
    std::string& d = s.directory;
    std::size_t at = 0;
    for (std::uint64_t n = 0; n < entries; ++n) {
        if (at + 46 > size || Get32(d, at) != kCentralHeader) {
            why = "the central directory is damaged";
            return false;
        }
        const std::size_t nameLen = Get16(d, at + 28), extraLen = Get16(d, at + 30), commentLen = Get16(d, at + 32);
        const std::size_t extraAt = at + 46 + nameLen;
        if (extraAt + extraLen + commentLen > size) {
            why = "the central directory is damaged";
            return false;
        }
        // The Zip64 fields present, in their order.
        std::size_t z64 = 0, z64Len = 0;
        for (std::size_t e = extraAt; e + 4 <= extraAt + extraLen;) {
            const std::size_t len = Get16(d, e + 2);
            if (Get16(d, e) == kZip64Extra) {
                z64 = e + 4;
                z64Len = len;
            }
            e += 4 + len;
        }
        std::size_t field = z64;
        auto take = [&](bool present, std::size_t width) -> std::size_t {
            if (!present) return 0;
            if (!z64 || field + width > z64 + z64Len) return std::string::npos;
            const std::size_t here = field;
            field += width;
            return here;
        };
        const bool bigSize = Get32(d, at + 24) == 0xffffffffu, bigComp = Get32(d, at + 20) == 0xffffffffu;
        const bool bigOffset = Get32(d, at + 42) == 0xffffffffu, bigDisk = Get16(d, at + 34) == 0xffff;
        take(bigSize, 8);
        take(bigComp, 8);
        const std::size_t offsetField = take(bigOffset, 8);
        const std::size_t diskField = take(bigDisk, 4);
        if (offsetField == std::string::npos || diskField == std::string::npos) {
            why = "a Zip64 field is missing";
            return false;
        }
        const std::uint64_t disk = bigDisk ? Get32(d, diskField) : Get16(d, at + 34);
        const std::uint64_t offset = bigOffset ? Get64(d, offsetField) : Get32(d, at + 42);
        if (disk + 1 >= s.parts.starts.size()) {
            why = "an entry names a part that is missing";
            return false;
        }
        const std::uint64_t absolute = s.parts.starts[disk] + offset;
        if (bigOffset) {
            Set64(d, offsetField, absolute);
        } else if (absolute < 0xffffffffu) {
            Set32(d, at + 42, static_cast<std::uint32_t>(absolute));
        } else {
            why = "an offset is too large";
            return false;
        }
        if (bigDisk) Set32(d, diskField, 0);
        else Set16(d, at + 34, 0);
        at = extraAt + extraLen + commentLen;
    }
    return true;
}

zip_int64_t Callback(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    auto* s = static_cast<SplitState*>(state);
    switch (command) {
    case ZIP_SOURCE_OPEN:
        s->position = 0;
        return 0;
    case ZIP_SOURCE_READ: {
        const std::uint64_t want = std::min<std::uint64_t>(length, s->length() - std::min(s->position, s->length()));
        auto* out = static_cast<char*>(data);
        std::uint64_t done = 0;
        if (s->position < s->directoryStart) {
            const std::uint64_t fromParts = std::min(want, s->directoryStart - s->position);
            if (s->parts.read(s->position, out, fromParts) != static_cast<long long>(fromParts)) {
                zip_error_set(&s->error, ZIP_ER_READ, EIO);
                return -1;
            }
            done = fromParts;
        }
        if (done < want) {
            const std::uint64_t from = s->position + done - s->directoryStart;
            std::memcpy(out + done, s->directory.data() + from, static_cast<std::size_t>(want - done));
            done = want;
        }
        s->position += done;
        return static_cast<zip_int64_t>(done);
    }
    case ZIP_SOURCE_CLOSE:
        return 0;
    case ZIP_SOURCE_STAT: {
        auto* st = static_cast<zip_stat_t*>(data);
        zip_stat_init(st);
        st->size = s->length();
        st->valid |= ZIP_STAT_SIZE;
        return sizeof(zip_stat_t);
    }
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&s->error, data, length);
    case ZIP_SOURCE_FREE:
        zip_error_fini(&s->error);
        delete s;
        return 0;
    case ZIP_SOURCE_SEEK: {
        const zip_int64_t to = zip_source_seek_compute_offset(s->position, s->length(), data, length, &s->error);
        if (to < 0) return -1;
        s->position = static_cast<std::uint64_t>(to);
        return 0;
    }
    case ZIP_SOURCE_TELL:
        return static_cast<zip_int64_t>(s->position);
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                                              ZIP_SOURCE_SUPPORTS, -1);
    default:
        zip_error_set(&s->error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

}  // namespace

zip_source_t* OpenSplitSource(const std::vector<std::string>& parts, base::Status& error) {
    const std::string& name = parts.back();
    auto state = std::make_unique<SplitState>();
    zip_error_init(&state->error);
    PartFiles& files = state->parts;
    files.starts.push_back(0);
    for (const auto& part : parts) {
        std::error_code ec;
        fs::path host = tools::HostPath(part);
        const auto size = fs::file_size(host, ec);
        if (ec) {
            error = base::err::FileNotFound(part);
            return nullptr;
        }
        files.files.push_back(host);
        files.starts.push_back(files.starts.back() + size);
    }
    std::uint64_t endAt = 0;
    std::string end;
    if (!FindEnd(files, endAt, end)) {
        error = NotSplit(name, "no end record");
        return nullptr;
    }
    std::uint64_t cdDisk = Get16(end, 6), entries = Get16(end, 10), cdSize = Get32(end, 12), cdOffset = Get32(end, 16);
    std::uint64_t end64At = 0, locatorAt = 0;
    std::string locator;
    if (endAt >= 20 && files.readExactly(endAt - 20, locator, 20) && Get32(locator, 0) == kEnd64Locator) {
        locatorAt = endAt - 20;
        const std::uint64_t disk = Get32(locator, 4);
        if (disk + 1 >= files.starts.size()) {
            error = NotSplit(name, "the Zip64 end record names a missing part");
            return nullptr;
        }
        end64At = files.starts[disk] + Get64(locator, 8);
        std::string end64;
        if (!files.readExactly(end64At, end64, 56) || Get32(end64, 0) != kEnd64) {
            error = NotSplit(name, "the Zip64 end record is damaged");
            return nullptr;
        }
        cdDisk = Get32(end64, 20);
        entries = Get64(end64, 32);
        cdSize = Get64(end64, 40);
        cdOffset = Get64(end64, 48);
    }
    if (cdDisk + 1 >= files.starts.size()) {
        error = NotSplit(name, "the central directory names a missing part");
        return nullptr;
    }
    state->directoryStart = files.starts[cdDisk] + cdOffset;
    const std::uint64_t dirEnd = end64At ? end64At : endAt;
    if (state->directoryStart + cdSize > dirEnd || files.total() - state->directoryStart > kMaxDirectory) {
        error = NotSplit(name, "the central directory lies outside the parts");
        return nullptr;
    }
    if (!files.readExactly(state->directoryStart, state->directory, files.total() - state->directoryStart)) {
        error = NotSplit(name, "a part cannot be read");
        return nullptr;
    }
    std::string why;
    if (!RewriteDirectory(*state, entries, cdSize, why)) {
        error = NotSplit(name, why);
        return nullptr;
    }
    std::string& d = state->directory;
    const std::size_t e = static_cast<std::size_t>(endAt - state->directoryStart);
    Set16(d, e + 4, 0);
    Set16(d, e + 6, 0);
    Set16(d, e + 8, Get16(d, e + 10));
    if (Get32(d, e + 16) != 0xffffffffu) {
        if (state->directoryStart >= 0xffffffffu) {
            error = NotSplit(name, "an offset is too large");
            return nullptr;
        }
        Set32(d, e + 16, static_cast<std::uint32_t>(state->directoryStart));
    }
    if (locatorAt) {
        const std::size_t z = static_cast<std::size_t>(end64At - state->directoryStart);
        const std::size_t l = static_cast<std::size_t>(locatorAt - state->directoryStart);
        Set32(d, z + 16, 0);
        Set32(d, z + 20, 0);
        Set64(d, z + 24, entries);
        Set64(d, z + 48, state->directoryStart);
        Set32(d, l + 4, 0);
        Set64(d, l + 8, end64At);
        Set32(d, l + 16, 1);
    }
    zip_error_t zerr;
    zip_error_init(&zerr);
    zip_source_t* source = zip_source_function_create(Callback, state.get(), &zerr);
    zip_error_fini(&zerr);
    if (!source) {
        error = NotSplit(name, "out of memory");
        return nullptr;
    }
    state.release();
    return source;
}

}  // namespace ferrolund::archives
