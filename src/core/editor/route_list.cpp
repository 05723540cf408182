#include "editor/route_list.h"

#include "app/startup.h"
#include "routes/route_index.h"
#include "services/report_table.h"
#include "tools/codepage.h"
#include "tools/files.h"

namespace ferrolund::editor {

std::vector<RouteRow> LoadRouteList(const app::AppContext& ctx) {
    const routes::RouteIndex index =
        routes::ParseRouteIndex(tools::ReadTextFile(ctx.appPath("IndexFiles\\RouteIndex.csv")));
    std::vector<RouteRow> rows;
    for (int i = 0; i < index.count(); ++i) rows.push_back({index.routeName[i], index.routeFolder[i], index.routeSlot[i]});
    return rows;
}

void SaveRouteList(app::AppContext& ctx, const std::vector<RouteRow>& rows, const std::vector<std::string>& headings) {
    ctx.currentRoutine = "Command11_Click";
    if (!ctx.ui) return;
    const std::string reports = ctx.appPath("Reports");
    tools::CreatePath(reports);
    const auto chosen = ctx.ui->chooseSaveFile("Save List as File",
                                               "Comma Separated (*.csv)|*.csv|Excel file (*.xls)|*.xls", reports);
    if (!chosen || chosen->empty()) return;
    services::ReportTable table{headings, {}};
    for (const auto& row : rows) table.rows.push_back({row.name, row.folder, row.slot});
    ctx.report(services::SaveReportTable(*chosen, table), "frmEditor");
}

std::string ListDispatchCommandFor(const std::string& file) {
    auto endsWith = [&](std::string_view tail) {
        return file.size() >= tail.size() &&
               tools::EqualsIgnoreCase(std::string_view(file).substr(file.size() - tail.size()), tail);
    };
    for (const char* tail : {".bin", ".XSec", ".GeoPcDx", ".proxybin"}) {
        if (endsWith(tail)) return "mnuOpenRS";
    }
    for (const char* tail : {".xml", ".cost", ".tgt", ".proxyxml", ".txt"}) {
        if (endsWith(tail)) return "mnuXML";
    }
    if (endsWith(".TgPcDx")) return "mnuOpenTex";
    return {};
}

std::string ChooseFileOfRoute(app::AppContext& ctx, EditorDocument& doc, const std::string& routeFolder) {
    ctx.currentRoutine = "Command8_Click";
    if (!ctx.ui || routeFolder.empty()) return {};
    const auto chosen = ctx.ui->chooseOpenFile("Open TrainSim file", "All Files (*.*)|*.*",
                                               ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder);
    if (!chosen || chosen->empty()) return {};
    const std::string command = ListDispatchCommandFor(*chosen);
    if (command.empty()) return {};
    ctx.commandFile = *chosen;
    doc.openFromList = true;
    return command;
}

}  // namespace ferrolund::editor
