// ferrolund-bench [name...]: runs every benchmark, or those named, printing their figures.
#include <cstdio>
#include <map>
#include <string>

#include "bench.h"

namespace ferrolund::bench {

static std::map<std::string, BenchFunction>& Registry() {
    static std::map<std::string, BenchFunction> registry;
    return registry;
}

Registration::Registration(const std::string& name, BenchFunction function) {
    Registry().emplace(name, std::move(function));
}

}  // namespace ferrolund::bench

int main(int argc, char** argv) {
    auto& registry = ferrolund::bench::Registry();
    if (argc > 1 && std::string(argv[1]) == "--list") {
        for (const auto& [name, fn] : registry) std::printf("%s\n", name.c_str());
        return 0;
    }
    int ran = 0;
    for (const auto& [name, fn] : registry) {
        bool wanted = argc < 2;
        for (int i = 1; i < argc; ++i) wanted = wanted || name == argv[i];
        if (!wanted) continue;
        std::printf("== %s\n", name.c_str());
        std::fflush(stdout);
        fn();
        ++ran;
    }
    if (ran == 0) {
        std::fprintf(stderr, "no benchmark of that name; --list shows them\n");
        return 1;
    }
    return 0;
}
