#include "textures/tgpcdx_dds.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "serz/binary_reader.h"
#include "serz/codec.h"
#include "tools/backup.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::textures {

namespace {

constexpr std::array<TextureFormat, 5> kFormats{{
    {"HC_IMAGE_FORMAT_COMPRESSED", "DXT1 ARGB", PixelKind::Compressed, '1'},
    {"HC_IMAGE_FORMAT_COMPRESSED_EXPL_ALPHA", "DXT3 ARGB", PixelKind::Compressed, '3'},
    {"HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA", "DXT5 ARGB", PixelKind::Compressed, '5'},
    {"HC_IMAGE_FORMAT_COL888", "RGB 8.8.8", PixelKind::Plain1, 0},
    {"HC_IMAGE_FORMAT_COLA8888", "ARGB 8.8.8.8", PixelKind::Plain2, 0},
}};

constexpr std::string_view kBlobOpen = "<d:blob";
constexpr std::string_view kBlobClose = "</d:blob";

// The text between the '>' of the first `open` tag and the next '<'; npos-free: empty
// when absent. `found` says whether the tag was there.
std::string_view ElementText(std::string_view xml, std::string_view open, bool& found) {
    found = false;
    const std::size_t tag = xml.find(open);
    if (tag == std::string_view::npos) return {};
    const std::size_t gt = xml.find('>', tag);
    if (gt == std::string_view::npos) return {};
    const std::size_t lt = xml.find('<', gt);
    if (lt == std::string_view::npos) return {};
    found = true;
    return xml.substr(gt + 1, lt - gt - 1);
}

std::size_t Number(std::string_view text) {
    std::size_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// Format and first-level size from the text before the first level.
std::string ReadHead(std::string_view xml, TextureImage& image) {
    bool found = false;
    const std::string_view tag = ElementText(xml, "<Format", found);
    if (!found) return kNotATexture;
    image.format = FindFormat(tag);
    if (!image.format) return std::string(kUnableToConvert) + "\n" + std::string(tag);
    image.width = static_cast<unsigned>(Number(ElementText(xml, "<Width", found)) & 0xFFFF);
    image.height = static_cast<unsigned>(Number(ElementText(xml, "<Height", found)) & 0xFFFF);
    return {};
}

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

void Put32(std::string& bytes, std::size_t offset, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes[offset + i] = static_cast<char>((value >> (8 * i)) & 0xFF);
}

std::uint32_t Get32(std::string_view bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i) value = (value << 8) | static_cast<unsigned char>(bytes[offset + i]);
    return value;
}

std::string Quoted(std::string_view text) {
    std::string out = "\"";
    for (char c : text) out += c == '"' ? '#' : c;
    return out + "\"\r\n";
}

std::string ReadFile(const std::string& path, bool& ok) {
    std::ifstream in(tools::HostPath(path), std::ios::binary);
    ok = static_cast<bool>(in);
    if (!ok) return {};
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    ok = !in.bad();
    return bytes;
}

bool WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream out(tools::HostPath(path), std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return static_cast<bool>(out);
}

std::string BaseName(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? name : name.substr(0, dot);
}

bool EndsWithNoCase(std::string_view text, std::string_view end) {
    if (text.size() < end.size()) return false;
    return std::equal(end.begin(), end.end(), text.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](char a, char b) { return (a | 0x20) == (b | 0x20); });
}

std::string Beside(const std::string& path, std::string_view extension) {
    const std::size_t slash = path.find_last_of("/\\");
    const std::size_t dot = path.rfind('.');
    const std::string stem = dot == std::string::npos || (slash != std::string::npos && dot < slash) ? path : path.substr(0, dot);
    return stem + std::string(extension);
}

