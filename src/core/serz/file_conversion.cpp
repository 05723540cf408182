#include "serz/file_conversion.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>

namespace ferrolund::serz {

namespace fs = std::filesystem;

namespace {

CodecError FileError(const fs::path& path, const std::string& reason) { return {path.string() + ": " + reason}; }

CodecStatus ReadWhole(const fs::path& path, std::string& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return FileError(path, std::strerror(errno));
    std::error_code ec;
    auto size = fs::file_size(path, ec);
    if (ec) return FileError(path, ec.message());
    bytes.resize(static_cast<std::size_t>(size));
    if (!in.read(bytes.data(), static_cast<std::streamsize>(size))) return FileError(path, "cannot be read");
    return std::nullopt;
}

CodecStatus WriteThenRename(const fs::path& target, const std::string& bytes) {
    fs::path partial = target;
    partial += ".partial";
    {
        std::ofstream out(partial, std::ios::binary | std::ios::trunc);
        if (!out) return FileError(target, std::strerror(errno));
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out) {
            std::error_code ignored;
            fs::remove(partial, ignored);
            return FileError(target, "cannot be written");
        }
    }
    std::error_code ec;
    fs::rename(partial, target, ec);
    if (ec) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        return FileError(target, ec.message());
    }
    return std::nullopt;
}

}  // namespace

CodecStatus ConvertFile(const fs::path& source, const fs::path& target, Direction direction, const XmlStyle& style) {
    try {
        std::string input;
        if (auto failure = ReadWhole(source, input)) return failure;
        std::string output;
        CodecStatus status = direction == Direction::ToXml ? BinaryToXml(input, output, style) : XmlToBinary(input, output);
        if (status) return FileError(source, status->message);
        return WriteThenRename(target, output);
    } catch (const std::exception& e) {  // out of memory on an absurd file, mostly
        return FileError(source, e.what());
    }
}

}  // namespace ferrolund::serz
