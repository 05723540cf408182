#include "generator/template_text.h"

#include <cstdio>

#include "generator/textures.h"
#include "serz/number_text.h"

namespace ferrolund::sample {

namespace {

constexpr int kMaxIncludeDepth = 12;

std::string At(const std::string& source, int line) {
    return "sample source " + source + ", line " + std::to_string(line) + ": ";
}

bool IsHex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Splits the inside of an include line: the file, then name=value pairs.
bool ParseInclude(std::string_view inner, std::string& file, std::vector<std::pair<std::string, std::string>>& args) {
    std::size_t i = 0;
    auto skipBlanks = [&] {
        while (i < inner.size() && inner[i] == ' ') ++i;
    };
    skipBlanks();
    while (i < inner.size() && inner[i] != ' ') file += inner[i++];
    for (skipBlanks(); i < inner.size(); skipBlanks()) {
        const std::size_t eq = inner.find('=', i);
        if (eq == std::string_view::npos) return false;
        std::string name(inner.substr(i, eq - i));
        i = eq + 1;
        std::string value;
        if (i < inner.size() && inner[i] == '"') {
            const std::size_t close = inner.find('"', i + 1);
            if (close == std::string_view::npos) return false;
            value = std::string(inner.substr(i + 1, close - i - 1));
            i = close + 1;
        } else {
            while (i < inner.size() && inner[i] != ' ') value += inner[i++];
        }
        args.emplace_back(std::move(name), std::move(value));
    }
    return !file.empty();
}

}  // namespace

std::string GuidText(std::uint64_t u0, std::uint64_t u1) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-", static_cast<unsigned>(u0 & 0xFFFFFFFFu),
                  static_cast<unsigned>((u0 >> 32) & 0xFFFFu), static_cast<unsigned>(u0 >> 48));
    std::string out = text;
    for (int b = 0; b < 8; ++b) {
        std::snprintf(text, sizeof text, "%02x", static_cast<unsigned>((u1 >> (8 * b)) & 0xFFu));
        out += text;
        if (b == 1) out += '-';
    }
    return out;
}

bool ParseGuid(std::string_view text, std::uint64_t& u0, std::uint64_t& u1) {
    if (text.size() != 36) return false;
    std::string digits;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        if (dash != (text[i] == '-')) return false;
        if (!dash && !IsHex(text[i])) return false;
        if (!dash) digits += text[i];
    }
    auto field = [&](std::size_t from, std::size_t count) {
        return std::stoull(digits.substr(from, count), nullptr, 16);
    };
    u0 = field(0, 8) | (field(8, 4) << 32) | (field(12, 4) << 48);
    u1 = 0;
    for (int b = 0; b < 8; ++b) u1 |= field(16 + 2 * static_cast<std::size_t>(b), 2) << (8 * b);
    return true;
}

std::uint64_t Hash64(std::string_view text, std::uint64_t basis) {
    std::uint64_t h = basis;
    for (const char c : text) {
        h ^= static_cast<unsigned char>(c);
        h *= 0x100000001b3ULL;
    }
    return h;
}

std::vector<std::string_view> Lines(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        std::string_view line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        lines.push_back(line);
        start = end + 1;
    }
    return lines;
}

std::string MadeUpBytes(std::size_t size, std::uint64_t seed) {
    std::string bytes(size, '\0');
    std::uint64_t state = seed;
    for (char& byte : bytes) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        byte = static_cast<char>(state >> 56);
    }
    return bytes;
}

Expander::Expander(const SourceSet& sources, std::string_view outputName)
    : sources_(sources), seed_(Hash64(outputName)) {}

Failure Expander::Expand(const std::string& sourceName, const Vars& vars, Expansion& out) {
    out.text.clear();
    out.lines.clear();
    return ExpandInto(sourceName, vars, "", 0, out);
}

std::string Expander::Locate(const Expansion& expansion, const std::string& message) const {
    int line = 0;
    if (std::sscanf(message.c_str(), "line %d:", &line) == 1 && line >= 1 &&
        static_cast<std::size_t>(line) <= expansion.lines.size()) {
        const SourceLine& where = expansion.lines[static_cast<std::size_t>(line) - 1];
        return At(*where.source, where.line) + message.substr(message.find(':') + 2);
    }
    const std::string& first = expansion.lines.empty() ? std::string() : *expansion.lines.front().source;
    return "sample source " + first + ": " + message;
}

