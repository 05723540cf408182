#include "scenarios/track_markers.h"

#include <filesystem>
#include <fstream>
#include <pugixml.hpp>

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"

namespace ferrolund::scenarios {

namespace {

// The names of a ribbon's markers and portals, each with " - " ahead of it.
std::string ExtractMarkers(const pugi::xml_node& ribbon) {
    std::string collected;
    for (const pugi::xpath_node& item : ribbon.select_nodes("Properties/Network-cPropertyContainer/Property/*")) {
        const pugi::xml_node node = item.node();
        const std::string_view name = node.name();
        const char* path = name == "Network-cTrackMarkerProperty"
                               ? "Entity/cOwnedEntity/Component/Network-cTrackMarkerComponent/DisplayName"
                           : name == "Network-cPortalProperty"
                               ? "Entity/cOwnedEntity/Component/Network-cTransferPointComponent/DisplayName"
                               : nullptr;
        if (path == nullptr) continue;
        const pugi::xml_node label = node.first_element_by_path(path);
        if (label) collected.append(" - ").append(label.child_value());
    }
    return collected;
}

base::Status WriteIndex(const std::string& path, const std::string& text) {
    const std::filesystem::path host = tools::HostPath(path);
    const std::filesystem::path partial = host.string() + ".part";
    {
        std::ofstream out(partial, std::ios::binary | std::ios::trunc);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        if (!out) return base::err::PathFileAccess(path);
    }
    std::error_code error;
    std::filesystem::rename(partial, host, error);
    tools::ForgetPath(path);
    if (error) {
        std::filesystem::remove(partial, error);
        return base::err::PathFileAccess(path);
    }
    return {};
}

}  // namespace

bool MarkerIndex::find(std::string_view devString, std::string& names) const {
    for (std::size_t i = 0; i < devStrings.size(); ++i) {
        if (tools::EqualsIgnoreCase(devStrings[i], devString)) {
            names = markers[i];
            return true;
        }
    }
    return false;
}

std::string MarkerIndexPath(const base::RunContext& ctx, const std::string& routeId) {
    return ctx.appPath("Index\\" + routeId + ".txt");
}

base::Status MarkerLinesFromXml(base::RunContext& ctx, std::string_view tracksXml, std::string& lines) {
    lines.clear();
    pugi::xml_document doc;
    const pugi::xml_parse_result parsed =
        doc.load_buffer(tracksXml.data(), tracksXml.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!parsed) {
        return base::RunError{base::err::kTypeMismatch,
                              std::string("The track network could not be read: ") + parsed.description()};
    }
    const pugi::xpath_node_set ribbons = doc.select_nodes("//Network-cTrackRibbon");
    std::size_t done = 0;
    for (const pugi::xpath_node& ribbon : ribbons) {
        if (ctx.ui) {
            ctx.ui->progress(static_cast<int>(done * 100 / ribbons.size()), "Indexing track markers");
            ctx.ui->pump();
        }
        if (ctx.abortFlag) {
            lines.clear();
            return base::RunError{18, "The indexing of the track markers was aborted."};
        }
        ++done;
        const std::string collected = ExtractMarkers(ribbon.node());
        if (collected.empty()) continue;
        const pugi::xml_node devString = ribbon.node().first_element_by_path("RibbonID/cGUID/DevString");
        lines.append(devString.child_value()).append(",").append(collected.substr(3)).append("\r\n");
    }
    if (ctx.ui) ctx.ui->progress(100, "Indexing track markers");
    return {};
}

MarkerIndex ParseMarkerIndex(std::string_view text) {
    MarkerIndex index;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.empty()) continue;
        const std::size_t comma = line.find(',');
        index.devStrings.emplace_back(line.substr(0, comma));
        index.markers.emplace_back(comma == std::string_view::npos ? std::string_view() : line.substr(comma + 1));
    }
    return index;
}

base::Status LoadMarkerIndex(app::AppContext& ctx, const std::string& routeId, MarkerIndex& index, bool& cancelled) {
    index = MarkerIndex{};
    cancelled = false;
    const std::string path = MarkerIndexPath(ctx, routeId);
    if (!tools::FileExists(path)) {
        if (!tools::CreatePath(ctx.appPath("Index"))) return base::err::PathNotFound(ctx.appPath("Index"));
        if (ctx.ui && ctx.ui->ask(kIndexTracksQuestion, base::Buttons::OkCancel, base::Icon::Question) ==
                          base::Answer::Cancel) {
            cancelled = true;
            return {};
        }
        const std::string tracks = ctx.gameRoot() + "\\Content\\Routes\\" + routeId + "\\Networks\\Tracks.bin";
        if (!tools::FileExists(tracks)) return base::err::FileNotFound(tracks);
        if (!tools::CreatePath(ctx.appPath("TempFiles"))) return base::err::PathNotFound(ctx.appPath("TempFiles"));
        const std::string xmlPath = ctx.appPath("TempFiles\\Tracks.xml");
        if (base::Status failed = tools::SerzConvert(ctx, tracks, xmlPath, tools::SerzDirection::ToXml))
            return failed;
        if (ctx.ui) ctx.ui->busy(true);
        std::string lines;
        base::Status built = MarkerLinesFromXml(ctx, tools::ReadTextFile(xmlPath), lines);
        if (ctx.ui) ctx.ui->busy(false);
        if (built) return built;
        if (base::Status failed = WriteIndex(path, lines)) return failed;
    }
    index = ParseMarkerIndex(tools::ReadTextFile(path));
    return {};
}

}  // namespace ferrolund::scenarios
