// Decoding a .dds texture for display: a generated 2048x2048 DXT5 with its full chain of mip
// levels, the largest level and then all levels decoded to RGBA. Bar: 50 ms for the largest.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench.h"
#include "textures/dds_image.h"

namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::time_point since) {
    return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

void PutWord(std::string& bytes, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes[at + std::size_t(i)] = char((value >> (8 * i)) & 0xFF);
}

// A DXT5 file of random blocks, which are all valid.
std::string GeneratedDxt5(int side, int& levels) {
    std::string bytes(128, '\0');
    std::memcpy(bytes.data(), "DDS ", 4);
    PutWord(bytes, 4, 124);
    PutWord(bytes, 8, 0x000A1007);
    PutWord(bytes, 12, std::uint32_t(side));
    PutWord(bytes, 16, std::uint32_t(side));
    PutWord(bytes, 76, 32);
    PutWord(bytes, 80, 0x4);
    std::memcpy(bytes.data() + 84, "DXT5", 4);
    levels = 0;
    std::mt19937_64 rng(7);
    for (int s = side; s >= 1; s /= 2, ++levels) {
        const std::size_t blocks = std::size_t((s + 3) / 4) * std::size_t((s + 3) / 4);
        for (std::size_t i = 0; i < blocks * 2; ++i) {
            const std::uint64_t r = rng();
            bytes.append(reinterpret_cast<const char*>(&r), 8);
        }
    }
    PutWord(bytes, 28, std::uint32_t(levels));
    return bytes;
}

}  // namespace

FERROLUND_BENCH(dds_decode) {
    using namespace ferrolund::textures;
    constexpr int kSide = 2048;
    constexpr int kRuns = 15;
    int levels = 0;
    std::string file = GeneratedDxt5(kSide, levels);
    const std::size_t fileBytes = file.size();

    auto start = Clock::now();
    DdsImage image;
    if (auto failure = ReadDds(std::move(file), image)) {
        std::printf("dds_decode: the generated file was refused: %s\n", failure->description.c_str());
        return;
    }
    const double readMs = Milliseconds(start);

    std::vector<double> largest, all;
    RgbaImage rgba;
    for (int run = 0; run < kRuns; ++run) {
        start = Clock::now();
        (void)DecodeDdsLevel(image, 0, rgba);
        largest.push_back(Milliseconds(start));
        start = Clock::now();
        for (int level = 0; level < int(image.levels.size()); ++level) (void)DecodeDdsLevel(image, level, rgba);
        all.push_back(Milliseconds(start));
    }
    std::sort(largest.begin(), largest.end());
    std::sort(all.begin(), all.end());
    std::printf("DDS DXT5 %dx%d, %d mip levels, %zu bytes: container read %.2f ms\n", kSide, kSide, levels,
                fileBytes, readMs);
    std::printf("  largest level to RGBA: best %.1f ms, median %.1f ms, worst %.1f ms over %d runs (bar 50 ms)\n",
                largest.front(), largest[kRuns / 2], largest.back(), kRuns);
    std::printf("  all %d levels to RGBA: best %.1f ms, median %.1f ms\n", levels, all.front(), all[kRuns / 2]);
}
