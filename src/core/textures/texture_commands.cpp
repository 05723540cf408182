#include "textures/texture_commands.h"

#include <filesystem>

#include "textures/tgpcdx_dds.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::textures {

namespace {

const char* const kModule = "frmEditor";

bool IsTexturePath(const std::string& path) {
    return path.size() >= 6 && tools::EqualsIgnoreCase(path.substr(path.size() - 6), "TgPcDx");
}

void Tell(app::AppContext& ctx, const std::string& text, base::Icon icon, const std::string& title = {}) {
    if (ctx.ui) ctx.ui->message(text, icon, title);
}

void Busy(app::AppContext& ctx, bool on) {
    if (ctx.ui) ctx.ui->busy(on);
}

// The texture chosen, or the one named on the command line or in the route list.
std::string ChosenTexture(app::AppContext& ctx, editor::EditorDocument& doc) {
    if (ctx.commandLineOpen || doc.openFromList) return ctx.commandFile;
    if (!ctx.ui) return {};
    const auto chosen = ctx.ui->chooseOpenFile(kOpenTextureTitle, kOpenTextureFilter, ctx.gameRoot());
    return chosen.value_or(std::string());
}

// The texture a .dds of TempDDS goes back into: the open document when it has the same
// name, otherwise one the user names.
std::string TextureFor(app::AppContext& ctx, const editor::DocumentWindow& window, const std::string& dds) {
    const std::string open = window.documentName(editor::Pane::Main);
    const std::string base = editor::SplitDocumentName(dds).baseName;
    if (IsTexturePath(open) && tools::EqualsIgnoreCase(editor::SplitDocumentName(open).baseName, base)) return open;
    const auto chosen = ctx.ui->chooseOpenFile("The .TgPcDx texture to replace with " + base + "dds",
                                               kOpenTextureFilter, ctx.gameRoot());
    return chosen.value_or(std::string());
}

}  // namespace

std::string TempDdsFolder(const app::AppContext& ctx) { return ctx.appPath("TempDDS"); }

std::string DdsOfDocument(const app::AppContext& ctx, const editor::DocumentWindow& window) {
    const std::string name = window.documentName(editor::Pane::Main);
    if (!IsTexturePath(name)) return {};
    return TempDdsFolder(ctx) + "\\" + editor::SplitDocumentName(name).baseName + "dds";
}

void OpenTexture(app::AppContext& ctx, editor::EditorDocument& doc, editor::DocumentWindow& window) {
    ctx.currentRoutine = "mnuOpenTex_Click";
    const std::string file = ChosenTexture(ctx, doc);
    ctx.commandLineOpen = false;
    doc.openFromList = false;
    if (file.empty()) return;
    if (!tools::FileExists(file)) {
        Tell(ctx, "The file selected does not exist?\n" + file, base::Icon::Exclamation);
        return;
    }
    ctx.commandFile = file;
    window.showNormal();
    Busy(ctx, true);
    window.setPaneText(editor::Pane::Main, {});
    if (!doc.strBin.empty() && tools::FileExists(doc.strBin + "xml")) (void)tools::DeleteFile(doc.strBin + "xml");
    doc.treeLoaded = false;
    if (ctx.ui) ctx.ui->status(editor::kModifiedPanel, "File last Modified: " + editor::FileModifiedTime(file));
    tools::CreatePath(TempDdsFolder(ctx));
    const editor::NameParts parts = editor::SplitDocumentName(file);
    doc.baseName = parts.baseName;
    doc.fileExtension = parts.extension;
    doc.strBin = TempDdsFolder(ctx) + "\\" + parts.baseName;
    const base::Status converted = editor::ConvertScratchCopy(ctx, file, doc.strBin, kModule);
    window.setDocumentName(editor::Pane::Main, file);
    window.setPaneText(editor::Pane::Main, tools::ReadTextFile(doc.strBin + "xml"));
    window.setMenuEnabled("mnuDDS", true);
    for (const char* item : {"mnuPrint", "mnuFind"}) window.setMenuEnabled(item, true);
    for (const char* item : {"mnuSaveRS", "mnuSavexml", "mnuView", "mnuEditDDS"}) window.setMenuEnabled(item, false);
    Busy(ctx, false);
    if (converted) Tell(ctx, std::string(kNotATexture) + "\n" + converted->description, base::Icon::Exclamation);
}

