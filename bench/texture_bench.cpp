// A 2048 x 2048 DXT5 texture with all its mip-maps: .TgPcDx to .dds (read, decode, turn
// the hex into bytes, write .dds and side file) and back over the original.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "bench.h"
#include "generator/texture_sample.h"
#include "serz/codec.h"
#include "textures/tgpcdx_dds.h"

namespace {

using Clock = std::chrono::steady_clock;

double Ms(Clock::time_point since) { return std::chrono::duration<double, std::milli>(Clock::now() - since).count(); }

}  // namespace

FERROLUND_BENCH(tex2dds) {
    namespace fs = std::filesystem;
    using namespace ferrolund;
    const fs::path folder = fs::temp_directory_path() / ("ferrolund-tex2dds-" + std::to_string(::getpid()));
    fs::create_directories(folder);
    std::string binary;
    if (serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA", 2048, 2048, 12), binary)) {
        std::printf("tex2dds: the generated texture does not convert\n");
        return;
    }
    const fs::path texture = folder / "big.TgPcDx";
    std::ofstream(texture, std::ios::binary) << binary;
    std::vector<double> there, back;
    for (int run = 0; run < 7; ++run) {
        auto start = Clock::now();
        const textures::ConversionResult dds = textures::TgPcDxToDds(texture.string(), (folder / "TempDDS").string());
        there.push_back(Ms(start));
        if (!dds.error.empty()) {
            std::printf("tex2dds: %s\n", dds.error.c_str());
            break;
        }
        start = Clock::now();
        const textures::ConversionResult tex = textures::DdsToTgPcDx(dds.output, texture.string());
        back.push_back(Ms(start));
        if (!tex.error.empty()) std::printf("dds2tex: %s\n", tex.error.c_str());
        fs::remove(tex.backup);
    }
    std::sort(there.begin(), there.end());
    std::sort(back.begin(), back.end());
    if (!there.empty() && !back.empty())
        std::printf("2048x2048 DXT5, 12 levels, %.1f MB .TgPcDx: to .dds median %.1f ms (best %.1f), back median %.1f ms "
                    "(best %.1f)\n",
                    binary.size() / 1e6, there[there.size() / 2], there.front(), back[back.size() / 2], back.front());
    fs::remove_all(folder);
}
