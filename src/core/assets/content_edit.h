#pragma once
// The screen model of frmEdCont, the small editor of a file chosen on the content list:
// a game binary shown as the XML text the converter makes of it, a text file as it
// stands, a picture as itself; and the save that turns the text back into the file, the
// old one kept as a back-up beside it.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::assets {

enum class ContentKind {
    Serz,     // .bin, .XSec, .GeoPcDx, .proxybin: through the converter
    Text,     // .txt, .lua, .lan, .html, .xml, .proxyxml: the bytes as they stand
    Picture,  // .png, .jpg: shown by the screen
    Texture,  // .TgPcDx, .dds: not readable by this program yet
    Other,    // anything else: not opened
};

// The kind of a file by its extension, compared without regard to case.
ContentKind KindOfContent(std::string_view fileName);

// Told when a texture is chosen.
inline constexpr const char* kTexturesNotReadable =
    "Textures (.TgPcDx and .dds) cannot be shown in this version of the program.";

class ContentEditor {
public:
    std::string file;       // the file open; empty when none is
    ContentKind kind = ContentKind::Other;
    std::string extension;  // as the name has it, without its point
    std::string strBin;     // the scratch base: AppRoot\TempFiles\<name up to its last point>, point included
    std::string text;       // what the pane shows: the XML, or the text file's bytes
    // The log of the last save, a line each.
    std::vector<std::string> log;

    // Opens the file by its kind. A picture only remembers its path. A texture or another
    // kind is told and nothing is opened. A binary the converter cannot read is reported
    // (error log and box) and nothing is opened. True when the file is open.
    bool open(app::AppContext& ctx, const std::string& path);

    // mnuSaveRS: `edited` goes back into the file. A binary is compiled first; when that
    // fails the box says so and the file is left as it was. Then the old file is renamed
    // by the back-up rule (".bak", ".bak1" ...) and the new one copied in; a failure there
    // is reported and the old file keeps its name. The log tells the steps. True when
    // the file was replaced.
    bool save(app::AppContext& ctx, const std::string& edited);

    void close();
};

}  // namespace ferrolund::assets
