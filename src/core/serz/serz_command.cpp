#include "serz/serz_command.h"

#include <cctype>
#include <optional>
#include <string_view>

#include "serz/file_conversion.h"

namespace ferrolund::serz {

namespace {

constexpr int kFailed = 1;
constexpr int kUsage = 2;

struct Target {
    Direction direction;
    std::string path;
};

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
    if (text.size() < prefix.size()) return false;
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(text[i])) != prefix[i]) return false;
    }
    return true;
}

// "xml:<path>", "bin:<path>", with or without a leading slash.
std::optional<Target> ParseTarget(std::string_view word) {
    for (std::string_view form : {word, word.substr(word.empty() || word.front() != '/' ? word.size() : 1)}) {
        if (StartsWithNoCase(form, "xml:")) return Target{Direction::ToXml, std::string(form.substr(4))};
        if (StartsWithNoCase(form, "bin:")) return Target{Direction::ToBinary, std::string(form.substr(4))};
    }
    return std::nullopt;
}

// The source's name with a final "xml" and "bin" swapped, keeping its case.
std::optional<Target> SwappedTarget(const std::string& source) {
    if (source.size() < 3) return std::nullopt;
    std::string path = source;
    std::string_view ending(path.data() + path.size() - 3, 3);
    bool upper = std::isupper(static_cast<unsigned char>(ending[0])) != 0;
    if (StartsWithNoCase(ending, "bin")) {
        path.replace(path.size() - 3, 3, upper ? "XML" : "xml");
        return Target{Direction::ToXml, path};
    }
    if (StartsWithNoCase(ending, "xml")) {
        path.replace(path.size() - 3, 3, upper ? "BIN" : "bin");
        return Target{Direction::ToBinary, path};
    }
    return std::nullopt;
}

void Usage(std::ostream& err) {
    err << "usage: serz \"<source>\" [xml:\"<target>\" | bin:\"<target>\"]\n";
}

}  // namespace

int RunSerzCommand(const std::vector<std::string>& args, std::ostream& err) {
    if (args.empty() || args.size() > 2 || args[0].empty()) {
        Usage(err);
        return kUsage;
    }
    const std::string& source = args[0];
    std::optional<Target> target = args.size() == 2 ? ParseTarget(args[1]) : SwappedTarget(source);
    if (!target || target->path.empty()) {
        if (args.size() == 2) {
            err << "serz: '" << args[1] << "' is not a target; write xml:\"<target>\" or bin:\"<target>\"\n";
        } else {
            err << "serz: " << source << ": the name does not end in xml or bin; name the target with xml: or bin:\n";
        }
        return kUsage;
    }
    if (auto failure = ConvertFile(source, target->path, target->direction)) {
        err << "serz: " << failure->message << "\n";
        return kFailed;
    }
    return 0;
}

}  // namespace ferrolund::serz
