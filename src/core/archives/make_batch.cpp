#include "archives/make_batch.h"

#include <filesystem>

#include "archives/overlength.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"
#include "tools/tool_runner.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;

namespace {

constexpr const char* kBackupAdvice =
    "I suggest you make one before carrying out this procedure!";
constexpr const char* kSelectedDone = "All selected folders have been unpacked and files made read/write.";

std::string Lines(std::initializer_list<const char*> lines) {
    std::string text;
    for (const char* line : lines) {
        if (!text.empty()) text += "\r\n";
        text += line;
    }
    return text;
}

bool Confirm(app::AppContext& ctx, const std::string& text) {
    return ctx.ui && ctx.ui->ask(text, base::Buttons::OkCancel, base::Icon::Information) == base::Answer::Ok;
}

void Tell(app::AppContext& ctx, const std::string& text) {
    if (ctx.ui) ctx.ui->message(text, base::Icon::Information);
}

// The folder of an archive: its path up to, without, the last backslash.
std::string FolderOf(const std::string& path) {
    const std::size_t cut = path.find_last_of("\\/");
    return cut == std::string::npos ? std::string() : path.substr(0, cut);
}

std::string Replace(std::string text, const std::string& marker, const std::string& by) {
    for (std::size_t at = text.find(marker); at != std::string::npos; at = text.find(marker, at + by.size())) {
        text.replace(at, marker.size(), by);
    }
    return text;
}

}  // namespace

base::Status MakeBatch(app::AppContext& ctx, const std::string& templateName, const std::string& folder,
                      const std::string& batchName, tools::BatchOutcome& outcome) {
    const std::string text = Replace(tools::ReadTextFile(ctx.appPath("Templates\\" + templateName)), kTemplateMarker,
                                     folder);
    const std::string batch = ctx.appPath(batchName);
    tools::WriteTextFile(ctx, batch, text);
    tools::SetWorkingFolder(ctx, ctx.appRoot);
    return tools::RunBatchFile(ctx, batch, outcome);
}

std::string BulkQuestion(BulkKind kind) {
    switch (kind) {
    case BulkKind::RollingStock:
        return Lines({"This option will extract all Rolling-stock files from all .ap",
                      "files in Assets and place them in the appropriate ", "Railworks\\Assets\\Provider\\Product folder,",
                      "overwriting existing files without prompting"});
    case BulkKind::Scenarios:
        return Lines({"This option will extract all Scenario files from all .ap",
                      "files in Content and place them in the appropriate ", "Railworks\\Content\\Routes folder,",
                      "overwriting existing files without prompting"});
    case BulkKind::ScenarioProperties:
        return Lines({"This extracts ScenarioProperties.xml & Scenario.bin files from",
                      "all .apfiles in Content and places them in appropriate ",
                      "Railworks\\Content\\Routes\\xxx\\Scenarios folder. ", "DOES NOT OVERWRITE EXISTING COPIES"});
    case BulkKind::RouteProperties:
        return Lines({"This option will extract RouteProperties.xml files from all .ap",
                      "files in Content and place them in the appropriate ", "Railworks\\Content\\Routes folder, plus add a ",
                      "'RouteIndex.csv' file in 'IndexFiles'",
                      "DOES NOT OVERWRITE EXISTING COPIES OF RouteProperties.xml"});
    case BulkKind::RouteSignposts:
        return Lines({"This option will extract RouteProperties.xml files from all .ap",
                      "files in Content and place them in the appropriate ", "Railworks\\Content\\Routes folder, plus add a ",
                      "'RouteName.txt' file for each route"});
    }
    return {};
}

bool RunBulkExtraction(app::AppContext& ctx, BulkKind kind, tools::BatchOutcome& outcome) {
    if (!Confirm(ctx, BulkQuestion(kind))) return false;
    const char* templ = kind == BulkKind::RollingStock       ? "APBatch1"
                        : kind == BulkKind::Scenarios          ? "APBatch2"
                        : kind == BulkKind::ScenarioProperties ? "APBatch7"
                                                               : "APBatch9";
    if (ctx.ui) ctx.ui->busy(true);
    MakeBatch(ctx, std::string(templ) + ".txt", ctx.gameRoot(), std::string(templ) + ".bat", outcome);
    if (ctx.ui) ctx.ui->busy(false);
    return true;
}

