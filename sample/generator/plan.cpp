#include "generator/plan.h"

#include <cstdio>

#include "generator/md5.h"
#include "generator/textures.h"
#include "serz/codec.h"

namespace ferrolund::sample {

namespace {

constexpr const char* kPlanName = "plan.txt";
constexpr int kEntitiesPerTile = 4;
constexpr const char* kEntitySource = "common/scenery-entity.xml";
constexpr int kItemsPerSet = 1000;
const char* const kCategories[] = {"eFoliageLarge", "eHouses", "eIndustrial", "eFences", "eSignage"};

std::vector<std::string_view> SplitOn(std::string_view line, char separator) {
    std::vector<std::string_view> fields;
    for (std::size_t start = 0;;) {
        const std::size_t at = line.find(separator, start);
        fields.push_back(line.substr(start, at == std::string_view::npos ? std::string_view::npos : at - start));
        if (at == std::string_view::npos) break;
        start = at + 1;
    }
    return fields;
}

// The text between <Tag d:type="cDeltaString"> and its close on one line, unescaped.
bool StringValue(std::string_view line, std::string_view tag, std::string& value) {
    const std::string open = "<" + std::string(tag) + " d:type=\"cDeltaString\">";
    const std::size_t at = line.find(open);
    if (at == std::string_view::npos) return false;
    const std::size_t from = at + open.size();
    const std::size_t to = line.find('<', from);
    if (to == std::string_view::npos) return false;
    value.clear();
    for (std::size_t i = from; i < to; ++i) {
        if (line[i] != '&') {
            value += line[i];
            continue;
        }
        static const std::pair<std::string_view, char> kEntities[] = {
            {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
        bool known = false;
        for (const auto& [entity, c] : kEntities)
            if (line.substr(i, entity.size()) == entity) {
                value += c;
                i += entity.size() - 1;
                known = true;
                break;
            }
        if (!known) value += '&';
    }
    return true;
}

// The first language of a display name that has a text, in the order the route index
// tries them.
std::string FirstName(const std::vector<std::string_view>& lines) {
    for (const char* language : {"English", "French", "German", "Italian", "Spanish", "Dutch", "Polish", "Russian"}) {
        std::string name;
        for (const auto line : lines)
            if (StringValue(line, language, name)) break;
        if (!name.empty()) return name;
    }
    return {};
}

std::string SixDigits(int value) {
    char text[16];
    std::snprintf(text, sizeof text, "%c%06d", value < 0 ? '-' : '+', value < 0 ? -value : value);
    return text;
}

std::string ItemId(int index) {
    char text[48];
    std::snprintf(text, sizeof text, "Scenery\\Set_%03d\\Item_%05d", index / kItemsPerSet, index);
    return text;
}

}  // namespace

PlanRunner::PlanRunner(const SourceSet& sources, SampleWriter& writer, const SampleOptions& options,
                       SampleResult& result)
    : sources_(sources), writer_(writer), options_(options), result_(result) {}

Failure PlanRunner::Run() {
    const auto plan = sources_.find(kPlanName);
    if (plan == sources_.end()) return std::string("the sample's sources hold no ") + kPlanName;
    int lineNumber = 0;
    for (const std::string_view line : Lines(plan->second)) {
        ++lineNumber;
        if (line.empty() || line.front() == '#') continue;
        const auto fields = SplitOn(line, '\t');
        if (auto failure = Line(std::vector<std::string>(fields.begin(), fields.end())))
            return "sample source " + std::string(kPlanName) + ", line " + std::to_string(lineNumber) + ": " + *failure;
    }
    if (writer_.InArchive()) return std::string("the plan ends inside an archive");
    return std::nullopt;
}

Failure PlanRunner::Line(const std::vector<std::string>& fields) {
    const std::string& verb = fields[0];
    // Names given on the line: the fields that hold '=' after the fixed ones.
    std::size_t fixed = 1;
    while (fixed < fields.size() && fields[fixed].find('=') == std::string::npos) ++fixed;
    Vars vars = verb == "set" ? Vars() : globals_;
    for (std::size_t i = fixed; i < fields.size(); ++i) {
        const std::size_t eq = fields[i].find('=');
        if (eq == std::string::npos) return "the field " + fields[i] + " should be name=value";
        std::string value = fields[i].substr(eq + 1);
        if (value.starts_with("$")) {
            const auto known = globals_.find(value.substr(1));
            if (known == globals_.end()) return "unknown name " + value;
            value = known->second;
        }
        vars[fields[i].substr(0, eq)] = std::move(value);
    }
    auto needs = [&](std::size_t count) -> Failure {
        if (fixed == count) return std::nullopt;
        return verb + " takes " + std::to_string(count - 1) + " fields before its names";
    };
    int count = 0;
    if (verb == "set") {
        if (auto f = needs(1)) return f;
        for (auto& [name, value] : vars) globals_[name] = value;
        return std::nullopt;
    }
    if (verb == "text" || verb == "bin") {
        if (auto f = needs(3)) return f;
        return Produce(fields[1], fields[2], vars, verb == "bin");
    }
    if (verb == "texture") {
        if (auto f = needs(6)) return f;
        return Texture(fields, vars);
    }
    if (verb == "bytes") {
        if (auto f = needs(3)) return f;
        return Bytes(fields[1], fields[2], vars);
    }
    if (verb == "md5") {
        if (auto f = needs(2)) return f;
        if (fields[1] != lastTarget_) return "md5 must follow the line that writes " + fields[1];
        const auto digest = Md5(lastBytes_);
        return Put(fields[1] + ".MD5", std::string(digest.begin(), digest.end()));
    }
    if (verb == "archive") {
        if (auto f = needs(2)) return f;
        return writer_.BeginArchive(fields[1]);
    }
    if (verb == "end") {
        if (auto f = needs(1)) return f;
        return writer_.EndArchive();
    }
    if (verb == "stock") {
        if (auto f = needs(3)) return f;
        if (!ParseCount(fields[2], count)) return "the count " + fields[2] + " is no number";
        return MakeStock(fields[1], options_.stock >= 0 ? options_.stock : count);
    }
    if (verb == "scenario") {
        if (auto f = needs(3)) return f;
        if (!ParseCount(fields[2], count)) return "the size " + fields[2] + " is no number";
        return MakeScenario(fields[1], options_.scenarioMegabytes >= 0 ? options_.scenarioMegabytes : count, vars);
    }
    if (verb == "assets" || verb == "tiles") {
        if (auto f = needs(3)) return f;
        if (!ParseCount(fields[2], count)) return "the count " + fields[2] + " is no number";
        if (verb == "assets") return Assets(fields[1], options_.assets >= 0 ? options_.assets : count);
        return Tiles(fields[1], options_.tiles >= 0 ? options_.tiles : count, vars);
    }
    return "unknown line kind " + verb;
}

Failure PlanRunner::Put(const std::string& target, std::string bytes) {
    lastTarget_ = target;
    lastBytes_ = bytes;
    return writer_.Put(target, std::move(bytes));
}

Failure PlanRunner::Produce(const std::string& target, const std::string& source, const Vars& vars, bool compile,
                            std::size_t keepBytes) {
    Expander expander(sources_, target);
    Expansion expansion;
    if (auto failure = expander.Expand(source, vars, expansion)) return failure;
    Scan(target, expansion.text);
    if (!compile) return Put(target, std::move(expansion.text));
    std::string binary;
    if (auto error = serz::XmlToBinary(expansion.text, binary)) return expander.Locate(expansion, error->message);
    if (keepBytes < binary.size()) {
        binary.resize(keepBytes);  // a file cut off, as a failed copy leaves it
        return Put(target, std::move(binary));
    }
    std::string xml = options_.keepXml ? std::move(expansion.text) : std::string();
    if (auto failure = Put(target, std::move(binary))) return failure;
    if (options_.keepXml) {
        const WrittenFile& written = writer_.Files().back();
        result_.compiled.push_back({written.path, written.archive, std::move(xml)});
    }
    return std::nullopt;
}

Failure PlanRunner::Texture(const std::vector<std::string>& fields, const Vars& given) {
    const auto format = ParsePixelFormat(fields[2]);
    int width = 0, height = 0, mips = 0;
    if (!format) return "unknown texture format " + fields[2];
    if (!ParseCount(fields[3], width) || !ParseCount(fields[4], height) || !ParseCount(fields[5], mips) || mips < 1 ||
        mips > 8)
        return std::string("a texture needs a width, a height and 1 to 8 levels");
    const std::string& target = fields[1];
    Vars vars = given;
    const std::size_t slash = target.rfind('\\');
    vars["name"] = target.substr(slash + 1, target.rfind('.') - slash - 1);
    vars["format"] = FormatWord(*format);
    vars["width"] = std::to_string(width);
    vars["height"] = std::to_string(height);
    vars["levels"] = "textures/levels-" + std::to_string(mips) + ".xml";
    for (int level = 0; level < mips; ++level) {
        const int w = std::max(width >> level, 1), h = std::max(height >> level, 1);
        const std::string n = std::to_string(level);
        vars["w" + n] = std::to_string(w);
        vars["h" + n] = std::to_string(h);
        vars["blob" + n] = BlobText(LevelPixels(*format, w, h, target + "#" + n));
    }
    return Produce(target, "textures/texture.xml", vars, true);
}

Failure PlanRunner::Bytes(const std::string& target, const std::string& sizeText, const Vars& vars) {
    int size = 0;
    if (!ParseCount(sizeText, size)) return "the size " + sizeText + " is no number";
    const auto prefix = vars.find("prefix");
    std::string bytes = prefix == vars.end() ? std::string() : prefix->second;
    if (bytes.size() < static_cast<std::size_t>(size))
        bytes += MadeUpBytes(static_cast<std::size_t>(size) - bytes.size(), Hash64(target));
    bytes.resize(static_cast<std::size_t>(size));
    return Put(target, std::move(bytes));
}

Failure PlanRunner::Assets(const std::string& folder, int count) {
    const std::vector<std::string_view> parts = SplitOn(folder, '\\');
    if (parts.size() != 3 || parts[0] != "Assets")
        return "generated assets go to Assets\\PROVIDER\\PRODUCT, not " + folder;
    assetFolder_ = folder;
    assetProvider_ = parts[1];
    assetProduct_ = parts[2];
    assetCount_ = count;
    for (int i = 0; i < count; ++i) {
        Vars vars = globals_;
        vars["item"] = ItemId(i);
        vars["title"] = "Generated item " + std::to_string(i);
        vars["category"] = kCategories[i % std::size(kCategories)];
        vars["valid"] = i % 2 ? "eTrue" : "eFalse";
        vars["geometry"] = "Brackenridge\\CountryScenery\\Scenery\\Shed\\[00]shed";
        if (auto failure = Produce(folder + "\\" + ItemId(i) + ".bin", "blueprints/scenery.xml", vars, true))
            return failure;
    }
    return std::nullopt;
}

Failure PlanRunner::Tiles(const std::string& route, int count, const Vars& given) {
    if (count > 0 && assetCount_ == 0) return std::string("generated tiles need generated assets first");
    const int entities = options_.tileEntities >= 0 ? options_.tileEntities : kEntitiesPerTile;
    tileCount_ += count;
    int side = 1;
    while (side * side < count) ++side;
    for (int k = 0; k < count; ++k) {
        // The generated tiles lie east of the hand-made ones, on a square.
        const int x = 10 + k % side, z = k / side - side / 2;
        const std::string target = "Content\\Routes\\" + route + "\\Scenery\\" + SixDigits(x) + SixDigits(z) + ".bin";
        // The entities get ids of their own, apart from those of the tile around them.
        Expander entityIds(sources_, target + "#entities");
        std::string body;
        for (int j = 0; j < entities; ++j) {
            const int item = (k * entities + j) % assetCount_;
            Vars entity = globals_;
            entity["p"] = assetProvider_;
            entity["q"] = assetProduct_;
            entity["b"] = ItemId(item) + ".xml";
            entity["name"] = "Generated item " + std::to_string(item);
            entity["x"] = std::to_string(128 + 256 * (j % 2) + (j / 4) % 128) + ".5";
            entity["z"] = std::to_string(128 + 256 * ((j / 2) % 2) + (j / 4) % 128) + ".25";
            entity["y"] = entity["tx"] = entity["tz"] = "0";
            entity["entity"] = route + SixDigits(x) + SixDigits(z) + std::to_string(j);
            Expansion expansion;
            if (auto failure = entityIds.Expand(kEntitySource, entity, expansion)) return failure;
            // One line of the value a line of the tile: the first stands where {{entities}}
            // does, the others at the margin, so they carry the indent of the <Record> level.
            for (const std::string_view line : Lines(expansion.text)) {
                if (!body.empty()) body += "\n\t\t";
                body += line;
            }
        }
        Vars vars = given;
        vars["entities"] = std::move(body);
        if (auto failure = Produce(target, "tiles/generated-tile.xml", vars, true)) return failure;
    }
    return std::nullopt;
}

void PlanRunner::Scan(const std::string& target, const std::string& text) {
    const std::string usedBy = writer_.InArchive() ? target + " (in an archive)" : target;
    const std::vector<std::string_view> lines = Lines(text);
    Reference ref;
    for (std::size_t i = 0; i + 4 < lines.size(); ++i) {
        if (!StringValue(lines[i], "Provider", ref.provider) || ref.provider.empty() ||
            !StringValue(lines[i + 1], "Product", ref.product) ||
            !StringValue(lines[i + 4], "BlueprintID", ref.blueprintId) || ref.blueprintId.empty())
            continue;
        const std::string key = ref.provider + '\\' + ref.product + '\\' + ref.blueprintId;
        if (referenceIndex_.emplace(key, references_.size()).second) {
            ref.usedBy = usedBy;
            references_.push_back(ref);
        }
    }
    const std::string folder = target.substr(0, target.rfind('\\'));
    if (target.ends_with("\\ScenarioProperties.xml")) {
        Described& scenario = scenarios_[folder];
        for (const auto line : lines)
            if (StringValue(line, "ScenarioClass", scenario.kind)) break;
        scenario.name = FirstName(lines);
    } else if (target.ends_with("\\RouteProperties.xml") && target.starts_with("Content\\Routes\\")) {
        routeNames_[folder.substr(folder.rfind('\\') + 1)] = FirstName(lines);
    }
}

}  // namespace ferrolund::sample
