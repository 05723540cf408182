#pragma once
// A program folder with the consist templates and a game folder for the saved-consist
// tests, and saved-consist XML in the converter's form.

#include <filesystem>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"

namespace ferrolund::consists::testing {

namespace fs = std::filesystem;

struct Vehicle {
    std::string provider, product, blueprint, flipped = "0", id = "300000001";
};
struct Consist {
    std::string name;
    std::vector<Vehicle> vehicles;
    std::string id = "200000001";
    std::string key = "0A1B2C3D-0000-4000-8000-000000000001";
};

// Saved consists as the converter writes them (CR LF, tab indents).
inline std::string TemplatesXml(const std::vector<Consist>& consists) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\" d:id=\"100000001\">\r\n\t<Record>\r\n";
    for (const Consist& c : consists) {
        xml += "\t\t<cConsistTemplate d:id=\"" + c.id +
               "\">\r\n\t\t\t<Name>\r\n\t\t\t\t<Localisation-cUserLocalisedString>\r\n"
               "\t\t\t\t\t<English d:type=\"cDeltaString\">" + c.name +
               "</English>\r\n\t\t\t\t\t<French d:type=\"cDeltaString\"></French>\r\n"
               "\t\t\t\t\t<Other/>\r\n\t\t\t\t\t<Key d:type=\"cDeltaString\">" + c.key +
               "</Key>\r\n\t\t\t\t</Localisation-cUserLocalisedString>\r\n\t\t\t</Name>\r\n\t\t\t<ConsistEntry>\r\n";
        for (const Vehicle& v : c.vehicles) {
            xml += "\t\t\t\t<cConsistTemplateEntry d:id=\"" + v.id +
                   "\">\r\n\t\t\t\t\t<BlueprintID>\r\n\t\t\t\t\t\t<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n"
                   "\t\t\t\t\t\t\t<BlueprintSetID>\r\n\t\t\t\t\t\t\t\t<iBlueprintLibrary-cBlueprintSetID>\r\n"
                   "\t\t\t\t\t\t\t\t\t<Provider d:type=\"cDeltaString\">" + v.provider +
                   "</Provider>\r\n\t\t\t\t\t\t\t\t\t<Product d:type=\"cDeltaString\">" + v.product +
                   "</Product>\r\n\t\t\t\t\t\t\t\t</iBlueprintLibrary-cBlueprintSetID>\r\n"
                   "\t\t\t\t\t\t\t</BlueprintSetID>\r\n\t\t\t\t\t\t\t<BlueprintID d:type=\"cDeltaString\">" +
                   v.blueprint +
                   "</BlueprintID>\r\n\t\t\t\t\t\t</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n"
                   "\t\t\t\t\t</BlueprintID>\r\n\t\t\t\t\t<Flipped d:type=\"bool\">" + v.flipped +
                   "</Flipped>\r\n\t\t\t\t</cConsistTemplateEntry>\r\n";
        }
        xml += "\t\t\t</ConsistEntry>\r\n\t\t</cConsistTemplate>\r\n";
    }
    return xml + "\t</Record>\r\n</cRecordSet>\r\n";
}

struct ConsistGame {
    ::ferrolund::testing::TempFolder root;
    ::ferrolund::testing::ScriptedUi ui;
    app::AppContext ctx;

    ConsistGame() {
        ctx.appRoot = root.system() + "/app";
        ctx.prefs.gameRoot = root.system() + "/game";
        ctx.ui = &ui;
        for (const char* name : {"ConsistHeader.txt", "ConsistName.txt", "ConsistTemplateEntry.txt"}) {
            fs::create_directories(root.path() / "app/Templates");
            fs::copy_file(fs::path(FERROLUND_SOURCE_DIR) / "data/Templates" / name, root.path() / "app/Templates" / name);
        }
        fs::create_directories(root.path() / "game/Content");
    }
    fs::path file() const { return root.path() / "game/Content/ConsistTemplates.bin"; }
    std::string bytes() const { return root.read("game/Content/ConsistTemplates.bin"); }
    // The XML made binary as the saved consists.
    bool saved(const std::string& xml) {
        const fs::path source = root.write("source.xml", xml);
        return !tools::SerzConvert(ctx, source.string(), file().string(), tools::SerzDirection::ToBinary);
    }
    // A blueprint file under Assets (a system path below it).
    void install(const std::string& relative) { root.write("game/Assets/" + relative, "SERZ"); }
};

}  // namespace ferrolund::consists::testing
