#pragma once
// Cloning an asset: its folder is copied under a new parent folder and the copy's
// blueprint is rewritten to name itself, its new folder and its new file name. The
// pieces (where an item lies, where its clone goes, how the blueprint text changes, how
// files are copied into a folder that may already hold some) are shared by the reskin
// clones of clone_reskin.h.
//
// What makes a clone a distinct asset for the simulator: its blueprint's path (Provider,
// Product and BlueprintID, under which the game keys its blueprint cache), which is new;
// the references of the copy to its own files, which follow the new folder; its display
// name; and the display name's localisation key, which is emptied, because a key makes
// the game show the original's translated name instead of the new one. The d:id numbers
// inside a blueprint only link its own nodes and stay as they are.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/blueprint.h"
#include "assets/blueprint_files.h"
#include "base/run_error.h"

namespace ferrolund::assets {

// One item to clone.
struct CloneSource {
    std::string root;        // the folder holding the item's provider folder (GameRoot\Assets, ...)
    std::string targetRoot;  // the same for its clone; the root when empty
    BlueprintRef ref;        // the blueprint (.bin) below the root
    std::string file() const;
    std::string cloneRoot() const { return targetRoot.empty() ? root : targetRoot; }
};
// A row of the asset list: below GameRoot\Assets.
CloneSource SourceOfRow(const app::AppContext& ctx, const AssetRow& row);
// A file found anywhere (under Assets, or under Content): its root is the part before its
// provider folder. Nothing for a path that cannot be split.
std::optional<CloneSource> SourceOfFile(const std::string& file);

// The boxes of the name dialog: "File Name:", "Internal Name:", "Folder Name" and, for
// the reskins, "Category". Typed text (UTF-8, or Windows-1252).
struct CloneNames {
    std::string fileName;
    std::string internalName;
    std::string folder;
    std::string category;
};
// Asked per item with what the boxes open with; nothing (Cancel) ends the command.
using CloneAsk = std::function<std::optional<CloneNames>(const CloneNames& offered)>;

// Which folder a clone copies.
enum class CloneLevel {
    Asset,         // the folder that holds the blueprint's own folder
    RollingStock,  // one level higher, for stock whose folder has a Default level
    Blueprint,     // the blueprint's own folder (the reskins, which copy no folder)
};

// Where an item's clone goes. The folder of the item (as the level says) lies at
// root\Provider\Product\<relative>; its parent element is what the "Folder Name" box
// replaces: "RailVehicles\Diesel\Class66" with the box "Diesel\Red" gives
// "RailVehicles\Diesel\Red\Class66". With a single element the box replaces that one.
struct ClonePlace {
    std::string folder;       // the item's folder (full path)
    std::string relative;     // behind Provider\Product
    std::string folderWord;   // the element the box replaces
    std::string oldBase;      // the blueprint's file name without ".bin"
    std::string blueprintIn;  // the blueprint's path inside the folder
};
// Nothing when the folder would be Provider\Product or above.
std::optional<ClonePlace> PlaceOf(const CloneSource& source, CloneLevel level);

// The relative folder of the clone for the typed folder box, or the message that says
// why it cannot be used: empty, with characters no folder name may hold, or leading to
// the original or into it.
struct CloneTarget {
    std::string relative;  // behind Provider\Product
    std::string folder;    // full path under the clone's root
    std::string message;   // set when refused
};
CloneTarget TargetOf(const CloneSource& source, const ClonePlace& place, std::string_view typedFolder);

// What the boxes open with: the old file name, internal name and folder word, each with
// its end mark for the person to extend.
CloneNames OfferedNames(const ClonePlace& place, std::string_view blueprintXml);

// The clone's blueprint text: in one pass over the text as it was, every occurrence of
// the old relative folder made the new one and every occurrence of the old base name made
// the new file name (textual, so it also changes where the name only stands inside
// another word); then "\\" made "\"; last the display name (Name and the five first
// languages) set to `internalName`, so that the name typed stands as typed, and its
// localisation key emptied. Names are typed text; the old ones are as on disk.
std::string RewriteClone(std::string_view xml, std::string_view internalName, std::string_view oldRelative,
                         std::string_view newRelative, std::string_view oldBase, std::string_view newBase);

// Copies every file below `from` to the same place below `to`, making folders as
// needed. A file already at the target with other content is first kept by the back-up
// rule; an equal one is left. Stops at the first failure and says which file.
struct FolderCopy {
    long copied = 0;
    long keptAsBackup = 0;
    base::Status error;
};
FolderCopy CopyFolderMerging(const std::string& from, const std::string& to);
// Copies one file there, the same way.
base::Status CopyFileMerging(const std::string& from, const std::string& to, long* keptAsBackup = nullptr);

struct CloneOutcome {
    bool ran = false;      // false: cancelled, or nothing to clone
    bool aborted = false;
    bool cancelled = false;  // the person called the command off at the name dialog
    std::vector<std::string> written;  // the clones' blueprints
    std::string report;                // a line per item (and per missing file), CR LF ended
};

// "Clone selected Asset" (CloneLevel::Asset) and "Clone Selected rolling-stock"
// (CloneLevel::RollingStock). For each item: the blueprint is read, the names asked, the
// clone's blueprint compiled in TempFiles; only then is the folder copied, the copy of
// the old blueprint deleted and the new one put in as NewFileName.bin. Files the new
// blueprint names in the clone's folder under the new name that only exist under the old
// one (the model of a blueprint named like its file) are copied to the new name; those
// still missing are reported. At the end the simulator's blueprint cache is deleted.
CloneOutcome CloneAssets(app::AppContext& ctx, const std::vector<CloneSource>& sources, CloneLevel level,
                         const CloneAsk& ask);

// --- shared with the reskins ---

// One item of a clone command; false when the person called the command off.
using CloneItemRun = std::function<bool(const CloneSource& source, CloneOutcome& out)>;
// The walk of a clone command over its items: "nothing selected" without any, the abort
// flag read between two items, and at the end FinishClones.
CloneOutcome RunCloneItems(app::AppContext& ctx, const std::vector<CloneSource>& sources, const CloneItemRun& run);
// The blueprint's XML, or empty with the report's line for the item.
std::string ReadCloneBlueprint(app::AppContext& ctx, const CloneSource& source, std::string& report);
// After the walk: the blueprint cache deleted, the closing message.
void FinishClones(app::AppContext& ctx, CloneOutcome& outcome);
// The name of a file path (behind its last '\'), and its folder (without the '\').
std::string FileNameOf(const std::string& path);
std::string FolderOfPath(const std::string& path);

}  // namespace ferrolund::assets
