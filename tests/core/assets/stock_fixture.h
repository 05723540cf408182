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

// One child entry with its 16 matrix values, Kuju\RailSimulator's `blueprint`
// ("Particles\<name>.xml" when empty).
struct Child {
    std::string name;
    std::vector<std::string> matrix;
    std::string blueprint;
    Child(std::string childName, std::vector<std::string> values, std::string blueprintId = {})
        : name(std::move(childName)), matrix(std::move(values)), blueprint(std::move(blueprintId)) {}
};
// The child's block, at the indentation of a child list.
std::string ChildXml(const Child& child);
std::vector<std::string> Upright(const std::string& x, const std::string& y, const std::string& z);
std::vector<std::string> Tilted();

// A wagon blueprint, CR LF ended. No children gives "<Children/>".
std::string CoachXml(const std::string& name, const std::vector<Child>& children,
                     const std::string& geometry = "Prov\\Prod\\RailVehicles\\Coach\\[00]coach");
// A rail vehicle with what its sounds and scripts hang on: the bogie's sound, the
// remappers and controls of an engine, its simulation and script, its child entries.
struct Control {
    std::string name;
    std::string applyToConsist;  // empty: the control has no such element
};
struct Vehicle {
    bool engine = true;  // cEngineBlueprint; false: cWagonBlueprint
    std::string name = "Class 37";
    std::string bogieAudio = "Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\BG_Modern";
    std::vector<Child> children;         // none gives "<Children/>"
    std::vector<Control> controls;       // engines only
    std::string simulation;              // engines: Kuju\RailSimulator's simulation blueprint
    std::string script;                  // the ScriptComponent's Name; empty: no component
};
std::string VehicleXml(const Vehicle& vehicle);

// The text of one of the program's shipped templates (data/Templates).
std::string ShippedTemplate(const std::string& name);
// The value of the first `tag` element at or after the first `from` of the XML, or empty.
std::string TagValue(const std::string& xml, const std::string& tag, const std::string& from = "<");
// The names in the file's folder, sorted.
std::vector<std::filesystem::path> Siblings(const std::filesystem::path& file);

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
    // Puts the program's shipped templates in its Templates folder.
    void useTemplates();
    // Copies the program's own templates of these names into AppRoot\Templates.
    void useTemplates(const std::vector<std::string>& names);
};

}  // namespace ferrolund::assets::testing
