#include "textures/texture_batch.h"

#include <algorithm>
#include <filesystem>

#include "tools/codepage.h"
#include "tools/host_path.h"

namespace ferrolund::textures {

std::vector<std::string> TexturesInFolder(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code ec;
    const std::filesystem::path host = tools::HostPath(folder);
    for (std::filesystem::directory_iterator it(host, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (name.size() > 7 && tools::EqualsIgnoreCase(name.substr(name.size() - 7), ".TgPcDx") &&
            it->is_regular_file(ec))
            files.push_back(folder + "\\" + name);
    }
    std::sort(files.begin(), files.end());
    return files;
}

BatchSummary ConvertTextures(base::RunContext& ctx, const std::vector<std::string>& files,
                             const std::string& outFolder,
                             const std::function<void(const std::string& file, const ConversionResult&)>& each) {
    BatchSummary summary;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (ctx.ui) ctx.ui->pump();
        if (ctx.abortFlag) {
            summary.aborted = true;
            break;
        }
        if (ctx.ui) {
            const std::size_t slash = files[i].find_last_of("\\/");
            ctx.ui->progressCount(i, files.size(), "textures");
            ctx.ui->progress(static_cast<int>(i * 100 / files.size()), files[i].substr(slash + 1));
        }
        // A large texture lets events through while it is written, so "&Abort" is heard.
        const ConversionResult result = TgPcDxToDds(files[i], outFolder, [&ctx] {
            if (ctx.ui) ctx.ui->pump();
            return ctx.abortFlag;
        });
        if (result.stopped) {
            summary.aborted = true;
            break;
        }
        ++(result.error.empty() ? summary.converted : summary.failed);
        if (each) each(files[i], result);
    }
    if (ctx.ui && !summary.aborted) ctx.ui->progress(100, {});
    return summary;
}

}  // namespace ferrolund::textures
