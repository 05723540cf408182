#include "stock_fixture.h"

#include <gtest/gtest.h>

#include "serz/codec.h"
#include <algorithm>

#include "tools/files.h"
#include "tools/tags.h"

namespace ferrolund::assets::testing {

namespace fs = std::filesystem;

namespace {

std::string Float(const std::string& tabs, const std::string& tag, const std::string& value) {
    return tabs + "<" + tag + " d:type=\"sFloat32\" d:precision=\"string\">" + value + "</" + tag + ">\r\n";
}

std::string Text(const std::string& tabs, const std::string& tag, const std::string& value) {
    return tabs + "<" + tag + " d:type=\"cDeltaString\">" + value + "</" + tag + ">\r\n";
}

}  // namespace

std::string ChildXml(const Child& child) {
    const std::string t(6, '\t');
    std::string xml = t + "<cEntityContainerBlueprint-sChild d:id=\"91110001\">\r\n";
    xml += Text(t + "\t", "ChildName", child.name);
    xml += t + "\t<BlueprintID>\r\n" + t + "\t\t<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n";
    xml += t + "\t\t\t<BlueprintSetID>\r\n" + t + "\t\t\t\t<iBlueprintLibrary-cBlueprintSetID>\r\n";
    xml += Text(t + "\t\t\t\t\t", "Provider", "Kuju") + Text(t + "\t\t\t\t\t", "Product", "RailSimulator");
    xml += t + "\t\t\t\t</iBlueprintLibrary-cBlueprintSetID>\r\n" + t + "\t\t\t</BlueprintSetID>\r\n";
    xml += Text(t + "\t\t\t", "BlueprintID", child.blueprint.empty() ? "Particles\\" + child.name + ".xml" : child.blueprint);
    xml += t + "\t\t</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n" + t + "\t</BlueprintID>\r\n";
    xml += t + "\t<Matrix>\r\n" + t + "\t\t<cHcRMatrix4x4>\r\n" + t + "\t\t\t<Element>\r\n";
    for (const std::string& v : child.matrix) xml += Float(t + "\t\t\t\t", "e", v);
    xml += t + "\t\t\t</Element>\r\n" + t + "\t\t</cHcRMatrix4x4>\r\n" + t + "\t</Matrix>\r\n";
    return xml + t + "</cEntityContainerBlueprint-sChild>\r\n";
}

std::vector<std::string> Upright(const std::string& x, const std::string& y, const std::string& z) {
    return {"1", "0", "0", "0", "0", "1", "0", "0", "0", "0", "1", "0", x, y, z, "1"};
}

std::vector<std::string> Tilted() {
    return {"0.866025", "0.5", "0", "0", "-0.5", "0.866025", "0", "0", "0", "0", "1", "0", "-1.25", "4.5", "7.75", "1"};
}

std::string CoachXml(const std::string& name, const std::vector<Child>& children, const std::string& geometry) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
    xml += "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n";
    xml += "\t<Blueprint>\r\n\t\t<cWagonBlueprint>\r\n";
    xml += Text("\t\t\t", "Name", name);
    xml += "\t\t\t<BrowseInformation>\r\n\t\t\t\t<iBrowseableBlueprint-cBrowseInformation>\r\n";
    for (const char* part : {"DisplayName", "Description"}) {
        xml += std::string("\t\t\t\t\t<") + part + ">\r\n\t\t\t\t\t\t<Localisation-cUserLocalisedString>\r\n";
        const bool display = std::string(part) == "DisplayName";
        for (const char* lang : {"English", "French", "Italian", "German", "Spanish", "Dutch", "Polish", "Russian"})
            xml += Text("\t\t\t\t\t\t\t", lang, display && std::string(lang) == "English" ? name : "");
        xml += "\t\t\t\t\t\t\t<Other/>\r\n";
        xml += Text("\t\t\t\t\t\t\t", "Key", "");
        xml += std::string("\t\t\t\t\t\t</Localisation-cUserLocalisedString>\r\n\t\t\t\t\t</") + part + ">\r\n";
    }
    xml += Text("\t\t\t\t\t", "Category", "ePassengerWagon");
    xml += "\t\t\t\t</iBrowseableBlueprint-cBrowseInformation>\r\n\t\t\t</BrowseInformation>\r\n";
    xml += "\t\t\t<RailVehicleComponent>\r\n\t\t\t\t<cWagonComponentBlueprint>\r\n";
    xml += Float("\t\t\t\t\t", "Mass", "32.5");
    xml += "\t\t\t\t</cWagonComponentBlueprint>\r\n\t\t\t</RailVehicleComponent>\r\n";
    xml += "\t\t\t<RenderComponent>\r\n\t\t\t\t<cAnimObjectRenderBlueprint>\r\n";
    xml += Text("\t\t\t\t\t", "GeometryID", geometry);
    xml += "\t\t\t\t</cAnimObjectRenderBlueprint>\r\n\t\t\t</RenderComponent>\r\n";
    xml += "\t\t\t<ContainerComponent>\r\n\t\t\t\t<cEntityContainerBlueprint>\r\n";
    if (children.empty()) {
        xml += "\t\t\t\t\t<Children/>\r\n";
    } else {
        xml += "\t\t\t\t\t<Children>\r\n";
        for (const Child& child : children) xml += ChildXml(child);
        xml += "\t\t\t\t\t</Children>\r\n";
    }
    xml += "\t\t\t\t</cEntityContainerBlueprint>\r\n\t\t\t</ContainerComponent>\r\n";
    return xml + "\t\t</cWagonBlueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
}

