#include "assets/ap_consists.h"

#include "archives/zip_archive.h"
#include "services/scan_path.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace {

const char* const kModule = "frmAPConsists";

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

std::vector<std::string> Languages(const app::AppContext& ctx) {
    std::vector<std::string> languages{ctx.languageTag()};
    if (!tools::EqualsIgnoreCase(languages[0], "English")) languages.emplace_back("English");
    return languages;
}

std::string NameIn(const app::AppContext& ctx, const std::string& xml) {
    std::string name;
    routes::ReadPropertiesName(xml, Languages(ctx), name);
    return name;
}

// The last element of a stored name.
std::string_view LastElement(std::string_view stored) {
    const std::size_t slash = stored.find_last_of("\\/");
    return slash == std::string_view::npos ? stored : stored.substr(slash + 1);
}

base::Status ReadEntry(const archives::ZipArchive& archive, std::size_t index, std::string& bytes) {
    bytes.clear();
    return archive.read(index, [&bytes](const char* data, std::size_t length) -> base::Status {
        bytes.append(data, length);
        return {};
    });
}

}  // namespace

const routes::RouteIndexRule kApScreenRouteIndex{{"English", "French", "German"}, true, true, true};

void BuildRouteIndex(app::AppContext& ctx) {
    ctx.currentRoutine = "mnuRInd_Click";
    routes::ExtractAndIndexRoutes(ctx, kApScreenRouteIndex, false);
}

std::string ElementBehind(std::string_view stored, std::string_view word) {
    for (std::size_t from = 0; from + word.size() < stored.size();) {
        const long at = tools::InStr(static_cast<long>(from) + 1, stored, word);
        if (at == 0) return {};
        const std::size_t start = static_cast<std::size_t>(at - 1);
        const std::size_t behind = start + word.size();
        const bool whole = (start == 0 || IsSeparator(stored[start - 1])) && behind < stored.size() &&
                           IsSeparator(stored[behind]);
        if (whole) {
            const std::size_t end = stored.find_first_of("\\/", behind + 1);
            return std::string(stored.substr(behind + 1, end == std::string_view::npos ? end : end - behind - 1));
        }
        from = start + 1;
    }
    return {};
}

void ApConsists::clear() {
    archives.clear();
    properties.clear();
    details.clear();
    archivedRouteNames_.clear();
}

void ApConsists::findArchives(app::AppContext& ctx, const std::string& folder) {
    ctx.currentRoutine = "Command2_Click";
    archives.clear();
    if (ctx.ui) ctx.ui->busy(true);
    services::cScanPath scanner(ctx.ui);
    scanner.Archive = true;
    scanner.Folder = true;  // a folder that does not pass is not walked
    scanner.Filter("*.ap");
    scanner.FileMatch = [this](const std::string& name, const std::string& in) { archives.push_back(in + name); };
    std::string start = folder;
    scanner.StartScan(start, true, false, true, false);
    if (ctx.ui) ctx.ui->busy(false);
}

bool ApConsists::findScenarioProperties(app::AppContext& ctx, const std::vector<std::size_t>& chosen) {
    ctx.currentRoutine = "FillGridXML";
    if (chosen.empty()) {
        if (ctx.ui) ctx.ui->message(ctx.langText(466, {}, kModule), base::Icon::Exclamation);
        return false;
    }
    if (ctx.ui) ctx.ui->busy(true);
    for (std::size_t i : chosen) {
        if (i >= archives.size()) continue;
        archives::ZipArchive archive;
        if (base::Status failed = archive.open(archives[i])) {
            ctx.report(*failed, kModule);
            continue;
        }
        std::string bytes;
        for (const archives::ArchiveEntry& entry : archive.entries()) {
            if (entry.isFolder) continue;
            const std::string_view name = LastElement(entry.stored);
            const bool scenario = tools::EqualsIgnoreCase(name, "ScenarioProperties.xml");
            if (!scenario && !tools::EqualsIgnoreCase(name, "RouteProperties.xml")) continue;
            if (base::Status failed = ReadEntry(archive, entry.index, bytes)) {
                ctx.report(*failed, kModule);
                continue;
            }
            if (scenario) {
                properties.push_back({archives[i], entry.stored, bytes});
            } else {
                const std::string route = ElementBehind(entry.stored, "Routes");
                if (!route.empty()) archivedRouteNames_[tools::LowerCp1252(route)] = NameIn(ctx, bytes);
            }
        }
        if (ctx.ui) ctx.ui->pump();
    }
    if (ctx.ui) {
        ctx.ui->busy(false);
        ctx.ui->message("All selected .xml files have been added to the grid.", base::Icon::Information);
    }
    return true;
}

bool ApConsists::addDetails(app::AppContext& ctx, const std::vector<std::size_t>& chosen) {
    ctx.currentRoutine = "FillGridXML2";
    if (properties.empty()) {
        if (ctx.ui) ctx.ui->message(kApOrderGuard, base::Icon::Exclamation);
        return false;
    }
    if (chosen.empty()) {
        if (ctx.ui) ctx.ui->message(ctx.langText(466, {}, kModule), base::Icon::Exclamation);
        return false;
    }
    for (std::size_t i : chosen) {
        if (i >= properties.size()) continue;
        const ArchivedProperties& found = properties[i];
        ApScenarioRow row{ElementBehind(found.stored, "Routes"), ElementBehind(found.stored, "Scenarios"), {},
                          NameIn(ctx, found.xml), found.archive};
        const auto named = archivedRouteNames_.find(tools::LowerCp1252(row.routeFolder));
        if (named != archivedRouteNames_.end() && !named->second.empty()) {
            row.routeName = named->second;
        } else if (!row.routeFolder.empty()) {
            row.routeName = NameIn(
                ctx, tools::ReadTextFile(ctx.gameRoot() + "\\Content\\Routes\\" + row.routeFolder + "\\RouteProperties.xml"));
        }
        details.push_back(std::move(row));
    }
    if (ctx.ui) ctx.ui->message("All selected Scenario details have been added to the main grid.", base::Icon::Information);
    return true;
}

}  // namespace ferrolund::assets
