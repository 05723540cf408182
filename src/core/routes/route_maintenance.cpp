#include "routes/route_maintenance.h"

#include <algorithm>
#include <filesystem>

#include "routes/route_check.h"
#include "routes/route_check_command.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

namespace fs = std::filesystem;
using tools::InStr;

namespace {

constexpr const char* kModule = "frmDelRoute";

// The name behind the last backslash.
std::string NameOf(const std::string& path) {
    const std::size_t cut = path.rfind('\\');
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

// The name without its last extension ("x.bin" -> "x").
std::string StemOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? name : name.substr(0, dot);
}

bool EndsWithBin(const std::string& name) {
    return name.size() >= 4 && tools::UpperCp1252(name.substr(name.size() - 4)) == ".BIN";
}

void Progress(app::AppContext& ctx, std::size_t done, std::size_t total, const std::string& prefix) {
    const int percent = total == 0 ? 100 : static_cast<int>(done * 100 / total);
    ctx.ui->progress(percent, prefix + std::to_string(percent) + " %");
    ctx.ui->pump();
}

// Converts `source` into TempFiles\<name> and gives its path, or the failure.
base::Status ConvertIntoTemp(app::AppContext& ctx, const std::string& source, const std::string& name,
                            tools::SerzDirection direction, std::string& target) {
    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    target = temp + "\\" + name;
    const base::Status status = tools::SerzConvert(ctx, source, target, direction);
    tools::ForgetPath(target);
    return status;
}

}  // namespace

PropertiesCheck CheckScenarioProperties(app::AppContext& ctx, const std::vector<ScenarioRow>& scenarios) {
    ctx.currentRoutine = "Command18_Click";
    PropertiesCheck check;
    for (std::size_t i = 0; i < scenarios.size(); ++i) {
        Progress(ctx, i, scenarios.size(), "ScenarioProperties ");
        if (ctx.abortFlag) {
            check.aborted = true;
            return check;
        }
        const ScenarioRow& row = scenarios[i];
        const std::string file =
            ctx.gameRoot() + "\\Content\\Routes\\" + row.routeFolder + "\\Scenarios\\" + row.folder +
            "\\ScenarioProperties.xml";
        if (!tools::FileExists(file)) {
            check.missing.push_back(file);
            ctx.ui->message(file + "\nis missing.", base::Icon::Exclamation);
            continue;
        }
        ++check.checked;
        std::string binary;
        const base::Status failed = ConvertIntoTemp(ctx, file, "ScenarioProperties.bin", tools::SerzDirection::ToBinary,
                                                   binary);
        if (failed || tools::FileLength(binary) < kSmallestPropertiesBinary) {
            check.faulty.push_back(row.name);
            std::string text = "If you saw a message regarding Line 113, there is a format\nerror in " + row.name;
            if (failed) text += "\n\n" + failed->description;
            ctx.ui->message(text, base::Icon::Exclamation);
        }
        if (tools::FileExists(binary)) tools::DeleteFile(binary);
        tools::ForgetPath(binary);
    }
    ctx.ui->progress(-1, {});
    ctx.ui->message(check.faulty.empty()
                        ? "All selected ScenarioProperties.xml checked - all formats OK."
                        : "All selected ScenarioProperties.xml checked - at least one had a format error.",
                    base::Icon::Information);
    return check;
}

TemplateCheck CheckRouteTemplate(app::AppContext& ctx, const std::string& routeFolder) {
    ctx.currentRoutine = "Command25_Click";
    TemplateCheck check;
    const std::string properties =
        tools::ReadTextFile(ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\RouteProperties.xml");
    if (properties.empty()) {
        ctx.ui->message("There is no RouteProperties.xml file for this route\ntherefore the route is invalid and "
                        "can't be used.",
                        base::Icon::Exclamation);
        return check;
    }
    assets::BlueprintRef ref;
    RouteTemplateOf(properties, ref);
    check.templateFile = AssetPath(ctx.gameRoot(), ref.provider, ref.product, ref.blueprintId);
    if (!tools::FileExists(check.templateFile)) check.templateFile = tools::FixEntitiesCopy(check.templateFile);
    if (ref.blueprintId.empty() || !tools::FileExists(check.templateFile)) {
        check.end = TemplateCheckEnd::TemplateMissing;
        ctx.ui->ask(tools::FixEntitiesCopy(ref.blueprintId) + "\nCould not be found.", base::Buttons::OkCancel,
                    base::Icon::Exclamation);
        return check;
    }
    tools::CreatePath(ctx.appPath("TempFiles"));
    const std::string copy = ctx.appPath("TempFiles\\" + NameOf(check.templateFile));
    base::Status failed = tools::CopyFileReplacing(check.templateFile, copy);
    tools::ForgetPath(copy);
    std::string xmlFile;
    if (!failed) failed = ConvertIntoTemp(ctx, copy, StemOf(NameOf(copy)) + ".xml", tools::SerzDirection::ToXml, xmlFile);
    if (failed) {
        check.end = TemplateCheckEnd::Unreadable;
        ctx.ui->message("The Route Template " + check.templateFile + " could not be read:\n" + failed->description,
                        base::Icon::Exclamation);
        return check;
    }
    check.xml = tools::ReadTextFile(xmlFile);

    if (InStr(check.xml, "<BrowseFiltering>") == 0) {
        if (ctx.ui->ask("The Route Template file does not include a\nBrowseFiltering section, so will not sort "
                        "correctly\nin TS-Classic - Do you wish to add it?",
                        base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes)
            check.change = TemplateChange::AddBrowseFilter;
    } else if (InStr(check.xml, "eTrue") == 0) {
        if (ctx.ui->ask("Although the Route Template has a BrowseFiltering section\nNo location or filtering data is "
                        "included.\nDo you wish to update it.",
                        base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes)
            check.change = TemplateChange::UpdateBrowseFilter;
    } else if (ctx.ui->ask("Route Template appears to be OK, but you\nmay edit it if you wish?", base::Buttons::YesNo,
                           base::Icon::Question) == base::Answer::Yes) {
        check.change = TemplateChange::Edit;
    } else {
        check.end = TemplateCheckEnd::LeftAsItIs;
        return check;
    }
    check.end = TemplateCheckEnd::NeedsEditor;
    ctx.ui->message("Editing the route template comes with the route template screen, which this version of "
                    "Ferrolund does not have yet.\nThe template " +
                        check.templateFile + " has not been changed.",
                    base::Icon::Information);
    return check;
}

std::string MixMapFolder(const std::string& gameRoot, const std::string& routeFolder) {
    return gameRoot + "\\Content\\Routes\\" + routeFolder + "\\MixMap";
}

std::vector<std::string> FolderFileNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec))
        if (it->is_regular_file(ec)) names.push_back(tools::SystemPath(it->path().filename()));
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return tools::UpperCp1252(a) < tools::UpperCp1252(b);
    });
    return names;
}

