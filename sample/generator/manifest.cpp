#include "generator/manifest.h"

#include <cstdio>
#include <set>

#include "tools/names.h"

namespace ferrolund::sample {

namespace {

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

std::string Crc(std::uint32_t value) {
    char text[12];
    std::snprintf(text, sizeof text, "%08X", value);
    return text;
}

// The route folder of a path under Content\Routes, or empty.
std::string RouteOf(const std::string& path) {
    static const std::string kRoutes = "Content\\Routes\\";
    if (path.compare(0, kRoutes.size(), kRoutes) != 0) return {};
    const std::size_t end = path.find('\\', kRoutes.size());
    return end == std::string::npos ? std::string() : path.substr(kRoutes.size(), end - kRoutes.size());
}

}  // namespace

std::string ManifestText(const SampleWriter& writer, const PlanRunner& plan) {
    std::string out =
        "sample\t1\t" + std::to_string(plan.TileCount()) + "\t" + std::to_string(plan.AssetCount()) + "\n";
    std::set<std::string> exact, folded, archived;
    std::set<std::string> routes, routesWithProperties, routesWithArchive;
    for (const WrittenFile& file : writer.Files()) {
        std::string full =
            file.archive.empty() ? file.path : file.archive.substr(0, file.archive.rfind('\\') + 1) + file.path;
        for (char& c : full)
            if (c == '/') c = '\\';
        if (file.archive.empty()) {
            out += "file\t" + file.path + "\t" + std::to_string(file.size) + "\t" + Crc(file.crc32) + "\n";
            exact.insert(full);
            folded.insert(tools::NameKey(full));
        } else {
            out += "member\t" + file.archive + "\t" + file.path + "\t" + std::to_string(file.size) + "\t" +
                   Crc(file.crc32) + "\n";
            archived.insert(tools::NameKey(full));
        }
        const std::string route = RouteOf(file.archive.empty() ? file.path : file.archive);
        if (route.empty()) continue;
        routes.insert(route);
        if (file.archive.empty() && Lower(file.path).ends_with("\\" + Lower(route) + "\\routeproperties.xml"))
            routesWithProperties.insert(route);
        if (Lower(file.path).ends_with("\\maincontent.ap")) routesWithArchive.insert(route);
    }
    for (const std::string& route : routes) {
        const char* form = routesWithProperties.count(route) ? "loose"
                           : routesWithArchive.count(route)  ? "archive"
                                                             : "no-properties";
        const auto name = plan.RouteNames().find(route);
        out += "route\t" + route + "\t" + form + "\t" + (name == plan.RouteNames().end() ? "" : name->second) + "\n";
    }
    for (const auto& [folder, scenario] : plan.Scenarios())
        out += "scenario\t" + RouteOf(folder) + "\t" + folder.substr(folder.rfind('\\') + 1) + "\t" + scenario.kind +
               "\t" + scenario.name + "\n";
    for (const Reference& ref : plan.References()) {
        std::string path = "Assets\\" + ref.provider + "\\" + ref.product + "\\" + ref.blueprintId;
        if (Lower(path).ends_with("xml")) path = path.substr(0, path.size() - 3) + "bin";
        const char* state = exact.count(path)             ? "present"
                            : folded.count(tools::NameKey(path))   ? "case"
                            : archived.count(tools::NameKey(path)) ? "archived"
                                                          : "missing";
        out += std::string("reference\t") + state + "\t" + ref.provider + "\t" + ref.product + "\t" + ref.blueprintId +
               "\t" + ref.usedBy + "\n";
    }
    for (const PlanRunner::StockItem& item : plan.Stock())
        out += "stock\t" + item.path + "\t" + item.kind + "\t" + item.category + "\t" + item.inScene + "\t" +
               item.classWord + "\t" + item.name + "\n";
    return out;
}

}  // namespace ferrolund::sample
