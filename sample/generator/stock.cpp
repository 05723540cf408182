// The generated asset tree: under Assets\PROVIDER, in products with accented names as
// well as plain ones, one asset of each kind the asset list tells apart in turn
// (locomotives of three engine types, freight wagons, coaches, tenders, scenery, lofts,
// track, PreLoad items, reskins) and now and then a file cut off or left empty. Every
// asset borrows the parts (bogies, sounds, geometry) of the hand-made stock, so that it
// names no file the sample lacks. What the list should show for each is kept for the
// manifest.
#include <cstdio>

#include "generator/plan.h"

namespace ferrolund::sample {

namespace {

constexpr int kKinds = 12;
constexpr int kItemsPerSet = 500;
const char* const kEngineTypes[] = {"eDiesel", "eElectric", "eSteam"};
const char* const kSceneryCategories[] = {"eHouses", "eIndustrial", "eFoliageLarge"};

std::string Number(int index) {
    char text[16];
    std::snprintf(text, sizeof text, "%05d", index);
    return text;
}

std::string SetFolder(int index) {
    char text[16];
    std::snprintf(text, sizeof text, "Set_%03d", index / kItemsPerSet);
    return text;
}

}  // namespace

Failure PlanRunner::MakeStock(const std::string& folder, int count) {
    const std::size_t slash = folder.find('\\');
    if (folder.compare(0, slash, "Assets") != 0 || slash == std::string::npos ||
        folder.find('\\', slash + 1) != std::string::npos)
        return "generated stock goes to Assets\\PROVIDER, not " + folder;
    for (int i = 0; i < count; ++i) {
        const std::string n = Number(i);
        const std::string set = SetFolder(i);
        Vars vars = globals_;
        StockItem item;
        std::string source;
        std::size_t keepBytes = static_cast<std::size_t>(-1);
        const int kind = i % kKinds;
        const auto engine = [&](const std::string& type) {
            vars["p"] = "Ostvale";
            vars["q"] = "NorthernLines";
            vars["title"] = vars["en"] = "Kestrel loco " + n;
            vars["enginetype"] = type;
            vars["sim"] = "RailVehicles\\Diesel\\Class58\\Simulation\\Class58Sim.xml";
            vars["numbers"] = "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Numbers";
            vars["geometry"] = "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\[00]class58";
            vars["folder"] = "RailVehicles\\Diesel\\Class58";
            vars["sound"] = "Audio\\RailVehicles\\Class58\\EngineSound.xml";
            vars["script"] = "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\class58";
            vars["mass"] = "126";
            vars["length"] = "19.125";
            vars["capacity"] = "4500";
            vars["cargotype"] = "eDiesel";
            vars["level"] = "4500";
            source = "blueprints/engine.xml";
        };
        const auto wagon = [&](const std::string& kindWord, const std::string& type, const std::string& title) {
            vars["p"] = "Ostvale";
            vars["q"] = "NorthernLines";
            vars["kind"] = kindWord;
            vars["title"] = title;
            vars["wagontype"] = type;
            vars["numbers"] = "Ostvale\\NorthernLines\\RailVehicles\\Freight\\CoalHopper\\Numbers";
            vars["mass"] = "25.5";
            vars["length"] = "12.5";
            vars["geometry"] = "Ostvale\\NorthernLines\\RailVehicles\\Freight\\CoalHopper\\[00]hopper";
            source = "blueprints/wagon.xml";
        };
        const auto scenery = [&](const std::string& title) {
            vars["p"] = "Brackenridge";
            vars["q"] = "CountryScenery";
            vars["title"] = title;
            vars["category"] = kSceneryCategories[(i / kKinds) % std::size(kSceneryCategories)];
            vars["valid"] = (i / kKinds) % 2 ? "eFalse" : "eTrue";
            vars["geometry"] = "Brackenridge\\CountryScenery\\Scenery\\Shed\\[00]shed";
            source = "blueprints/scenery.xml";
            item.category = vars["category"].substr(1);
            item.inScene = vars["valid"] == "eTrue" ? "Yes" : "No";
            item.classWord = "SceneryBlueprint";
        };
        const auto section = [&](const std::string& kindWord, const std::string& title) {
            vars["p"] = "Brackenridge";
            vars["q"] = "CountryScenery";
            vars["kind"] = kindWord;
            vars["title"] = title;
            vars["xsec"] = "Brackenridge\\CountryScenery\\Track\\[00]bullhead";
            vars["ends"] = "Track\\Buffers.xml";
            vars["sound"] = "Audio\\Track\\TrackSound.xml";
            source = "blueprints/section.xml";
            item.inScene = "No";
            item.classWord = kindWord + "SectionBlueprint";
        };
        switch (kind) {
            case 0:
            case 5:
            case 9: {
                const std::string type = kEngineTypes[(i / kKinds + kind) % std::size(kEngineTypes)];
                engine(type);
                item = {folder + "\\Lokomotiven\\RailVehicles\\" + set + "\\L" + n + "\\Engine\\L" + n + ".bin",
                        "engine", type, "Yes", "EngineBlueprint", vars["en"]};
                break;
            }
            case 1:
                wagon("Wagon", "eFreight", "Kestrel wagon " + n);
                item = {folder + "\\G\xc3\xbcterwagen\\RailVehicles\\Freight\\" + set + "\\W" + n + ".bin", "wagon",
                        "Freight Wagon", "Yes", "WagonBlueprint", vars["title"]};
                break;
            case 2:
                wagon("Wagon", "ePassenger", "Kestrel coach " + n);
                item = {folder + "\\Reisezugwagen\\RailVehicles\\Passenger\\" + set + "\\C" + n + ".bin", "coach",
                        "Passenger", "Yes", "WagonBlueprint", vars["title"]};
                break;
            case 3:
                wagon("Tender", "eTender", "Kestrel tender " + n);
                item = {folder + "\\Lokomotiven\\RailVehicles\\" + set + "\\L" + n + "\\Tender\\T" + n + ".bin",
                        "tender", "Tender", "Yes", "TenderBlueprint", vars["title"]};
                break;
            case 4:
                scenery("Kestrel house " + n);
                item.path = folder + "\\Landschaft\\Scenery\\" + set + "\\H\xc3\xa4us" + n + ".bin";
                item.kind = "scenery";
                item.name = vars["title"];
                break;
            case 6:
                section("Loft", "Kestrel wall " + n);
                item.path = folder + "\\Landschaft\\Lofts\\" + set + "\\M" + n + ".bin";
                item.kind = "loft";
                item.category = "Road Section";  // a loft is shown as road
                item.name = vars["title"];
                break;
            case 7:
                section("Track", "Kestrel track " + n);
                item.path = folder + "\\Landschaft\\Track\\" + set + "\\K" + n + ".bin";
                item.kind = "track";
                item.category = "Track Section";
                item.name = vars["title"];
                break;
            case 8:
                scenery("Kestrel preload " + n);
                item.path = folder + "\\Lokomotiven\\PreLoad\\" + set + "\\P" + n + ".bin";
                item.kind = "preload";
                item.name = vars["title"];
                break;
            case 10:
                vars["p"] = "Hartwell";
                vars["q"] = "SteamHeritage";
                vars["title"] = "Kestrel livery " + n;
                vars["base"] = "RailVehicles\\Steam\\Merlin\\Engine\\Merlin.xml";
                vars["textures"] = "RailVehicles\\Steam\\Merlin\\Reskins\\Green";
                source = "blueprints/reskin.xml";
                item = {folder + "\\Lokomotiven\\Reskins\\" + set + "\\R" + n + ".bin", "reskin", "", "No",
                        "ReskinBlueprint", vars["title"]};
                break;
            default:
                // A broken file in turn with an empty one.
                if ((i / kKinds) % 2 == 0) {
                    wagon("Wagon", "eFreight", "Kestrel broken " + n);
                    keepBytes = 200;
                    item.kind = "broken";
                } else {
                    source.clear();
                    item.kind = "empty";
                }
                item.path = folder + "\\G\xc3\xbcterwagen\\RailVehicles\\Freight\\" + set + "\\X" + n + ".bin";
                break;
        }
        stock_.push_back(item);
        if (source.empty()) {
            if (auto failure = Put(item.path, std::string())) return failure;
        } else if (auto failure = Produce(item.path, source, vars, true, keepBytes)) {
            return failure;
        }
    }
    return std::nullopt;
}

}  // namespace ferrolund::sample
