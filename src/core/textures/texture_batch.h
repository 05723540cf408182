#pragma once
// Many textures to .dds in one run: a folder's .TgPcDx files, each converted as the
// Graphics Tools convert one, with progress between files and a stop at "&Abort". A
// file being written when the abort comes is removed; no file is left half written.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "base/run_context.h"
#include "textures/tgpcdx_dds.h"

namespace ferrolund::textures {

// The .TgPcDx files directly in `folder` (a system path), sorted by name; empty when the
// folder cannot be read.
std::vector<std::string> TexturesInFolder(const std::string& folder);

struct BatchSummary {
    std::size_t converted = 0;
    std::size_t failed = 0;
    bool aborted = false;  // stopped by AbortFlag before the last file
};

// Converts each file to "<outFolder>\<base>.dds" and its side file. Before each file, and
// between the steps of each, it lets events through (ctx.ui->pump) and stops when
// AbortFlag is set: a file stopped half-way is removed. It tells the progress; `each`
// hears the result of every file finished.
BatchSummary ConvertTextures(base::RunContext& ctx, const std::vector<std::string>& files,
                             const std::string& outFolder,
                             const std::function<void(const std::string& file, const ConversionResult&)>& each);

}  // namespace ferrolund::textures
