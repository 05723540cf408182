#include "scenarios/stock_class.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::scenarios {

using tools::InStr;

namespace {

bool EndsWithIgnoreCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && tools::EqualsIgnoreCase(text.substr(text.size() - end.size()), end);
}

// The blueprint's text: a binary file converted in memory, a file that is already XML
// read as it stands. A path ending in "xml" whose binary exists reads the binary.
base::Status BlueprintText(base::RunContext& ctx, const std::string& path, std::string& xml) {
    std::string source = path;
    if (EndsWithIgnoreCase(path, "xml")) {
        const std::string binary = path.substr(0, path.size() - 3) + "bin";
        if (tools::FileExists(binary)) source = binary;
    }
    if (!tools::FileExists(source)) return base::err::FileNotFound(source);
    const std::string head = tools::ReadTextFile(source);
    if (head.compare(0, 4, "SERZ") == 0) return tools::SerzReadXml(ctx, source, xml);
    xml = head;
    return {};
}

// The name of one language: "<" + tag, "</" + tag, back to '>'.
std::string LanguageName(std::string_view xml, std::string_view language) {
    const long open = InStr(xml, std::string("<").append(language));
    if (open == 0) return {};
    const long close = InStr(open, xml, std::string("</").append(language));
    if (close == 0) return {};
    const long gt = tools::InStrRev(xml, ">", close);
    if (gt < open) return {};
    return std::string(tools::Mid(xml, gt + 1, close - gt - 1));
}

base::Status Classify(app::AppContext& ctx, const std::string& path, bool (*decide)(std::string_view), bool& flag,
                      std::string& name, std::string* xmlOut = nullptr) {
    flag = false;
    std::string xml;
    if (base::Status failed = BlueprintText(ctx, path, xml)) return failed;
    if (!decide(xml)) return {};
    flag = true;
    name = StockNameXml(xml, ctx.prefs.language);
    if (xmlOut) *xmlOut = std::move(xml);
    return {};
}

std::string EngineTypeOf(std::string_view xml) {
    const long at = InStr(xml, "<EngineType");
    if (at == 0) return {};
    long pos = std::max(1L, at - 10);
    std::string value;
    (void)tools::GetDetail(xml, pos, "EngineType", value);
    return value;
}

}  // namespace

bool IsLocoXml(std::string_view xml) {
    return InStr(xml, "<cEngineComponentBlueprint") > 0 || InStr(xml, ">eLocomotoves<") > 0;
}
bool IsWagonXml(std::string_view xml) { return InStr(xml, "<cWagonBlueprint") > 0; }
bool IsTenderXml(std::string_view xml) { return InStr(xml, "<cTenderBlueprint") > 0; }

std::string StockNameXml(std::string_view xml, std::string_view languageTag) {
    std::string name = LanguageName(xml, languageTag);
    for (std::string_view language : {"English", "French", "Italian", "German", "Spanish"}) {
        if (!name.empty()) break;
        name = LanguageName(xml, language);
    }
    if (name.empty()) {
        if (const long at = InStr(xml, "<Name"); at > 0) {
            long pos = std::max(1L, at - 10);
            (void)tools::GetDetail(xml, pos, "Name", name);
        }
    }
    return name.empty() ? std::string("Unnamed") : name;
}

base::Status IsItALoco(app::AppContext& ctx, const std::string& path, bool& isLoco, std::string& name,
                       std::string& engineType) {
    std::string xml;
    if (base::Status failed = Classify(ctx, path, IsLocoXml, isLoco, name, &xml)) return failed;
    if (!isLoco) return {};
    const long reskin = InStr(xml, "<ReskinAssetBpId>");
    if (reskin == 0) {
        engineType = EngineTypeOf(xml);
        return {};
    }
    std::string provider, product, blueprint;
    long pos = reskin;
    (void)tools::GetDetail(xml, pos, "Provider", provider);
    (void)tools::GetDetail(xml, pos, "Product", product);
    (void)tools::GetDetail(xml, pos, "BlueprintID", blueprint);
    const std::string stem = blueprint.size() >= 3 ? blueprint.substr(0, blueprint.size() - 3) : blueprint;
    const std::string basePath = ctx.gameRoot() + "\\Assets\\" + provider + "\\" + product + "\\" + stem + "bin";
    std::string baseXml;
    if (base::Status failed = BlueprintText(ctx, basePath, baseXml)) return failed;
    engineType = EngineTypeOf(baseXml);
    return {};
}

base::Status IsItAWagon(app::AppContext& ctx, const std::string& path, bool& isWagon, std::string& name) {
    return Classify(ctx, path, IsWagonXml, isWagon, name);
}

base::Status IsItATender(app::AppContext& ctx, const std::string& path, bool& isTender, std::string& name) {
    return Classify(ctx, path, IsTenderXml, isTender, name);
}

std::string PickRunningNumber(std::string_view xml, const RandomSource& random) {
    const long first = InStr(xml, "<Name");
    if (first == 0) return {};
    int count = 0;
    for (long at = first; at > 0 && count <= 20; at = InStr(at + 1, xml, "<Name")) ++count;
    const double draw = random ? random() : 0.0;
    long r = static_cast<long>(std::floor((count - 2) * draw)) + 1;
    if (r == 0) r = 1;
    const long item = InStr(xml, "<cCSVItem");
    long pos = (first - item) * r;
    std::string number;
    if (pos < 1) pos = 1;
    (void)tools::GetDetail(xml, pos, "Name", number);
    return number;
}

base::Status GetStockDetails(app::AppContext& ctx, const std::string& path, StockDetails& details,
                             const RandomSource& random) {
    details = StockDetails{};
    if (base::Status failed = BlueprintText(ctx, path, details.blueprintXml)) return failed;
    const std::string_view xml = details.blueprintXml;
    std::string csvFile;
    if (const long component = InStr(xml, "<RailVehicleComponent"); component > 0) {
        long pos = component;
        (void)tools::GetDetail(xml, pos, "CsvFile", csvFile);
        pos = component;
        (void)tools::GetDetail(xml, pos, "Mass", details.mass);
    }
    if (const long coal = InStr(xml, "CoalFuel"); coal > 0) {
        const long water = InStr(xml, "WaterFuel");
        details.fuelOrder = water > coal ? 1 : 2;
    }
    if (!csvFile.empty()) {
        const std::string listPath = ctx.gameRoot() + "\\Assets\\" + csvFile + ".dcsv";
        std::string listXml;
        if (tools::FileExists(listPath) && !BlueprintText(ctx, listPath, listXml)) {
            if (random) {
                details.number = PickRunningNumber(listXml, random);
            } else {
                static std::mt19937 engine{std::random_device{}()};
                std::uniform_real_distribution<double> uniform(0.0, 1.0);
                details.number = PickRunningNumber(listXml, [&] { return uniform(engine); });
            }
        }
    }
    return {};
}

}  // namespace ferrolund::scenarios
