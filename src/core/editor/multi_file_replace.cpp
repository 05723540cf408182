#include "editor/multi_file_replace.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "editor/document.h"
#include "editor/text_find.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::editor {

namespace {

constexpr const char* kModule = "frmFolder5";

std::string TempFiles(app::AppContext& ctx) { return ctx.appPath("TempFiles"); }

void DeleteIfThere(const std::string& path) {
    if (tools::FileLength(path) >= 0) tools::DeleteFile(path);
}

enum class FileOutcome { Unchanged, Unreadable, Changed, Stop };

FileOutcome ReplaceInFile(app::AppContext& ctx, const std::string& path, const std::string& what,
                          const std::string& with, const ReplaceInFilesHooks& hooks) {
    const NameParts parts = SplitDocumentName(path);
    const std::string scratch = TempFiles(ctx) + "\\" + parts.baseName;
    ConvertScratchCopy(ctx, path, scratch, kModule);
    std::string xml = tools::ReadTextFile(scratch + "xml");
    if (xml.empty()) return FileOutcome::Unreadable;
    const ReplaceAllResult replaced = ReplaceAllInText(xml, what, with);
    if (hooks.show) hooks.show(xml);
    if (replaced.count == 0) return FileOutcome::Unchanged;

    DeleteIfThere(scratch + "xml");
    const std::string result = RecompileText(ctx, xml, scratch, parts.extension, kModule);
    if (result.empty()) return FileOutcome::Stop;
    const tools::BackupOutcome backup = tools::MakeBackup(path, tools::kBackupRule);
    if (backup.error) {
        // Without its back-up the original stays as it is.
        ctx.report(*backup.error, kModule);
        return FileOutcome::Unchanged;
    }
    if (base::Status copied = tools::CopyFileReplacing(result, path)) {
        ctx.report(*copied, kModule);
        return FileOutcome::Unchanged;
    }
    return FileOutcome::Changed;
}

}  // namespace

std::string DisplayAsXml(app::AppContext& ctx, const std::string& path) {
    ctx.currentRoutine = "Command7_Click";
    const NameParts parts = SplitDocumentName(path);
    const std::string scratch = TempFiles(ctx) + "\\" + parts.baseName;
    ConvertScratchCopy(ctx, path, scratch, kModule);
    return tools::ReadTextFile(scratch + "xml");
}

ReplaceInFilesRun ReplaceInFiles(app::AppContext& ctx, const std::vector<std::string>& files,
                                 const std::string& what, const std::string& with,
                                 const ReplaceInFilesHooks& hooks) {
    ctx.currentRoutine = "Command8_Click";
    ReplaceInFilesRun run;
    if (what.empty() || files.empty()) return run;
    tools::CreatePath(TempFiles(ctx));
    ctx.abortFlag = false;
    ctx.ui->busy(true);
    const int count = static_cast<int>(files.size());
    for (int i = 0; i < count; ++i) {
        if (hooks.progress) hooks.progress(i, count, files[static_cast<std::size_t>(i)]);
        ctx.ui->pump();
        if (ctx.abortFlag) {
            run.aborted = true;
            break;
        }
        const std::string& path = files[static_cast<std::size_t>(i)];
        const FileOutcome outcome = ReplaceInFile(ctx, path, what, with, hooks);
        if (outcome == FileOutcome::Changed) {
            run.changed.push_back(path);
        } else if (outcome == FileOutcome::Unreadable) {
            run.unreadable.push_back(path);
        } else if (outcome == FileOutcome::Stop) {
            run.stopped = true;
            break;
        }
    }
    ctx.ui->busy(false);
    return run;
}

int SaveSelectedAsXml(app::AppContext& ctx, const std::vector<std::string>& files,
                      const std::function<void(int index, int count, const std::string& path)>& progress) {
    ctx.currentRoutine = "Command9_Click";
    const base::Answer answer = ctx.ui->ask(
        "This option will save all selected files in .xml format\n"
        "in Ferrolund\\TempXML existing files in TempXML will be deleted.",
        base::Buttons::OkCancel, base::Icon::None);
    if (answer == base::Answer::Cancel) return -1;
    std::string folder = ctx.appPath("TempXML");
    std::string probe = folder;
    if (tools::FolderExists(probe)) ctx.report(tools::DeleteFolderTree(ctx, folder), kModule);
    tools::CreatePath(folder);
    int converted = 0;
    ctx.abortFlag = false;
    const int count = static_cast<int>(files.size());
    for (int i = 0; i < count; ++i) {
        const std::string& path = files[static_cast<std::size_t>(i)];
        if (progress) progress(i, count, path);
        ctx.ui->pump();
        if (ctx.abortFlag) break;
        const NameParts parts = SplitDocumentName(path);
        const std::string scratch = folder + "\\" + parts.baseName;
        if (!ConvertScratchCopy(ctx, path, scratch, kModule) && tools::FileLength(scratch + "xml") > 0) {
            ++converted;
        }
    }
    return converted;
}

std::vector<std::string> FolderFiles(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (std::filesystem::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end;
         it.increment(ec)) {
        if (it->is_regular_file(ec)) names.push_back(tools::SystemPath(it->path().filename()));
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string la = tools::LowerCp1252(a);
        const std::string lb = tools::LowerCp1252(b);
        return la != lb ? la < lb : a < b;
    });
    return names;
}

std::string RailWorksPart(const std::string& folder) {
    const long at = tools::InStr(folder, "RailWorks");
    return at > 0 ? folder.substr(static_cast<std::size_t>(at - 1)) : folder;
}

}  // namespace ferrolund::editor
