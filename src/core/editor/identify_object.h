#pragma once
// frmMain, "Identify Object": every blueprint of a given file name under the simulator's
// Assets folder, with its provider, product, path, display name and category.

#include <functional>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::services {
class cScanPath;
}

namespace ferrolund::editor {

// A name ending in "xml" (any case) ends in "bin" instead: the blueprint's binary file.
std::string BlueprintFileName(const std::string& assetName);

// One row of lstFiles, from a blueprint's full path and its XML text. The path is cut
// at "Assets" behind the simulator's folder: the provider and the product are the next
// two folders, the rest is the path. The category loses a leading "e".
struct IdentifiedObject {
    std::string provider;
    std::string product;
    std::string path;
    std::string name;
    std::string category;

    // The row as the list shows it: the five parts joined by tabs.
    std::string row() const;
};
IdentifiedObject DescribeBlueprint(const std::string& gameRoot, const std::string& fullPath, const std::string& xml,
                                   const std::string& language);

class IdentifyObject {
public:
    IdentifyObject();
    ~IdentifyObject();

    static constexpr const char* kScan = "Scan";
    static constexpr const char* kStop = "Stop";

    // cmdScan's caption: the action the button offers.
    std::string caption = kScan;
    std::vector<std::string> rows;

    // cmdScan_Click. With "Scan": `assetName` gets its "bin" ending, the caption becomes
    // "Stop" and GameRoot\Assets is walked for *.bin files of that name, each found one
    // adding a row (also given to `onRow`); the caption is "Scan" again at the end. With
    // "Stop" (clicked while the walk lets events through): the walk ends.
    void scanClicked(app::AppContext& ctx, std::string& assetName,
                     const std::function<void(const std::string& row)>& onRow = {});
    // Command2: the name and the rows are emptied.
    void clear(std::string& assetName);

private:
    services::cScanPath* scanner_ = nullptr;
};

// dlgGUID's text: a new GUID in lower case and a new nine-digit id, one to a line.
std::string NewGuidAndDeltaId();

}  // namespace ferrolund::editor