std::string VehicleXml(const Vehicle& v) {
    const std::string kind = v.engine ? "Engine" : "Wagon";
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
    xml += "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n";
    xml += "\t<Blueprint>\r\n\t\t<c" + kind + "Blueprint>\r\n";
    xml += Text("\t\t\t", "Name", v.name);
    xml += "\t\t\t<BrowseInformation>\r\n\t\t\t\t<iBrowseableBlueprint-cBrowseInformation>\r\n";
    xml += "\t\t\t\t\t<DisplayName>\r\n\t\t\t\t\t\t<Localisation-cUserLocalisedString>\r\n";
    xml += Text("\t\t\t\t\t\t\t", "English", v.name) + Text("\t\t\t\t\t\t\t", "French", "");
    xml += "\t\t\t\t\t\t</Localisation-cUserLocalisedString>\r\n\t\t\t\t\t</DisplayName>\r\n";
    xml += "\t\t\t\t</iBrowseableBlueprint-cBrowseInformation>\r\n\t\t\t</BrowseInformation>\r\n";
    xml += "\t\t\t<RailVehicleComponent>\r\n\t\t\t\t<c" + kind + "ComponentBlueprint>\r\n";
    xml += Float("\t\t\t\t\t", "Mass", v.engine ? "105" : "21.5");
    if (v.engine) {
        xml += Text("\t\t\t\t\t", "StopgoRemapper", "Default_Stopgo");
        xml += Text("\t\t\t\t\t", "IntermediateRemapper", "Default_Intermediate");
        xml += Text("\t\t\t\t\t", "ExpertRemapper", "Default_Expert");
    }
    xml += Text("\t\t\t\t\t", "BogieAudioControlName", v.bogieAudio);
    xml += "\t\t\t\t</c" + kind + "ComponentBlueprint>\r\n\t\t\t</RailVehicleComponent>\r\n";
    if (v.engine) {
        xml += "\t\t\t<EngineSimulationContainer>\r\n\t\t\t\t<cEngineSimContainerBlueprint>\r\n";
        xml += "\t\t\t\t\t<EngineSimFile>\r\n\t\t\t\t\t\t<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n";
        xml += "\t\t\t\t\t\t\t<BlueprintSetID>\r\n\t\t\t\t\t\t\t\t<iBlueprintLibrary-cBlueprintSetID>\r\n";
        xml += Text("\t\t\t\t\t\t\t\t\t", "Provider", "Kuju") + Text("\t\t\t\t\t\t\t\t\t", "Product", "RailSimulator");
        xml += "\t\t\t\t\t\t\t\t</iBlueprintLibrary-cBlueprintSetID>\r\n\t\t\t\t\t\t\t</BlueprintSetID>\r\n";
        xml += Text("\t\t\t\t\t\t\t", "BlueprintID", v.simulation);
        xml += "\t\t\t\t\t\t</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n\t\t\t\t\t</EngineSimFile>\r\n";
        xml += "\t\t\t\t</cEngineSimContainerBlueprint>\r\n\t\t\t</EngineSimulationContainer>\r\n";
        xml += "\t\t\t<ControlContainerComponent>\r\n\t\t\t\t<cControlContainerBlueprint>\r\n";
        xml += "\t\t\t\t\t<ControlValues>\r\n";
        for (const Control& c : v.controls) {
            xml += "\t\t\t\t\t\t<cControlContainerBlueprint-cControlValue>\r\n";
            xml += Text("\t\t\t\t\t\t\t", "ControlName", c.name);
            if (!c.applyToConsist.empty()) xml += Text("\t\t\t\t\t\t\t", "ApplyToConsist", c.applyToConsist);
            xml += Float("\t\t\t\t\t\t\t", "DefaultValue", "0") + Float("\t\t\t\t\t\t\t", "MinimumValue", "0");
            xml += Float("\t\t\t\t\t\t\t", "MaximumValue", "1");
            xml += "\t\t\t\t\t\t</cControlContainerBlueprint-cControlValue>\r\n";
        }
        xml += "\t\t\t\t\t</ControlValues>\r\n";
        xml += "\t\t\t\t</cControlContainerBlueprint>\r\n\t\t\t</ControlContainerComponent>\r\n";
    }
    xml += "\t\t\t<ContainerComponent>\r\n\t\t\t\t<cEntityContainerBlueprint>\r\n";
    if (v.children.empty()) {
        xml += "\t\t\t\t\t<Children/>\r\n";
    } else {
        xml += "\t\t\t\t\t<Children>\r\n";
        for (const Child& child : v.children) xml += ChildXml(child);
        xml += "\t\t\t\t\t</Children>\r\n";
    }
    xml += "\t\t\t\t</cEntityContainerBlueprint>\r\n\t\t\t</ContainerComponent>\r\n";
    if (!v.script.empty()) {
        xml += "\t\t\t<ScriptComponent>\r\n\t\t\t\t<cScriptComponentBlueprint>\r\n";
        xml += Text("\t\t\t\t\t", "Name", v.script);
        xml += "\t\t\t\t</cScriptComponentBlueprint>\r\n\t\t\t</ScriptComponent>\r\n";
    }
    return xml + "\t\t</c" + kind + "Blueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
}

