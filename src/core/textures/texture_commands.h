#pragma once
// The Graphics Tools of the main window. A .TgPcDx is opened as its XML in the editor,
// turned into a .dds (with its side file) in the program's TempDDS folder for a paint
// program, shown or edited there by another program, and put back into the texture.

#include <functional>
#include <string>

#include "app/app_context.h"
#include "editor/document.h"

namespace ferrolund::textures {

// AppRoot\TempDDS, where both directions work.
std::string TempDdsFolder(const app::AppContext& ctx);

// "Open .TgPcDx Texture Files": a copy in TempDDS, converted to XML and shown as the
// editor's document.
void OpenTexture(app::AppContext& ctx, editor::EditorDocument& doc, editor::DocumentWindow& window);
// "Convert .TgPcDx to .dds": the document's text to TempDDS\<base>.dds and <base>.dat.
void ConvertOpenTexture(app::AppContext& ctx, editor::DocumentWindow& window);
// "Convert .dds to .TgPcDx": a .dds of TempDDS back into its texture, the old one kept
// as a back-up. The texture replaced is the open document when it has the .dds's name;
// otherwise the user names it.
void ConvertDdsToTexture(app::AppContext& ctx, const editor::DocumentWindow& window);
// "Empty TempDDS Folder", after asking.
void EmptyTempDds(app::AppContext& ctx);

// How another program is started on a file; each gives false when it could not start.
struct ProgramStarter {
    // The program at `program` with the file as its one argument (host paths).
    std::function<bool(const std::string& program, const std::string& file)> program;
    // The desktop's own program for the file's kind.
    std::function<bool(const std::string& file)> desktop;
};
enum class DdsProgram { Viewer, PaintProgram };
// "View .dds File" and "Edit .dds File": the document's .dds in TempDDS, opened in the
// program set in the options, or else in the desktop's program for .dds files.
void OpenDdsIn(app::AppContext& ctx, const editor::DocumentWindow& window, DdsProgram which,
               const ProgramStarter& start);

// The .dds and side file that the document's texture gives in TempDDS.
std::string DdsOfDocument(const app::AppContext& ctx, const editor::DocumentWindow& window);

inline constexpr const char* kOpenTextureTitle = "Open RS Texture files";
inline constexpr const char* kOpenTextureFilter = "RS Files (*.TgPcDx)|*.TgPcDx";
inline constexpr const char* kSerzTextureFailed =
    "Serz.exe was unable to convert your new texture to\na .TgPcDx file - Sorry but this is out of my control.";

}  // namespace ferrolund::textures
