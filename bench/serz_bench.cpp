// Speed of the built-in converter: megabytes of XML written per second from binary, read
// per second to binary, and the time of one 70 KB tile, on the real samples (when the
// shared test data is beside the checkout) and on a generated 50 MB file; beside them the
// cost of starting one process, which is what each conversion costs with an outside tool.
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "bench.h"
#include "serz/codec.h"

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

template <typename F>
double BestSeconds(int runs, F&& step) {
    double best = 1e30;
    for (int i = 0; i < runs; ++i) {
        auto start = Clock::now();
        step();
        best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return best;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Measures one binary both ways; `runs` repeats, the best counts.
void Measure(const char* label, const std::string& binary, int runs) {
    std::string xml, back;
    if (auto failure = ferrolund::serz::BinaryToXml(binary, xml)) {
        std::printf("%-28s cannot be read: %s\n", label, failure->message.c_str());
        return;
    }
    double toXml = BestSeconds(runs, [&] { (void)ferrolund::serz::BinaryToXml(binary, xml); });
    double toBinary = BestSeconds(runs, [&] { (void)ferrolund::serz::XmlToBinary(xml, back); });
    double megabytes = static_cast<double>(xml.size()) / 1e6;
    std::printf("%-28s bin %9.3f MB  xml %9.3f MB  to XML %7.1f MB/s (%8.3f ms)  to binary %7.1f MB/s (%8.3f ms)\n",
                label, static_cast<double>(binary.size()) / 1e6, megabytes, megabytes / toXml, toXml * 1e3,
                megabytes / toBinary, toBinary * 1e3);
}

// A file shaped like a large route's tile or scenario: entities with ids, names, strings
// from a shared pool and some of their own, floats, 64-bit ids, flags and matrices.
std::string GeneratedXml(std::size_t targetBytes) {
    std::mt19937 random(20240607);
    std::uniform_real_distribution<float> coordinate(-2000.0f, 2000.0f);
    std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
    std::vector<std::string> pool;
    for (int i = 0; i < 3000; ++i) pool.push_back("Kuju\\RailSimulator\\Scenery\\Item" + std::to_string(i) + ".xml");
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                      "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"12345\">\r\n"
                      "\t<Record>\r\n";
    char line[2048];
    for (int entity = 0; xml.size() < targetBytes; ++entity) {
        std::snprintf(line, sizeof line,
                      "\t\t<cDynamicEntity d:id=\"%d\">\r\n"
                      "\t\t\t<Name d:type=\"cDeltaString\">%s</Name>\r\n"
                      "\t\t\t<Tag d:type=\"cDeltaString\">entity-%d</Tag>\r\n"
                      "\t\t\t<Mass d:type=\"sFloat32\" d:alt_encoding=\"0\" d:precision=\"string\">%g</Mass>\r\n"
                      "\t\t\t<Height d:type=\"sFloat32\" d:alt_encoding=\"0\" d:precision=\"string\">%g</Height>\r\n"
                      "\t\t\t<Saved d:type=\"bool\">%d</Saved>\r\n"
                      "\t\t\t<DetailLevel d:type=\"sInt32\">%d</DetailLevel>\r\n"
                      "\t\t\t<UUID d:type=\"sUInt64\">%llu</UUID>\r\n"
                      "\t\t\t<Network-cTrackFollower d:id=\"%d\">\r\n"
                      "\t\t\t\t<RXAxis d:numElements=\"4\" d:elementType=\"sFloat32\" d:precision=\"string\">%.7f %.7f %.7f %.7f</RXAxis>\r\n"
                      "\t\t\t\t<Matrix d:numElements=\"16\" d:elementType=\"sFloat32\" d:precision=\"string\">"
                      "%.7f %.7f %.7f 0.0000000 %.7f %.7f %.7f 0.0000000 %.7f %.7f %.7f 0.0000000 %.7f %.7f %.7f 1.0000000</Matrix>\r\n"
                      "\t\t\t</Network-cTrackFollower>\r\n"
                      "\t\t</cDynamicEntity>\r\n",
                      100000000 + entity, pool[random() % pool.size()].c_str(), entity % 20000,
                      static_cast<double>(coordinate(random)), static_cast<double>(coordinate(random)),
                      entity & 1, entity % 7, (static_cast<unsigned long long>(random()) << 32) | random(),
                      200000000 + entity, static_cast<double>(unit(random)), static_cast<double>(unit(random)),
                      static_cast<double>(unit(random)), 0.0, static_cast<double>(unit(random)),
                      static_cast<double>(unit(random)), static_cast<double>(unit(random)),
                      static_cast<double>(unit(random)), static_cast<double>(unit(random)),
                      static_cast<double>(unit(random)), static_cast<double>(unit(random)),
                      static_cast<double>(unit(random)), static_cast<double>(unit(random)),
                      static_cast<double>(coordinate(random)), static_cast<double>(coordinate(random)),
                      static_cast<double>(coordinate(random)));
        xml += line;
    }
    xml += "\t</Record>\r\n</cRecordSet>\r\n";
    return xml;
}

// The shared real files lie beside the checkout; FERROLUND_TESTDATA in the environment
// names another place. The source path is relative when the compiler cache rewrote it, so
// the folders above the program and the working folder are searched as well.
fs::path TestData() {
    if (const char* set = std::getenv("FERROLUND_TESTDATA")) return set;
#ifdef FERROLUND_TESTDATA
    return FERROLUND_TESTDATA;
#else
    fs::path beside = fs::path(__FILE__).parent_path().parent_path().parent_path() / "shared" / "testdata";
    if (beside.is_absolute()) return beside;
    std::error_code error;
    for (fs::path start : {fs::read_symlink("/proc/self/exe", error).parent_path(), fs::current_path(error)}) {
        for (fs::path dir = start; !dir.empty() && dir != dir.root_path(); dir = dir.parent_path()) {
            if (fs::is_directory(dir / "shared" / "testdata", error)) return dir / "shared" / "testdata";
        }
    }
    return beside;
#endif
}

double ProcessStartSeconds() {
    const char* argv[] = {"/bin/true", nullptr};
    return BestSeconds(20, [&] {
        pid_t pid = 0;
        if (posix_spawn(&pid, "/bin/true", nullptr, nullptr, const_cast<char**>(argv), environ) == 0) {
            int status = 0;
            waitpid(pid, &status, 0);
        }
    });
}

}  // namespace

FERROLUND_BENCH(serz) {
    fs::path samples = TestData();
    struct Sample {
        const char* label;
        fs::path path;
    };
    const Sample kSamples[] = {
        {"tile 70 KB (scenery-tile)", samples / "serz" / "scenery-tile.bin"},
        {"scenario (scenario-game)", samples / "serz" / "scenario-game.bin"},
        {"route Tracks.bin", samples / "routes" / "ff1ebaa8-82f5-43ca-9816-859956f4d56c" / "Networks" / "Tracks.bin"},
    };
    for (const auto& sample : kSamples) {
        if (!fs::exists(sample.path)) {
            std::printf("%-28s skipped: %s is absent\n", sample.label, sample.path.string().c_str());
            continue;
        }
        Measure(sample.label, ReadFile(sample.path), 30);
    }
    std::string generated = GeneratedXml(50'000'000);
    std::string binary;
    if (auto failure = ferrolund::serz::XmlToBinary(generated, binary)) {
        std::printf("generated file cannot be read: %s\n", failure->message.c_str());
        return;
    }
    Measure("generated 50 MB", binary, 3);
    std::printf("%-28s %8.3f ms\n", "one process start", ProcessStartSeconds() * 1e3);
}
