// Every tag that the workbench's readers look for stands somewhere in the sample, so that
// their tests have material. Tags are matched as an element's start ("<Name" followed by
// a blank, '>' or '/') unless they are written with their own punctuation.
#include <gtest/gtest.h>

#include <sstream>

#include "sample_fixture.h"

namespace ferrolund::sample {
namespace {

namespace fs = std::filesystem;

// All XML of the sample: what the binaries were made from, and the text files.
const std::string& AllText() {
    static const std::string text = [] {
        std::string all;
        for (const CompiledFile& file : SampleMade().compiled) all += file.xml;
        for (const auto& entry : fs::recursive_directory_iterator(SampleRoot())) {
            const std::string ext = entry.path().extension().string();
            if (ext == ".xml" || ext == ".proxyxml" || ext == ".dcsv") all += ReadBytes(entry.path());
        }
        return all;
    }();
    return text;
}

bool HasElement(const std::string& text, const std::string& tag) {
    if (tag.find_first_of("</ >") != std::string::npos) return text.find(tag) != std::string::npos;
    const std::string open = "<" + tag;
    for (std::size_t at = text.find(open); at != std::string::npos; at = text.find(open, at + 1)) {
        const char next = text[at + open.size()];
        if (next == ' ' || next == '>' || next == '/') return true;
    }
    return false;
}

struct TagGroup {
    const char* reader;
    const char* tags;  // blank-separated
};

const TagGroup kGroups[] = {
    {"route check",
     "Provider Product BlueprintID cDynamicEntity <cTileCoordinate> Network-cLoftRibbon Network-cRoadRibbon "
     "Network-cTrackRibbon cFarVector2 </ContainerBlueprintID> cSectionRenderBlueprint CrossSectionID StartGeometry "
     "MiddleGeometry EndGeometry GeometryID <AnimSet> AnimationName <_script> <d:blob TextureByName </TextureByName "
     "TextureID <TerrainBlueprint> cMixTexDescriptor BaseTextureName BaseSpringTextureName BaseSummerTextureName "
     "BaseAutumnTextureName BaseWinterTextureName <SoundComponent> ProxyName <cTrackSoundBlueprint> "
     "RumbleAudioControlName TingleAudioControlName JunctionAudioControlName DerailmentAudioControlName Pathname "
     "Filename InfrastructureModified <RBlueprintSetPreLoad> <BrowseFiltering> <cRouteBlueprint> "
     "</BrowseImageTextureID> >eTrue< <Owner "},
    {"scenario reader",
     "<DisplayName> <Description> <Briefing> ScenarioClass StartTime DurationMins StartDD StartMM StartYYYY Season "
     "WeatherExtensionBlueprint <StartLocation> <Author d </SimulationTime> AuthoredLanguage <cConsist d </cConsist> "
     "cOwnedEntity </cOwnedEntity> PlayerDriver PlayerControlled <ServiceName> _dir DriverEngineIndex ServiceClass "
     "<FinalDestination> </FinalDestination> Timetabled cWagon cEngine <BlueprintID> ReskinBlueprintID Flipped "
     "UniqueNumber IsPreLoaded <InitialLevel/> <InitialLevel> TotalMass Name cTenderBlueprint cWagonBlueprint "
     "cEngineComponentBlueprint <ReskinAssetBpId> EngineType RailVehicleComponent CsvFile Mass >CoalFuel< >WaterFuel< "
     "cCSVItem >eTemplateScenarioClass< >eCareerScenarioClass< >eTimetableScenarioClass< >eFreeRoamScenarioClass< "
     ">eStandardScenarioClass< RibbonID DevString Network-cTrackMarkerProperty Network-cPortalProperty "
     "Network-cTrackMarkerComponent Network-cTransferPointComponent"},
    {"saved consists",
     "cConsistTemplate cConsistTemplateEntry <Name> English Key </Record> </ConsistEntry> </cConsistTemplate>"},
    {"Quick Drive", "cConsistBlueprint cConsistFragmentBlueprint ValidBuildAndDriveRoutes cConsistValidRoute"},
    {"blueprint reader",
     "CollisionGeometryID InteriorGeometryID NumberingList ScriptComponent BogieAudioControlName "
     "CouplingAudioControlName FrontCouplingBlueprintID RearCouplingBlueprintID <BogeyBlueprint> "
     "<HeadOutCameraBlueprint> <PrimaryNamedTextureSet> <SecondaryNamedTextureSet> <EngineSimFile> <InteriorCamera> "
     "<CabOcclusion> <Children> ChildName <CargoBlueprintID> Category ValidInScenarios cTrackSectionBlueprint "
     "cRoadSectionBlueprint cLoftSectionBlueprint <cReskinBlueprint> <Blueprint> cEngineBlueprint "
     "cEntityContainerBlueprint cControlContainerBlueprint Localisation-cUserLocalisedString French Italian German "
     "Spanish Dutch Polish Russian CargoDef"},
    {"physics editor, vehicle",
     "FrontPivotX FrontPivotY BackPivotX BackPivotY CollisionCentreX CollisionCentreY CollisionWidth CollisionHeight "
     "CollisionLength DragCoefficient RollingFrictionCoefficient DryFriction WetFriction SnowFriction "
     "SandFrictionMultiplier EaseOfDerailment Bogey BogeyPivotX BogeyPivotY StopgoRemapper IntermediateRemapper "
     "ExpertRemapper EngineName DriverPresent Pickable ShadowType HeatHaze TexText ProjectedLightElement FOV Type "
     "Instancable DetailLevelGenerationRange HighestLevel_1isHighest LowestLevel_10isLowest AnimationID "
     "AnimateInEditor EngineSimulationContainer ControlContainerComponent NumberOfCabs CarriageInteriorInterface "
     "ControlValues ControlName DefaultValue MinimumValue MaximumValue CargoComponent Capacity BulkFreightType"},
    {"physics editor, diesel and electric",
     "cEngineSimBlueprint LocoBrakeAssembly TrainBrakeAssembly EquipmentType MaxForcePercentOfVehicleWeight Control "
     "CabControlName MaxQuickReleaseRate EmergencyApplicationRate MinimumReductionPressure FullServicePressureDrop "
     "MaxPressureDropInNormalApplication MinContinuousServiceReleaseRate GraduatedRelease ProportionalBrake "
     "MaxReleaseRate MaxApplicationRate MaxCylinderPressure PressureForMaxForce MaxSystemPressure MinSystemPressure "
     "Handbrake MaxForce EmergencyBraking TriggerRate ReservoirPressure ReservoirCapacity ReservoirVolumeMultiplier "
     "ApplicationRate ChargeRate AuxiliaryBraking MaxChargingRate MaxReservoirPressure "
     "PressureUsedFromPipePerPoundGained PressureGainedFromOnePipePounds RetainerType TripleValve TripleValveRatio "
     "RetainerSlowReleaseRate MaxPower Has3rdRailPowerSupply MaxSpeed StartupTime ShutdownTime TractiveForceVSpeed "
     "TractiveEffortVThrottle AntiSlipBrakeCylinderPressure HasThyristorControl QuickPowerOffAtZeroThrottle "
     "SlowSpeedFittedPresent SlowSpeedFittedSpeedLimit CylinderPressureForBrakeToCutPower MaxContinuousForce AirSystem "
     "HasLowPressureTest MinAirPressure CutOutPressure RestartPressure ReservoirVolume MainResMaxAirPressure "
     "Compressor "
     "PowerRating DynamicBrakesSystem DelayBeforeEngaging MaxEffectiveSpeed AutomaticCutInSpeed MinimumUsableSpeed "
     "MaxResistorCurrent BrakeEffortVsSpeed CausesAutoBailOff DieselUsedPerHourAtMaxPower DieselUsedPerHourAtIdle "
     "TimeToGetToMaxForce MaxCurrent OverloadCurrent TractiveEffortVFieldDivertProportion PowerUnit IdleRPM MaxRpm "
     "MaxRpmChangePerSecond MaxPowerAtRail ThrottleSettleTime AudioRpmAttackTime AudioRpmHoldTime AudioRpmReleaseTime "
     "GearBox Gear EngineBraking CoastingResistance ForceForEngineSlowing Automatic EngineBrakingForce ChangeUpPoint "
     "ChangeDownPoint ActivationSpeed"},
    {"physics editor, steam",
     "HandBrake Injector MinBoilerPressure MinInjectorProportion MaxInjectorProportion Size FeedRateMultiplier "
     "PrimingFailureLevel SteamUsageMultiplier TenderRequired TractiveEffortVsCutoff TractiveEffortLinearVsSpeed "
     "CutoffSteamUsageScaler SpeedSteamUsageScaler TotalSteamUsageScaler BasicSteamUsage ConditionChangeVsTemp "
     "BurnRateVsSteamUsageRate MinTemp MaxTemp MaxFuelMass IdealFuelMass IdleFuelMass GrateLimit BasicCoalUsageRate "
     "ManuallyStoked MinStokingRate MaxStokingRate MinStokingRateSteamUsage MaxStokingRateSteamUsage "
     "MinOperatingPressureForStoker SmokePerPoundOfFuel MaxSmokeRate Boiler Volume MaxPressure ExhaustLimit "
     "BlastExponent MaxOutput DraftingEffect Effectiveness MaxWaterHeightMultiple MinPrimingLevel PrimingFactor "
     "PrimingReductionWithCylinderCocksOpen PrimingPowerLossProportion MaxWaterMass "
     "PrimingWaterUsageIncreaseProportion Superheater Responsiveness Length GaugeHeight SafetyValve PressureForOpen "
     "PressureForClose SteamUsage Cylinders CylinderCocksPowerEfficiency AutomatedCylinderCocks NumCylinders "
     "NumStrokes Stroke Diameter Effectivity Blower EffectExponent EfficiencyExponent MaxSteamUsageRate "
     "ProportionOfBlastEffect Regulator SecondValveStartPos PilotValveFullOpening MainValveInitialOpening Generator "
     "Present MinWorkingPressure SteamUsageRate CompressorEjector SmallEjector LargeEjector VacuumCreationRate "
     "MinBoilerPressureForMaxVacuum BoilerPressureForZeroVacuum VacuumPump SpeedOfMaxEffect Power "
     "CompressorSteamUsageRate SteamHeating MaxSupplyRate FuelBurnRate"},
};

TEST(SampleTags, EveryTagThatAReaderLooksForOccurs) {
    const std::string& text = AllText();
    for (const TagGroup& group : kGroups) {
        std::istringstream tags(group.tags);
        for (std::string tag; tags >> tag;) {
            if (tag == "<Author" || tag == "<cConsist" || tag == "<Owner") {
                std::string second;
                tags >> second;
                tag += " " + second;
            }
            EXPECT_TRUE(HasElement(text, tag)) << group.reader << ": " << tag;
        }
    }
}

TEST(SampleTags, TexturesComeInEveryFormatWithSeveralLevels) {
    const std::string& text = AllText();
    for (const char* format :
         {"HC_IMAGE_FORMAT_COMPRESSED<", "HC_IMAGE_FORMAT_COMPRESSED_EXPL_ALPHA<",
          "HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA<", "HC_IMAGE_FORMAT_COL888<", "HC_IMAGE_FORMAT_COLA8888<"})
        EXPECT_NE(text.find(format), std::string::npos) << format;
    std::size_t most = 0;
    for (const CompiledFile& file : SampleMade().compiled) {
        std::size_t levels = 0;
        for (std::size_t at = file.xml.find("<cHcImageDx"); at != std::string::npos;
             at = file.xml.find("<cHcImageDx", at + 1))
            ++levels;
        most = std::max(most, levels);
    }
    EXPECT_GE(most, 4u);
}

TEST(SampleTags, RouteNamesCarryTheAwkwardCharacters) {
    const std::string& text = AllText();
    for (const char* needle : {">Ostvale Valley, North: Main Line<", "&amp; le Sommet<",
                               "Br\xC3\xBC"
                               "ckenau \xC3\xBC"
                               "ber H\xC3\xB6henweg<"})
        EXPECT_NE(text.find(needle), std::string::npos) << needle;
}

}  // namespace
}  // namespace ferrolund::sample