void ConvertOpenTexture(app::AppContext& ctx, editor::DocumentWindow& window) {
    ctx.currentRoutine = "mnuDDS_Click";
    const std::string dds = DdsOfDocument(ctx, window);
    if (dds.empty()) {
        Tell(ctx, kNotTgPcDx, base::Icon::Exclamation);
        return;
    }
    tools::CreatePath(TempDdsFolder(ctx));
    window.setMenuEnabled("mnuView", true);
    window.setMenuEnabled("mnuEditDDS", true);
    const std::string xml = window.paneText(editor::Pane::Main);
    if (tools::FileExists(dds)) (void)tools::DeleteFile(dds);
    Busy(ctx, true);
    const ConversionResult result = XmlToDdsFile(xml, dds);
    Busy(ctx, false);
    if (!result.error.empty()) {
        Tell(ctx, result.error, base::Icon::Exclamation);
        return;
    }
    Tell(ctx,
         "If you wish to edit this file, then it must be saved with the following format:-\n1. .DDS\n2. " +
             result.label + "\n3. Number of Mip-Maps - " + std::to_string(result.mipCount),
         base::Icon::Information, "Editing .dds files");
}

void ConvertDdsToTexture(app::AppContext& ctx, const editor::DocumentWindow& window) {
    ctx.currentRoutine = "mnuDDStoKrs_Click";
    if (!ctx.ui) return;
    tools::CreatePath(TempDdsFolder(ctx));
    const auto dds = ctx.ui->chooseOpenFile("Convert .dds file", "DDS Files (*.dds)|*.dds", TempDdsFolder(ctx));
    if (!dds || dds->empty()) return;
    const std::string base = editor::SplitDocumentName(*dds).baseName;
    const std::size_t slash = dds->find_last_of("\\/");
    const std::string side = dds->substr(0, slash + 1) + base + "dat";
    if (!tools::FileExists(side)) {
        Tell(ctx, kNoSideFile, base::Icon::Exclamation);
        return;
    }
    const std::string texture = TextureFor(ctx, window, *dds);
    if (texture.empty()) return;
    if (ctx.ui->ask("This option will convert your modified file " + base + "dds\nto " + texture +
                        "\nand create a backup of the original file. Continue?",
                    base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes)
        return;
    Busy(ctx, true);
    const ConversionResult result = DdsToTgPcDx(*dds, texture);
    Busy(ctx, false);
    if (result.converterFailed) {
        Tell(ctx, kSerzTextureFailed, base::Icon::Critical);
    } else if (!result.error.empty()) {
        Tell(ctx, result.error, base::Icon::Exclamation);
    } else {
        Tell(ctx, "The texture has been saved as:-\n" + texture +
                      (result.backup.empty() ? std::string() : "\nThe original file is now " + result.backup),
             base::Icon::Information);
    }
}

void EmptyTempDds(app::AppContext& ctx) {
    ctx.currentRoutine = "mnuEmpt_Click";
    if (!ctx.ui) return;
    const std::string question =
        ctx.langText(412, "This will delete all files in your TempDDS folder. Do you wish to continue?");
    if (ctx.ui->ask(question, base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes) return;
    const std::string folder = TempDdsFolder(ctx);
    std::error_code ec;
    if (std::filesystem::exists(tools::HostPath(folder), ec))
        ctx.report(tools::DeleteFolderTree(ctx, folder), kModule);
    tools::CreatePath(folder);
}

void OpenDdsIn(app::AppContext& ctx, const editor::DocumentWindow& window, DdsProgram which,
               const ProgramStarter& start) {
    const bool view = which == DdsProgram::Viewer;
    ctx.currentRoutine = view ? "mnuView_Click" : "mnuEditDDS_Click";
    const std::string dds = DdsOfDocument(ctx, window);
    if (dds.empty()) {
        Tell(ctx, kNotTgPcDx, base::Icon::Exclamation);
        return;
    }
    if (!tools::FileExists(dds)) {
        Tell(ctx, "There is no " + dds + " yet: convert the texture to .dds first.", base::Icon::Exclamation);
        return;
    }
    const std::string& program = view ? ctx.prefs.viewerPath : ctx.prefs.graphicsEditorPath;
    const std::string file = tools::HostPath(dds).string();
    if (!program.empty()) {
        if (!start.program || !start.program(tools::HostPath(program).string(), file))
            Tell(ctx, "Unable to start " + program, base::Icon::Exclamation);
        return;
    }
    if (start.desktop && start.desktop(file)) return;
    Tell(ctx,
         std::string(view ? "To view DDS files you need to install a suitable Texture viewer (e.g. IrfanView) on your PC "
                          : "To edit DDS files you need to install a suitable paint program (e.g. PSP with .dds plugin) "
                            "on your PC ") +
             "\nand select the path from the Options menu.",
         base::Icon::Exclamation);
}

}  // namespace ferrolund::textures
