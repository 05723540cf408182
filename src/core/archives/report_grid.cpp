#include "archives/report_grid.h"

#include <algorithm>
#include <unordered_set>

#include "archives/overlength.h"
#include "services/scan_path.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::archives {

namespace {

const std::string kEmpty;

std::vector<std::string> SplitTabs(const std::string& line) {
    std::vector<std::string> cells;
    std::size_t from = 0;
    while (true) {
        const std::size_t tab = line.find('\t', from);
        cells.push_back(line.substr(from, tab == std::string::npos ? std::string::npos : tab - from));
        if (tab == std::string::npos) break;
        from = tab + 1;
    }
    return cells;
}

// The path of a row's blueprint on disk: below GameRoot\Assets, its last three letters "bin".
std::string BlueprintPath(const app::AppContext& ctx, std::string item) {
    if (item.size() >= 3) item.replace(item.size() - 3, 3, "bin");
    if (tools::InStr(item, "Assets\\") == 1) return ctx.gameRoot() + "\\" + item;
    return ctx.gameRoot() + "\\Assets\\" + item;
}

}  // namespace

void ReportGrid::takeList(const std::string& reportList) {
    std::vector<std::vector<std::string>> rows;
    std::size_t from = 0;
    while (from < reportList.size()) {
        std::size_t end = reportList.find('\n', from);
        if (end == std::string::npos) end = reportList.size();
        std::string line = reportList.substr(from, end - from);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty()) rows.push_back(SplitTabs(line));
        from = end + 1;
    }
    setRows(std::move(rows));
}

void ReportGrid::setRows(std::vector<std::vector<std::string>> rows) {
    table.rows = std::move(rows);
    missing.assign(table.rows.size(), false);
    searchPosition = 0;
}

const std::string& ReportGrid::cell(std::size_t row, std::size_t column) const {
    if (row >= table.rows.size() || column >= table.rows[row].size()) return kEmpty;
    return table.rows[row][column];
}

void ReportGrid::sortOn(std::size_t column) {
    std::vector<std::size_t> order(table.rows.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::vector<std::string> keys(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) keys[i] = tools::UpperCp1252(cell(i, column));
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    std::vector<std::vector<std::string>> rows;
    std::vector<bool> flags;
    rows.reserve(order.size());
    for (std::size_t i : order) {
        rows.push_back(std::move(table.rows[i]));
        flags.push_back(missing[i]);
    }
    table.rows = std::move(rows);
    missing = std::move(flags);
}

void ReportGrid::removeDuplicates(bool wholeRow) {
    sortOn(0);
    std::vector<std::vector<std::string>> kept;
    std::vector<bool> flags;
    std::unordered_set<std::string> seen;
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        auto& row = table.rows[i];
        row.resize(std::min<std::size_t>(row.size(), 2));
        if (row.empty() || row[0].empty()) continue;
        std::string key = tools::UpperCp1252(row[0]);
        if (wholeRow && row.size() > 1) key += '\t' + tools::UpperCp1252(row[1]);
        if (!seen.insert(std::move(key)).second) continue;
        kept.push_back(std::move(row));
        flags.push_back(missing[i]);
    }
    setRows(std::move(kept));
    missing = std::move(flags);  // a kept row stays marked as it was
    sortOn(0);
    duplicatesRemoved = true;
}

std::size_t ReportGrid::checkMissingStock(app::AppContext& ctx) {
    std::vector<bool> remove(table.rows.size(), false);
    std::unordered_set<std::string> found;  // mode 16: texts whose blueprint exists
    for (std::size_t n = 0; n < table.rows.size(); ++n) {
        // Mode 16 walks from the last row up.
        const std::size_t i = mode == kModeMissingInScenarios ? table.rows.size() - 1 - n : n;
        if (ctx.ui && n % 50 == 0) {
            ctx.ui->progress(static_cast<int>(100 * n / table.rows.size()), "");
            ctx.ui->pump();
        }
        if (ctx.abortFlag) break;
        const std::string item = cell(i, 0);
        if (mode == kModeMissingInScenarios && found.count(item)) {
            remove[i] = true;
            continue;
        }
        bool exists = tools::FileExists(BlueprintPath(ctx, item));
        if (!exists) {
            std::string fixed = item;
            tools::FixEntities(fixed);
            exists = tools::FileExists(BlueprintPath(ctx, fixed));
        }
        if (exists) {
            remove[i] = true;
            if (mode == kModeMissingInScenarios) found.insert(item);
        } else {
            missing[i] = true;
        }
    }
    std::vector<std::vector<std::string>> rows;
    std::vector<bool> flags;
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        if (remove[i] || (mode == kModeMissingInScenarios && found.count(cell(i, 0)))) continue;
        rows.push_back(std::move(table.rows[i]));
        flags.push_back(missing[i]);
    }
    table.rows = std::move(rows);
    missing = std::move(flags);
    if (ctx.ui) ctx.ui->progress(0, "");
    return table.rows.size();
}

