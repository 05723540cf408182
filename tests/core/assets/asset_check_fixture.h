#pragma once
// A small installation for the asset check tests: blueprints written with the converter,
// plain files, the English language table.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "serz/codec.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/files.h"

namespace ferrolund::assets::checks {

namespace fs = std::filesystem;

inline std::string Text(const char* name, const std::string& value) {
    return std::string("<") + name + " d:type=\"cDeltaString\">" + value + "</" + name + ">\r\n";
}
// A blueprint reference as the converter writes it.
inline std::string Id(const std::string& provider, const std::string& product, const std::string& id) {
    return "<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n<BlueprintSetID>\r\n<iBlueprintLibrary-cBlueprintSetID>\r\n" +
           Text("Provider", provider) + Text("Product", product) +
           "</iBlueprintLibrary-cBlueprintSetID>\r\n</BlueprintSetID>\r\n" + Text("BlueprintID", id) +
           "</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n";
}
inline std::string Triple(const char* tag, const std::string& provider, const std::string& product,
                          const std::string& id) {
    return std::string("<") + tag + ">\r\n" + Id(provider, product, id) + "</" + tag + ">\r\n";
}

inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
        start = end + 1;
    }
    return lines;
}

struct Installation {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Installation() {
        ctx.appRoot = root.system() + "/app";
        fs::create_directories(root.path() / "app/TempFiles");
        ctx.prefs.gameRoot = root.system() + "/game";
        ctx.ui = &ui;
        ctx.lang.parse(tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Language/Lang_English.txt"));
    }
    void binary(const std::string& relative, const std::string& body) {
        std::string bin;
        const std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                                "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n" +
                                body + "</cBlueprintLoader>\r\n";
        ASSERT_FALSE(serz::XmlToBinary(xml, bin)) << relative;
        root.write("game/Assets/" + relative, bin);
    }
    void file(const std::string& relative) { root.write("game/Assets/" + relative, "x"); }
    std::string asset(const std::string& relative) const { return ctx.gameRoot() + "\\Assets\\" + relative; }
};

inline AssetRow Row(std::string provider, std::string product, std::string path, std::string name = {}) {
    AssetRow row;
    row.provider = std::move(provider);
    row.product = std::move(product);
    row.path = std::move(path);
    row.name = std::move(name);
    return row;
}

// Every file below the folder with its size and time, to show that a command changed nothing.
inline std::map<std::string, std::pair<std::uintmax_t, fs::file_time_type>> Snapshot(const fs::path& folder) {
    std::map<std::string, std::pair<std::uintmax_t, fs::file_time_type>> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        files[entry.path().string()] = {entry.is_regular_file() ? entry.file_size() : 0, entry.last_write_time()};
    return files;
}

}  // namespace ferrolund::assets::checks
