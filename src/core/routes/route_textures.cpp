#include "routes/route_textures.h"

#include "assets/blueprint.h"
#include "assets/blueprint_files.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;

namespace {

bool EndsWith(std::string_view text, std::string_view tail) {
    return text.size() >= tail.size() && tools::EqualsIgnoreCase(text.substr(text.size() - tail.size()), tail);
}

bool Present(const std::string& file) {
    return tools::FileExists(file) || tools::FileExists(tools::FixEntitiesCopy(file));
}

// One texture file: present goes to the list, absent to the missing text.
void TestTexture(const std::string& file, const std::string& caller, TextureCheck& check) {
    if (Present(file)) {
        check.textures.push_back(file);
    } else {
        check.missingText += file + " Called by " + caller + "\r\n";
    }
}

void Progress(app::AppContext& ctx, const char* caption, std::size_t i, std::size_t n) {
    const int percent = static_cast<int>((i + 1) * 100 / n);
    ctx.ui->progress(percent, caption + std::to_string(percent) + " %");
    ctx.ui->pump();
}

void TerrainTextures(app::AppContext& ctx, const std::string& routePath, const WalkRule& rule, TextureCheck& check) {
    const std::string properties = tools::ReadTextFile(routePath + "\\RouteProperties.xml");
    const long at = InStr(properties, "<TerrainBlueprint>");
    if (at == 0) return;
    const auto ref = assets::ReadTriple(properties, at);
    if (!ref || !rule.admits(ref->provider, ref->product)) return;
    std::string xml;
    if (tools::SerzReadXml(ctx, assets::BlueprintFile(ctx.gameRoot(), *ref), xml)) return;
    const std::string root = ctx.gameRoot() + "\\Assets\\";
    for (long mix = InStr(xml, "<cMixTexDescriptor"); mix > 0; mix = InStr(mix + 1, xml, "<cMixTexDescriptor")) {
        for (const char* tag : {"BaseTextureName", "BaseSpringTextureName", "BaseSummerTextureName",
                                "BaseAutumnTextureName", "BaseWinterTextureName"}) {
            std::string value;
            long pos = mix;
            tools::GetDetail(xml, pos, tag, value, tools::kBlueprintTagOptions);
            if (value.empty()) continue;
            const std::string plain = root + value + ".TgPcDx";
            if (Present(plain)) {
                check.textures.push_back(plain);
                continue;
            }
            for (char letter = 'A'; letter <= 'H'; ++letter)
                TestTexture(root + value + "_" + letter + ".TgPcDx", "Texturing.bin", check);
        }
    }
}

}  // namespace

std::vector<std::string> SeasonalSuffixes(std::string_view kind) {
    if (tools::EqualsIgnoreCase(kind, "08")) return {"", "_WI"};
    if (tools::EqualsIgnoreCase(kind, "09")) return {"", "_SP", "_WI"};
    if (tools::EqualsIgnoreCase(kind, "0c")) return {"", "_AU", "_WI"};
    if (tools::EqualsIgnoreCase(kind, "0d")) return {"", "_SP", "_AU", "_WI"};
    return {""};
}


void FindGeopcdx(app::AppContext& ctx, const std::vector<std::string>& assets, TextureCheck& check) {
    assets::ReportList audio;
    for (std::size_t i = 0; i < assets.size(); ++i) {
        Progress(ctx, "Finding GeoPcDx/XSec Files ", i, assets.size());
        if (ctx.abortFlag) {
            check.aborted = true;
            return;
        }
        const std::string& blueprint = assets[i];
        if (InStr(blueprint, "\\Audio\\") > 0) {
            audio.currentBlueprint = blueprint;
            assets::GetAudio(ctx, blueprint, audio);
            continue;
        }
        if (!tools::FileExists(blueprint)) continue;
        std::string xml;
        if (tools::SerzReadXml(ctx, blueprint, xml)) continue;
        const std::size_t cut = blueprint.find_last_of('\\');
        const std::string folder = blueprint.substr(0, cut == std::string::npos ? 0 : cut);
        for (const assets::Dependency& d : assets::BlueprintDependencies(xml, ctx.gameRoot(), folder)) {
            if (d.role != "geometry" && d.role != "cross-section" && d.role != "animation" && d.role != "script")
                continue;
            if (tools::FileExists(d.file)) check.geometry.push_back({d.file, blueprint});
        }
    }
    // The report's lines: a found sound file as it is, a missing one with " Called by ".
    for (std::size_t start = 0; start < audio.text.size();) {
        std::size_t end = audio.text.find("\r\n", start);
        if (end == std::string::npos) end = audio.text.size();
        const std::string line = audio.text.substr(start, end - start);
        start = end + 2;
        if (line.empty()) continue;
        if (InStr(line, " Called by ") > 0) {
            check.missingText += line + "\r\n";
        } else if (EndsWith(line, ".proxyxml")) {
            check.proxies.push_back(line);
        } else {
            if (Present(line)) {
                check.audio.push_back(line);
            } else {
                check.missingText += line + "\r\n";
            }
        }
    }
}

void FindTextures(app::AppContext& ctx, const std::string& routePath, TextureCheck& check, const WalkRule& rule) {
    for (std::size_t i = 0; i < check.geometry.size(); ++i) {
        Progress(ctx, "Textures ", i, check.geometry.size());
        if (ctx.abortFlag) {
            check.aborted = true;
            return;
        }
        const GeometryFile& g = check.geometry[i];
        if (EndsWith(g.file, "ban") || EndsWith(g.file, "lua") || EndsWith(g.file, "out")) continue;
        std::string file = g.file;
        if (!tools::FileExists(file)) {
            file = tools::FixEntitiesCopy(file);
            if (!tools::FileExists(file)) {
                check.missingText += g.file + "\r\n";
                continue;
            }
        }
        std::string xml;
        if (EndsWith(file, "XSec")) {
            xml = tools::ReadTextFile(file);
        } else if (tools::SerzReadXml(ctx, file, xml)) {
            continue;
        }
        const std::size_t cut = file.find_last_of('\\');
        const std::string base = file.substr(0, cut + 1);
        for (const assets::TextureEntry& entry : assets::TextureEntries(xml, base, file, true)) {
            const std::string stem = entry.file.substr(0, entry.file.size() - 7);
            for (const std::string& suffix : SeasonalSuffixes(entry.kind))
                TestTexture(stem + suffix + ".TgPcDx", g.caller, check);
            if (EndsWith(stem, "_nm")) TestTexture(stem + "c.TgPcDx", g.caller, check);
        }
    }
    TerrainTextures(ctx, routePath, rule, check);
}

}  // namespace ferrolund::routes
