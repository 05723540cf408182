#pragma once
// The sample installation of the simulator: a small but complete game folder (Assets,
// Content, routes, scenarios, caches, archives), written from the text sources of
// sample/sources by the built-in converter, with a manifest of what it holds.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "generator/sources.h"
#include "generator/template_text.h"

namespace ferrolund::sample {

// The manifest's name, in the installation's own folder.
inline constexpr const char* kManifestName = "SampleManifest.tsv";

struct SampleOptions {
    int tiles = -1;        // scenery tiles of the generated kind in the first route; -1: the default
    int assets = -1;       // generated scenery blueprints; -1: the default
    int tileEntities = -1; // scenery items on each generated tile; -1: the default (4)
    int stock = -1;        // generated assets of all kinds (rolling stock, scenery, ...); -1: the default
    int scenarioMegabytes = -1;  // XML size of the generated scenario's Scenario.bin; -1: the default
    bool keepXml = false;  // keep each binary's XML in the result, for checks
};

struct CompiledFile {
    std::string path;     // as in the manifest
    std::string archive;  // empty for a loose file
    std::string xml;      // the text the binary was made from (CR LF)
};

struct SampleResult {
    std::size_t files = 0;  // files of the manifest, archive members included
    std::uint64_t bytes = 0;
    std::vector<CompiledFile> compiled;  // filled with keepXml
};

// A count as the options and the plan give it: decimal digits only, 0 or more.
bool ParseCount(const std::string& text, int& value);

// Writes the sample into `folder`, which must be missing or empty. A broken source gives
// a message naming the source file and line; nothing throws.
Failure MakeSample(const std::filesystem::path& folder, const SampleOptions& options, SampleResult& result,
                   const SourceSet& sources);
Failure MakeSample(const std::filesystem::path& folder, const SampleOptions& options, SampleResult& result);

}  // namespace ferrolund::sample
