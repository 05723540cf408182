#include "routes/scenario_list.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;

namespace {

constexpr std::array<ScenarioLegend, 6> kLegend{{
    {"Quick Drive Scenario", 0x00FF00, "Quick Drive"},
    {"Free Roam Scenario", 0x0000FF, "Free Roam"},
    {"Career Scenario", 0xFF0000, "Career"},
    {"Workshop Scenario", 0x00FFFF, "Workshop"},
    {"Standard Scenario", 0x000000, "Standard"},
    {"Timetable Scenario", 0xFF00FF, "Timetabled"},
}};

std::vector<std::string> SubFolders(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (std::filesystem::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec))
        if (it->is_directory(ec)) names.push_back(tools::SystemPath(it->path().filename()));
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return tools::LowerCp1252(a) < tools::LowerCp1252(b); });
    return names;
}

// The DevString of the text, or nothing when it has none.
bool DevString(std::string_view text, std::string& value, long& end) {
    const long at = InStr(text, "<DevString");
    if (at == 0) return false;
    end = InStr(at, text, "</DevString");
    if (end == 0) return false;
    const long open = tools::InStrRev(text, ">", end - 1);
    value.assign(tools::Mid(text, open + 1, end - open - 1));
    return true;
}

}  // namespace

const ScenarioLegend* LegendOf(ScenarioKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < kLegend.size() ? &kLegend[index] : nullptr;
}

ScenarioKind ClassOf(std::string_view properties) {
    const long hit = InStr(properties, "<ScenarioClass ");
    if (hit == 0) return ScenarioKind::Other;
    std::string value;
    long pos = std::max(1L, hit - 100);
    tools::GetDetail(properties, pos, "ScenarioClass", value, {.caseRule = tools::CaseRule::Exact});
    if (value == "eTemplateScenarioClass") return ScenarioKind::QuickDrive;
    if (value == "eFreeRoamScenarioClass") return ScenarioKind::FreeRoam;
    if (value == "eCareerScenarioClass") return ScenarioKind::Career;
    if (value == "eTimetableScenarioClass") return ScenarioKind::Timetable;
    if (value != "eStandardScenarioClass") return ScenarioKind::Other;
    std::string workshop;
    long at = 1;
    tools::GetDetail(properties, at, "WorkshopID", workshop);
    return workshop.empty() || workshop == "0" ? ScenarioKind::Standard : ScenarioKind::Workshop;
}

namespace {

// Sorted by name without regard to case; an empty list gets its note instead.
void SortByName(ScenarioListing& listing) {
    if (listing.rows.empty()) {
        listing.note = "No Scenarios found, could be in .ap file";
        return;
    }
    std::stable_sort(listing.rows.begin(), listing.rows.end(), [](const ScenarioRow& a, const ScenarioRow& b) {
        return tools::UpperCp1252(a.name) < tools::UpperCp1252(b.name);
    });
}

}  // namespace

ScenarioListing ListScenarios(const std::string& gameRoot, const std::string& routeFolder,
                              const std::string& languageTag) {
    ScenarioListing listing;
    const std::string scenarios = gameRoot + "\\content\\Routes\\" + routeFolder + "\\Scenarios";
    if (!std::filesystem::is_directory(tools::HostPath(scenarios))) {
        listing.note = "No Scenarios folder found";
        return listing;
    }
    for (const std::string& folder : SubFolders(scenarios)) {
        const std::string text = tools::ReadTextFile(scenarios + "\\" + folder + "\\ScenarioProperties.xml");
        if (text.empty()) continue;
        ScenarioRow row;
        long pos = 0;
        if (!DevString(text, row.devString, pos)) continue;
        const long display = InStr(pos, text, "<DisplayName");
        pos = display;
        if (display > 0) tools::GetName(text, pos, row.name, languageTag);
        tools::FixEntities(row.name);
        if (row.name.empty()) continue;
        if (row.name.front() == '\t') row.name.erase(0, 1);
        std::replace(row.name.begin(), row.name.end(), ',', '-');
        row.folder = folder;
        row.routeFolder = routeFolder;
        row.kind = ClassOf(text);
        listing.rows.push_back(std::move(row));
    }
    SortByName(listing);
    return listing;
}

ScenarioListing ListAllScenarios(app::AppContext& ctx, const routes::RouteIndex& index) {
    ScenarioListing all;
    const std::size_t count = index.routeFolder.size();
    for (std::size_t r = 0; r < count; ++r) {
        if (ctx.ui) {
            ctx.ui->progress(static_cast<int>(100 * r / count), "");
            ctx.ui->pump();
        }
        if (ctx.abortFlag) break;
        ScenarioListing one = ListScenarios(ctx.gameRoot(), index.routeFolder[r], ctx.prefs.language);
        for (ScenarioRow& row : one.rows) all.rows.push_back(std::move(row));
    }
    SortByName(all);
    return all;
}

std::string ClassTable(const std::string& gameRoot, const routes::RouteIndex& index) {
    const auto pad = [](std::string text, std::size_t width) {
        if (text.size() > width) text.resize(width);
        return text + std::string(width - text.size(), ' ');
    };
    const auto count = [](int n) {
        std::string text = std::to_string(n);
        return std::string(text.size() < 4 ? 4 - text.size() : 0, ' ') + text;
    };
    std::string out = pad("Route Name", 50) + "Q.Drive\tCareer\tStandard\tFree Roam\tTimetabled\r\n";
    for (int r = 0; r < index.count(); ++r) {
        if (index.routeFolder[r].empty()) continue;
        std::array<int, 7> counts{};
        const std::string scenarios = gameRoot + "\\content\\Routes\\" + index.routeFolder[r] + "\\Scenarios";
        for (const std::string& folder : SubFolders(scenarios)) {
            const std::string text = tools::ReadTextFile(scenarios + "\\" + folder + "\\ScenarioProperties.xml");
            std::string dev;
            long end = 0;
            if (text.empty() || !DevString(text, dev, end)) continue;
            ++counts[static_cast<std::size_t>(ClassOf(text))];
        }
        out += pad(index.routeName[r], 50) + count(counts[0]) + "\t" + count(counts[2]) + "\t" + count(counts[4]) +
               "\t" + count(counts[1]) + "\t" + count(counts[5]) + "\r\n";
    }
    return out;
}

}  // namespace ferrolund::routes
