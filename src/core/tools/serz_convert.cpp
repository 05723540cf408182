#include "tools/serz_convert.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "serz/codec.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tool_runner.h"
#include "tools/xml_compare.h"

namespace ferrolund::tools {

namespace fs = std::filesystem;

namespace {

// The outside converter's command prefix, or empty for the built-in codec.
std::string ExternalConverter() {
    const char* prefix = std::getenv("FERROLUND_SERZ");
    return prefix == nullptr ? std::string() : std::string(prefix);
}

base::RunError ConversionFailed(const std::string& reason) { return {base::err::kPathFileAccess, reason}; }

void RemoveTarget(const std::string& target) {
    std::error_code ignored;
    fs::remove(HostPath(target), ignored);
    ForgetPath(target);
}

base::Status RunExternal(base::RunContext& ctx, const std::string& prefix, const std::string& source,
                        const std::string& target, SerzDirection direction) {
    SetWorkingFolder(ctx, ctx.appRoot);
    std::string command =
        SerzCommandLine(prefix, SystemPath(HostPath(source)), SystemPath(HostPath(target)), direction);
    ToolRunner(ctx, command, true, WindowStyle::Hidden);
    ForgetPath(target);
    if (FileLength(target) > 0) return std::nullopt;
    return ConversionFailed("The converter gave no output for " + source);
}

}  // namespace

std::string SerzCommandLine(const std::string& prefix, const std::string& source, const std::string& target,
                            SerzDirection direction) {
    return prefix + " \"" + source + "\" " + (direction == SerzDirection::ToXml ? "xml:" : "bin:") + "\"" + target +
           "\"";
}

bool SerzOutside() { return !ExternalConverter().empty(); }

base::Status SerzConvert(base::RunContext& ctx, const std::string& source, const std::string& target,
                        SerzDirection direction) {
    try {
        RemoveTarget(target);
        std::string external = ExternalConverter();
        if (!external.empty()) return RunExternal(ctx, external, source, target, direction);
        if (FileLength(source) < 0) return base::err::FileNotFound(source);
        auto failure = serz::ConvertFile(HostPath(source), HostPath(target), direction);
        ForgetPath(target);
        if (failure) return ConversionFailed(failure->message);
        if (FileLength(target) > 0) return std::nullopt;
        RemoveTarget(target);
        return ConversionFailed("The conversion of " + source + " gave an empty file");
    } catch (const std::exception& e) {
        return ConversionFailed(e.what());
    }
}

base::Status SerzReadXml(base::RunContext& ctx, const std::string& source, std::string& xml) {
    xml.clear();
    try {
        std::string external = ExternalConverter();
        if (!external.empty()) {
            CreatePath(ctx.appPath("TempFiles"));
            std::string scratch = ctx.appPath("TempFiles\\serz-read.xml");
            base::Status status = SerzConvert(ctx, source, scratch, SerzDirection::ToXml);
            if (!status) xml = ReadTextFile(scratch);
            RemoveTarget(scratch);
            return status;
        }
        if (FileLength(source) < 0) return base::err::FileNotFound(source);
        std::string binary = ReadTextFile(source);
        if (auto failure = serz::BinaryToXml(binary, xml)) {
            return ConversionFailed(source + ": " + failure->message);
        }
        return std::nullopt;
    } catch (const std::exception& e) {
        return ConversionFailed(e.what());
    }
}

base::Status SerzCompileText(base::RunContext& ctx, const std::string& text, const std::string& xmlPath,
                            const std::string& binPath) {
    if (!WriteTextFile(ctx, xmlPath, text)) return ConversionFailed("Could not write " + xmlPath);
    base::Status status = SerzConvert(ctx, xmlPath, binPath, SerzDirection::ToBinary);
    std::string back;
    if (!status) status = SerzReadXml(ctx, binPath, back);
    if (!status && (back.empty() || (back != text && !SameXmlContent(text, back))))
        status = ConversionFailed("The converter did not give back what " + xmlPath + " says");
    if (status) RemoveTarget(binPath);
    return status;
}

}  // namespace ferrolund::tools
