#pragma once
// frmFolder5, "Multi-file Search & Replace": game files of a folder shown as XML, the
// search text replaced in each selected file, converted back and put in place of the
// original with a back-up beside it, and a batch of files saved as XML.
//
// A file is replaced only after the converter made a non-empty file of the changed text
// and the original was backed up; a file without the search text is not touched at all.

#include <functional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "editor/document.h"

namespace ferrolund::editor {

// The file's XML: copied to TempFiles\<base>bin and converted to TempFiles\<base>xml,
// which is read. Empty when the converter could not read the file.
std::string DisplayAsXml(app::AppContext& ctx, const std::string& path);

struct ReplaceInFilesHooks {
    // Before each file: its place in the list (from 0), the count, the file.
    std::function<void(int index, int count, const std::string& path)> progress;
    // The text of the file being worked on, after its replacements.
    std::function<void(const std::string& xml)> show;
};

struct ReplaceInFilesRun {
    std::vector<std::string> changed;     // files replaced, in order
    std::vector<std::string> unreadable;  // files the converter could not read; left as they were
    bool stopped = false;                 // the converter failed on the way back; the run ended there
    bool aborted = false;                 // the abort flag ended the run between two files
};

// "Replace in all selected files" (Command8), in the order given. Nothing happens
// without a search text or a file. The abort flag is tested before each file.
ReplaceInFilesRun ReplaceInFiles(app::AppContext& ctx, const std::vector<std::string>& files,
                                 const std::string& what, const std::string& with,
                                 const ReplaceInFilesHooks& hooks = {});

// "Save Selected as XML" (Command9): after the question, AppRoot\TempXML is made anew and
// each file is copied there as <base>bin and converted to <base>xml beside it; the abort
// flag ends the run between two files. Gives the number of files converted, -1 when the
// user cancelled.
int SaveSelectedAsXml(app::AppContext& ctx, const std::vector<std::string>& files,
                      const std::function<void(int index, int count, const std::string& path)>& progress = {});

// The files of a folder (names only), sorted without regard to case; File1's list.
std::vector<std::string> FolderFiles(const std::string& folder);
// The part of a folder's path from "RailWorks" on, or the whole path without one.
std::string RailWorksPart(const std::string& folder);

}  // namespace ferrolund::editor
