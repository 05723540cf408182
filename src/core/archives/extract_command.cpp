#include "archives/extract_command.h"

#include "archives/extract.h"

namespace ferrolund::archives {

bool NeedOpenArchive(app::AppContext& ctx, bool open, const std::string& whatLine) {
    if (open) return true;
    if (ctx.ui) {
        ctx.ui->message("You must Open an Archive before you can\r\n            " + whatLine, base::Icon::Critical,
                        "Error");
    }
    return false;
}

bool RunExtractCommand(app::AppContext& ctx, const ZipArchive& archive, const ExtractRequest& request,
                       std::string& destinationFolder, const std::string& module) {
    if (!NeedOpenArchive(ctx, archive.isOpen(), "Extract anything from it!")) return false;
    if (request.selectedOnly && request.selected.empty()) {
        if (ctx.ui) ctx.ui->message("You have not selected any items to unpack", base::Icon::Exclamation);
        return false;
    }
    std::string folder;
    if (request.toArchiveFolder) {
        folder = archive.path().substr(0, archive.path().find_last_of("\\/"));
    } else {
        if (!ctx.ui) return false;
        const auto chosen = ctx.ui->chooseFolder("Select destination directory", destinationFolder);
        if (!chosen) return false;
        const auto confirmed = ctx.ui->input(
            "Confirm Save Path", request.selectedOnly ? "Save Selected Files to: " : "Save to: ", *chosen);
        if (!confirmed || confirmed->empty()) return false;
        folder = *confirmed;
    }
    if (ctx.ui) ctx.ui->busy(true);
    const ExtractOutcome out =
        ExtractEntries(ctx, archive, request.selectedOnly ? request.selected : AllIndices(archive),
                       {.target = folder, .fullPaths = request.fullPaths});
    if (ctx.ui) ctx.ui->busy(false);
    for (const auto& name : out.refused) {
        ctx.report({base::err::kPathFileAccess,
                    "The entry " + name + " names a place outside " + folder + " and was not unpacked"},
                   module);
    }
    for (const auto& error : out.errors) ctx.report(error, module);
    destinationFolder = folder;
    if (ctx.ui) ctx.ui->status(0, kExtractCompleted);
    return true;
}

}  // namespace ferrolund::archives
