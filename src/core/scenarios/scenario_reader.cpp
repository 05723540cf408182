#include "scenarios/scenario_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "tools/codepage.h"
#include "tools/numbers.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::scenarios {

using tools::GetDetail;
using tools::InStr;
using tools::InStrRev;

namespace {

constexpr std::array<ScenarioClassInfo, 6> kClasses = {{
    {ScenarioClass::Standard, "eStandardScenarioClass", 0, "Standard Scenario"},
    {ScenarioClass::FreeRoam, "eFreeRoamScenarioClass", 1, "FreeRoam Scenario"},
    {ScenarioClass::Career, "eCareerScenarioClass", 2, "Career Scenario"},
    {ScenarioClass::Tutorial, "eTutorialScenarioClass", 3, "Tutorial Scenario"},
    {ScenarioClass::Timetable, "eTimetableScenarioClass", 4, "Timetable Scenario"},
    {ScenarioClass::Template, "eTemplateScenarioClass", -1, ""},
}};

// Reads `tag` with GetDetail from five characters before `at` (a found opening tag).
std::string DetailAt(std::string_view text, long at, std::string_view tag) {
    std::string value;
    long pos = std::max(1L, at - 5);
    (void)GetDetail(text, pos, tag, value);
    return value;
}

// The three values of a BlueprintRef read forward from `pos`, which moves on as they are read.
void ReadTripleWalk(std::string_view text, long& pos, std::string& provider, std::string& product,
                    std::string& blueprintID, const tools::TagOptions& options = {}) {
    (void)GetDetail(text, pos, "Provider", provider, options);
    (void)GetDetail(text, pos, "Product", product, options);
    (void)GetDetail(text, pos, "BlueprintID", blueprintID, options);
}

// The same from a fixed place.
void ReadTriple(std::string_view text, long pos, std::string& provider, std::string& product,
                std::string& blueprintID) {
    ReadTripleWalk(text, pos, provider, product, blueprintID);
}

// GetName of the localised element that starts with `openTag`, found from `pos`; a
// missing element leaves the value empty and the walk where it was.
void ReadLocalised(std::string_view text, long& pos, std::string_view openTag, std::string_view language,
                   std::string& value) {
    const long at = InStr(pos, text, openTag);
    if (at == 0) return;
    long namePos = at;
    tools::GetName(text, namePos, value, language);
    if (namePos > 0) pos = namePos;
}

// The first place (as InStr from the block's start gives it, 0 for none) of each of
// several tags, found in one sweep over the block's '<' characters.
template <std::size_t N>
std::array<long, N> FirstTags(std::string_view block, const std::array<std::string_view, N>& tags) {
    std::array<long, N> first{};
    std::size_t missing = N;
    for (std::size_t i = block.find('<'); i != std::string_view::npos && missing > 0; i = block.find('<', i + 1)) {
        for (std::size_t k = 0; k < N; ++k) {
            if (first[k] == 0 && tools::EqualsIgnoreCase(block.substr(i, tags[k].size()), tags[k])) {
                first[k] = static_cast<long>(i) + 1;
                --missing;
            }
        }
    }
    return first;
}

VehicleRow ReadVehicle(std::string_view block, long nameEnd, std::string name, const VehicleWalk& walk) {
    VehicleRow row;
    row.name = std::move(name);
    const long bp = InStrRev(block, walk.blueprintAnchor, nameEnd);
    if (bp > 0) {
        ReadTriple(block, bp, row.provider, row.product, row.blueprintID);
        // Not bounded by the vehicle: a vehicle without a reskin of its own picks up the
        // next one of the block.
        const long reskin = walk.reskin ? InStr(bp, block, "ReskinBlueprintID") : 0;
        if (reskin > 0) ReadTriple(block, reskin, row.reskinProvider, row.reskinProduct, row.reskinBlueprintID);
    }
    if (long at = InStrRev(block, "<Flipped", nameEnd); at > 0) row.flipped = DetailAt(block, at, "Flipped");
    if (long at = InStrRev(block, "<uniquenumber", nameEnd); at > 0)
        row.uniqueNumber = DetailAt(block, at, "UniqueNumber");
    if (long at = InStrRev(block, "<IsPreloaded", nameEnd); at > 0)
        row.isPreloaded = DetailAt(block, at, "IsPreloaded");
    // Only an empty InitialLevel behind the vehicle's own start counts, so the search back
    // for it need not go further than that start.
    const long owned = InStrRev(block, "<cOwnedEntity", nameEnd);
    const long from = std::max(owned, 1L);
    const long empty = InStrRev(tools::Mid(block, from, nameEnd - from + 1), "<InitialLevel/>");
    row.loadable = empty > 0 && from - 1 + empty > owned ? "False" : "True";
    return row;
}

}  // namespace

const std::array<ScenarioClassInfo, 6>& ScenarioClasses() { return kClasses; }

