#include "assets/content_list.h"

#include <algorithm>

#include "assets/blueprint.h"
#include "routes/route_indexer.h"
#include "services/report_table.h"
#include "services/scan_path.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace {

const char* const kModule = "frmContent";

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool EndsWithIgnoreCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && tools::EqualsIgnoreCase(text.substr(text.size() - end.size()), end);
}

// The elements of a path from `start` on, as offsets and lengths into it.
struct Element {
    std::size_t at;
    std::size_t length;
};
std::vector<Element> Elements(std::string_view path, std::size_t start) {
    std::vector<Element> elements;
    std::size_t from = start;
    for (std::size_t i = start; i <= path.size(); ++i) {
        if (i == path.size() || IsSeparator(path[i])) {
            elements.push_back({from, i - from});
            from = i + 1;
        }
    }
    return elements;
}

std::string JoinFolders(const std::vector<std::string>& parts) {
    std::string joined;
    for (const std::string& part : parts) {
        if (part.empty()) continue;
        if (!joined.empty()) joined += '\\';
        joined += part;
    }
    return joined;
}

}  // namespace

ContentRow ContentRow::FromCells(const std::vector<std::string>& cells) {
    ContentRow row;
    std::string* fields[kContentColumns] = {&row.routeName, &row.subFolder, &row.subFolder2, &row.fileName, &row.index};
    for (std::size_t i = 0; i < kContentColumns && i < cells.size(); ++i) *fields[i] = cells[i];
    return row;
}

std::optional<ContentPlace> PlaceOfContent(const std::string& gameRoot, const std::string& path) {
    std::size_t offset = 0;
    if (!gameRoot.empty() && path.size() > gameRoot.size() &&
        tools::EqualsIgnoreCase(std::string_view(path).substr(0, gameRoot.size()), gameRoot)) {
        offset = gameRoot.size();
    }
    const std::string_view rest = std::string_view(path).substr(offset);
    if (!SplitAssetPath(rest)) return std::nullopt;
    long at = tools::InStr(rest, "Assets");
    std::size_t skip = 7;
    const bool content = at == 0;
    if (content) {
        at = tools::InStr(rest, "Content");
        skip = 8;
    }
    const std::vector<Element> parts = Elements(path, offset + static_cast<std::size_t>(at - 1) + skip);
    auto text = [&path](const Element& e) { return path.substr(e.at, e.length); };
    auto upTo = [&path](const Element& e) { return path.substr(0, e.at + e.length); };

    ContentPlace place;
    std::size_t first = 0;
    if (content && tools::EqualsIgnoreCase(text(parts[0]), "Routes")) {
        first = 1;
        place.routeFolder = upTo(parts[1]);
        if (parts.size() >= 5 && tools::EqualsIgnoreCase(text(parts[2]), "Scenarios"))
            place.scenarioFolder = upTo(parts[3]);
    }
    place.subFolder = text(parts[first]);
    std::vector<std::string> between;
    for (std::size_t i = first + 1; i + 1 < parts.size(); ++i) between.push_back(text(parts[i]));
    place.subFolder2 = JoinFolders(between);
    place.fileName = text(parts.back());
    return place;
}

std::string ContentRowFile(const std::string& gameRoot, const ContentRow& row) {
    const std::string relative = JoinFolders({row.subFolder, row.subFolder2, row.fileName});
    const std::string candidates[] = {gameRoot + "\\Content\\Routes\\" + relative, gameRoot + "\\Content\\" + relative,
                                      gameRoot + "\\Assets\\" + relative};
    for (const std::string& file : candidates) {
        if (tools::FileExists(file)) return file;
    }
    return candidates[0];
}

std::string ContentList::StartFolder(const app::AppContext& ctx) {
    return ctx.gameRoot().empty() ? "C:" : ctx.gameRoot() + "\\Content\\Routes\\";
}

void ContentList::addToList(app::AppContext& ctx, const std::string& folder, bool afterDelete) {
    ctx.currentRoutine = "Command1_Click";
    walk(ctx, folder, 0, afterDelete);
}

void ContentList::findZeroLength(app::AppContext& ctx, const std::string& folder) {
    ctx.currentRoutine = "Command8_Click";
    zeroLengthMode = true;
    walk(ctx, folder, 1, false);
}

void ContentList::clear() { rows.clear(); }

