#pragma once
// ferrolund-cli: the workbench's commands without a window.

#include <iosfwd>
#include <string>
#include <vector>

namespace ferrolund::cli {

// `args` are the words after the program's name; `appRoot` the program's folder. Gives
// the exit code.
int RunCli(const std::vector<std::string>& args, const std::string& appRoot, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