void ReportGrid::listProvidersAndProducts() {
    std::vector<std::vector<std::string>> list;
    std::unordered_set<std::string> seen;
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        const std::string& item = cell(i, 0);
        const long at = tools::InStr(item, "Assets\\");
        if (at == 0) continue;
        const std::size_t from = static_cast<std::size_t>(at - 1) + 7;
        const std::size_t first = item.find('\\', from);
        if (first == std::string::npos) continue;
        const std::size_t second = item.find('\\', first + 1);
        const std::string pp = item.substr(from, second == std::string::npos ? std::string::npos : second - from);
        if (seen.insert(tools::UpperCp1252(pp)).second) list.push_back({pp});
    }
    setRows(std::move(list));
}

std::optional<std::size_t> ReportGrid::find(const std::string& text) {
    if (text.empty()) return std::nullopt;
    std::string upper = text, lower = text;
    upper[0] = static_cast<char>(tools::UpperCp1252(static_cast<unsigned char>(text[0])));
    lower[0] = static_cast<char>(tools::FoldCp1252(static_cast<unsigned char>(text[0])));
    for (std::size_t i = static_cast<std::size_t>(std::max(0L, searchPosition)); i < table.rows.size(); ++i) {
        const std::string& item = cell(i, 0);
        if (item.find(text) != std::string::npos || item.find(upper) != std::string::npos ||
            item.find(lower) != std::string::npos) {
            searchPosition = static_cast<long>(i) + 1;
            return i;
        }
    }
    return std::nullopt;
}

std::vector<std::size_t> ReportGrid::mainContentRows() const {
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        if (tools::InStr(cell(i, 0), "MainContent.ap") > 0) rows.push_back(i);
    }
    return rows;
}

void ReportGrid::clear() { setRows({}); }

base::Status ReportGrid::saveBatch(const std::string& path) const {
    std::string text;
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        if (i) text += "\r\n";
        text += cell(i, 0);
    }
    return tools::WriteBatch(path, text);
}

void ReportGrid::loadCsv(const std::string& text) { loadTable(services::ParseCsv(text)); }

void ReportGrid::loadTable(services::ReportTable loaded) {
    if (!loaded.headings.empty()) table.headings = std::move(loaded.headings);
    setRows(std::move(loaded.rows));
}

std::string ReportGrid::rowText(std::size_t row) const {
    std::string text;
    if (row >= table.rows.size()) return text;
    for (std::size_t c = 0; c < table.rows[row].size(); ++c) {
        if (c) text += '\t';
        text += table.rows[row][c];
    }
    return text;
}

ReportGrid FindArchives(app::AppContext& ctx, const ApSearch& search, std::vector<std::string>& overlength) {
    ReportGrid grid;
    grid.mode = kModeApList;
    grid.table.headings = {"File", "Size", "Date"};
    std::vector<std::vector<std::string>> rows;
    services::cScanPath scan(ctx.ui);
    scan.Folder = true;
    scan.Archive = true;
    scan.Filter(search.mask);
    scan.FileMatchEx = [&](const services::ScanDetails& details, const std::string& name, const std::string& folder) {
        if (ctx.abortFlag) {
            scan.StopScan();
            return;
        }
        const std::string path = folder + name;
        if (details.size > kMaxArchiveBytes) overlength.push_back(path);
        rows.push_back({path, std::to_string(details.size), details.lastWriteTime});
    };
    const bool cap = services::ScanCapOn;
    services::ScanCapOn = true;
    std::string root = search.folder;
    scan.StartScan(root, true, true, true, true);
    services::ScanCapOn = cap;
    grid.setRows(std::move(rows));
    return grid;
}

TwipsGeometry ReportGeometry(const app::PreferenceSet& prefs) {
    if (prefs.reportWidth <= 0 || prefs.reportHeight <= 0) return {};
    return {prefs.reportLeft, prefs.reportTop, prefs.reportWidth, prefs.reportHeight};
}

void StoreReportGeometry(app::AppContext& ctx, const TwipsGeometry& g) {
    ctx.report(app::StoreTwips(ctx.prefs.reportLeft, g.left), "frmListRS");
    ctx.report(app::StoreTwips(ctx.prefs.reportTop, g.top), "frmListRS");
    ctx.report(app::StoreTwips(ctx.prefs.reportWidth, g.width), "frmListRS");
    ctx.report(app::StoreTwips(ctx.prefs.reportHeight, g.height), "frmListRS");
}

}  // namespace ferrolund::archives
