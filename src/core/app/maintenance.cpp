#include "app/maintenance.h"

#include <filesystem>

#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tool_runner.h"

namespace ferrolund::app {

namespace {

const char* const kModule = "frmEditor";

// Writes the batch into TempFiles and runs it there in a visible console.
void RunTempBatch(AppContext& ctx, const std::string& name, const std::string& text) {
    ctx.report(tools::WriteBatch(ctx.appPath("TempFiles\\" + name), text), kModule);
    tools::SetWorkingFolder(ctx, ctx.appPath("TempFiles"));
    tools::ToolRunner(ctx, name, true, tools::WindowStyle::Normal);
}

}  // namespace

void ClearTempFiles(AppContext& ctx) {
    ctx.currentRoutine = "mnuCTF_Click";
    ctx.report(tools::DeleteFolderTree(ctx, ctx.appPath("TempFiles")), kModule);
    tools::CreatePath(ctx.appPath("TempFiles"));
}

std::string ReadWriteBatch(const std::string& folder) { return "ATTRIB -R \"" + folder + "\\*.*\" /s /d"; }

void MakeReadWrite(AppContext& ctx, const std::string& folder) {
    if (ctx.currentRoutine != "mnuSelRW_Click") ctx.currentRoutine = "mnuReadWrite_Click";
    RunTempBatch(ctx, "do_read.bat", ReadWriteBatch(folder));
    if (ctx.ui) ctx.ui->message("All files are now Read/Write", base::Icon::Exclamation);
}

void MakeSelectedFolderReadWrite(AppContext& ctx) {
    ctx.currentRoutine = "mnuSelRW_Click";
    if (!ctx.ui) return;
    const auto folder = ctx.ui->chooseFolder("Make files in Selected folder Read/Write", ctx.gameRoot());
    if (!folder || folder->empty()) return;
    MakeReadWrite(ctx, *folder);
}

std::string CacheBackupName(const std::string& cacheFile) {
    const std::string binTail = ".bin";
    if (cacheFile.size() > binTail.size() && cacheFile.compare(cacheFile.size() - binTail.size(), binTail.size(), binTail) == 0) {
        return cacheFile.substr(0, cacheFile.size() - binTail.size()) + ".bak";
    }
    return cacheFile + ".bak";
}

void DeleteCacheFiles(AppContext& ctx) {
    ctx.currentRoutine = "Command1_Click";
    for (const char* name : kCacheFiles) {
        const std::string path = ctx.gameRoot() + "\\Content\\" + name;
        if (!tools::FileExists(path)) continue;
        ctx.report(tools::DeleteFile(path), "frmSDB");
        if (ctx.ui) ctx.ui->pump();
    }
}

void RenameCacheFiles(AppContext& ctx) {
    ctx.currentRoutine = "Command2_Click";
    for (const char* name : kCacheFiles) {
        const std::string path = ctx.gameRoot() + "\\Content\\" + name;
        if (!tools::FileExists(path)) continue;
        const std::string backup = ctx.gameRoot() + "\\Content\\" + CacheBackupName(name);
        std::error_code ec;
        if (std::filesystem::exists(tools::HostPath(backup), ec)) {
            ctx.report(base::RunError{58, "File already exists: " + backup}, "frmSDB");
            continue;
        }
        std::filesystem::rename(tools::HostPath(path), tools::HostPath(backup), ec);
        tools::ForgetPath(path);
        tools::ForgetPath(backup);
        if (ec) ctx.report(base::err::PathFileAccess(path), "frmSDB");
    }
}

std::string FullBackupBatch(const std::string& gameRoot, const std::string& backupFolder, bool withSource) {
    std::string batch = "chcp 1252\r\n";
    batch += "copy \"" + gameRoot + "\\*.*\" \"" + backupFolder + "\\\"\r\n";
    auto xcopy = [&](const char* sub) {
        batch += "call xcopy \"" + gameRoot + "\\" + sub + "\\*.*\" \"" + backupFolder + "\\" + sub + "\\*.*\" /s /y\r\n";
    };
    xcopy("Assets");
    xcopy("Content");
    if (withSource) xcopy("Source");
    batch.erase(batch.size() - 2);  // the batch writer adds the last line end
    return batch;
}

void FullBackup(AppContext& ctx) {
    ctx.currentRoutine = "mnuBackup_Click";
    if (ctx.prefs.backupPath.empty()) {
        if (ctx.ui) {
            ctx.ui->message("You do not appear to have set up a path for your backups.\n"
                            "Go to the Options menu and do this first.",
                            base::Icon::Exclamation);
        }
        return;
    }
    const std::string folder = ctx.prefs.backupPath + "\\Ferrolund_Backup";
    tools::CreatePath(folder);
    std::string source = ctx.gameRoot() + "\\Source";
    RunTempBatch(ctx, "do_clone.bat", FullBackupBatch(ctx.gameRoot(), folder, tools::FolderExists(source)));
    if (ctx.ui) {
        ctx.ui->message("TrainSimulator 2020 Assets,Contents,Source and Root folders have been copied to\n" + folder,
                        base::Icon::Information);
    }
}

}  // namespace ferrolund::app