Failure Expander::ExpandInto(const std::string& sourceName, const Vars& vars, const std::string& indent, int depth,
                             Expansion& out) {
    const auto found = sources_.find(sourceName);
    if (found == sources_.end()) return "sample source " + sourceName + " does not exist";
    const std::string& name = found->first;
    const std::string& text = found->second;
    std::string filled;
    int lineNumber = 0;
    for (const std::string_view line : Lines(text)) {
        ++lineNumber;
        const std::size_t lead = line.find_first_not_of('\t');
        const std::string_view body = lead == std::string_view::npos ? std::string_view() : line.substr(lead);
        if (body.starts_with("{{@") && body.ends_with("}}")) {
            std::string file;
            std::vector<std::pair<std::string, std::string>> args;
            if (!ParseInclude(body.substr(3, body.size() - 5), file, args))
                return At(name, lineNumber) + "an include line needs a file and name=value pairs";
            if (file.starts_with("$")) {
                const auto named = vars.find(file.substr(1));
                if (named == vars.end()) return At(name, lineNumber) + "unknown name " + file;
                file = named->second;
            }
            if (depth >= kMaxIncludeDepth) return At(name, lineNumber) + "includes nest too deeply";
            Vars inner = vars;
            for (auto& [key, value] : args) {
                if (value.starts_with("$")) {
                    const auto other = vars.find(value.substr(1));
                    if (other == vars.end()) return At(name, lineNumber) + "unknown name " + value;
                    value = other->second;
                }
                inner[key] = value;
            }
            if (auto failure = ExpandInto(file, inner, indent + std::string(line.substr(0, lead)), depth + 1, out))
                return At(name, lineNumber) + *failure;
            continue;
        }
        filled.clear();
        if (auto failure = Substitute(line, vars, filled)) return At(name, lineNumber) + *failure;
        // A name may hold several lines (a texture's pixels); each counts as this line.
        for (std::size_t from = 0;;) {
            const std::size_t newline = filled.find('\n', from);
            // Continuation lines stand at the margin, as the converter writes blob lines.
            if (from == 0) out.text += indent;
            out.text.append(filled, from, newline == std::string::npos ? std::string::npos : newline - from);
            out.text += "\r\n";
            out.lines.push_back({&name, lineNumber});
            if (newline == std::string::npos) break;
            from = newline + 1;
        }
    }
    return std::nullopt;
}

Failure Expander::Substitute(std::string_view line, const Vars& vars, std::string& out) {
    for (std::size_t i = 0; i < line.size();) {
        const std::size_t open = line.find("{{", i);
        if (open == std::string_view::npos) {
            out.append(line.substr(i));
            break;
        }
        const std::size_t close = line.find("}}", open + 2);
        if (close == std::string_view::npos) return std::string("a {{ without }}");
        out.append(line.substr(i, open - i));
        if (auto failure = Lookup(line.substr(open + 2, close - open - 2), vars, out)) return failure;
        i = close + 2;
    }
    return std::nullopt;
}

Failure Expander::Lookup(std::string_view name, const Vars& vars, std::string& out) {
    if (name == "id") {
        out += std::to_string(100000000u + static_cast<std::uint32_t>(seed_ % 800000000u) + 16u * nextId_++);
        return std::nullopt;
    }
    if (name == "key") {
        const std::uint64_t h = Hash64(std::to_string(nextKey_++), seed_);
        out += GuidText(h, Hash64("key", h));
        return std::nullopt;
    }
    const std::size_t dot = name.rfind('.');
    const std::string base(dot == std::string_view::npos ? name : name.substr(0, dot));
    const std::string_view suffix = dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
    const auto found = vars.find(dot == std::string_view::npos ? std::string(name) : base);
    if (found == vars.end()) {
        // A dotted name that is itself given (such as a file name) stands for itself.
        const auto whole = vars.find(std::string(name));
        if (whole == vars.end()) return "unknown name {{" + std::string(name) + "}}";
        out += whole->second;
        return std::nullopt;
    }
    const std::string& value = found->second;
    if (suffix.empty()) {
        out += value;
    } else if (suffix == "alt" || suffix == "alt64") {
        double number = 0;
        if (!serz::ParseDouble(value, number)) return "{{" + std::string(name) + "}}: " + value + " is no number";
        if (suffix == "alt") number = static_cast<double>(static_cast<float>(number));
        char text[serz::kNumberTextMax];
        out.append(text, serz::WriteAltEncoding(text, number));
    } else if (suffix == "blob") {
        std::uint64_t size = 0;
        if (!serz::ParseUnsigned(value, size) || size > (1u << 24))
            return "{{" + std::string(name) + "}}: " + value + " is no size";
        out += BlobText(MadeUpBytes(size, seed_));
    } else if (suffix == "dev" || suffix == "u0" || suffix == "u1") {
        std::uint64_t u0 = 0, u1 = 0;
        if (!ParseGuid(value, u0, u1)) {
            u0 = Hash64(value);
            u1 = Hash64(value, u0);
        }
        out += suffix == "dev" ? GuidText(u0, u1) : std::to_string(suffix == "u0" ? u0 : u1);
    } else {
        return "unknown name {{" + std::string(name) + "}}";
    }
    return std::nullopt;
}

}  // namespace ferrolund::sample
