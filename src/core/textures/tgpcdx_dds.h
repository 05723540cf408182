#pragma once
// Textures between the game's .TgPcDx form and an ordinary .dds for a paint program. The
// .dds holds the pixels of every mip-map level behind a 128-byte header; the text around
// the pixels goes to a side file "<base>.dat" beside the .dds, so that the way back
// restores it unchanged.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ferrolund::textures {

enum class PixelKind { Compressed, Plain1, Plain2 };

struct TextureFormat {
    const char* tag;    // the text of the XML's <Format>
    const char* label;  // "DXT1 ARGB", ...
    PixelKind kind;
    char digit;  // '1', '3', '5' for the compressed kinds, 0 otherwise
};

// The format of `tag`, or nullptr when the tag is none the conversion knows.
const TextureFormat* FindFormat(std::string_view tag);

// What the conversion takes from the XML text of a texture.
struct TextureImage {
    const TextureFormat* format = nullptr;
    unsigned width = 0, height = 0;  // the first level's, as 16-bit numbers
    std::vector<std::size_t> blobSize;
    std::vector<std::size_t> blobStart, blobEnd;  // the hex text of each level: [start, end)
    std::vector<std::string> between;             // before the first level, then between levels
    std::string tail;                             // from the last level's closing tag on
    std::size_t PixelBytes() const;
};

inline constexpr std::size_t kMaxLevels = 16;
inline constexpr std::size_t kDdsHeaderSize = 128;

// Reads the texture's XML; gives the message for the user on failure, empty on success.
std::string ReadTextureXml(std::string_view xml, TextureImage& image);
// The 128-byte header of the .dds.
std::string DdsHeader(const TextureImage& image);
// The whole .dds: header and the pixels of every level, turned from hex in one pass into
// a buffer sized beforehand. Empty with `error` set when a level's hex is broken or short.
std::string MakeDds(std::string_view xml, const TextureImage& image, std::string& error);

// The side file's text, and reading it back (false when it is not one).
std::string SideFileText(const TextureImage& image);
bool ReadSideFile(std::string_view text, TextureImage& image);
// The texture's XML again: the side file's text around the pixels of `dds`, written as
// the converter writes blobs (rows of four groups of eight bytes).
std::string RebuildXml(const TextureImage& side, std::string_view dds);

// What a .dds says about itself.
struct DdsInfo {
    std::string format;  // "DXT1", "DXT3", "DXT5", "RGB 8.8.8", "ARGB 8.8.8.8", or the four bytes as they are
    unsigned width = 0, height = 0, mipCount = 0;
    std::size_t pixelBytes = 0;  // behind the header
};
// Empty on success; otherwise why the bytes are no .dds.
std::string ReadDdsInfo(std::string_view dds, DdsInfo& info);

struct ConversionResult {
    std::string error;   // the message; empty on success
    std::string output;  // the file written
    std::string backup;  // the old .TgPcDx's new name, when one was replaced
    std::string label;   // the format's label
    std::size_t mipCount = 0;
    bool converterFailed = false;  // the texture's XML could not be made binary again
    bool stopped = false;          // the caller's stop check said so; nothing was left behind
};

// Asked between the steps of a long conversion: true stops it.
using StopCheck = std::function<bool()>;

// Writes "<folder>/<base>.dds" and "<folder>/<base>.dat" for the .TgPcDx at `tgpcdx`
// (system paths); makes the folder when absent. `stop` is asked after reading, after the
// conversion and between the megabytes written; a stop removes what was begun.
ConversionResult TgPcDxToDds(const std::string& tgpcdx, const std::string& folder, const StopCheck& stop = {});
// The same from the texture's XML text, as the editor shows it, to "<ddsPath>" and the side
// file beside it.
ConversionResult XmlToDdsFile(std::string_view xml, const std::string& ddsPath);
// The .dds of a .TgPcDx's bytes, made in memory; empty with `error` set when they are no
// texture the conversion knows.
std::string TgPcDxBytesToDds(std::string_view binary, std::string& error);
// Puts the pixels of `dds` back into a .TgPcDx at `tgpcdx`, with everything else from the
// side file beside the .dds. An existing `tgpcdx` is renamed to a back-up first. Nothing
// is changed when the .dds no longer matches the side file.
ConversionResult DdsToTgPcDx(const std::string& dds, const std::string& tgpcdx);

// The user's messages.
inline constexpr const char* kNotATexture = "This does not appear to be a .TgPcDx texture file?";
inline constexpr const char* kNotTgPcDx = "You do not appear to have opened a .TgPcDx file?";
inline constexpr const char* kUnableToConvert = "Sorry, unable to convert files of the following type at this time:-";
inline constexpr const char* kMultipleTexture = "Multiple-Texture file.";
inline constexpr const char* kNoSideFile =
    "No header file found in TempFiles for this .dds file, cannot process further.";

}  // namespace ferrolund::textures
