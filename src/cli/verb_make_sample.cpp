#include "cli/verb_make_sample.h"

#include <chrono>
#include <cstdio>
#include <ostream>

#include "generator/make_sample.h"

namespace ferrolund::cli {

int MakeSampleVerb(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string folder;
    sample::SampleOptions options;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--tiles" || a == "--assets" || a == "--tile-entities" || a == "--stock" || a == "--scenario-mb") {
            int& count = a == "--tiles"         ? options.tiles
                         : a == "--assets"      ? options.assets
                         : a == "--stock"       ? options.stock
                         : a == "--scenario-mb" ? options.scenarioMegabytes
                                                : options.tileEntities;
            if (i + 1 >= args.size() || !sample::ParseCount(args[i + 1], count)) {
                err << "ferrolund-cli make-sample: " << a << " needs a count\n";
                return 2;
            }
            ++i;
        } else if (folder.empty() && !a.starts_with("--")) {
            folder = a;
        } else {
            err << "ferrolund-cli make-sample: unexpected " << a << "\n"
                << "usage: ferrolund-cli make-sample DIR [--tiles N] [--assets N] [--tile-entities N] [--stock N] [--scenario-mb N]\n";
            return 2;
        }
    }
    if (folder.empty()) {
        err << "usage: ferrolund-cli make-sample DIR [--tiles N] [--assets N] [--tile-entities N] [--stock N] [--scenario-mb N]\n";
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    sample::SampleResult result;
    if (auto failure = sample::MakeSample(folder, options, result)) {
        err << "ferrolund-cli make-sample: " << *failure << "\n";
        return 1;
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    char figures[160];
    std::snprintf(figures, sizeof figures, "%zu files, %.1f MB in %.2f s", result.files,
                  static_cast<double>(result.bytes) / 1e6, seconds);
    out << "Sample installation written to " << folder << ": " << figures << "\n";
    return 0;
}

}  // namespace ferrolund::cli
