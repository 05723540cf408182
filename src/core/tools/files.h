#pragma once
// Whole-file text and folder helpers. Paths are system strings (backslashes, any case,
// Windows-1252); text is bytes, never decoded on the way in or out.

#include <string>

#include "base/run_context.h"
#include "base/run_error.h"

namespace ferrolund::tools {

// True when the file can be opened for reading: a file that exists but cannot be read
// counts as missing.
bool FileExists(const std::string& path);
// True when the folder exists and can be written to. One trailing backslash is removed
// from the caller's string.
bool FolderExists(std::string& path);

// The whole file as one string, line ends kept; a missing file gives the empty string.
// A file whose name ends in "mkr" (any case) is read as UTF-16.
std::string ReadTextFile(const std::string& path);
// Replaces the file with `text`, lets events through, and warns "An error occurred while
// writing <path>" when the file then has no length, which an empty text always gives.
// Gives true when the file holds something.
bool WriteTextFile(base::RunContext& ctx, const std::string& path, const std::string& text);
// Writes a batch file: the text and a line end.
base::Status WriteBatch(const std::string& path, const std::string& text);

// Creates every missing level of the path; true when the whole path exists afterwards.
bool CreatePath(const std::string& path);
// Deletes the folder and all it holds; a missing folder is an error.
base::Status DeleteFolderTree(base::RunContext& ctx, const std::string& path);
// Copies a folder with all it holds. Without `overwrite`, a file that exists at the
// target is an error and is left as it was.
base::Status CopyFolderTree(const std::string& from, const std::string& to, bool overwrite);
// Copies one file, replacing an old target.
base::Status CopyFileReplacing(const std::string& from, const std::string& to);
base::Status DeleteFile(const std::string& path);
// The length of a file in bytes, -1 when it does not exist.
long long FileLength(const std::string& path);

}  // namespace ferrolund::tools
