#pragma once
// The system's paths are backslash strings in Windows-1252, written in whatever case the
// game's files happen to use. These routines turn such a string into a path on this disk.

#include <filesystem>
#include <string>
#include <string_view>

namespace ferrolund::tools {

// Each element that exists on disk is matched without regard to case (an exact match
// wins when a folder holds several); an element that does not exist (and all behind
// it) is kept as written, so a path can name a file that is about to be created. Both
// separators are accepted; names go to disk as UTF-8. A relative path is taken from the
// current folder and stays relative.
//
// Folder listings are remembered. A name found in a listing is trusted; a name not found
// makes the folder's time stamp be checked, and a changed folder is listed again, so
// files made by other programs are found as well.
std::filesystem::path HostPath(std::string_view systemPath);

// The system string of a path on disk: UTF-8 names to Windows-1252, separators kept.
std::string SystemPath(const std::filesystem::path& hostPath);

// Called after the program itself creates, renames or deletes something at this path,
// so that what the resolver remembers of the disk stays true: the listing of the
// path's folder and everything remembered below the path are dropped.
void ForgetPath(std::string_view systemPath);

}  // namespace ferrolund::tools
