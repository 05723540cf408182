#pragma once
// The editor's document: a game file shown as the XML text the converter makes of it,
// edited as text, and turned back into its own kind of file with a back-up of the old
// one. One document at a time is open in the main pane; a second pane can show another
// binary file beside it, for reading.

#include <string>

#include "app/app_context.h"
#include "app/main_window_port.h"

namespace ferrolund::editor {

enum class Pane { Main, Second };

// What the document commands need of the editor window besides the menu and caption.
class DocumentWindow : public app::MainWindowPort {
public:
    virtual std::string paneText(Pane pane) const = 0;
    virtual void setPaneText(Pane pane, const std::string& text) = 0;
    // The path shown above the pane (and on the tree tab, for the main pane).
    virtual void setDocumentName(Pane pane, const std::string& path) = 0;
    virtual std::string documentName(Pane pane) const = 0;
    virtual void showNormal() = 0;
    virtual void showSecondPane(bool shown) = 0;
    virtual void setMenuCaption(const std::string& item, const std::string& caption) = 0;
};

struct EditorDocument {
    std::string strBin;         // AppRoot\TempFiles\<base>, the point included
    std::string baseName;       // the name after the last separator, up to and including the last point
    std::string fileExtension;  // what follows the last point
    std::string secondStrBin;   // the second pane's own scratch base
    bool editedFlag = false;    // a key was pressed in a .bin document; never cleared
    bool savedFlag = false;     // a save succeeded in this run; never cleared
    bool treeLoaded = false;
    bool secondWindow = false;
    bool openFromList = false;  // the next open takes CommandFile as it stands
};

struct NameParts {
    std::string baseName;
    std::string extension;
};
NameParts SplitDocumentName(const std::string& path);

// The status panels the document commands write to.
inline constexpr int kOpenedPanel = 2;
inline constexpr int kModifiedPanel = 3;
inline constexpr int kProgressPanel = 4;

void OpenGameFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window);       // mnuOpenRS
void OpenSecondGameFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window); // mnuFile2
void SaveGameFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window);       // mnuSaveRS
void SaveGameFileAs(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window);     // mnuItSaveAs
void OpenXmlFile(app::AppContext& ctx, EditorDocument& doc, DocumentWindow& window);        // mnuXML
enum class XmlSaveDialog { Xml, Krs };                                                      // mnuSavexml, mnuSaveAs
void SaveXmlFile(app::AppContext& ctx, DocumentWindow& window, XmlSaveDialog dialog);
void ToggleSecondWindow(EditorDocument& doc, DocumentWindow& window);                       // mnu2bin
void ClearScreen(EditorDocument& doc, DocumentWindow& window);                              // mnuClear

// Said when the converter could not turn a saved text back into its binary form.
inline constexpr const char* kRecompressFailed =
    "Serz.exe was unable to recompress this file. The operation could\n"
    "not be completed. The original file has not been altered.";

// Copies the game file to "<strBin>bin" and converts that to "<strBin>xml". A failed
// copy has been reported; a failed conversion leaves no XML and is given back.
base::Status ConvertScratchCopy(app::AppContext& ctx, const std::string& path, const std::string& strBin,
                               const std::string& module);
// Writes `xml` to "<strBin>xml" and converts it to "<strBin>bin", renamed to `extension`
// unless that is "bin". Gives the file made, or empty after telling the user.
std::string RecompileText(app::AppContext& ctx, const std::string& xml, const std::string& strBin,
                          const std::string& extension, const std::string& module);

// The file's time of last change as the status line shows it ("2026-11-25 09:30:00"),
// empty when the file cannot be read.
std::string FileModifiedTime(const std::string& path);

// A key pressed in the main pane: a .bin document counts as edited from then on.
void NoteKeyPress(EditorDocument& doc, const std::string& documentName);
// Every line end as CR LF: the form the converter writes and the game's text files use.
std::string WithCrLf(const std::string& text);
// The text as printed: without tab characters.
std::string TextForPrinting(const std::string& text);

}  // namespace ferrolund::editor
