#pragma once
// The frame every blueprint transform of the asset list runs on. A transform is only a
// function from a file's XML text to its changed text; the frame does the rest for each
// selected row: converts the file to XML in TempFiles, hands the text over, writes the
// result, compiles it, reads the compiled file back to be sure it holds exactly what was
// meant, and only then puts it in place, the original kept by the back-up rule. After the
// walk it deletes the simulator's blueprint cache so that it is rebuilt.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "tools/xml_compare.h"

namespace ferrolund::assets {

// The file of a row that a transform changes.
enum class TransformFile {
    Blueprint,  // the row's own .bin
    Geometry,   // the .GeoPcDx its GeometryID names
};

// What the frame tells a transform about the row it works on.
struct TransformRow {
    AssetRow& row;            // the list row; a transform may change its cells
    const std::string& file;  // the file being changed (system path)
    const std::string& base;  // its name without folder and extension
};

// A file that goes with a change, such as a script the changed blueprint now needs. It is
// put in place, by the same back-up rule, once the changed file itself is in.
struct CompanionFile {
    std::string path;     // system path of the file to write
    std::string text;     // its whole new content, bytes
    std::string scratch;  // the name it is first written under in TempFiles
};

// What a transform makes of one text.
struct TransformResult {
    enum class Verdict {
        Changed,    // write `text`
        Nothing,    // nothing to change: nothing is written
        Unfit,      // the row does not suit the transform: nothing is written
        Cancelled,  // the person called this row off: nothing is written
    };
    Verdict verdict = Verdict::Changed;
    std::string text;    // the whole changed text
    std::string reason;  // for Nothing and Unfit: the report's reason
    // A file name (with extension) to write beside the original instead of replacing it;
    // the original's own name replaces it as usual.
    std::string saveAs;
    // With saveAs: the original's own text is compiled as well and put back in its place
    // by the back-up rule, so that both files come from the same converter. Nothing is
    // put in place unless both compiled.
    bool recompileOriginal = false;
    std::string note;  // for Changed: added to the report's line
    std::vector<CompanionFile> companions;  // for Changed: written after the file, in order

    static TransformResult Changed(std::string text) {
        TransformResult result;
        result.text = std::move(text);
        return result;
    }
    // A verdict that writes nothing, with its reason.
    static TransformResult Skip(Verdict verdict, std::string reason) {
        TransformResult result;
        result.verdict = verdict;
        result.reason = std::move(reason);
        return result;
    }
};

using Transform = std::function<TransformResult(app::AppContext& ctx, TransformRow& row, std::string_view text)>;

struct TransformCommand {
    std::string routine;  // the command, named in the error log
    TransformFile file = TransformFile::Blueprint;
    Transform transform;
    std::string reportHeading;  // the report's first line, if any
    bool warn = true;           // ask Lang(446)/Lang(447) first
    // Asks what the whole command needs, after the warning and before the first row;
    // false ends the command with nothing done.
    std::function<bool(app::AppContext& ctx, const std::vector<AssetRow>& rows)> prepare;
    // Finds the file to change from the one the file kind gives (a blueprint that names
    // another, such as a loco's cab interior). An empty answer leaves the row unwritten,
    // with `reason` as the report's reason. Unset: the file kind's file is changed.
    std::function<std::string(app::AppContext& ctx, const std::string& file, std::string& reason)> locate;
    // Where a row's blueprint lies, for rows that are not below GameRoot\Assets (the
    // list of Content); RowFile when not given.
    std::function<std::string(const app::AppContext& ctx, const AssetRow& row)> rowFile;
    // The closing message; Lang(445) when empty.
    std::string doneMessage;

    TransformCommand(std::string routineName, TransformFile kind, Transform change)
        : routine(std::move(routineName)), file(kind), transform(std::move(change)) {}
};

// One row's end.
struct RowOutcome {
    AssetRow row;          // with the cells the transform changed, when written
    std::string file;      // the file worked on; empty when none could be formed
    std::string written;   // the file written; empty when nothing was
    std::string backup;    // the old file's new name; empty when no back-up was made
    std::string reason;    // why nothing was written; empty when written
    std::vector<std::string> companions;  // the companion files put in place
};

struct TransformOutcome {
    bool ran = false;      // false: cancelled at the warning or when asked, or nothing selected
    bool aborted = false;  // the walk was stopped between two rows
    std::vector<RowOutcome> rows;
    std::string report;    // a line per row, CR LF ended, for the report screen
};

// The report line of a row written.
inline constexpr std::string_view kChangesMade = "Requested changes have been made.";

// The selected rows a command works on: those with a first cell. With none the person is
// told Lang(444) and the list is empty.
std::vector<AssetRow> UsableRows(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// Runs the transform over the selected rows. Rows with an empty first cell are passed
// over. Between two rows it lets events through and stops when ctx.abortFlag is set.
TransformOutcome RunTransform(app::AppContext& ctx, const std::vector<AssetRow>& selected, const TransformCommand& command);

// The file a row names: GameRoot\Assets\Provider\Product\Path.
std::string RowFile(const app::AppContext& ctx, const AssetRow& row);

// The simulator's cache of blueprints, rebuilt at its next start when missing.
std::string BlueprintCacheFile(const std::string& gameRoot);

// Compiles `text` as TempFiles\<base>.bin (through <base>.xml beside it) and reads the
// result back: the compiled file, or empty when the converter failed or the file does not
// hold exactly the text's content.
std::string CompileChecked(app::AppContext& ctx, const std::string& base, const std::string& text);

// Puts the file `made` at `target`: a new target in one step (copied beside it, renamed
// over it); an old one is renamed by the back-up rule first, and overwritten without a
// back-up when every back-up name is taken. `backup` is the old file's new name.
base::Status PlaceMadeFile(const std::string& made, const std::string& target, std::string& backup);

// The message of a compile that gave nothing, or not the text it was given.
std::string CompileFailedMessage(const std::string& file);

using tools::SameXmlContent;

}  // namespace ferrolund::assets
