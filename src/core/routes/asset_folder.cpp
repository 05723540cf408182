#include "routes/asset_folder.h"

#include <algorithm>

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

namespace {

std::string Joined(const std::vector<std::string>& items, const std::string& separator) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : separator) + item;
    return text;
}

}  // namespace

std::string AssetFolderPath(const app::AppContext& ctx, const std::string& routeName) {
    std::string name(tools::TrimBlanks(routeName));
    for (char& c : name)
        if (std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos || static_cast<unsigned char>(c) < 32)
            c = '_';
    return ctx.appPath(name.empty() ? "_" : name);
}

void AddAssetCopyLines(const std::string& listText, const std::string& target, std::vector<std::string>& lines,
                       std::unordered_set<std::string>& seen) {
    std::size_t from = 0;
    while (from < listText.size()) {
        std::size_t end = listText.find('\n', from);
        if (end == std::string::npos) end = listText.size();
        std::string line = listText.substr(from, end - from);
        from = end + 1;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::string source(tools::TrimBlanks(line.substr(0, line.find(','))));
        const long at = tools::InStr(source, "\\Assets\\");
        if (at == 0) continue;
        const std::string behind = source.substr(static_cast<std::size_t>(at) + 7);
        const std::size_t cut = behind.rfind('\\');
        if (cut == std::string::npos || cut == 0) continue;
        if (!seen.insert(tools::UpperCp1252(source)).second) continue;
        lines.push_back("xcopy \"" + source + "\" \"" + target + "\\" + behind.substr(0, cut) + "\\\" /I /C /S");
    }
}

AssetFolderOutcome MakeAssetFolder(app::AppContext& ctx, const std::string& routeName) {
    ctx.currentRoutine = "mnuCRF_Click";
    AssetFolderOutcome out;
    if (ctx.ui->ask("Make Asset Folder works from the lists of the route's\nSounds,Textures,GeoShapes and Assets.csv "
                    "files\nFrom the 'Check Route' option, which must have been saved first.\nClick OK if they are "
                    "saved, Cancel if not.",
                    base::Buttons::OkCancel, base::Icon::Question) != base::Answer::Ok) {
        out.cancelled = true;
        return out;
    }
    out.folder = AssetFolderPath(ctx, routeName);
    std::vector<std::string> lines;
    std::unordered_set<std::string> seen;
    for (const char* suffix : kAssetListSuffixes) {
        const std::string list = ctx.appPath("Reports\\" + routeName + suffix);
        const std::string text = tools::ReadTextFile(list);
        (text.empty() ? out.listsAbsent : out.listsRead).push_back(list);
        AddAssetCopyLines(text, out.folder, lines, seen);
    }
    if (lines.empty()) {
        ctx.ui->message("No asset to copy was found in the saved lists of " + routeName + ".\nLists looked for:\n" +
                            Joined(out.listsAbsent.empty() ? out.listsRead : out.listsAbsent, "\n") +
                            "\nRun 'Check Route' on this route and let it save its lists first.",
                        base::Icon::Exclamation);
        return out;
    }
    // Copies of an earlier run are replaced only when the user says so, once for all of them.
    if (std::string existing = out.folder; tools::FolderExists(existing)) {
        if (ctx.ui->ask("The folder " + out.folder + "\nholds copies from an earlier run. Replace them with fresh copies?",
                        base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes) {
            out.cancelled = true;
            return out;
        }
        for (std::string& line : lines) line += " /Y";
    }
    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    out.batchFile = temp + "\\AssetFolder.bat";
    if (base::Status failed = tools::WriteBatch(out.batchFile, Joined(lines, "\r\n"))) ctx.report(*failed, "frmDelRoute");
    tools::ForgetPath(out.batchFile);
    if (!tools::CreatePath(out.folder)) {
        ctx.ui->message("The folder " + out.folder + " could not be made, so no asset was copied.",
                        base::Icon::Exclamation);
        return out;
    }
    for (std::size_t i = 0; i < lines.size() && !out.batch.aborted; ++i) {
        const int percent = static_cast<int>(i * 100 / lines.size());
        ctx.ui->progress(percent, "Copying assets " + std::to_string(percent) + " %");
        ctx.ui->pump();
        if (ctx.abortFlag) {
            out.batch.aborted = true;
            break;
        }
        tools::RunBatchText(ctx, lines[i], temp, out.batch);
        ++out.lines;
    }
    ctx.ui->progress(-1, {});
    std::string text = out.batch.aborted ? "Stopped after " + std::to_string(out.lines) + " of " +
                                               std::to_string(lines.size()) + " assets; the copies made so far are in\n" +
                                               out.folder
                                         : "The assets used by " + routeName + " have been copied into\n" + out.folder;
    if (!out.listsAbsent.empty()) text += "\n\nThese lists were not found:\n" + Joined(out.listsAbsent, "\n");
    if (const base::Status errors = tools::BatchErrors(out.batch)) text += "\n\n" + errors->description;
    ctx.ui->message(text, out.batch.errors.empty() ? base::Icon::Information : base::Icon::Exclamation);
    return out;
}

}  // namespace ferrolund::routes
