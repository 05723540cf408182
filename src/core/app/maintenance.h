#pragma once
// Looking after the simulator's folder and the program's own: scratch files, read-only
// files, the simulator's cache files, the full backup.

#include <string>

#include "app/app_context.h"

namespace ferrolund::app {

// "Clear Temp Files": TempFiles emptied and made anew, without a question.
void ClearTempFiles(AppContext& ctx);

// The batch that makes every file below `folder` writable.
std::string ReadWriteBatch(const std::string& folder);
// "Make all RW files Read/Write" (folder = GameRoot) and its selected-folder form.
void MakeReadWrite(AppContext& ctx, const std::string& folder);
// Asks for the folder first; an empty answer ends the command.
void MakeSelectedFolderReadWrite(AppContext& ctx);

// The simulator's cache files in GameRoot\Content, in the order they are handled.
inline constexpr const char* kCacheFiles[] = {"SDBCache.bin", "SDBCache.bin.MD5", "RVDBCache.bin",
                                              "RVDBCache.bin.MD5"};
// "Delete SDBCache.bin ": each of the four that exists is deleted.
void DeleteCacheFiles(AppContext& ctx);
// "Rename SDBCache.bin to SDBCache.bak": each that exists gets its back-up name; an
// existing back-up is not replaced.
void RenameCacheFiles(AppContext& ctx);
// The back-up name of a cache file: SDBCache.bak, SDBCache.bin.MD5.bak, ...
std::string CacheBackupName(const std::string& cacheFile);

// The batch of the full backup into `backupFolder`; Source only when it exists.
std::string FullBackupBatch(const std::string& gameRoot, const std::string& backupFolder, bool withSource);
// "Backup Train Simulator 2019".
void FullBackup(AppContext& ctx);

}  // namespace ferrolund::app