// The original texture with the pixels of `dds` put into its blob records in place, when
// it has the levels of the side file and the same text around them: so everything the
// XML form cannot hold (the game's marker record, its child counts) stays as it was.
// Empty when the original is no such texture.
std::string PatchedOriginal(const std::string& original, const TextureImage& side, std::string_view dds) {
    std::string xml;
    TextureImage image;
    if (serz::BinaryToXml(original, xml) || !ReadTextureXml(xml, image).empty()) return {};
    if (image.blobSize != side.blobSize || SideFileText(image) != SideFileText(side)) return {};
    serz::BinaryReader reader(original);
    if (reader.Start()) return {};
    std::string patched = original;
    std::size_t level = 0, from = kDdsHeaderSize;
    const auto* begin = reinterpret_cast<const unsigned char*>(original.data());
    for (serz::Record record; reader.Next(record);) {
        if (record.kind != serz::Kind::Blob) continue;
        if (level == side.blobSize.size() || record.count != side.blobSize[level]) return {};
        patched.replace(static_cast<std::size_t>(record.payload - begin), record.count, dds.substr(from, record.count));
        from += record.count;
        ++level;
    }
    return reader.failure() || level != side.blobSize.size() ? std::string() : patched;
}

// The .dds of a texture read straight from its binary form: the pixels are copied from
// the blob records, and the XML (for the side file) is made from a copy with the blobs
// emptied, their sizes then put back into the text, so the pixels' hex is never written.
std::string BinaryToDds(std::string_view binary, TextureImage& image, std::string& error) {
    serz::BinaryReader reader(binary);
    std::vector<std::pair<std::size_t, std::size_t>> blobs;  // payload offset, size
    if (reader.Start()) {
        error = kNotATexture;
        return {};
    }
    const auto* begin = reinterpret_cast<const unsigned char*>(binary.data());
    for (serz::Record record; reader.Next(record);)
        if (record.kind == serz::Kind::Blob) blobs.emplace_back(record.payload - begin, record.count);
    std::string emptied, xml;
    std::size_t from = 0;
    for (const auto& [payload, size] : blobs) {
        emptied.append(binary.substr(from, payload - 4 - from));
        emptied.append(4, '\0');
        from = payload + size;
    }
    emptied.append(binary.substr(from));
    if (reader.failure() || serz::BinaryToXml(emptied, xml)) {
        error = kNotATexture;
        return {};
    }
    if (error = ReadTextureXml(xml, image); !error.empty()) return {};
    if (image.blobSize.size() != blobs.size()) {
        error = kNotATexture;
        return {};
    }
    constexpr std::string_view kEmpty = "\"0\">";
    for (std::size_t level = 0; level < blobs.size(); ++level) {
        std::string& before = image.between[level];
        if (!before.ends_with(kEmpty)) {
            error = kNotATexture;
            return {};
        }
        before.replace(before.size() - kEmpty.size() + 1, 1, std::to_string(blobs[level].second));
        image.blobSize[level] = blobs[level].second;
    }
    std::string dds = DdsHeader(image);
    dds.reserve(kDdsHeaderSize + image.PixelBytes());
    for (const auto& [payload, size] : blobs) dds.append(binary.substr(payload, size));
    return dds;
}

ConversionResult Failed(std::string message) {
    ConversionResult result;
    result.error = std::move(message);
    return result;
}

}  // namespace

const TextureFormat* FindFormat(std::string_view tag) {
    for (const TextureFormat& format : kFormats)
        if (tag == format.tag) return &format;
    return nullptr;
}

std::size_t TextureImage::PixelBytes() const {
    std::size_t sum = 0;
    for (std::size_t size : blobSize) sum += size;
    return sum;
}

std::string ReadTextureXml(std::string_view xml, TextureImage& image) {
    image = TextureImage{};
    if (std::string error = ReadHead(xml, image); !error.empty()) return error;
    std::size_t from = 0, previousClose = 0;
    while (true) {
        const std::size_t open = xml.find(kBlobOpen, from);
        if (open == std::string_view::npos) break;
        const std::size_t quote1 = xml.find('"', open);
        const std::size_t quote2 = quote1 == std::string_view::npos ? quote1 : xml.find('"', quote1 + 1);
        if (quote2 == std::string_view::npos || quote2 + 2 > xml.size()) return kNotATexture;
        const std::size_t start = quote2 + 2;
        const std::size_t close = xml.find(kBlobClose, start);
        if (close == std::string_view::npos) return kNotATexture;
        image.between.emplace_back(xml.substr(previousClose, start - previousClose));
        image.blobSize.push_back(Number(xml.substr(quote1 + 1, quote2 - quote1 - 1)));
        image.blobStart.push_back(start);
        image.blobEnd.push_back(close);
        previousClose = close;
        from = close + kBlobClose.size();
        if (image.blobSize.size() > kMaxLevels)
            return std::string(kUnableToConvert) + "\n" + kMultipleTexture;
    }
    if (image.blobSize.empty()) return kNotATexture;
    image.tail = std::string(xml.substr(previousClose));
    return {};
}