std::string ShippedTemplate(const std::string& name) {
    return tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/" + name);
}

std::string GeometryXml(const std::vector<std::vector<std::string>>& lods) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
    xml += "<cHcRGeometry xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"410000001\">\r\n";
    xml += Text("\t", "Name", "coach");
    xml += "\t<Hierarchy>\r\n";
    for (const auto& lod : lods) {
        xml += "\t\t<LOD>\r\n";
        for (const std::string& v : lod) xml += Float("\t\t\t", "e", v);
        xml += "\t\t</LOD>\r\n";
    }
    return xml + "\t</Hierarchy>\r\n</cHcRGeometry>\r\n";
}

std::string TexturedGeometryXml(const std::vector<std::string>& textures) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
    xml += "<cHcRGeometry xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"410000002\">\r\n";
    xml += Text("\t", "Name", "model");
    xml += "\t<Materials>\r\n\t\t<cHcRMaterial d:id=\"410000003\">\r\n\t\t\t<TextureByName>\r\n";
    for (const std::string& t : textures) xml += Text("\t\t\t\t", "e", t);
    xml += "\t\t\t</TextureByName>\r\n\t\t</cHcRMaterial>\r\n\t</Materials>\r\n";
    xml += "\t<Owner d:type=\"cDeltaString\">model</Owner>\r\n";
    return xml + "</cHcRGeometry>\r\n";
}

Game::Game() {
    ctx.ui = &ui;
    ctx.appRoot = folder.system() + "\\app";
    ctx.prefs.gameRoot = folder.system() + "\\game";
    fs::create_directories(folder.path() / "app" / "TempFiles");
    fs::create_directories(folder.path() / "game" / "Assets");
    ctx.lang.parse(tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Language/Lang_English.txt"));
}

void Game::useTemplates() {
    fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", folder.path() / "app" / "Templates",
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

fs::path Game::onDisk(const std::string& relative) const {
    std::string path = relative;
    for (char& c : path)
        if (c == '\\') c = '/';
    return folder.path() / "game" / "Assets" / path;
}

fs::path Game::put(const std::string& relative, const std::string& xml) {
    std::string binary;
    const auto status = serz::XmlToBinary(xml, binary);
    EXPECT_FALSE(status) << "fixture XML does not compile: " << relative;
    const fs::path target = onDisk(relative);
    fs::create_directories(target.parent_path());
    return folder.write(fs::relative(target, folder.path()).string(), binary);
}

fs::path Game::putFile(const std::string& relative, const fs::path& from) {
    const fs::path target = onDisk(relative);
    fs::create_directories(target.parent_path());
    fs::copy_file(from, target, fs::copy_options::overwrite_existing);
    return target;
}

std::string Game::bytesOf(const std::string& relative) const {
    return tools::ReadTextFile(onDisk(relative).string());
}

std::string Game::xmlOf(const std::string& relative) {
    std::string xml;
    if (serz::BinaryToXml(bytesOf(relative), xml)) return {};
    return xml;
}

AssetRow Game::row(const std::string& provider, const std::string& product, const std::string& path,
                   const std::string& name) const {
    AssetRow r;
    r.provider = provider;
    r.product = product;
    r.path = path;
    r.name = name;
    return r;
}

std::string TagValue(const std::string& xml, const std::string& tag, const std::string& from) {
    std::string value;
    long pos = tools::InStr(xml, from);
    if (pos > 0) tools::GetDetail(xml, pos, tag, value, tools::kBlueprintTagOptions);
    return value;
}

std::vector<fs::path> Siblings(const fs::path& file) {
    std::vector<fs::path> names;
    for (const auto& entry : fs::directory_iterator(file.parent_path())) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

void Game::useTemplates(const std::vector<std::string>& names) {
    const fs::path target = folder.path() / "app" / "Templates";
    fs::create_directories(target);
    for (const std::string& name : names)
        fs::copy_file(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates" / name, target / name,
                      fs::copy_options::overwrite_existing);
}

}  // namespace ferrolund::assets::testing
