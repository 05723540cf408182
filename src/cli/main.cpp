// ferrolund-cli: the workbench's commands from a terminal.
#include <unistd.h>

#include <iostream>

#include "app/app_root.h"
#include "cli/cli.h"
#include "cli/interrupt.h"
#include "tools/names.h"

int main(int argc, char** argv) {
    ferrolund::cli::CatchInterrupt();
    const ferrolund::app::PreparedAppRoot root = ferrolund::app::PrepareAppRoot();
    for (const std::string& problem : root.problems) {
        std::cerr << "ferrolund-cli: " << ferrolund::tools::ShownText(problem) << "\n";
    }
    return ferrolund::cli::RunCli(std::vector<std::string>(argv + 1, argv + argc), root.appRoot, std::cout, std::cerr,
                                  isatty(STDERR_FILENO) == 1);
}
