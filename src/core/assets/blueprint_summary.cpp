#include "assets/blueprint_summary.h"

#include <array>
#include <cctype>
#include <optional>
#include <vector>

#include "serz/codec.h"
#include "serz/xml_layout.h"
#include "tools/codepage.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace {

bool StartsWithIgnoreCase(std::string_view text, std::string_view head) {
    return text.size() >= head.size() && tools::EqualsIgnoreCase(text.substr(0, head.size()), head);
}

// Element names whose first start tag the text reader reads a value from, in this order.
enum Probe : std::size_t { kCategory, kEngineType, kValidInScenarios, kLanguage, kEnglish, kProbes };
// Element names the text reader only tests for.
constexpr std::array<std::string_view, 6> kPresence{"cWagonBlueprint",       "cTenderBlueprint",
                                                    "cTrackSectionBlueprint", "cRoadSectionBlueprint",
                                                    "cLoftSectionBlueprint",  "RailVehicle"};
enum Presence : std::size_t { kWagon, kTender, kTrack, kRoad, kLoft, kRailVehicle };

// The first start tag whose name begins with a probe's word. A string value's tag is
// followed by its text and its own end tag, so the reader's value is that text; any
// other kind of element needs the text itself.
struct Hit {
    bool found = false;
    bool plain = false;
    std::string text;  // as the XML shows it, entities included
};

// What is known of one element name, worked out once per entry of the string table.
struct NameFacts {
    bool known = false;
    unsigned probes = 0;    // bit per Probe the name begins with
    unsigned presence = 0;  // bit per Presence word the name begins with
    bool passenger = false;
    bool startsWithC = false;
    bool blueprint = false;  // "Blueprint"
    bool reskin = false;     // "cReskinBlueprint"
    std::string xml;
};

class RecordWalk {
public:
    RecordWalk(std::string_view binary, std::string_view language)
        : layout_(binary), words_{"Category", "EngineType", "ValidInScenarios", language, "English"} {}

    // False when the file does not convert (`failure` says why). Otherwise `summary`
    // holds the answers, or `needText` is set when the walk cannot give them exactly.
    bool Run(BlueprintSummary& summary, bool& needText, std::string* failure);

private:
    const NameFacts& Facts(std::uint16_t index);
    bool StringHasPassenger(std::uint16_t index);
    void StartTag(const serz::Record& record, bool root);
    void OpenSettled(bool selfClosing);
    std::optional<std::string> ReadName(const Hit& hit, bool& closed) const;

    serz::XmlLayout layout_;
    std::array<std::string_view, kProbes> words_;
    std::vector<NameFacts> names_;
    std::vector<signed char> stringPassenger_;  // per string: -1 unknown, 0 no, 1 yes
    std::array<Hit, kProbes> hits_{};
    unsigned presence_ = 0;
    bool passenger_ = false;
    bool reskin_ = false;

    // The class word: the first "<Blueprint>", then the next start tag beginning "<c".
    enum class Stage { Blueprint, ClassTag, Settling, Done } stage_ = Stage::Blueprint;
    std::string classWord_;
    bool classPlain_ = true;

    // An open element whose tag ends in ">" or "/>", depending on the record after it.
    struct PendingOpen {
        bool active = false;
        bool blueprint = false;
        bool reskin = false;
    } pending_;
};

const NameFacts& RecordWalk::Facts(std::uint16_t index) {
    if (index >= names_.size()) names_.resize(index + 1u);
    NameFacts& facts = names_[index];
    if (facts.known) return facts;
    facts.known = true;
    facts.xml = serz::XmlName(layout_.String(index));
    for (std::size_t p = 0; p < kProbes; ++p) {
        if (StartsWithIgnoreCase(facts.xml, words_[p])) facts.probes |= 1u << p;
    }
    for (std::size_t p = 0; p < kPresence.size(); ++p) {
        if (StartsWithIgnoreCase(facts.xml, kPresence[p])) facts.presence |= 1u << p;
    }
    facts.passenger = tools::InStr(facts.xml, "Passenger") > 0;
    facts.startsWithC = !facts.xml.empty() && (facts.xml[0] == 'c' || facts.xml[0] == 'C');
    facts.blueprint = tools::EqualsIgnoreCase(facts.xml, "Blueprint");
    facts.reskin = tools::EqualsIgnoreCase(facts.xml, "cReskinBlueprint");
    return facts;
}

bool RecordWalk::StringHasPassenger(std::uint16_t index) {
    if (index >= stringPassenger_.size()) stringPassenger_.resize(index + 1u, -1);
    if (stringPassenger_[index] < 0) {
        // Entities hold no such word and cannot join two halves of one.
        stringPassenger_[index] = tools::InStr(layout_.String(index), "Passenger") > 0 ? 1 : 0;
    }
    return stringPassenger_[index] == 1;
}

void RecordWalk::OpenSettled(bool selfClosing) {
    if (!pending_.active) return;
    pending_.active = false;
    // "<Name/>" is not "<Name>": the exact tags the reader seeks are only the open ones.
    if (!selfClosing && pending_.reskin) reskin_ = true;
    if (stage_ == Stage::Settling) {
        if (selfClosing) classWord_ += '/';
        stage_ = Stage::Done;
    } else if (stage_ == Stage::Blueprint && pending_.blueprint && !selfClosing) {
        stage_ = Stage::ClassTag;
    }
}

