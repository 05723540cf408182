#include "assets/blueprint_files.h"

#include <algorithm>

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;

namespace {

std::string Value(std::string_view xml, std::string_view tag, long pos) {
    std::string value;
    tools::GetDetail(xml, pos, tag, value, tools::kBlueprintTagOptions);
    return value;
}

bool StartsWithIgnoreCase(std::string_view text, std::string_view head) {
    return text.size() >= head.size() && tools::EqualsIgnoreCase(text.substr(0, head.size()), head);
}

// The folder one level up: up to and including the last '\' before the final character.
std::string FolderUp(const std::string& folder) {
    if (folder.size() < 2) return folder;
    const std::size_t cut = folder.find_last_of("\\/", folder.size() - 2);
    return cut == std::string::npos ? folder : folder.substr(0, cut + 1);
}

// The texture value of a TextureByName line with its "[nn]" marker cut out.
std::string TextureValue(std::string_view line) {
    const std::size_t open = line.find('>');
    if (open == std::string_view::npos) return {};
    const std::size_t close = line.find('<', open + 1);
    std::string value(line.substr(open + 1, close == std::string_view::npos ? std::string_view::npos : close - open - 1));
    const std::size_t mark = value.find('[');
    if (mark == 0) {
        value.erase(0, std::min<std::size_t>(4, value.size()));
    } else if (mark != std::string::npos) {
        value.erase(mark, 4);
    }
    return value;
}

// The folder a "..\" value is relative to.
std::string TexturePrefix(std::string& value, const std::string& base, const std::string& geometryFile) {
    if (StartsWithIgnoreCase(value, "text") || value.compare(0, 3, "..\\") != 0) return base;
    const int n = CountParentSteps(value);
    value.erase(0, static_cast<std::size_t>(3 * n));
    if (n == 1) return FolderUp(base);
    if (n == 2) return FolderUp(FolderUp(base));
    const std::size_t firstEnd = value.find('\\');
    const std::string element = value.substr(0, firstEnd == std::string::npos ? value.size() : firstEnd + 1);
    if (const long at = InStr(base, element); at > 0) return base.substr(0, static_cast<std::size_t>(at - 1));
    std::size_t cut = geometryFile.size();
    for (int k = 0; k < n && cut != std::string::npos && cut > 0; ++k) cut = geometryFile.find_last_of('\\', cut - 1);
    return cut == std::string::npos ? base : geometryFile.substr(0, cut + 1);
}

// The XML of a binary file, or empty when it cannot be converted.
std::string ConvertedText(app::AppContext& ctx, const std::string& file) {
    std::string xml;
    if (tools::SerzReadXml(ctx, file, xml)) return {};
    return xml;
}

std::string FolderOf(const std::string& file) {
    const std::size_t cut = file.find_last_of("\\/");
    return cut == std::string::npos ? std::string() : file.substr(0, cut + 1);
}

// Adds the file if it exists (trying its repaired form too); otherwise the missing line.
// Gives the name that exists, or empty.
std::string AddExisting(ReportList& report, const std::string& file) {
    std::string found = file;
    if (!tools::FileExists(found)) found = tools::FixEntitiesCopy(file);
    if (!tools::FileExists(found)) {
        report.addMissing(file);
        return {};
    }
    report.add(found);
    return found;
}

// A sound proxy and the sound files it names.
void AddProxy(const std::string& root, const std::string& proxyFile, ReportList& report) {
    const std::string found = AddExisting(report, proxyFile);
    if (found.empty()) return;
    const std::string text = tools::ReadTextFile(found);
    for (long at = InStr(text, "<Pathname"); at > 0; at = InStr(at + 1, text, "<Pathname")) {
        const std::string file = Value(text, "Filename", at);
        if (!file.empty()) report.add(root + file);
    }
}

void AddGeometry(app::AppContext& ctx, const std::string& geometryFile, ReportList& report) {
    CheckTexture(ConvertedText(ctx, geometryFile), FolderOf(geometryFile), geometryFile, TextureForm::Listing, report);
}

}  // namespace

std::vector<TextureEntry> TextureEntries(std::string_view xml, const std::string& base, const std::string& geometryFile,
                                         bool stopAtBlob) {
    std::vector<TextureEntry> entries;
    bool inBlock = false;
    std::size_t start = 0;
    while (start < xml.size()) {
        std::size_t end = xml.find('\n', start);
        if (end == std::string_view::npos) end = xml.size();
        const std::string_view line = xml.substr(start, end - start);
        start = end + 1;
        if (InStr(line, "<Owner ") > 0) break;
        if (stopAtBlob && InStr(line, "<d:blob") > 0) break;
        if (!inBlock) {
            inBlock = InStr(line, "<TextureByName") > 0;
            continue;
        }
        if (InStr(line, "</TextureByName") > 0 || InStr(line, "<e") == 0) {
            inBlock = false;
            continue;
        }
        const std::size_t open = line.find('>');
        const std::size_t mark = open == std::string_view::npos ? open : line.find('[', open);
        std::string value = TextureValue(line);
        const std::string cut = value;
        std::string file = TexturePrefix(value, base, geometryFile) + value + ".TgPcDx";
        const std::size_t close = open == std::string_view::npos ? open : line.find('<', open + 1);
        std::string element(open == std::string_view::npos ? std::string_view()
                                                            : line.substr(open + 1, close == std::string_view::npos
                                                                                        ? std::string_view::npos
                                                                                        : close - open - 1));
        entries.push_back({std::move(file),
                           mark == std::string_view::npos ? std::string("00") : std::string(line.substr(mark + 1, 2)),
                           std::move(element), cut});
    }
    return entries;
}