std::string DdsHeader(const TextureImage& image) {
    std::string header(kDdsHeaderSize, '\0');
    const std::size_t mips = image.blobSize.size();
    header.replace(0, 4, "DDS ");
    header[4] = '\x7C';
    header[8] = '\x09';
    header[9] = '\x10';
    header[10] = mips > 1 ? '\x0A' : '\x08';
    header[12] = static_cast<char>(image.height & 0xFF);
    header[13] = static_cast<char>(image.height >> 8);
    header[16] = static_cast<char>(image.width & 0xFF);
    header[17] = static_cast<char>(image.width >> 8);
    header[28] = static_cast<char>(mips);
    header[76] = '\x20';
    if (image.format->kind == PixelKind::Compressed) {
        Put32(header, 20, static_cast<std::uint32_t>(image.blobSize.front()));
        header[80] = '\x04';
        header.replace(84, 3, "DXT");
        header[87] = image.format->digit;
        if (mips >= 2) {
            header[108] = '\x08';
            header[109] = '\x10';
            header[110] = '\x40';
        }
        return header;
    }
    if (image.format->kind == PixelKind::Plain2) header[21] = '\x10';
    else header[22] = '\x40';
    for (std::size_t offset : {94, 97, 100, 107}) header[offset] = '\xFF';
    header[80] = '\x41';
    header[88] = '\x20';
    header[109] = '\x10';
    return header;
}

std::string MakeDds(std::string_view xml, const TextureImage& image, std::string& error) {
    std::string dds = DdsHeader(image);
    dds.resize(kDdsHeaderSize + image.PixelBytes());
    char* out = dds.data() + kDdsHeaderSize;
    for (std::size_t level = 0; level < image.blobSize.size(); ++level) {
        const char* const levelEnd = out + image.blobSize[level];
        int high = -1;
        for (std::size_t i = image.blobStart[level]; i < image.blobEnd[level]; ++i) {
            const char c = xml[i];
            if (c == ' ' || c == '\r' || c == '\n' || c == '\t') continue;
            const int value = HexValue(c);
            if (value < 0 || out == levelEnd) {
                error = "Level " + std::to_string(level + 1) + " of the texture holds more than its " +
                        std::to_string(image.blobSize[level]) + " bytes or a character that is no hex digit.";
                return {};
            }
            if (high < 0) {
                high = value;
                continue;
            }
            *out++ = static_cast<char>((high << 4) | value);
            high = -1;
        }
        if (out != levelEnd || high >= 0) {
            error = "Level " + std::to_string(level + 1) + " of the texture is shorter than its " +
                    std::to_string(image.blobSize[level]) + " bytes.";
            return {};
        }
    }
    return dds;
}

std::string SideFileText(const TextureImage& image) {
    std::string text = std::to_string(image.blobSize.size()) + "\r\n";
    for (const std::string& between : image.between) text += Quoted(between);
    for (std::size_t size : image.blobSize) text += std::to_string(size) + "\r\n";
    return text + Quoted(image.tail);
}