void RecordWalk::StartTag(const serz::Record& record, bool root) {
    const NameFacts& facts = Facts(record.nameIndex);
    const bool isOpen = record.kind == serz::Kind::Open;
    const bool plainString = record.kind == serz::Kind::Value && record.type == serz::ValueType::String;
    for (std::size_t p = 0; p < kProbes; ++p) {
        Hit& hit = hits_[p];
        if (hit.found || (facts.probes & (1u << p)) == 0) continue;
        hit.found = true;
        hit.plain = plainString;
        if (plainString) hit.text = serz::XmlText(layout_.String(record.stringIndex));
    }
    presence_ |= facts.presence;
    if (facts.passenger || (plainString && StringHasPassenger(record.stringIndex))) passenger_ = true;

    if (stage_ == Stage::ClassTag && facts.startsWithC) {
        if (isOpen) {
            classWord_ = facts.xml.substr(1) + serz::OpenTagAttributes(record.id, root);
            stage_ = Stage::Settling;
        } else {
            classPlain_ = false;
            stage_ = Stage::Done;
        }
    }
    if (isOpen) {
        const bool bare = record.id == 0 && !root;  // a tag with nothing behind its name
        pending_ = {true, bare && facts.blueprint, bare && facts.reskin};
    }
}

bool RecordWalk::Run(BlueprintSummary& summary, bool& needText, std::string* failure) {
    needText = false;
    std::size_t depth = 0;
    serz::LaidRecord laid;
    while (layout_.Next(laid)) {
        const serz::Record& record = laid.record;
        if (record.kind == serz::Kind::Marker) continue;
        if (pending_.active) OpenSettled(record.kind == serz::Kind::Close && laid.lines == 0);
        switch (record.kind) {
            case serz::Kind::Open:
                StartTag(record, depth == 0);
                ++depth;
                break;
            case serz::Kind::Close: --depth; break;
            case serz::Kind::Value:
            case serz::Kind::Reference:
            case serz::Kind::Array: StartTag(record, false); break;
            default: break;
        }
    }
    if (!layout_.Complete()) {
        if (failure) *failure = layout_.failure() ? layout_.failure()->message : "the file could not be read";
        return false;
    }

    // Category and In Scene, in the order of the reader's tests.
    Classification& c = summary.classification;
    c = {};
    bool readValidity = false;
    auto value = [&](Probe p) -> std::optional<std::string> {
        if (!hits_[p].plain) return std::nullopt;
        return hits_[p].text;
    };
    summary.hasCategory = hits_[kCategory].found;
    if (hits_[kCategory].found) {
        const auto category = value(kCategory);
        if (!category) return needText = true;
        c.category = *category;
        if (!c.category.empty() && (c.category[0] == 'e' || c.category[0] == 'E')) c.category.erase(0, 1);
        readValidity = true;
    } else if (hits_[kEngineType].found) {
        const auto engine = value(kEngineType);
        if (!engine) return needText = true;
        c = {*engine, "Yes"};
    } else if (presence_ & (1u << kWagon)) {
        c = {passenger_ ? "Passenger" : "Freight Wagon", "Yes"};
    } else if (presence_ & (1u << kTender)) {
        c = {"Tender", "Yes"};
    } else if (presence_ & (1u << kTrack)) {
        c = {"Track Section", "No"};
    } else if (presence_ & ((1u << kRoad) | (1u << kLoft))) {
        c = {"Road Section", "No"};
    } else {
        readValidity = true;
    }
    if (readValidity && hits_[kValidInScenarios].found) {
        const auto valid = value(kValidInScenarios);
        if (!valid) return needText = true;
        if (tools::EqualsIgnoreCase(*valid, "eFalse")) c.inScene = "No";
        if (tools::EqualsIgnoreCase(*valid, "eTrue")) c.inScene = "Yes";
    }
    if (c.inScene.empty()) c.inScene = "No";

    summary.reskin = reskin_;
    summary.rollingStock = (presence_ & (1u << kRailVehicle)) != 0 || reskin_;
    if (!classPlain_) return needText = true;
    summary.classWord = stage_ == Stage::Done ? classWord_ : std::string();

    bool closed = true;
    auto name = ReadName(hits_[kLanguage], closed);
    if (!name) return needText = true;
    if (closed && name->empty()) {
        name = ReadName(hits_[kEnglish], closed);
        if (!name) return needText = true;
    }
    summary.name = !closed || name->empty() ? "No Name" : *name;
    return true;
}

std::optional<std::string> RecordWalk::ReadName(const Hit& hit, bool& closed) const {
    closed = true;
    if (!hit.found) return std::string();
    if (!hit.plain) return std::nullopt;
    std::string content = hit.text;
    tools::ReplaceApos(content);
    return content;
}

// A language word the walk can look for as an element name: letters only, and long
// enough not to meet the converter's own "<d:" tags.
bool WalkableLanguage(std::string_view language) {
    if (language.size() < 2) return false;
    for (const char ch : language) {
        if (!std::isalpha(static_cast<unsigned char>(ch))) return false;
    }
    return true;
}

}  // namespace

BlueprintSummary SummariseXml(std::string_view xml, std::string_view language) {
    BlueprintSummary summary;
    summary.classification = Classify(xml);
    summary.hasCategory = tools::InStr(xml, "<Category") > 0;
    summary.reskin = IsReskin(xml);
    summary.rollingStock = IsRollingStock(xml);
    summary.classWord = ClassWord(xml);
    tools::GetName(xml, summary.name, language);
    summary.readAsText = true;
    return summary;
}

bool SummariseBlueprint(std::string_view binary, std::string_view language, BlueprintSummary& summary,
                        std::string* failure) {
    summary = {};
    bool needText = !WalkableLanguage(language);
    if (!needText) {
        RecordWalk walk(binary, language);
        if (!walk.Run(summary, needText, failure)) return false;
    }
    if (!needText) return true;
    std::string xml;
    if (const auto status = serz::BinaryToXml(binary, xml)) {
        if (failure) *failure = status->message;
        return false;
    }
    summary = SummariseXml(xml, language);
    return true;
}

}  // namespace ferrolund::assets