void BulkExtractionCommand(app::AppContext& ctx, BulkKind kind,
                           const std::function<void(const std::string&, const std::string&)>& showReport) {
    tools::BatchOutcome outcome;
    if (!RunBulkExtraction(ctx, kind, outcome)) return;
    ctx.report(tools::BatchErrors(outcome), "frmListRS");
    if (kind == BulkKind::ScenarioProperties) {
        Tell(ctx, "All ScenarioProperties.xml & Scenario.bin files have been extracted");
    } else if (kind == BulkKind::RouteSignposts) {
        MakeRouteSignposts(ctx);
        Tell(ctx, "All RouteProperties.xml files have been extracted and\r\n"
                  "Route Names added in the Routes folder where possible");
    }
    if (!outcome.overlength.empty() && showReport) showReport(kOverlengthCaption, OverlengthReport(outcome.overlength));
}

std::string SelectedQuestion(SelectedKind kind) {
    const char* first = kind == SelectedKind::RollingStock
                            ? "This will unpack all rolling-stock from selected .ap files into their correct folders"
                        : kind == SelectedKind::Scenarios
                            ? "This will unpack all Scenarios from selected .ap files into their correct folders"
                        : kind == SelectedKind::LocoGeometry
                            ? "This will unpack all Locomotive .geopcdx files from .ap files into their correct folders"
                            : "This will unpack all rolling stock .bin files from .ap files into their correct folders";
    const char* second = kind == SelectedKind::Scenarios
                             ? "If you do not have a back-up of the Content folder you are about to alter,"
                             : "If you do not have a back-up of the Asset folder you are about to alter,";
    return Lines({first, second, kBackupAdvice});
}

bool ExtractFromSelected(app::AppContext& ctx, SelectedKind kind, const std::vector<std::string>& archives,
                         tools::BatchOutcome& outcome) {
    if (!Confirm(ctx, SelectedQuestion(kind))) return false;
    const char* templ = kind == SelectedKind::RollingStock ? "APBatch3"
                        : kind == SelectedKind::Scenarios  ? "APBatch4"
                        : kind == SelectedKind::LocoGeometry ? "APBatch6"
                                                             : "apbatch8";
    if (ctx.ui) ctx.ui->busy(true);
    for (const std::string& row : archives) {
        const std::string path(tools::TrimBlanks(row));
        if (path.empty()) continue;
        MakeBatch(ctx, std::string(templ) + ".txt", FolderOf(path), std::string(templ) + ".bat", outcome);
        if (outcome.aborted) break;
    }
    if (ctx.ui) ctx.ui->busy(false);
    Tell(ctx, kSelectedDone);
    return true;
}

std::string RoutePropertiesBatch(const std::vector<std::string>& archives) {
    std::string text;
    for (const std::string& row : archives) {
        const std::string path(tools::TrimBlanks(row));
        if (path.empty()) continue;
        const std::string f = FolderOf(path);
        text += "7za e -y -o\"" + f + "\" \"" + f + "\\MainContent.ap\" \"RouteProperties.xml\"\r\n";
        text += "ATTRIB -R \"" + f + "\\*.*\" /s\r\n";
    }
    return text;
}

bool RoutePropertiesFromSelected(app::AppContext& ctx, const std::vector<std::string>& archives,
                                 tools::BatchOutcome& outcome) {
    if (!Confirm(ctx, Lines({"This will unpack all RouteProperties.xml files from selected .ap files",
                             "If you do not have a back-up of the Asset folder you are about to alter,",
                             kBackupAdvice}))) {
        return false;
    }
    const std::string batch = ctx.appPath("APBatch7.bat");
    tools::WriteTextFile(ctx, batch, RoutePropertiesBatch(archives));
    tools::SetWorkingFolder(ctx, ctx.appRoot);
    tools::RunBatchFile(ctx, batch, outcome);
    Tell(ctx, kSelectedDone);
    return true;
}

std::string RouteDisplayName(const std::string& xml) {
    std::string name;
    for (const char* language : {"English", "French", "German"}) {
        long pos = 1;
        tools::GetDetail(xml, pos, language, name);
        if (!name.empty()) break;
    }
    return tools::FixEntitiesCopy(name);
}

