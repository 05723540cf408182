#pragma once
// Blueprints for the transform tests: a coach with two child entries (a smoke emitter
// hung tilted, a driver), its geometry with levels of detail, and a game folder with
// a program folder beside it to run the transforms in.

#include <filesystem>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::assets::testing {

// One child entry with its 16 matrix values.
struct Child {
    std::string name;
    std::vector<std::string> matrix;
};
std::vector<std::string> Upright(const std::string& x, const std::string& y, const std::string& z);
std::vector<std::string> Tilted();

// A wagon blueprint, CR LF ended. No children gives "<Children/>".
std::string CoachXml(const std::string& name, const std::vector<Child>& children,
                     const std::string& geometry = "Prov\\Prod\\RailVehicles\\Coach\\[00]coach");
// A geometry whose LOD blocks hold these values.
std::string GeometryXml(const std::vector<std::vector<std::string>>& lods);
// A geometry whose one material names these textures (the "<e>" values as written).
std::string TexturedGeometryXml(const std::vector<std::string>& textures);

struct Game {
    ferrolund::testing::TempFolder folder;
    ferrolund::testing::ScriptedUi ui;
    app::AppContext ctx;
    Game();
    std::string gameRoot() const { return ctx.gameRoot(); }
    // Compiles the XML to the file below GameRoot\Assets (a relative system path).
    std::filesystem::path put(const std::string& relative, const std::string& xml);
    // Copies an existing binary there.
    std::filesystem::path putFile(const std::string& relative, const std::filesystem::path& from);
    std::filesystem::path onDisk(const std::string& relative) const;
    // The file's XML text, or empty.
    std::string xmlOf(const std::string& relative);
    std::string bytesOf(const std::string& relative) const;
    AssetRow row(const std::string& provider, const std::string& product, const std::string& path,
                 const std::string& name = "Old Coach") const;
    void okToWarning() { ui.answers.push_back(base::Answer::Ok); }
};

}  // namespace ferrolund::assets::testing
