#pragma once
// The system's paths are backslash strings, written in whatever case the game's files
// happen to use, with the bytes of each name as the file that named it stores them: UTF-8
// or Windows-1252. These routines turn such a string into a path on this disk, where
// names are UTF-8.

#include <filesystem>
#include <string>
#include <string_view>

namespace ferrolund::tools {

// Each element that exists on disk is matched without regard to case, accented letters
// included (an exact match wins when a folder holds several). An element that is not
// plain ASCII is tried as its bytes when they are UTF-8, then as their Windows-1252
// reading. An element that does not exist (and all behind it) is kept as written, in
// UTF-8, so a path can name a file that is about to be created. Both separators are
// accepted. A relative path is taken from the current folder and stays relative.
//
// Folder listings are remembered. A name found in a listing is trusted; a name not found
// makes the folder's time stamp be checked, and a changed folder is listed again, so
// files made by other programs are found as well.
std::filesystem::path HostPath(std::string_view systemPath);

// The system string of a path on disk: its bytes as they stand (UTF-8 names), separators
// kept; HostPath finds it again.
std::string SystemPath(const std::filesystem::path& hostPath);

// Called after the program itself creates, renames or deletes something at this path,
// so that what the resolver remembers of the disk stays true: the listing of the
// path's folder and everything remembered below the path are dropped.
void ForgetPath(std::string_view systemPath);

}  // namespace ferrolund::tools