void CheckTexture(std::string_view xml, const std::string& base, const std::string& geometryFile, TextureForm form,
                  ReportList& report) {
    for (const TextureEntry& entry : TextureEntries(xml, base, geometryFile, form == TextureForm::ListingToBlob)) {
        if (form != TextureForm::Checking) {
            report.add(entry.file);
        } else if (!tools::FileExists(entry.file) && !tools::FileExists(tools::FixEntitiesCopy(entry.file))) {
            report.addMissing(entry.file);
        }
    }
}

std::vector<std::string> ShowTexture(std::string_view xml, const std::string& base, const std::string& geometryFile) {
    std::vector<std::string> files;
    for (TextureEntry& entry : TextureEntries(xml, base, geometryFile, true)) files.push_back(std::move(entry.file));
    return files;
}

void GetAudio(app::AppContext& ctx, const std::string& blueprintFile, ReportList& report) {
    const std::string root = ctx.gameRoot() + "\\Assets\\";
    const std::string xml = ConvertedText(ctx, blueprintFile);
    for (long at = InStr(xml, "<SoundComponent>"); at > 0; at = InStr(at + 1, xml, "<SoundComponent>")) {
        const std::string proxy = Value(xml, "ProxyName", at);
        if (!proxy.empty()) AddProxy(root, root + proxy + ".proxyxml", report);
    }
    if (InStr(xml, "<cTrackSoundBlueprint>") == 0) return;
    for (const char* element : {"RumbleAudioControlName", "TingleAudioControlName", "JunctionAudioControlName",
                                "DerailmentAudioControlName"}) {
        const std::string proxy = Value(xml, element, 1);
        if (!proxy.empty()) AddProxy(root, root + proxy + ".proxyxml", report);
    }
}

void GetAssetBits(app::AppContext& ctx, const BlueprintRef& row, ReportList& report) {
    const std::string root = ctx.gameRoot() + "\\Assets\\";
    const std::string file = BlueprintFile(ctx.gameRoot(), row);
    report.add(file);
    report.currentBlueprint = file;
    const std::string xml = ConvertedText(ctx, file);
    if (xml.empty()) return;

    long pos = 1;
    if (const long anim = InStr(xml, "<AnimSet>"); anim > 0) {
        pos = anim;
        const std::string folder = FolderOf(file);
        while (pos > 0) {
            std::string value;
            long next = pos;
            tools::GetDetail(xml, next, "AnimationName", value);
            if (next == 0 || value.empty()) break;
            pos = next;
            const std::size_t cut = value.find_last_of('\\');
            report.add(folder + (cut == std::string::npos ? value : value.substr(cut + 1)) + ".ban");
        }
        report.add({});
    }
    for (long hit = InStr(std::max(pos, 1L), xml, "Audio"); hit > 0; hit = InStr(hit + 50, xml, "Audio")) {
        const long provider = tools::InStrRev(xml, "<Provider", hit);
        if (provider == 0) continue;
        if (auto audio = ReadTriple(xml, provider)) GetAudio(ctx, BlueprintFile(ctx.gameRoot(), *audio), report);
    }
    if (const long geometry = InStr(xml, "<GeometryID"); geometry > 0) {
        const std::string value = Value(xml, "GeometryID", std::max(1L, geometry - 20));
        const std::string geometryFile = root + CutMarker(value) + ".GeoPcDx";
        report.add(geometryFile);
        AddGeometry(ctx, geometryFile, report);
        report.add({});
    } else {
        GetLoftBits(ctx, xml, report);
    }
}

void GetLoftBits(app::AppContext& ctx, std::string_view xml, ReportList& report) {
    const std::string root = ctx.gameRoot() + "\\Assets\\";
    struct Section { const char* tag; const char* extension; };
    for (const Section s : {Section{"GeometryID", ".GeoPcDx"}, Section{"CrossSectionID", ".XSec"}}) {
        const long at = InStr(xml, std::string("<") + s.tag);
        if (at == 0) continue;
        const std::string file = root + CutMarker(Value(xml, s.tag, at)) + s.extension;
        report.add(file);
        AddGeometry(ctx, file, report);
        report.add({});
    }
}

void CloseReport(ReportList& report) {
    if (!report.text.empty()) report.text += "\r\n+++\r\n";
}

void FindMinMax(const std::vector<double>& values, double& min, double& max) {
    min = max = 0;
    if (values.empty()) return;
    const auto [lo, hi] = std::minmax_element(values.begin(), values.end());
    min = *lo;
    max = *hi;
}

}  // namespace ferrolund::assets
