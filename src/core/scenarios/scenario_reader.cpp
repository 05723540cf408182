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

// The three values of a BlueprintRef read forward from `pos`.
void ReadTriple(std::string_view text, long pos, std::string& provider, std::string& product,
                std::string& blueprintID) {
    (void)GetDetail(text, pos, "Provider", provider);
    (void)GetDetail(text, pos, "Product", product);
    (void)GetDetail(text, pos, "BlueprintID", blueprintID);
}

// The same as three reads that share the walk's position.
void ReadTripleWalk(std::string_view text, long& pos, std::string& provider, std::string& product,
                    std::string& blueprintID) {
    (void)GetDetail(text, pos, "Provider", provider);
    (void)GetDetail(text, pos, "Product", product);
    (void)GetDetail(text, pos, "BlueprintID", blueprintID);
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

VehicleRow ReadVehicle(std::string_view block, long nameEnd, std::string name) {
    VehicleRow row;
    row.name = std::move(name);
    const long bp = InStrRev(block, "<BlueprintID>", nameEnd);
    if (bp > 0) {
        ReadTriple(block, bp, row.provider, row.product, row.blueprintID);
        // Not bounded by the vehicle: a vehicle without a reskin of its own picks up the
        // next one of the block.
        const long reskin = InStr(bp, block, "ReskinBlueprintID");
        if (reskin > 0) ReadTriple(block, reskin, row.reskinProvider, row.reskinProduct, row.reskinBlueprintID);
    }
    if (long at = InStrRev(block, "<Flipped", nameEnd); at > 0) row.flipped = DetailAt(block, at, "Flipped");
    if (long at = InStrRev(block, "<uniquenumber", nameEnd); at > 0)
        row.uniqueNumber = DetailAt(block, at, "UniqueNumber");
    if (long at = InStrRev(block, "<IsPreloaded", nameEnd); at > 0)
        row.isPreloaded = DetailAt(block, at, "IsPreloaded");
    const long owned = InStrRev(block, "<cOwnedEntity", nameEnd);
    const long empty = InStrRev(block, "<InitialLevel/>", nameEnd);
    row.loadable = empty > owned ? "False" : "True";
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

ScenarioDetails ReadScenarioDetails(std::string_view xml, std::string_view languageTag) {
    ScenarioDetails d;
    long pos = 1;
    ReadLocalised(xml, pos, "<DisplayName>", languageTag, d.displayName);
    ReadLocalised(xml, pos, "<Description>", languageTag, d.description);
    ReadLocalised(xml, pos, "<Briefing>", languageTag, d.briefing);
    // GetDetail leaves 0 for a missing tag, and the next read then starts at the top.
    (void)GetDetail(xml, pos, "ScenarioClass", d.scenarioClass);
    (void)GetDetail(xml, pos, "StartTime", d.startTime);
    (void)GetDetail(xml, pos, "DurationMins", d.durationMins);
    (void)GetDetail(xml, pos, "StartDD", d.startDD);
    (void)GetDetail(xml, pos, "StartMM", d.startMM);
    (void)GetDetail(xml, pos, "StartYYYY", d.startYYYY);
    (void)GetDetail(xml, pos, "Season", d.season);
    ReadTripleWalk(xml, pos, d.weatherProvider, d.weatherProduct, d.weatherBlueprintID);
    if (const long ext = InStr(pos, xml, "<WeatherExtension"); ext > 0) {
        d.hasWeatherExtension = true;
        pos = ext;
        ReadTripleWalk(xml, pos, d.extensionProvider, d.extensionProduct, d.extensionBlueprintID);
    }
    if (const long start = InStr(pos, xml, "<StartLocation>"); start > 0) {
        pos = start;
        (void)GetDetail(xml, pos, "English", d.startLocation);
    }
    if (const long author = InStr(pos, xml, "<Author d"); author > 0) {
        d.hasAuthor = true;
        pos = std::max(1L, author - 10);
        (void)GetDetail(xml, pos, "Author", d.author);
    }
    return d;
}

std::string SecondsToHHMM(std::string_view seconds) {
    const double value = tools::VbVal(tools::TrimBlanks(seconds));
    const long whole = value > 0 && std::isfinite(value) ? static_cast<long>(value) : 0;
    char out[16];
    std::snprintf(out, sizeof out, "%02ld%02ld", (whole / 3600) % 100, (whole % 3600) / 60);
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

ConsistRow ReadConsistBlock(std::string_view xml, long blockStart, long blockEnd, std::string_view languageTag) {
    ConsistRow row;
    row.blockStart = blockStart;
    row.blockEnd = blockEnd;
    const long length = std::max(0L, blockEnd - blockStart);
    const std::string_view block = tools::Mid(xml, blockStart, length);

    if (const long at = InStr(block, "<PlayerDriver"); at > 0) {
        long pos = at;
        (void)GetDetail(block, pos, "PlayerDriver", row.playerDriver);
        row.driven = tools::TrimBlanks(row.playerDriver) == "1";
    }
    if (const long service = InStr(block, "<ServiceName>"); service > 0) {
        row.loose = false;
        long pos = service;
        tools::GetName(block, pos, row.serviceName, languageTag);
        if (const long dir = InStrRev(block, "<_dir", service); dir > 0) {
            long at = dir;
            (void)GetDetail(block, at, "_dir", row.dir);
        }
    } else {
        row.serviceName = kLooseConsist;
    }
    long pos = 1;
    (void)GetDetail(block, pos, "DriverEngineIndex", row.driverEngineIndex);
    pos = 1;
    (void)GetDetail(block, pos, "ServiceClass", row.serviceClass);

    const long destOpen = InStr(block, "<FinalDestination>");
    if (destOpen > 0) {
        const long destClose = InStr(destOpen, block, "</FinalDestination>");
        row.hasDestination = destClose > 0 && destClose - destOpen >= kDestinationStretch;
    }

    // The vehicles: every Name of the block, each with what stands before it.
    if (const long firstName = InStr(block, "<Name"); firstName > 0) {
        long walk = std::max(1L, firstName - 10);
        while (true) {
            const long open = InStr(walk, block, "<Name");
            std::string name;
            if (GetDetail(block, walk, "Name", name) || walk == 0) break;
            walk += 10;
            row.vehicles.push_back(ReadVehicle(block, std::min<long>(walk, static_cast<long>(block.size())), name));
            row.vehicles.back().namePos = blockStart - 1 + open;
        }
    }

    pos = 1;
    std::string start;
    (void)GetDetail(block, pos, "StartTime", start);
    row.startTime = SecondsToHHMM(start);
    row.destination = kNotShown;
    if (const long dest = InStr(block, "FinalDestination"); dest > 0) {
        long at = dest;
        std::string name;
        if (!GetDetail(block, at, "DisplayName", name) && at > 0) row.destination = name;
    }
    return row;
}

ScenarioConsists ReadConsists(std::string_view xml, std::string_view languageTag, const ReadProgress& progress) {
    ScenarioConsists result;
    const std::vector<long> bounds = ConsistBoundaries(xml);
    const std::size_t total = bounds.size() - 1;
    result.consists.reserve(total);
    for (std::size_t k = 0; k < total; ++k) {
        if (progress && !progress(k, total)) break;
        result.consists.push_back(ReadConsistBlock(xml, bounds[k], bounds[k + 1], languageTag));
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
