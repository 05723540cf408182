#include "app/game_discovery.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>

#include "tools/codepage.h"
#include "tools/host_path.h"

namespace ferrolund::app {

namespace fs = std::filesystem;

namespace {

// The quoted strings of a VDF text, with its escapes undone.
std::vector<std::string> QuotedTokens(const std::string& text) {
    std::vector<std::string> tokens;
    std::size_t i = 0;
    while ((i = text.find('"', i)) != std::string::npos) {
        std::string token;
        ++i;
        while (i < text.size() && text[i] != '"') {
            if (text[i] == '\\' && i + 1 < text.size()) ++i;
            token += text[i++];
        }
        tokens.push_back(token);
        ++i;
    }
    return tokens;
}

const char* const kSteamRoots[] = {
    ".steam/steam",
    ".steam/root",
    ".local/share/Steam",
    ".var/app/com.valvesoftware.Steam/.local/share/Steam",
    "snap/steam/common/.local/share/Steam",
};

}  // namespace

std::vector<std::string> ParseSteamLibraryPaths(const std::string& vdfText) {
    std::vector<std::string> paths;
    const auto tokens = QuotedTokens(vdfText);
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        if (tools::EqualsIgnoreCase(tokens[i], "path")) paths.push_back(tokens[i + 1]);
    }
    return paths;
}

std::string DiscoverGameRoot(const fs::path& home) {
    std::error_code ec;
    for (const char* root : kSteamRoots) {
        const fs::path steam = home / root;
        if (!fs::is_directory(steam, ec)) continue;
        std::vector<fs::path> libraries{steam};
        std::ifstream vdf(steam / "steamapps" / "libraryfolders.vdf", std::ios::binary);
        if (vdf.is_open()) {
            const std::string text((std::istreambuf_iterator<char>(vdf)), std::istreambuf_iterator<char>());
            for (const auto& p : ParseSteamLibraryPaths(text)) libraries.emplace_back(p);
        }
        for (const auto& library : libraries) {
            const fs::path game = tools::HostPath(tools::SystemPath(library / "steamapps" / "common" / "RailWorks"));
            if (fs::is_directory(game, ec)) return tools::SystemPath(fs::weakly_canonical(game, ec));
        }
    }
    return {};
}

std::string DiscoverGameRoot() {
    if (const char* named = std::getenv("FERROLUND_GAME_ROOT"); named && *named) return named;
    const char* home = std::getenv("HOME");
    return home ? DiscoverGameRoot(fs::path(home)) : std::string();
}

}  // namespace ferrolund::app