void ContentList::walk(app::AppContext& ctx, const std::string& folder, int maximumSize, bool afterDelete) {
    if (ctx.ui) ctx.ui->busy(true);
    ctx.abortFlag = false;
    running_ = 0;
    names_.clear();
    services::cScanPath scanner(ctx.ui);
    scanner.Archive = true;
    scanner.Folder = true;  // a folder that does not pass is not walked
    scanner.MaximumSize = maximumSize;
    scanner.Filter("*.*");
    scanner.FileMatch = [this, &ctx, &scanner](const std::string& name, const std::string& in) {
        if (ctx.abortFlag) {
            scanner.StopScan();
            return;
        }
        fileMatch(ctx, name, in);
    };
    std::string start = folder;
    scanner.StartScan(start, true, false, true, false);
    if (ctx.ui) {
        ctx.ui->busy(false);
        ctx.ui->message(afterDelete ? "Selected items have been removed from the grid."
                                    : "Selected items have been added to the grid.",
                        base::Icon::Information);
    }
}

void ContentList::fileMatch(app::AppContext& ctx, const std::string& name, const std::string& folder) {
    const std::string full = folder + name;
    if (tools::InStr(full, "PreLoad") != 0 || EndsWithIgnoreCase(full, ".MD5")) return;
    const std::optional<ContentPlace> place = PlaceOfContent(ctx.gameRoot(), full);
    if (!place) {
        if (ctx.ui) ctx.ui->message(InvalidPathMessage(full), base::Icon::Exclamation);
        return;
    }
    ContentRow row{{}, place->subFolder, place->subFolder2, place->fileName, {}, full};
    if (!place->routeFolder.empty()) row.routeName = propertiesName(ctx, place->routeFolder + "\\RouteProperties.xml");
    if (!place->scenarioFolder.empty()) {
        const std::string& scenario = propertiesName(ctx, place->scenarioFolder + "\\ScenarioProperties.xml");
        if (!scenario.empty()) row.routeName = row.routeName.empty() ? scenario : row.routeName + " - " + scenario;
    }
    row.index = std::to_string(++running_);
    rows.push_back(std::move(row));
}

const std::string& ContentList::propertiesName(const app::AppContext& ctx, const std::string& file) {
    auto [it, added] = names_.try_emplace(file);
    if (added) {
        std::vector<std::string> languages{ctx.languageTag()};
        if (!tools::EqualsIgnoreCase(languages[0], "English")) languages.emplace_back("English");
        routes::ReadPropertiesName(tools::ReadTextFile(file), languages, it->second);
        // Commas would split the row in the comma text of a saved list.
        std::replace(it->second.begin(), it->second.end(), ',', '-');
    }
    return it->second;
}

bool ContentList::deleteSelected(app::AppContext& ctx, const std::vector<std::size_t>& selected,
                                 const std::string& folder) {
    ctx.currentRoutine = "Command7_Click";
    if (!ctx.ui) return false;
    if (selected.empty()) {
        ctx.ui->message(ctx.langText(466, {}, kModule), base::Icon::Exclamation);
        return false;
    }
    if (ctx.ui->ask("This will DELETE all selected files - You have been warned!!!\n"
                    "If you do not have a back-up of the folder you are about to alter, I suggest\n"
                    "you make one before carrying out this procedure!",
                    base::Buttons::OkCancel, base::Icon::Exclamation) != base::Answer::Ok) {
        return false;
    }
    // The files are gathered first: the list is filled anew afterwards.
    std::vector<std::string> files;
    for (std::size_t r : selected) {
        if (r >= rows.size()) continue;
        // An empty row ends the work.
        if (rows[r].subFolder.empty() && rows[r].fileName.empty()) {
            ctx.ui->message(ctx.langText(444, {}, kModule), base::Icon::Exclamation);
            break;
        }
        files.push_back(rowFile(ctx.gameRoot(), r));
    }
    for (const std::string& file : files) {
        // A file that cannot be read still has a length, and is deleted as well.
        if (tools::FileLength(file) >= 0) ctx.report(tools::DeleteFile(file), kModule);
    }
    rows.clear();
    if (zeroLengthMode) {
        zeroLengthMode = false;
        return true;
    }
    addToList(ctx, folder, true);
    return true;
}

bool ContentList::saveBinGrid(app::AppContext& ctx) const {
    ctx.currentRoutine = "Command11_Click";
    tools::CreatePath(ctx.appPath("Reports"));
    services::ReportTable table;
    table.headings.assign(kContentHeadings.begin(), kContentHeadings.end());
    for (const ContentRow& row : rows) table.rows.push_back(row.Cells());
    if (base::Status failed = services::SaveReportTable(ctx.appPath("Reports\\BIN-Index.csv"), table)) {
        ctx.report(*failed, kModule);
        return false;
    }
    if (ctx.ui) ctx.ui->message("Your BIN-Index.csv file is in your Reports folder", base::Icon::Information);
    return true;
}

std::string ContentList::rowFile(const std::string& gameRoot, std::size_t row) const {
    if (row >= rows.size()) return {};
    return rows[row].path.empty() ? ContentRowFile(gameRoot, rows[row]) : rows[row].path;
}

}  // namespace ferrolund::assets
