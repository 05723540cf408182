#include "generator/make_sample.h"

#include <charconv>
#include <exception>
#include <fstream>

#include "generator/manifest.h"
#include "generator/plan.h"

namespace ferrolund::sample {

namespace {

Failure Make(const std::filesystem::path& folder, const SampleOptions& options, SampleResult& result,
             const SourceSet& sources) {
    std::error_code error;
    if (std::filesystem::exists(folder, error) && !std::filesystem::is_empty(folder, error))
        return "the folder " + folder.string() + " is not empty";
    SampleWriter writer(folder);
    PlanRunner plan(sources, writer, options, result);
    if (auto failure = plan.Run()) return failure;

    for (const WrittenFile& file : writer.Files()) result.bytes += file.size;
    result.files = writer.Files().size();
    const std::string manifest = ManifestText(writer, plan);
    std::ofstream out(folder / kManifestName, std::ios::binary | std::ios::trunc);
    out.write(manifest.data(), static_cast<std::streamsize>(manifest.size()));
    out.close();
    if (!out) return "cannot write " + (folder / kManifestName).string();
    return std::nullopt;
}

}  // namespace

bool ParseCount(const std::string& text, int& value) {
    if (text.empty() || text[0] < '0' || text[0] > '9') return false;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end;
}

Failure MakeSample(const std::filesystem::path& folder, const SampleOptions& options, SampleResult& result,
                   const SourceSet& sources) {
    try {
        return Make(folder, options, result, sources);
    } catch (const std::exception& e) {
        return std::string("the sample could not be made: ") + e.what();
    }
}

Failure MakeSample(const std::filesystem::path& folder, const SampleOptions& options, SampleResult& result) {
    try {
        return Make(folder, options, result, EmbeddedSources());
    } catch (const std::exception& e) {
        return std::string("the sample could not be made: ") + e.what();
    }
}

}  // namespace ferrolund::sample
