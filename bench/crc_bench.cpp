// CRC-32 and CRC-16 throughput of clsCRC: over memory, and over a file as the packager
// uses it (read from the page cache).
#include <algorithm>
#include <chrono>
#include <cstring>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>

#include "bench.h"
#include "services/crc.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

}  // namespace

FERROLUND_BENCH(crc) {
    namespace fs = std::filesystem;
    constexpr std::size_t kSize = std::size_t{256} << 20;
    std::string data(kSize, '\0');
    std::mt19937_64 rng(42);
    for (std::size_t i = 0; i + 8 <= data.size(); i += 8) {
        const std::uint64_t r = rng();
        std::memcpy(&data[i], &r, 8);
    }

    ferrolund::services::clsCRC crc;
    crc.Algorithm(1);
    auto start = Clock::now();
    const std::uint32_t memoryValue = crc.CalculateBytes(data);
    const double memorySeconds = Seconds(start);
    std::printf("CRC-32 over %zu MB in memory: %.3f s, %.2f GB/s (value %08X)\n", kSize >> 20, memorySeconds,
                kSize / memorySeconds / 1e9, memoryValue);

    const fs::path file = fs::temp_directory_path() / ("ferrolund-crc-bench-" + std::to_string(::getpid()) + ".bin");
    if (std::FILE* out = std::fopen(file.c_str(), "wb")) {
        std::fwrite(data.data(), 1, data.size(), out);
        std::fclose(out);
        crc.CalculateFile(file.string());  // the first read fills the page cache
        double best = 1e9;
        std::uint32_t fileValue = 0;
        for (int round = 0; round < 3; ++round) {
            start = Clock::now();
            fileValue = crc.CalculateFile(file.string()).value_or(0);
            best = std::min(best, Seconds(start));
        }
        std::printf("CRC-32 of a %zu MB file (cached, best of 3): %.3f s, %.2f GB/s (value %08X, %s)\n", kSize >> 20,
                    best, kSize / best / 1e9, fileValue, fileValue == memoryValue ? "same" : "DIFFERENT");
        fs::remove(file);
    } else {
        std::printf("CRC-32 of a file: could not write %s\n", file.c_str());
    }

    crc.Algorithm(0);
    const std::string_view part(data.data(), 64 << 20);
    start = Clock::now();
    crc.CalculateBytes(part);
    const double crc16Seconds = Seconds(start);
    std::printf("CRC-16 over 64 MB in memory: %.3f s, %.2f GB/s\n", crc16Seconds, part.size() / crc16Seconds / 1e9);
}
