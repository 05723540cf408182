#include "editor/identify_object.h"

#include "services/scan_path.h"
#include "tools/codepage.h"
#include "tools/guid.h"
#include "tools/numbers.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::editor {

namespace {
constexpr const char* kModule = "frmMain";
}  // namespace

std::string BlueprintFileName(const std::string& assetName) {
    if (assetName.size() >= 3 && tools::EqualsIgnoreCase(std::string_view(assetName).substr(assetName.size() - 3), "xml")) {
        return assetName.substr(0, assetName.size() - 3) + "bin";
    }
    return assetName;
}

std::string IdentifiedObject::row() const {
    return provider + "\t" + product + "\t" + path + "\t" + name + "\t" + category;
}

IdentifiedObject DescribeBlueprint(const std::string& gameRoot, const std::string& fullPath, const std::string& xml,
                                   const std::string& language) {
    IdentifiedObject object;
    // "Assets" is looked for behind the simulator's own folder, whose name may hold it too.
    const long assets = tools::InStr(static_cast<long>(gameRoot.size()) + 1, fullPath, "Assets");
    if (assets > 0) {
        const std::size_t first = fullPath.find('\\', static_cast<std::size_t>(assets));
        const std::size_t second = first == std::string::npos ? first : fullPath.find('\\', first + 1);
        const std::size_t third = second == std::string::npos ? second : fullPath.find('\\', second + 1);
        if (third != std::string::npos) {
            object.provider = fullPath.substr(first + 1, second - first - 1);
            object.product = fullPath.substr(second + 1, third - second - 1);
            object.path = fullPath.substr(third + 1);
        }
    }
    tools::GetName(xml, object.name, language);
    if (object.name.empty()) object.name = "No Name";
    if (tools::InStr(xml, "<Category") > 0) {
        long pos = 1;
        tools::GetDetail(xml, pos, "Category", object.category);
        if (!object.category.empty() && object.category[0] == 'e') object.category.erase(0, 1);
    }
    return object;
}

IdentifyObject::IdentifyObject() = default;
IdentifyObject::~IdentifyObject() = default;

void IdentifyObject::scanClicked(app::AppContext& ctx, std::string& assetName,
                                 const std::function<void(const std::string& row)>& onRow) {
    ctx.currentRoutine = "cmdScan_Click";
    assetName = BlueprintFileName(assetName);
    if (caption == kStop) {
        caption = kScan;
        if (scanner_) scanner_->StopScan();
        return;
    }
    if (caption != kScan) return;
    caption = kStop;
    services::cScanPath scanner(ctx.ui);
    scanner_ = &scanner;
    scanner.Folder = true;  // folders must match for the walk to go down into them
    scanner.Filter("*.bin");
    const std::string wanted = assetName;
    scanner.FileMatch = [&](const std::string& name, const std::string& folder) {
        if (!tools::EqualsIgnoreCase(name, wanted)) return;
        const std::string full = folder + name;
        std::string xml;
        if (base::Status read = tools::SerzReadXml(ctx, full, xml)) ctx.report(*read, kModule);
        const std::string row = DescribeBlueprint(ctx.gameRoot(), full, xml, ctx.prefs.language).row();
        rows.push_back(row);
        if (onRow) onRow(row);
    };
    std::string root = ctx.gameRoot() + "\\Assets";
    scanner.StartScan(root, true, false, true, false);
    scanner_ = nullptr;
    caption = kScan;
}

void IdentifyObject::clear(std::string& assetName) {
    assetName.clear();
    rows.clear();
}

std::string NewGuidAndDeltaId() {
    return tools::LowerCp1252(tools::NewGuidText()) + "\n" + tools::NewDeltaId();
}

}  // namespace ferrolund::editor
