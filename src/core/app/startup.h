#pragma once
// Start and exit of the program, and the commands of the Options menu that keep the
// settings.

#include <functional>
#include <optional>
#include <string>

#include "app/app_context.h"
#include "app/main_window_port.h"

namespace ferrolund::app {

struct StartOptions {
    // Everything after the program's name, as one string: one file path, perhaps quoted.
    std::string commandLine;
    // Finds the simulator's folder when the settings name none.
    std::function<std::string()> discoverGameRoot;
};

void StartUp(AppContext& ctx, MainWindowPort& window, const StartOptions& options);

struct EditorState {
    bool edited = false;
    bool saved = false;
};
// Gives true when the program may end; false when the user refused (the settings file
// has then possibly been written already, as the order of steps requires).
bool ExitSequence(AppContext& ctx, MainWindowPort& window, const EditorState& editor);

// The settings file, written whole.
void SavePreferences(AppContext& ctx, AboutHome home);
// Reads the settings file into every field (the About screen reads line 14 into its own flag).
void ReadPreferenceFile(AppContext& ctx, AboutHome home);
// Loads "Language\<languageFile>", falling back to Lang_English.txt when it is missing
// (the context's languageFile changes with it), and relabels the window.
void LoadLanguage(AppContext& ctx, MainWindowPort& window);
// "Ferrolund editor  Version 1.0.1   Rail Works path = <GameRoot>"
std::string MainCaption(const AppContext& ctx);
// Copies the simulator's converter and its two libraries beside the program when the
// private copy is absent.
void CopyConverter(AppContext& ctx);
// The file named on the command line, with one leading and one trailing quote dropped.
std::string CommandLineFile(const std::string& commandLine);
// The menu command that opens a file of this name, by its ending; empty for none.
std::string DispatchCommandFor(const std::string& file);

// The Options menu.
void ToggleNoAskOnExit(AppContext& ctx, MainWindowPort& window);
void ToggleWarnIfNotSaved(AppContext& ctx, MainWindowPort& window);
void StartMaximised(AppContext& ctx, MainWindowPort& window);
// After the language dialog: `chosenFile` is the file picked, "Lang_<name>.txt".
void SelectLanguage(AppContext& ctx, MainWindowPort& window, const std::string& chosenFile);
enum class ToolPath { PdfReader, GraphicsEditor, Viewer };
void PickToolPath(AppContext& ctx, ToolPath which);
void ChooseRailWorksPath(AppContext& ctx, MainWindowPort& window, const std::function<std::string()>& discover);
// The PreLoad folder picker's answer: a folder, or nothing for Cancel.
void SetPreLoadFolder(AppContext& ctx, const std::optional<std::string>& folder);
// Help's "Contents": the help file in the chosen PDF reader, waited for.
void OpenHelpContents(AppContext& ctx);
// Takes the window's geometry into the settings; a value too large for them is reported.
void TakeEditorGeometry(AppContext& ctx, const MainWindowPort& window);

}  // namespace ferrolund::app
