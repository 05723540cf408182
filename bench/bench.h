#pragma once
// Benchmarks register themselves by name; ferrolund-bench runs all or the named ones and
// prints the figures each measures.

#include <functional>
#include <string>

namespace ferrolund::bench {

using BenchFunction = std::function<void()>;

struct Registration {
    Registration(const std::string& name, BenchFunction function);
};

}  // namespace ferrolund::bench

#define FERROLUND_BENCH(name) \
    static void name##_bench(); \
    static ::ferrolund::bench::Registration name##_registration(#name, name##_bench); \
    static void name##_bench()
