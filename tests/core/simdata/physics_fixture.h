#pragma once
// A diesel and a steam locomotive for the physics tests, under a provider and a product
// with accented names: each blueprint with its simulation blueprint, in the converter's
// XML. The diesel's simulation has an empty hand brake, a "<MaxSpeed/>" and two MaxForce
// values; its blueprint two bogeys.

#include <string>

#include "core/assets/stock_fixture.h"

namespace ferrolund::simdata::testing {

inline const std::string kProvider = "S\xc3\xbc" "dbahn";          // Südbahn
inline const std::string kProduct = "Lokomotiven M\xc3\xbcller";   // Lokomotiven Müller
inline const std::string kLocoName = "Baureihe 218 \xc3\x96lfeuer";  // Baureihe 218 Ölfeuer

inline std::string Ref(const std::string& blueprintId, const std::string& provider = kProvider,
                       const std::string& product = kProduct) {
    return "<iBlueprintLibrary-cAbsoluteBlueprintID><BlueprintSetID><iBlueprintLibrary-cBlueprintSetID>"
           "<Provider d:type=\"cDeltaString\">" + provider + "</Provider>"
           "<Product d:type=\"cDeltaString\">" + product + "</Product>"
           "</iBlueprintLibrary-cBlueprintSetID></BlueprintSetID>"
           "<BlueprintID d:type=\"cDeltaString\">" + blueprintId + "</BlueprintID>"
           "</iBlueprintLibrary-cAbsoluteBlueprintID>";
}

inline std::string F(const std::string& tag, const std::string& value) {
    return "<" + tag + " d:type=\"sFloat32\">" + value + "</" + tag + ">\r\n";
}
inline std::string S(const std::string& tag, const std::string& value) {
    return "<" + tag + " d:type=\"cDeltaString\">" + value + "</" + tag + ">\r\n";
}

inline std::string Wrap(const std::string& root, const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
           "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n<Blueprint>\r\n<" +
           root + ">\r\n" + body + "</" + root + ">\r\n</Blueprint>\r\n</cBlueprintLoader>\r\n";
}

// The locomotive's blueprint; `engineType` "eDiesel" or "eSteam", `sim` its simulation
// blueprint's id (empty: no simulation container).
inline std::string EngineXml(const std::string& engineType, const std::string& sim, const std::string& name = kLocoName) {
    std::string body = S("Name", name) +
        "<BrowseInformation><iBrowseableBlueprint-cBrowseInformation><DisplayName><Localisation-cUserLocalisedString>" +
        S("English", name) + S("French", "") + S("Key", "k218") +
        "</Localisation-cUserLocalisedString></DisplayName></iBrowseableBlueprint-cBrowseInformation></BrowseInformation>\r\n"
        "<RailVehicleComponent><cEngineComponentBlueprint>\r\n"
        "<NumberingList><cCSVContainer>" + S("CsvFile", kProvider + "\\" + kProduct + "\\Numbers") +
        "</cCSVContainer></NumberingList>\r\n"
        "<FrontCouplingBlueprintID>" + Ref("RailVehicles\\Couplings\\Buffer.xml") + "</FrontCouplingBlueprintID>\r\n"
        "<RearCouplingBlueprintID>" + Ref("", "", "") + "</RearCouplingBlueprintID>\r\n" +
        F("Mass", "80") + F("DragCoefficient", "0.5") +
        "<Bogey>\r\n<cBogeyBlueprint>" + F("BogeyPivotX", "0") + F("BogeyPivotY", "5.5") + "<BogeyBlueprint>" +
        Ref("RailVehicles\\Bogies\\B1.xml") + "</BogeyBlueprint></cBogeyBlueprint>\r\n<cBogeyBlueprint>" +
        F("BogeyPivotX", "0") + F("BogeyPivotY", "-5.5") + "<BogeyBlueprint>" + Ref("RailVehicles\\Bogies\\B2.xml") +
        "</BogeyBlueprint></cBogeyBlueprint>\r\n</Bogey>\r\n" + S("EngineType", engineType) +
        "</cEngineComponentBlueprint></RailVehicleComponent>\r\n"
        "<RenderComponent><cAnimObjectRenderBlueprint>" + S("GeometryID", "geo") + "<HeatHaze/>\r\n"
        "</cAnimObjectRenderBlueprint></RenderComponent>\r\n";
    if (!sim.empty()) {
        body += "<EngineSimulationContainer><cEngineSimContainerBlueprint><EngineSimFile>" + Ref(sim) +
                "</EngineSimFile></cEngineSimContainerBlueprint></EngineSimulationContainer>\r\n";
    }
    body += "<ControlContainerComponent><cControlContainerBlueprint><ControlValues>"
            "<cControlContainerBlueprint-cControlValue>" + S("ControlName", "Regulator") + F("DefaultValue", "0") +
            "</cControlContainerBlueprint-cControlValue><cControlContainerBlueprint-cControlValue>" +
            S("ControlName", "Reverser") + F("DefaultValue", "1") +
            "</cControlContainerBlueprint-cControlValue></ControlValues></cControlContainerBlueprint>"
            "</ControlContainerComponent>\r\n<ContainerComponent><cEntityContainerBlueprint><Children/>"
            "</cEntityContainerBlueprint></ContainerComponent>\r\n";
    return Wrap("cEngineBlueprint", body);
}

inline std::string Curve(const std::string& section, const std::string& file) {
    return "<" + section + "><cCSVContainer>" +
           S("CsvFile", kProvider + "\\" + kProduct + "\\RailVehicles\\Sim\\" + file) + "</cCSVContainer></" + section +
           ">\r\n";
}

inline std::string Brakes() {
    std::string control = "<Control><cBrakeControlBlueprint>" + S("CabControlName", "BrakeControl") +
                          F("MaxQuickReleaseRate", "2") + "</cBrakeControlBlueprint></Control>\r\n";
    return "<LocoBrakeAssembly><cBrakeAssemblyBlueprint>" + S("EquipmentType", "eAir") +
           F("MaxForcePercentOfVehicleWeight", "60") + control + "</cBrakeAssemblyBlueprint></LocoBrakeAssembly>\r\n"
           "<TrainBrakeAssembly><cBrakeAssemblyBlueprint>" + S("EquipmentType", "eAir") +
           F("MaxForcePercentOfVehicleWeight", "80") + control + F("MaxReleaseRate", "1.5") +
           "</cBrakeAssemblyBlueprint></TrainBrakeAssembly>\r\n";
}

inline std::string SimHead(const std::string& title) {
    return "<Name><Localisation-cUserLocalisedString>" + S("English", title) +
           "</Localisation-cUserLocalisedString></Name>\r\n";
}

inline std::string DieselSimXml() {
    return Wrap("cEngineSimBlueprint",
                SimHead("BR 218 Simulation") + "<EngineSimComponent><cDieselEngineSimulationBlueprint>\r\n" + Brakes() +
                    "<Handbrake/>\r\n" + F("MaxPower", "1839") + F("MaxForce", "235") + "<MaxSpeed/>\r\n" +
                    Curve("TractiveForceVSpeed", "TractiveEffortVsSpeed") +
                    Curve("TractiveEffortVThrottle", "TractiveEffortVsThrottle") +
                    "<DynamicBrakesSystem><cDynamicBrakeBlueprint>" + F("MaxForce", "150") +
                    "</cDynamicBrakeBlueprint></DynamicBrakesSystem>\r\n" +
                    Curve("BrakeEffortVsSpeed", "DynamicBrakeEffortVsSpeed") +
                    "<PowerUnit><cPowerUnitBlueprint>" + F("IdleRPM", "400") + F("MaxRpm", "1500") +
                    "</cPowerUnitBlueprint></PowerUnit>\r\n</cDieselEngineSimulationBlueprint></EngineSimComponent>\r\n"
                    "<ScriptComponent><cScriptComponentBlueprint>" + S("Name", "Script\\Engine") +
                    "</cScriptComponentBlueprint></ScriptComponent>\r\n");
}

inline std::string SteamSimXml() {
    return Wrap("cEngineSimBlueprint",
                SimHead("Merlin Simulation") + "<EngineSimComponent><cSteamEngineSimulationBlueprint>\r\n" + Brakes() +
                    "<HandBrake><cHandbrakeBlueprint>" + F("MaxForce", "30") + "</cHandbrakeBlueprint></HandBrake>\r\n" +
                    F("MaxPower", "1800") + F("MaxSpeed", "90") + Curve("TractiveEffortVsCutoff", "TractiveEffortVsCutoff") +
                    Curve("BurnRateVsSteamUsageRate", "BurnRateVsSteamUsageRate") +
                    "<Boiler><cBoilerBlueprint>" + F("MaxPressure", "225") + "</cBoilerBlueprint></Boiler>\r\n"
                    "<SafetyValve><cSafetyValveBlueprint><Handbrake><cHandbrakeBlueprint>" + F("MaxForce", "40") +
                    "</cHandbrakeBlueprint></Handbrake>" + F("PressureForOpen", "225") +
                    "</cSafetyValveBlueprint></SafetyValve>\r\n"
                    "<Cylinders><cCylinderBlueprint><NumCylinders d:type=\"sInt32\">3</NumCylinders>"
                    "</cCylinderBlueprint></Cylinders>\r\n</cSteamEngineSimulationBlueprint></EngineSimComponent>\r\n");
}

// Blueprint ids of the two locomotives, below Provider\Product.
inline const std::string kDieselId = "RailVehicles\\BR218\\BR218.bin";
inline const std::string kDieselSimId = "RailVehicles\\BR218\\Simulation\\BR218Sim.bin";
inline const std::string kSteamId = "RailVehicles\\Merlin\\Merlin.bin";
inline const std::string kSteamSimId = "RailVehicles\\Merlin\\Simulation\\MerlinSim.bin";

// Puts both locomotives into the game; gives the diesel's blueprint as a system path.
inline std::string PutLocomotives(assets::testing::Game& game) {
    const std::string base = kProvider + "\\" + kProduct + "\\";
    game.put(base + kDieselId, EngineXml("eDiesel", "RailVehicles\\BR218\\Simulation\\BR218Sim.xml"));
    game.put(base + kDieselSimId, DieselSimXml());
    game.put(base + kSteamId, EngineXml("eSteam", "RailVehicles\\Merlin\\Simulation\\MerlinSim.xml", "Merlin"));
    game.put(base + kSteamSimId, SteamSimXml());
    return game.gameRoot() + "\\Assets\\" + base + kDieselId;
}

inline std::string AssetFile(const assets::testing::Game& game, const std::string& id) {
    return game.gameRoot() + "\\Assets\\" + kProvider + "\\" + kProduct + "\\" + id;
}

}  // namespace ferrolund::simdata::testing