bool ReadSideFile(std::string_view text, TextureImage& image) {
    image = TextureImage{};
    std::size_t at = 0;
    auto skip = [&] {
        while (at < text.size() && (text[at] == '\r' || text[at] == '\n' || text[at] == ',' || text[at] == ' ')) ++at;
    };
    auto number = [&](std::size_t& value) {
        skip();
        const auto result = std::from_chars(text.data() + at, text.data() + text.size(), value);
        if (result.ec != std::errc{}) return false;
        at = static_cast<std::size_t>(result.ptr - text.data());
        return true;
    };
    auto quoted = [&](std::string& value) {
        skip();
        if (at >= text.size() || text[at] != '"') return false;
        const std::size_t end = text.find('"', at + 1);
        if (end == std::string_view::npos) return false;
        value.assign(text.substr(at + 1, end - at - 1));
        std::replace(value.begin(), value.end(), '#', '"');
        at = end + 1;
        return true;
    };
    std::size_t mips = 0;
    if (!number(mips) || mips == 0 || mips > kMaxLevels) return false;
    image.between.resize(mips);
    image.blobSize.resize(mips);
    for (std::string& between : image.between)
        if (!quoted(between)) return false;
    for (std::size_t& size : image.blobSize)
        if (!number(size)) return false;
    return quoted(image.tail) && ReadHead(image.between.front(), image).empty();
}

std::string RebuildXml(const TextureImage& side, std::string_view dds) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string xml;
    xml.reserve(side.PixelBytes() * 3 + side.tail.size() + side.between.size() * side.between.front().size());
    std::size_t at = kDdsHeaderSize;
    for (std::size_t level = 0; level < side.blobSize.size(); ++level) {
        xml += side.between[level];
        for (std::size_t i = 0; i < side.blobSize[level]; ++i, ++at) {
            const auto byte = at < dds.size() ? static_cast<unsigned char>(dds[at]) : 0u;
            xml += kDigits[byte >> 4];
            xml += kDigits[byte & 15];
            const bool lineEnd = i % 32 == 31 || i + 1 == side.blobSize[level];
            if (lineEnd) xml += '\n';
            else if (i % 8 == 7) xml += ' ';
        }
        if (!xml.empty() && xml.back() == '\n') xml.pop_back();  // no line end before the closing tag
    }
    return xml + side.tail;
}

std::string ReadDdsInfo(std::string_view dds, DdsInfo& info) {
    info = DdsInfo{};
    if (dds.size() < kDdsHeaderSize || dds.substr(0, 4) != "DDS ") return "This is not a .dds file.";
    info.height = Get32(dds, 12);
    info.width = Get32(dds, 16);
    info.mipCount = std::max<std::uint32_t>(Get32(dds, 28), 1);
    info.pixelBytes = dds.size() - kDdsHeaderSize;
    const std::uint32_t flags = Get32(dds, 80);
    if (flags & 0x4) {
        info.format = std::string(dds.substr(84, 4));
    } else {
        const std::uint32_t bits = Get32(dds, 88);
        if (bits == 24) info.format = "RGB 8.8.8";
        else if (bits == 32) info.format = flags & 0x1 ? "ARGB 8.8.8.8" : "XRGB 8.8.8.8";
        else info.format = "RGB " + std::to_string(bits) + " bits";
    }
    return {};
}

ConversionResult TgPcDxToDds(const std::string& tgpcdx, const std::string& folder, const StopCheck& stop) {
    ConversionResult result;
    auto stopped = [&] { return stop && stop(); };
    auto Stopped = [] {
        ConversionResult halted = Failed("Stopped.");
        halted.stopped = true;
        return halted;
    };
    if (!EndsWithNoCase(tgpcdx, "TgPcDx")) return Failed(kNotTgPcDx);
    bool ok = false;
    const std::string binary = ReadFile(tgpcdx, ok);
    if (!ok) return Failed("Unable to read " + tgpcdx);
    if (stopped()) return Stopped();
    TextureImage image;
    std::string error;
    const std::string dds = BinaryToDds(binary, image, error);
    if (!error.empty()) return Failed(error);
    if (stopped()) return Stopped();
    if (!tools::CreatePath(folder)) return Failed("Unable to make the folder " + folder);
    const std::string base = tools::SystemPath(tools::HostPath(folder) / BaseName(tgpcdx));
    result.output = base + ".dds";
    {
        // A megabyte at a time, so a stop need not wait for the whole of a large texture.
        constexpr std::size_t kChunk = 1 << 20;
        std::ofstream out(tools::HostPath(result.output), std::ios::binary | std::ios::trunc);
        bool halted = false;
        for (std::size_t at = 0; out && at < dds.size(); at += kChunk) {
            if (at > 0 && stopped()) {
                halted = true;
                break;
            }
            out.write(dds.data() + at, static_cast<std::streamsize>(std::min(kChunk, dds.size() - at)));
        }
        out.close();
        if (halted || !out || !WriteFile(base + ".dat", SideFileText(image))) {
            std::error_code ec;
            std::filesystem::remove(tools::HostPath(result.output), ec);
            tools::ForgetPath(result.output);
            if (halted) return Stopped();
            return Failed("Unable to write " + result.output);
        }
    }
    result.label = image.format->label;
    result.mipCount = image.blobSize.size();
    return result;
}

