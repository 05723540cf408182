#include "cli/verb_textures.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>

#include "cli/shared_options.h"
#include "textures/texture_batch.h"
#include "textures/tgpcdx_dds.h"
#include "tools/host_path.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

std::string Shown(const std::string& text) { return tools::ShownText(text); }

int Usage(std::ostream& err, const char* usage) {
    err << "ferrolund-cli: usage: " << usage << "\n";
    return kExitUsage;
}

}  // namespace

int TexToDdsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    constexpr const char* kUsage = "tex2dds FILE|FOLDER... [--out DIR]";
    std::vector<std::string> files;
    std::string folder = tools::SystemPath(tools::HostPath(ctx.appRoot) / "TempDDS");
    bool named = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--out") {
            if (++i == args.size()) return Usage(err, kUsage);
            folder = args[i];
            continue;
        }
        named = true;
        std::error_code ec;
        if (!std::filesystem::is_directory(tools::HostPath(args[i]), ec)) {
            files.push_back(args[i]);
            continue;
        }
        // A folder gives the textures directly in it.
        const std::vector<std::string> inFolder = textures::TexturesInFolder(args[i]);
        if (inFolder.empty()) err << Shown(args[i]) << ": no .TgPcDx files in this folder\n";
        files.insert(files.end(), inFolder.begin(), inFolder.end());
    }
    if (!named) return Usage(err, kUsage);
    if (files.empty()) return kExitFailed;
    int code = kExitDone;
    const textures::BatchSummary summary = textures::ConvertTextures(
        ctx, files, folder, [&](const std::string& file, const textures::ConversionResult& result) {
            if (!result.error.empty()) {
                ctx.ui->progress(-1, {});  // off the progress line
                err << Shown(file) << ": " << Shown(result.error) << "\n";
                code = kExitFailed;
                return;
            }
            out << Shown(result.output) << "\t" << result.label << "\t" << result.mipCount << " mip-maps\n";
        });
    if (summary.aborted) code = kExitFailed;
    return code;
}

int DdsToTexVerb(app::AppContext&, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 2) return Usage(err, "dds2tex DDS TGPCDX");
    const textures::ConversionResult result = textures::DdsToTgPcDx(args[0], args[1]);
    if (!result.error.empty()) {
        err << Shown(args[0]) << ": " << Shown(result.error) << "\n";
        return kExitFailed;
    }
    out << Shown(result.output);
    if (!result.backup.empty()) out << "\t(the old file is now " << Shown(result.backup) << ")";
    out << "\n";
    return kExitDone;
}

int DdsInfoVerb(app::AppContext&, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) return Usage(err, "dds-info FILE...");
    int code = kExitDone;
    for (const std::string& file : args) {
        std::ifstream in(tools::HostPath(file), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        textures::DdsInfo info;
        const std::string error = in ? textures::ReadDdsInfo(bytes, info) : "Unable to read the file.";
        if (!error.empty()) {
            err << Shown(file) << ": " << error << "\n";
            code = kExitFailed;
            continue;
        }
        out << Shown(file) << "\t" << info.format << "\t" << info.width << " x " << info.height << "\t" << info.mipCount
            << " mip-maps\n";
    }
    return code;
}

}  // namespace ferrolund::cli