ScenarioClass ScenarioClassOf(std::string_view value) {
    const std::string_view word = tools::TrimBlanks(value);
    for (const auto& info : kClasses) {
        if (tools::EqualsIgnoreCase(word, info.value)) return info.kind;
    }
    return ScenarioClass::Unknown;
}

const ScenarioClassInfo* ClassInfo(ScenarioClass kind) {
    for (const auto& info : kClasses) {
        if (info.kind == kind) return &info;
    }
    return nullptr;
}

std::string ClassValueOfOption(int option) {
    for (const auto& info : kClasses) {
        if (info.option >= 0 && info.option == option) return info.value;
    }
    return {};
}

std::string ServiceClassWord(std::string_view value) {
    const std::string_view digits = tools::TrimBlanks(value);
    if (digits.empty() || digits.size() > 2 ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return {};
    const int index = std::stoi(std::string(digits));
    return index < static_cast<int>(kServiceClasses.size()) ? kServiceClasses[static_cast<std::size_t>(index)]
                                                             : std::string{};
}

ScenarioDetails ReadScenarioDetails(std::string_view xml, std::string_view languageTag,
                                    const tools::TagOptions& tagOptions) {
    ScenarioDetails d;
    long pos = 1;
    ReadLocalised(xml, pos, "<DisplayName>", languageTag, d.displayName);
    ReadLocalised(xml, pos, "<Description>", languageTag, d.description);
    ReadLocalised(xml, pos, "<Briefing>", languageTag, d.briefing);
    // GetDetail leaves 0 for a missing tag, and the next read then starts at the top.
    (void)GetDetail(xml, pos, "ScenarioClass", d.scenarioClass, tagOptions);
    (void)GetDetail(xml, pos, "StartTime", d.startTime, tagOptions);
    (void)GetDetail(xml, pos, "DurationMins", d.durationMins, tagOptions);
    (void)GetDetail(xml, pos, "StartDD", d.startDD, tagOptions);
    (void)GetDetail(xml, pos, "StartMM", d.startMM, tagOptions);
    (void)GetDetail(xml, pos, "StartYYYY", d.startYYYY, tagOptions);
    (void)GetDetail(xml, pos, "Season", d.season, tagOptions);
    ReadTripleWalk(xml, pos, d.weatherProvider, d.weatherProduct, d.weatherBlueprintID, tagOptions);
    if (const long ext = InStr(pos, xml, "<WeatherExtension"); ext > 0) {
        d.hasWeatherExtension = true;
        pos = ext;
        ReadTripleWalk(xml, pos, d.extensionProvider, d.extensionProduct, d.extensionBlueprintID, tagOptions);
    }
    if (const long start = InStr(pos, xml, "<StartLocation>"); start > 0) {
        pos = start;
        (void)GetDetail(xml, pos, "English", d.startLocation, tagOptions);
    }
    if (const long author = InStr(pos, xml, "<Author d"); author > 0) {
        d.hasAuthor = true;
        pos = std::max(1L, author - 10);
        (void)GetDetail(xml, pos, "Author", d.author, tagOptions);
    }
    return d;
}

bool MentionsTimetable(std::string_view propertiesXml) { return InStr(propertiesXml, "timetable") > 0; }

std::string SecondsToHHMM(std::string_view seconds) {
    const double value = tools::VbVal(tools::TrimBlanks(seconds));
    const long whole = value > 0 && std::isfinite(value) ? static_cast<long>(value) : 0;
    char out[48];
    std::snprintf(out, sizeof out, "%02ld%02ld", whole / 3600, (whole % 3600) / 60);
    return out;
}

bool IsCareerScenario(std::string_view propertiesXml) {
    return InStr(propertiesXml, "eCareerScenarioClass") > 0;
}

bool WarnIfCareer(base::Ui& ui, std::string_view propertiesXml) {
    if (!IsCareerScenario(propertiesXml)) return false;
    ui.message(kCareerWarning, base::Icon::Exclamation);
    return true;
}

bool RefuseQuickDrive(base::Ui& ui, const ScenarioDetails& details) {
    if (details.kind() != ScenarioClass::Template) return false;
    ui.message(kQuickDriveRefusal, base::Icon::Critical);
    return true;
}

std::vector<long> ConsistBoundaries(std::string_view xml) {
    std::vector<long> bounds{1};
    for (long at = InStr(xml, "</cConsist>"); at > 0; at = InStr(at + 1, xml, "</cConsist>")) bounds.push_back(at);
    return bounds;
}

ConsistRow ReadConsistBlock(std::string_view xml, long blockStart, long blockEnd, std::string_view languageTag,
                            const VehicleWalk& walk) {
    ConsistRow row;
    row.blockStart = blockStart;
    row.blockEnd = blockEnd;
    const long length = std::max(0L, blockEnd - blockStart);
    const std::string_view block = tools::Mid(xml, blockStart, length);

    enum { kPlayer, kService, kEngineIndex, kClass, kDestination, kDestinationTag, kStart, kName };
    static constexpr std::array<std::string_view, 8> kBlockTags = {
        "<PlayerDriver",      "<ServiceName>",     "<DriverEngineIndex", "<ServiceClass",
        "<FinalDestination>", "<FinalDestination", "<StartTime",         "<Name"};
    const auto first = FirstTags(block, kBlockTags);
    // Each value is read from its tag's first place, as a search from the block's start reads it.
    auto detailAt = [&](long at, std::string_view tag, std::string& value) {
        long pos = at;
        if (at > 0) (void)GetDetail(block, pos, tag, value);
    };
    if (first[kPlayer] > 0) {
        detailAt(first[kPlayer], "PlayerDriver", row.playerDriver);
        row.driven = tools::TrimBlanks(row.playerDriver) == "1";
    }
    if (const long service = first[kService]; service > 0) {
        row.loose = false;
        long pos = service;
        tools::GetName(block, pos, row.serviceName, languageTag);
        if (const long dir = InStrRev(block, "<_dir", service); dir > 0) detailAt(dir, "_dir", row.dir);
    } else {
        row.serviceName = kLooseConsist;
    }
    detailAt(first[kEngineIndex], "DriverEngineIndex", row.driverEngineIndex);
    detailAt(first[kClass], "ServiceClass", row.serviceClass);

    if (const long destOpen = first[kDestination]; destOpen > 0) {
        const long destClose = InStr(destOpen, block, "</FinalDestination>");
        row.hasDestination = destClose > 0 && destClose - destOpen >= kDestinationStretch;
    }

    // The vehicles: every Name of the block, each with what stands before it.
    if (const long firstName = first[kName]; firstName > 0) {
        long at = std::max(1L, firstName - 10);
        while (true) {
            const long open = InStr(at, block, "<Name");
            std::string name;
            if (GetDetail(block, at, "Name", name) || at == 0) break;
            at += 10;
            row.vehicles.push_back(
                ReadVehicle(block, std::min<long>(at, static_cast<long>(block.size())), std::move(name), walk));
            row.vehicles.back().namePos = blockStart - 1 + open;
        }
    }

    std::string start;
    detailAt(first[kStart], "StartTime", start);
    row.startTime = SecondsToHHMM(start);
    row.destination = kNotShown;
    // The bare word may stand before its first tag (in a value); only that stretch needs a search.
    const long tagWord = first[kDestinationTag] > 0 ? first[kDestinationTag] + 1 : 0;
    const long dest = InStr(tagWord > 0 ? tools::Mid(block, 1, tagWord + 15) : block, "FinalDestination");
    if (dest > 0) {
        long at = dest;
        std::string name;
        if (!GetDetail(block, at, "DisplayName", name) && at > 0) row.destination = name;
    }
    return row;
}

ScenarioConsists ReadConsists(std::string_view xml, std::string_view languageTag, const ReadProgress& progress,
                              const VehicleWalk& walk) {
    ScenarioConsists result;
    const std::vector<long> bounds = ConsistBoundaries(xml);
    const std::size_t total = bounds.size() - 1;
    result.consists.reserve(total);
    for (std::size_t k = 0; k < total; ++k) {
        if (progress && !progress(k, total)) break;
        result.consists.push_back(ReadConsistBlock(xml, bounds[k], bounds[k + 1], languageTag, walk));
        if (result.consists.back().driven) result.drivenConsist = static_cast<int>(k);
    }
    return result;
}

long ConsistPosition(std::string_view xml, int k) {
    if (k < 0) return 0;
    long at = 0;
    for (int step = 0; step <= k; ++step) {
        at = InStr(at + 1, xml, "<cConsist d");
        if (at == 0) return 0;
    }
    return at;
}

long VehiclePosition(std::string_view xml, int k, int j) {
    const long consist = ConsistPosition(xml, k);
    if (consist == 0 || j < 0) return 0;
    long at = consist;
    for (int step = 0; step <= j; ++step) {
        at = InStr(at + 1, xml, "<cOwnedEntity");
        if (at == 0) return 0;
    }
    return at;
}

long StockBlockEnd(std::string_view xml, long vehiclePos) {
    const long close = InStr(vehiclePos, xml, "</cOwnedEntity>");
    return close == 0 ? 0 : close + 15;
}

long ConsistEnd(std::string_view xml, long consistPos) {
    const long close = InStr(consistPos, xml, "</cConsist>");
    return close == 0 ? 0 : close + 11;
}

bool SpliceText(std::string& text, long start, long end, std::string_view replacement) {
    if (start < 1 || end < start || end - 1 > static_cast<long>(text.size())) return false;
    text.replace(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(end - start), replacement);
    return true;
}

}  // namespace ferrolund::scenarios
