#pragma once
// A working folder for batch tests: write a batch, run it, look at what it did.

#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/batch_interpreter.h"

namespace ferrolund::testing {

struct BatchFixture {
    TempFolder root;
    ScriptedUi ui;
    app::AppContext ctx;
    tools::BatchOutcome outcome;

    BatchFixture() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
    }
    std::string sys(const std::string& relative = {}) const {
        return relative.empty() ? root.system() : root.system() + "\\" + relative;
    }
    std::filesystem::path disk(const std::string& relative) const { return root.path() / relative; }
    bool exists(const std::string& relative) const { return std::filesystem::exists(disk(relative)); }
    // Writes the lines (joined by CR LF) as run.bat in the root and runs it.
    base::Status run(const std::string& lines) {
        root.write("run.bat", lines);
        outcome = {};
        return tools::RunBatchFile(ctx, sys("run.bat"), outcome);
    }
};

}  // namespace ferrolund::testing
