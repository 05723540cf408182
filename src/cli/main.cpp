// ferrolund-cli: the workbench's commands from a terminal.
#include <iostream>

#include "app/app_root.h"
#include "cli/cli.h"
#include "tools/codepage.h"

int main(int argc, char** argv) {
    const ferrolund::app::PreparedAppRoot root = ferrolund::app::PrepareAppRoot();
    for (const std::string& problem : root.problems) {
        std::cerr << "ferrolund-cli: " << ferrolund::tools::Utf8FromCp1252(problem) << "\n";
    }
    return ferrolund::cli::RunCli(std::vector<std::string>(argv + 1, argv + argc), root.appRoot, std::cout, std::cerr);
}
