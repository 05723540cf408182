#include "app/startup.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "app/version.h"
#include "routes/route_index.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tool_runner.h"

namespace ferrolund::app {

namespace {

const char* const kModule = "frmEditor";

std::string PreferencePath(const AppContext& ctx) { return ctx.appPath(kPreferenceFileName); }

bool EndsWithIgnoreCase(const std::string& text, std::string_view tail) {
    return text.size() >= tail.size() && tools::EqualsIgnoreCase(std::string_view(text).substr(text.size() - tail.size()), tail);
}

// The number at the start of a text, as the classic Val reads it; 0 when there is none.
double LeadingNumber(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

void CreateTempFiles(AppContext& ctx) {
    std::string folder = ctx.appPath("TempFiles");
    if (tools::FolderExists(folder)) return;
    std::error_code ec;
    const auto host = tools::HostPath(folder);
    // An existing folder that cannot be written counts as missing; making it again fails.
    if (std::filesystem::exists(host, ec) || !tools::CreatePath(folder)) {
        ctx.report(base::err::PathFileAccess(folder), kModule);
    }
}

}  // namespace

std::string MainCaption(const AppContext& ctx) {
    return "Ferrolund editor  Version " + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
           std::to_string(kVersionRevision) + "   Rail Works path = " + ctx.gameRoot();
}

void ReadPreferenceFile(AppContext& ctx, AboutHome home) {
    for (const auto& error : ParsePreferences(tools::ReadTextFile(PreferencePath(ctx)), ctx.prefs, home)) {
        ctx.report(error, kModule);
    }
}

void SavePreferences(AppContext& ctx, AboutHome home) {
    tools::WriteTextFile(ctx, PreferencePath(ctx), FormatPreferences(ctx.prefs, home));
}

void LoadLanguage(AppContext& ctx, MainWindowPort& window) {
    if (!tools::FileExists(ctx.appPath("Language\\" + ctx.languageFile))) ctx.languageFile = "Lang_English.txt";
    const std::string path = ctx.appPath("Language\\" + ctx.languageFile);
    const std::string text = tools::ReadTextFile(path);
    ctx.lang.parse(text);
    if (ctx.ui) ctx.ui->pump();
    if (ctx.lang.count() == 0) {
        // Without any table every caption keeps its English default; say so once.
        ctx.report(base::err::FileNotFound(path), kModule);
        return;
    }
    window.applyLanguage();
}

void CopyConverter(AppContext& ctx) {
    if (tools::FileExists(ctx.appPath("zlibwapi.dll")) || ctx.gameRoot().empty()) return;
    if (tools::FileExists(ctx.appPath("serz.exe"))) ctx.report(tools::DeleteFile(ctx.appPath("serz.exe")), kModule);
    // The built-in converter needs none of these; they are copied for an outside one.
    for (const char* name : {"serz.exe", "zlibwapi.dll", "stlport_vc10.5.2.dll"}) {
        const std::string source = ctx.gameRoot() + "\\" + name;
        if (tools::FileExists(source)) ctx.report(tools::CopyFileReplacing(source, ctx.appPath(name)), kModule);
    }
}

std::string CommandLineFile(const std::string& commandLine) {
    std::string file = commandLine;
    if (!file.empty() && file.front() == '"') file.erase(0, 1);
    if (!file.empty() && file.back() == '"') file.pop_back();
    return file;
}

std::string DispatchCommandFor(const std::string& file) {
    for (const char* tail : {"BIN", "XSec", "GeoPcDx", "proxybin"}) {
        if (EndsWithIgnoreCase(file, tail)) return "mnuOpenRS";
    }
    if (EndsWithIgnoreCase(file, "TgPcDx")) return "mnuOpenTex";
    for (const char* tail : {"xml", "cost", "tgt", "proxyxml"}) {
        if (EndsWithIgnoreCase(file, tail)) return "mnuXML";
    }
    return {};
}

void StartUp(AppContext& ctx, MainWindowPort& window, const StartOptions& options) {
    ctx.currentRoutine = "Form_Load";
    if (tools::FileExists(PreferencePath(ctx))) {
        ReadPreferenceFile(ctx, AboutHome::Shadow);
        window.setMenuChecked("mnuNewVer", ctx.prefs.noNewVersionAdvice);
        if (!ctx.prefs.routesIndexed && ctx.ui) {
            ctx.ui->message(
                "If this is the first use of this program you must run following:-\n"
                "1. Route Building Tools/Extract RouteProperties.xml\n"
                "2. Scenarios/Extract ScenarioProperties.xml\n"
                "To enable the program to correctly index items in .ap files\n",
                base::Icon::Information);
        }
        ApplyGeometryDefaults(ctx.prefs);
        if (ctx.prefs.editorWindowState == 2) {
            window.maximise();
        } else {
            window.setGeometryTwips({ctx.prefs.editorLeft, ctx.prefs.editorTop, ctx.prefs.editorWidth,
                                     ctx.prefs.editorHeight});
        }
    }
    for (const char* name : {"mnuSaveRS", "mnuSavexml", "mnuSaveAs", "mnuPrint", "mnuDDS", "mnuView", "mnuEditDDS"}) {
        window.setMenuEnabled(name, false);
    }
    window.setMenuChecked("mnuDont", ctx.prefs.noAskOnExit);
    if (!ctx.prefs.editorFontSize.empty()) {
        const double size = LeadingNumber(ctx.prefs.editorFontSize);
        if (size > 0) window.setEditorFontSize(size);
    }
    if (ctx.prefs.gameRoot.empty() && options.discoverGameRoot) ctx.prefs.gameRoot = options.discoverGameRoot();
    if (ctx.prefs.language.empty()) ctx.prefs.language = "English";
    ctx.languageFile = "Lang_" + ctx.prefs.language + ".txt";
    LoadLanguage(ctx, window);
    window.setMenuChecked("mnuWarn", ctx.prefs.warnIfNotSaved);

    const std::string routeIndexPath = ctx.appPath("IndexFiles\\RouteIndex.csv");
    if (tools::FileExists(routeIndexPath)) ctx.routeIndex = routes::ParseRouteIndex(tools::ReadTextFile(routeIndexPath));

    std::string rsBinTool = ctx.appPath("RSBinTool");
    const bool haveRsBinTool = tools::FolderExists(rsBinTool);
    if (haveRsBinTool) ctx.prefs.rsBinToolPath = ctx.appPath("RSBinTool\\rsbintool.exe");
    window.setMenuVisible("mnuRSBT", haveRsBinTool);

    if (ctx.ui) ctx.ui->status(0, ctx.langText(321, "Language"));
    window.selectFirstTab();
    CreateTempFiles(ctx);
    if (ctx.prefs.gameRoot.empty()) ChooseRailWorksPath(ctx, window, options.discoverGameRoot);
    ctx.currentRoutine = "Form_Load";
    CopyConverter(ctx);
    window.setCaption(MainCaption(ctx));
    if (ctx.ui) ctx.ui->status(0, ctx.prefs.language);

    if (!options.commandLine.empty()) {
        ctx.commandFile = CommandLineFile(options.commandLine);
        ctx.commandLineOpen = true;
    }
    if (!ctx.commandFile.empty()) {
        window.maximise();
        const std::string command = DispatchCommandFor(ctx.commandFile);
        // The desktop offers this program for .dds and .ap files too, which it opens from
        // its menus only: say so rather than show nothing.
        if ((command.empty() || !window.runMenuCommand(command)) && ctx.ui) {
            ctx.ui->message("This version of Ferrolund cannot open " + ctx.commandFile + " yet.", base::Icon::Information);
        }
    }
    window.selectFirstTab();
}

void TakeEditorGeometry(AppContext& ctx, const MainWindowPort& window) {
    const TwipsRect r = window.geometryTwips();
    ctx.report(StoreTwips(ctx.prefs.editorWidth, r.width), kModule);
    ctx.report(StoreTwips(ctx.prefs.editorHeight, r.height), kModule);
    ctx.report(StoreTwips(ctx.prefs.editorLeft, r.left), kModule);
    ctx.report(StoreTwips(ctx.prefs.editorTop, r.top), kModule);
}

bool ExitSequence(AppContext& ctx, MainWindowPort& window, const EditorState& editor) {
    ctx.currentRoutine = "Form_Unload";
    if (editor.edited && ctx.prefs.warnIfNotSaved && !editor.saved && ctx.ui) {
        const base::Answer answer = ctx.ui->ask(
            "You edited a file in the .bin file editor but do\nnot appear to have saved it. Do you really\n"
            "want to exit?",
            base::Buttons::YesNo, base::Icon::Exclamation);
        if (answer != base::Answer::Yes) return false;
    }
    TakeEditorGeometry(ctx, window);
    window.closeSearchDialog();
    SavePreferences(ctx, AboutHome::AboutScreen);
    if (!ctx.prefs.noAskOnExit && ctx.ui) {
        if (ctx.ui->ask("Do you really wish to exit Ferrolund?", base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes) {
            return false;
        }
    }
    const std::string scratch = ctx.appPath("Tempfiles");
    ctx.report(tools::DeleteFolderTree(ctx, scratch), kModule);
    tools::CreatePath(ctx.appPath("TempFiles"));
    return true;
}

void ToggleNoAskOnExit(AppContext& ctx, MainWindowPort& window) {
    ctx.currentRoutine = "mnuDont_Click";
    ctx.prefs.noAskOnExit = !ctx.prefs.noAskOnExit;
    window.setMenuChecked("mnuDont", ctx.prefs.noAskOnExit);
    SavePreferences(ctx, AboutHome::Shadow);
}

void ToggleWarnIfNotSaved(AppContext& ctx, MainWindowPort& window) {
    ctx.currentRoutine = "mnuWarn_Click";
    ctx.prefs.warnIfNotSaved = !ctx.prefs.warnIfNotSaved;
    window.setMenuChecked("mnuWarn", ctx.prefs.warnIfNotSaved);
}

void StartMaximised(AppContext& ctx, MainWindowPort& window) {
    ctx.currentRoutine = "mnuEdMax_Click";
    if (ctx.ui && ctx.ui->ask("Start with Editor Screen Maximised", base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes) {
        ctx.prefs.editorWindowState = 2;
        window.maximise();
    } else {
        ctx.prefs.editorWindowState = 0;
    }
    SavePreferences(ctx, AboutHome::Shadow);
}

void SelectLanguage(AppContext& ctx, MainWindowPort& window, const std::string& chosenFile) {
    ctx.currentRoutine = "mnuLang_Click";
    if (chosenFile.size() > 9) {
        ctx.prefs.language = chosenFile.substr(5, chosenFile.size() - 9);
        if (ctx.ui) ctx.ui->status(0, ctx.prefs.language);
    }
    TakeEditorGeometry(ctx, window);
    SavePreferences(ctx, AboutHome::Shadow);
    ctx.languageFile = "Lang_" + ctx.prefs.language + ".txt";
    LoadLanguage(ctx, window);
}

void PickToolPath(AppContext& ctx, ToolPath which) {
    struct Picker {
        const char* routine;
        const char* title;
        const char* filter;
        std::string PreferenceSet::*field;
    };
    static const Picker pickers[] = {
        {"mnuAcro_Click", "Select your PDF Reader", "PDF Reader (*.exe)|*.exe", &PreferenceSet::pdfReaderPath},
        {"mnuIRF_Click", "Select your Graphics Editor", "Graphics Editor (*.exe)|*.exe",
         &PreferenceSet::graphicsEditorPath},
        {"mnuViewer_Click", "Select your Graphics Viewer", "Viewer (*.exe)|*.exe", &PreferenceSet::viewerPath},
    };
    const Picker& p = pickers[static_cast<int>(which)];
    ctx.currentRoutine = p.routine;
    if (!ctx.ui) return;
    ctx.prefs.*p.field = ctx.ui->chooseOpenFile(p.title, p.filter, {}).value_or(std::string());
}

void ChooseRailWorksPath(AppContext& ctx, MainWindowPort& window, const std::function<std::string()>& discover) {
    ctx.currentRoutine = "mnuRWPath_Click";
    if (!ctx.ui) return;
    const std::string start = discover ? discover() : std::string();
    ctx.prefs.gameRoot =
        ctx.ui->chooseOpenFile("Select your RailWorks.exe File", "TrainSimulator 2020 Files (*.exe)|*.exe", start)
            .value_or(std::string());
    if (ctx.prefs.gameRoot.empty()) return;
    const std::size_t cut = ctx.prefs.gameRoot.find_last_of("\\/");
    ctx.prefs.gameRoot = cut == std::string::npos ? std::string() : ctx.prefs.gameRoot.substr(0, cut);
    window.setCaption(MainCaption(ctx));
    TakeEditorGeometry(ctx, window);
    if (tools::FileExists(PreferencePath(ctx))) SavePreferences(ctx, AboutHome::Shadow);
    CopyConverter(ctx);
}

void OpenHelpContents(AppContext& ctx) {
    ctx.currentRoutine = "mnuContents_Click";
    if (!ctx.ui) return;
    if (ctx.prefs.pdfReaderPath.empty()) {
        ctx.ui->message("Before you can read Help files, you must set up the path\n"
                        "to your PDF Reader in the Options menu.",
                        base::Icon::Exclamation);
        return;
    }
    const std::string help = ctx.appPath("Ferrolund-Help.pdf");
    if (!tools::FileExists(help)) {
        ctx.ui->message("The help file " + help + " is not installed.", base::Icon::Exclamation);
        return;
    }
    tools::SetWorkingFolder(ctx, ctx.appRoot);
    tools::ToolRunner(ctx, "\"" + ctx.prefs.pdfReaderPath + "\" \"" + help + "\"", true, tools::WindowStyle::Normal);
}

void SetPreLoadFolder(AppContext& ctx, const std::optional<std::string>& folder) {
    ctx.currentRoutine = "mnuQDPreload_Click";
    ctx.prefs.preLoadFolder = folder.value_or(std::string());
}

}  // namespace ferrolund::app