int MakeRouteSignposts(app::AppContext& ctx) {
    const std::string routes = ctx.gameRoot() + "\\Content\\Routes";
    int made = 0;
    std::error_code ec;
    std::vector<std::string> folders;
    for (fs::directory_iterator it(tools::HostPath(routes), ec), end; !ec && it != end; it.increment(ec)) {
        std::error_code kind;
        if (it->is_directory(kind)) folders.push_back(tools::SystemPath(it->path().filename()));
    }
    for (const std::string& folder : folders) {
        const std::string properties = routes + "\\" + folder + "\\Routeproperties.xml";
        if (!tools::FileExists(properties)) continue;
        std::string text = folder + "  " + RouteDisplayName(tools::ReadTextFile(properties));
        std::erase(text, ':');
        if (routes.size() + 1 + text.size() >= 241) text.resize(240 - routes.size());
        const std::string signpost = routes + "\\" + text;
        if (fs::exists(tools::HostPath(signpost), ec)) continue;
        if (tools::CreatePath(signpost)) ++made;
    }
    return made;
}

bool UnpackSelected(app::AppContext& ctx, const std::vector<std::string>& archives, tools::BatchOutcome& outcome) {
    if (!Confirm(ctx, Lines({"This will unpack all selected .ap files into their correct folders using 7zip",
                             "If you do not have a back-up of the Asset and Content you are about to alter,",
                             kBackupAdvice}))) {
        return false;
    }
    if (ctx.ui) ctx.ui->busy(true);
    for (const std::string& row : archives) {
        const std::string path(tools::TrimBlanks(row));
        if (path.empty()) continue;
        const std::string target = FolderOf(path);
        // The lines as the tool is called, run by the interpreter with AppRoot as working folder.
        const std::string lines = "\"" + ctx.appRoot + "\\7za.exe\" x \"" + path + "\" -aoa -o\"" + target + "\" -r\r\n" +
                                  "ATTRIB -R \"" + target + "\\*.*\" /s /d\r\n";
        tools::SetWorkingFolder(ctx, ctx.appRoot);
        tools::RunBatchText(ctx, lines, ctx.appRoot, outcome);
        if (outcome.aborted) break;
    }
    if (ctx.ui) ctx.ui->busy(false);
    Tell(ctx, kSelectedDone);
    return true;
}

std::optional<std::string> ListArchive(app::AppContext& ctx, const std::string& archive) {
    if (!ctx.ui || ctx.ui->ask("This will list all files in the selected .ap file.", base::Buttons::OkCancel,
                               base::Icon::Information) != base::Answer::Ok) {
        return std::nullopt;
    }
    tools::CreatePath(ctx.appPath("Tempfiles"));
    const std::string batch = ctx.appPath("APBatch5.bat");
    const std::string list = ctx.appPath("Tempfiles\\List.txt");
    tools::WriteBatch(batch, "\"" + ctx.appRoot + "\\7za.exe\" l \"" + archive + "\" > \"" + list + "\"");
    tools::SetWorkingFolder(ctx, ctx.appRoot);
    tools::ToolRunner(ctx, "APBatch5.bat", true, tools::WindowStyle::Normal);
    return tools::ReadTextFile(list);
}

std::string IndexCsvText(const std::vector<IndexRow>& rows) {
    std::string text;
    for (const auto& row : rows) text += row.name + "," + row.folder + "\r\n";
    return text;
}

namespace {

bool WriteIndex(app::AppContext& ctx, const std::string& folder, const std::string& name,
                const std::vector<IndexRow>& rows) {
    tools::CreatePath(ctx.appPath(folder));
    return tools::WriteTextFile(ctx, ctx.appPath(folder + "\\" + name), IndexCsvText(rows));
}

}  // namespace

bool WriteApIndex(app::AppContext& ctx, const std::vector<IndexRow>& rows) {
    return WriteIndex(ctx, "Data", "AP-Index.csv", rows);
}

bool WriteBinIndex(app::AppContext& ctx, const std::vector<IndexRow>& rows) {
    return WriteIndex(ctx, "Reports", "BIN-Index.csv", rows);
}

}  // namespace ferrolund::archives
