// ferrolund-cli: the workbench's commands from a terminal.
#include <filesystem>
#include <iostream>

#include "cli/cli.h"
#include "tools/host_path.h"

int main(int argc, char** argv) {
    std::error_code ec;
    const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    const std::string appRoot = ferrolund::tools::SystemPath(ec ? std::filesystem::current_path() : exe.parent_path());
    return ferrolund::cli::RunCli(std::vector<std::string>(argv + 1, argv + argc), appRoot, std::cout, std::cerr);
}
