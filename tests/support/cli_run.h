#pragma once
// Runs the command-line front end in-process, as a test calls it.

#include <sstream>
#include <string>
#include <vector>

#include "cli/cli.h"

namespace ferrolund::testing {

struct CliRun {
    int code;
    std::string out;
    std::string err;
};

inline CliRun Cli(const std::vector<std::string>& args, const std::string& appRoot) {
    std::ostringstream out, err;
    const int code = cli::RunCli(args, appRoot, out, err);
    return {code, out.str(), err.str()};
}

}  // namespace ferrolund::testing