namespace {

// The d:size of the blob that starts at `blob` (1-based), as written.
std::string BlobSize(const std::string& text, long blob) {
    const long at = InStr(blob, text, "d:size=\"");
    if (at == 0) return {};
    const std::size_t from = static_cast<std::size_t>(at) + 7;
    const std::size_t end = text.find('"', from);
    return end == std::string::npos ? std::string() : text.substr(from, end - from);
}

// One MixMap tile cleared; the failure when it was left as it was.
base::Status ClearOneMixMap(app::AppContext& ctx, const std::string& file, const std::string& blank) {
    const std::string name = NameOf(file);
    std::string xmlFile;
    if (base::Status failed = ConvertIntoTemp(ctx, file, StemOf(name) + ".xml", tools::SerzDirection::ToXml, xmlFile))
        return failed;
    std::string text = tools::ReadTextFile(xmlFile);
    const long blob = InStr(text, "<d:blob");
    if (blob == 0) return base::RunError{5, name + " holds no terrain mix data (<d:blob)."};
    // A tile whose mix is of another size than the blank one would no longer fit its terrain.
    const std::string size = BlobSize(text, blob);
    if (size != BlobSize(blank, 1))
        return base::RunError{5, name + " holds a terrain mix of " + size + " bytes, the blank template one of " +
                                    BlobSize(blank, 1) + " bytes."};
    text = text.substr(0, static_cast<std::size_t>(blob - 1)) + blank;
    if (!tools::WriteTextFile(ctx, xmlFile, text)) return base::err::PathFileAccess(xmlFile);
    std::string binFile;
    if (base::Status failed = ConvertIntoTemp(ctx, xmlFile, name, tools::SerzDirection::ToBinary, binFile))
        return failed;
    std::string backup;
    if (base::Status failed = tools::ReplaceWithBackup(binFile, file, tools::kBackupRule, backup)) return failed;
    tools::DeleteFile(xmlFile);
    tools::DeleteFile(binFile);
    tools::ForgetPath(xmlFile);
    tools::ForgetPath(binFile);
    return {};
}

}  // namespace

MixMapClearing ClearMixMaps(app::AppContext& ctx, const std::string& folder, const std::vector<std::string>& names) {
    ctx.currentRoutine = "frmMix.Process";
    MixMapClearing out;
    const std::string templateFile = ctx.appPath("Templates\\BlankTerrain.txt");
    const std::string blank = tools::ReadTextFile(templateFile);
    if (blank.empty()) {
        ctx.ui->message("The template " + templateFile + " is missing, so no file was changed.",
                        base::Icon::Exclamation);
        return out;
    }
    std::vector<std::string> files;
    for (const std::string& name : names)
        if (EndsWithBin(name)) files.push_back(name);
    if (files.empty()) {
        ctx.ui->message("No .bin file was selected, so no file was changed.", base::Icon::Information);
        return out;
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        Progress(ctx, i, files.size(), "MixMap ");
        if (ctx.abortFlag) {
            out.aborted = true;
            break;
        }
        const std::string file = folder + "\\" + files[i];
        if (base::Status failed = ClearOneMixMap(ctx, file, blank)) {
            out.failed.push_back(files[i]);
            ctx.ui->message(file + " was left as it was:\n" + failed->description, base::Icon::Exclamation);
        } else {
            out.modified.push_back(files[i]);
        }
    }
    ctx.ui->progress(-1, {});
    if (out.aborted)
        ctx.ui->message("Stopped: " + std::to_string(out.modified.size()) + " of the " + std::to_string(files.size()) +
                            " selected files have been modified.",
                        base::Icon::Information);
    else if (out.failed.empty())
        ctx.ui->message("All selected files have been modified.", base::Icon::Information);
    else
        ctx.ui->message(std::to_string(out.modified.size()) + " of the " + std::to_string(files.size()) +
                            " selected files have been modified; the others were left as they were.",
                        base::Icon::Exclamation);
    return out;
}

}  // namespace ferrolund::routes