ConversionResult XmlToDdsFile(std::string_view xml, const std::string& ddsPath) {
    TextureImage image;
    if (std::string error = ReadTextureXml(xml, image); !error.empty()) return Failed(error);
    std::string error;
    const std::string dds = MakeDds(xml, image, error);
    if (!error.empty()) return Failed(error);
    ConversionResult result;
    result.output = ddsPath;
    if (!WriteFile(ddsPath, dds) || !WriteFile(Beside(ddsPath, ".dat"), SideFileText(image)))
        return Failed("Unable to write " + ddsPath);
    result.label = image.format->label;
    result.mipCount = image.blobSize.size();
    return result;
}

std::string TgPcDxBytesToDds(std::string_view binary, std::string& error) {
    TextureImage image;
    error.clear();
    return BinaryToDds(binary, image, error);
}

ConversionResult DdsToTgPcDx(const std::string& dds, const std::string& tgpcdx) {
    ConversionResult result;
    bool ok = false;
    const std::string sideText = ReadFile(Beside(dds, ".dat"), ok);
    if (!ok) return Failed(kNoSideFile);
    TextureImage side;
    if (!ReadSideFile(sideText, side)) return Failed(kNoSideFile);
    const std::string bytes = ReadFile(dds, ok);
    if (!ok) return Failed("Unable to read " + dds);
    DdsInfo info;
    if (std::string error = ReadDdsInfo(bytes, info); !error.empty()) return Failed(error);
    const bool compressed = side.format->kind == PixelKind::Compressed;
    const bool formatMatches = compressed ? info.format == std::string("DXT") + side.format->digit
                                          : (Get32(bytes, 80) & 0x4) == 0;
    if (!formatMatches || info.width != side.width || info.height != side.height ||
        info.mipCount != side.blobSize.size() || info.pixelBytes != side.PixelBytes())
        return Failed("The .dds file no longer matches the texture it was made from. It must be saved as " +
                         std::string(side.format->label) + ", " + std::to_string(side.width) + " x " +
                         std::to_string(side.height) + ", with " + std::to_string(side.blobSize.size()) +
                         " mip-maps.");
    std::string binary;
    if (tools::FileExists(tgpcdx)) binary = PatchedOriginal(ReadFile(tgpcdx, ok), side, bytes);
    if (binary.empty()) {
        if (const serz::CodecStatus status = serz::XmlToBinary(RebuildXml(side, bytes), binary)) {
            result = Failed(status->message);
            result.converterFailed = true;
            return result;
        }
    }
    const std::string made = Beside(dds, ".bin");
    if (!WriteFile(made, binary)) {
        (void)tools::DeleteFile(made);
        return Failed("Unable to write " + made);
    }
    const base::Status status = tools::FileExists(tgpcdx)
                                    ? tools::ReplaceWithBackup(made, tgpcdx, tools::kBackupRule, result.backup)
                                    : tools::CopyFileReplacing(made, tgpcdx);
    (void)tools::DeleteFile(made);
    if (status) return Failed(status->description);
    result.output = tgpcdx;
    result.label = side.format->label;
    result.mipCount = side.blobSize.size();
    return result;
}

}  // namespace ferrolund::textures
