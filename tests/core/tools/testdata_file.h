#pragma once
// Reading the real game files that live beside the checkout. A test that needs one calls
// FERROLUND_READ_TESTDATA, which skips the test, saying so, when the folder is absent.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace ferrolund::testing {

inline std::filesystem::path TestdataPath(const std::string& relative) {
    return std::filesystem::path(FERROLUND_TESTDATA) / relative;
}

inline std::optional<std::string> ReadTestdata(const std::string& relative) {
    std::ifstream in(TestdataPath(relative), std::ios::binary);
    if (!in) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace ferrolund::testing

#define FERROLUND_READ_TESTDATA(variable, relative)                                               \
    std::string variable;                                                                         \
    if (auto read_ = ::ferrolund::testing::ReadTestdata(relative)) {                              \
        variable = std::move(*read_);                                                             \
    } else {                                                                                      \
        GTEST_SKIP() << "real game file " << relative << " is absent: the shared test data is "  \
                     << "not beside this checkout (" << FERROLUND_TESTDATA << ")";               \
    }
