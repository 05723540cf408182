#include "editor/document.h"

#include <ctime>
#include <filesystem>

#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"

namespace ferrolund::editor {

namespace {

const char* const kModule = "frmEditor";
const char* const kOpenTitle = "Open RailSim file";
const char* const kOpenFilter = "RS Files(*.bin;*.XSec;*.GeoPcDx;*.proxybin)|*.bin;*.XSec*;*.GeoPcDx;*.proxybin";

std::string Clock(std::time_t t, bool withDate) {
    std::tm tm{};
    localtime_r(&t, &tm);
    char text[32];
    std::strftime(text, sizeof text, withDate ? "%Y-%m-%d %H:%M:%S" : "%H:%M:%S", &tm);
    return text;
}

std::string Now(const app::AppContext& ctx) {
    return Clock(std::chrono::system_clock::to_time_t(ctx.now()), false);
}

std::string ModifiedTime(const std::string& path) {
    std::error_code ec;
    const auto stamp = std::filesystem::last_write_time(tools::HostPath(path), ec);
    if (ec) return {};
    const auto system = std::chrono::file_clock::to_sys(stamp);
    return Clock(std::chrono::system_clock::to_time_t(system), true);
}

void Status(app::AppContext& ctx, int panel, const std::string& text) {
    if (ctx.ui) ctx.ui->status(panel, text);
}

void Busy(app::AppContext& ctx, bool on) {
    if (ctx.ui) ctx.ui->busy(on);
}

void DeleteIfThere(const std::string& path) {
    if (tools::FileExists(path)) tools::DeleteFile(path);
}

// Asks for a game file until one that exists is given; empty when the user gives up.
std::string AskForGameFile(app::AppContext& ctx) {
    while (ctx.ui) {
        const auto chosen = ctx.ui->chooseOpenFile(kOpenTitle, kOpenFilter, ctx.gameRoot());
        if (!chosen || chosen->empty()) return {};
        if (tools::FileExists(*chosen)) return *chosen;
        if (ctx.ui->ask("The file selected does not exist?", base::Buttons::RetryCancel, base::Icon::Exclamation) !=
            base::Answer::Retry) {
            return {};
        }
    }
    return {};
}

// Copies the file into TempFiles as "<base>bin", converts it to "<base>xml" and shows
// the text in the pane. Gives the scratch base.
std::string LoadBinaryInto(app::AppContext& ctx, DocumentWindow& window, Pane pane, const std::string& path) {
    const std::string strBin = ctx.appPath("TempFiles\\" + SplitDocumentName(path).baseName);
    const base::Status converted = ConvertScratchCopy(ctx, path, strBin, kModule);
    window.setPaneText(pane, tools::ReadTextFile(strBin + "xml"));
    // The pane stays empty when the conversion failed; the status line says why.
    Status(ctx, kProgressPanel, converted ? converted->description : "File Loaded: " + Now(ctx));
    return strBin;
}

void EnableForBinary(DocumentWindow& window, bool binary) {
    for (const char* item : {"mnuSaveAs", "mnuPrint", "mnuFind"}) window.setMenuEnabled(item, true);
    window.setMenuEnabled("mnuSaveRS", binary);
    window.setMenuEnabled("mnuSavexml", !binary);
}

}  // namespace

base::Status ConvertScratchCopy(app::AppContext& ctx, const std::string& path, const std::string& strBin,
                               const std::string& module) {
    if (base::Status copied = tools::CopyFileReplacing(path, strBin + "bin")) {
        ctx.report(*copied, module);
        return copied;
    }
    return tools::SerzConvert(ctx, strBin + "bin", strBin + "xml", tools::SerzDirection::ToXml);
}

std::string RecompileText(app::AppContext& ctx, const std::string& xml, const std::string& strBin,
                          const std::string& extension, const std::string& module) {
    tools::WriteTextFile(ctx, strBin + "xml", xml);
    DeleteIfThere(strBin + "bin");
    tools::SerzConvert(ctx, strBin + "xml", strBin + "bin", tools::SerzDirection::ToBinary);
    if (tools::FileLength(strBin + "bin") <= 0) {
        if (ctx.ui) ctx.ui->message(kRecompressFailed, base::Icon::Critical);
        return {};
    }
    if (tools::EqualsIgnoreCase(extension, "bin")) return strBin + "bin";
    // Back under the file's own kind: a section stays a .XSec.
    const std::string own = strBin + extension;
    DeleteIfThere(own);
    std::error_code ec;
    std::filesystem::rename(tools::HostPath(strBin + "bin"), tools::HostPath(own), ec);
    tools::ForgetPath(strBin + "bin");
    tools::ForgetPath(own);
    if (ec) {
        ctx.report(base::err::PathFileAccess(own), module);
        return {};
    }
    return own;
}

std::string FileModifiedTime(const std::string& path) { return ModifiedTime(path); }

NameParts SplitDocumentName(const std::string& path) {
    const std::size_t slash = path.find_last_of("\\/");
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const std::size_t point = name.rfind('.');
    if (point == std::string::npos) return {name, {}};
    return {name.substr(0, point + 1), name.substr(point + 1)};
}

void OpenGameFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window) {
    ctx.currentRoutine = "mnuOpenRS_Click";
    EnableForBinary(window, true);
    window.setPaneText(Pane::Main, {});
    window.setDocumentName(Pane::Main, {});
    if (!doc.strBin.empty()) DeleteIfThere(doc.strBin + "xml");
    doc.treeLoaded = false;
    if (!ctx.commandLineOpen && !doc.openFromList) {
        const std::string chosen = AskForGameFile(ctx);
        if (chosen.empty()) return;
        ctx.commandFile = chosen;
    }
    doc.openFromList = false;
    window.showNormal();
    Busy(ctx, true);
    Status(ctx, kOpenedPanel, "File Opened: " + Now(ctx));
    Status(ctx, kModifiedPanel, "File last Modified: " + ModifiedTime(ctx.commandFile));
    window.setDocumentName(Pane::Main, ctx.commandFile);
    ctx.commandLineOpen = false;
    const NameParts parts = SplitDocumentName(ctx.commandFile);
    doc.baseName = parts.baseName;
    doc.fileExtension = parts.extension;
    doc.strBin = LoadBinaryInto(ctx, window, Pane::Main, ctx.commandFile);
    Busy(ctx, false);
}

void OpenSecondGameFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window) {
    ctx.currentRoutine = "mnuFile2_Click";
    window.setPaneText(Pane::Second, {});
    window.setDocumentName(Pane::Second, {});
    const std::string chosen = AskForGameFile(ctx);
    if (chosen.empty()) return;
    Busy(ctx, true);
    window.setDocumentName(Pane::Second, chosen);
    doc.secondStrBin = LoadBinaryInto(ctx, window, Pane::Second, chosen);
    Busy(ctx, false);
}

void SaveGameFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window) {
    ctx.currentRoutine = "mnuSaveRS_Click";
    if (doc.strBin.empty()) return;
    DeleteIfThere(doc.strBin + "xml");
    Busy(ctx, true);
    const std::string made = RecompileText(ctx, window.paneText(Pane::Main), doc.strBin, doc.fileExtension, kModule);
    if (made.empty()) {
        Busy(ctx, false);
        return;
    }
    Status(ctx, kProgressPanel, "Making Backup of " + doc.strBin);
    const std::string target = window.documentName(Pane::Main);
    if (tools::FileExists(target)) ctx.report(tools::MakeBackup(target, tools::kBackupRule).error, kModule);
    Status(ctx, kProgressPanel, "Copying new .bin file");
    ctx.report(tools::CopyFileReplacing(made, target), kModule);
    Status(ctx, kProgressPanel, "Finished at " + Now(ctx));
    doc.savedFlag = true;
    Busy(ctx, false);
}

void SaveGameFileAs(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window) {
    ctx.currentRoutine = "mnuItSaveAs_Click";
    if (!ctx.ui) return;
    const auto chosen =
        ctx.ui->chooseSaveFile("Save as xml format files", "xml Files (*.xml)|*.xml", ctx.appPath("TempFiles"));
    if (!chosen || chosen->empty()) return;
    // The base ends at the first point of the whole answer, folders included.
    const std::size_t point = chosen->find('.');
    doc.strBin = point == std::string::npos ? *chosen + "." : chosen->substr(0, point + 1);
    Busy(ctx, true);
    const std::string made = RecompileText(ctx, window.paneText(Pane::Main), doc.strBin, doc.fileExtension, kModule);
    Busy(ctx, false);
    if (made.empty()) return;
    ctx.ui->message("Your file has been saved as:-\n" + doc.strBin + "bin", base::Icon::Information);
    doc.savedFlag = true;
}

void OpenXmlFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window) {
    ctx.currentRoutine = "mnuXML_Click";
    if (!ctx.commandLineOpen && !doc.openFromList) {
        if (!ctx.ui) return;
        const auto chosen = ctx.ui->chooseOpenFile(
            "Open .xml file", "XML Files (*.xml;*.cost;*.tgt;*.proxyxml)|*.xml;*.cost;*.tgt;*.proxyxml", ctx.gameRoot());
        if (!chosen || chosen->empty()) return;
        ctx.commandFile = *chosen;
    }
    doc.openFromList = false;
    Busy(ctx, true);
    EnableForBinary(window, false);
    window.setDocumentName(Pane::Main, ctx.commandFile);
    ctx.commandLineOpen = false;
    const NameParts parts = SplitDocumentName(ctx.commandFile);
    doc.baseName = parts.baseName;
    doc.fileExtension = parts.extension;
    doc.treeLoaded = false;
    window.showNormal();
    doc.strBin = ctx.appPath("TempFiles\\" + parts.baseName);
    ctx.report(tools::CopyFileReplacing(ctx.commandFile, doc.strBin + "xml"), kModule);
    window.setPaneText(Pane::Main, tools::ReadTextFile(doc.strBin + "xml"));
    Busy(ctx, false);
}

void SaveXmlFile(app::AppContext& ctx, DocumentWindow& window, XmlSaveDialog dialog) {
    ctx.currentRoutine = dialog == XmlSaveDialog::Xml ? "mnuSavexml_Click" : "mnuSaveAs_Click";
    if (!ctx.ui) return;
    const auto chosen =
        dialog == XmlSaveDialog::Xml
            ? ctx.ui->chooseSaveFile("Save .xml format files",
                                     "xml Files (*.xml;*.cost;*.tgt;*.proxyxml)|*.xml;*.cost;*.tgt;*.proxyxml",
                                     ctx.appPath("TempFiles"))
            : ctx.ui->chooseSaveFile("Save KRS format files", "KRS Files (*.xml)|*.xml", ctx.appPath("TempFiles"));
    if (!chosen || chosen->empty()) {
        // A cancelled dialog leaves no name to write to.
        ctx.report(base::RunError{52, "Bad file name or number"}, kModule);
        return;
    }
    tools::WriteTextFile(ctx, *chosen, window.paneText(Pane::Main));
}

void ToggleSecondWindow(EditorDocument& doc, DocumentWindow& window) {
    doc.secondWindow = !doc.secondWindow;
    window.showSecondPane(doc.secondWindow);
    window.setMenuVisible("mnuFile2", doc.secondWindow);
    window.setMenuCaption("mnu2bin", doc.secondWindow ? "Close 2nd Window" : "Open 2nd Window");
}

void ClearScreen(EditorDocument& doc, DocumentWindow& window) {
    if (!doc.strBin.empty()) DeleteIfThere(doc.strBin + "xml");
    window.setPaneText(Pane::Main, {});
    window.setDocumentName(Pane::Main, {});
    if (doc.secondWindow) {
        window.setPaneText(Pane::Second, {});
        window.setDocumentName(Pane::Second, {});
    }
}

void NoteKeyPress(EditorDocument& doc, const std::string& documentName) {
    if (documentName.size() >= 3 &&
        tools::EqualsIgnoreCase(std::string_view(documentName).substr(documentName.size() - 3), "bin")) {
        doc.editedFlag = true;
    }
}

std::string WithCrLf(const std::string& text) {
    std::string out;
    out.reserve(text.size() + text.size() / 16);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) out += '\r';
        out += text[i];
    }
    return out;
}

std::string TextForPrinting(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        if (c != '\t') out += c;
    }
    return out;
}

}  // namespace ferrolund::editor
