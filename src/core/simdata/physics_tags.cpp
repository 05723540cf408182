// The tag lists of the physics grids, in display order. A Heading or Block owns the
// entries of a higher level that follow it; the entries at its own level after its rows
// ("then" values that stand beside a section rather than in it) are read whether the
// section is there or not.
#include "simdata/physics_grid.h"

namespace ferrolund::simdata {

namespace {

constexpr RowKind H = RowKind::Heading;
constexpr RowKind B = RowKind::Block;
constexpr RowKind V = RowKind::Value;
constexpr RowKind C = RowKind::CsvFile;
constexpr RowKind T = RowKind::Triple;

constexpr GridTag kBlueprintTags[] = {
    {"Name", V, 0}, {"English", V, 0},
    {"NumberingList", H, 0}, {"CsvFile", V, 1},
    {"FrontCouplingBlueprintID", T, 0}, {"RearCouplingBlueprintID", T, 0},
    {"Mass", V, 0}, {"EaseOfDerailment", V, 0}, {"FrontPivotX", V, 0}, {"FrontPivotY", V, 0},
    {"BackPivotX", V, 0}, {"BackPivotY", V, 0}, {"CollisionCentreX", V, 0}, {"CollisionCentreY", V, 0},
    {"CollisionWidth", V, 0}, {"CollisionHeight", V, 0}, {"CollisionLength", V, 0}, {"DragCoefficient", V, 0},
    {"RollingFrictionCoefficient", V, 0}, {"DryFriction", V, 0}, {"WetFriction", V, 0}, {"SnowFriction", V, 0},
    {"SandFrictionMultiplier", V, 0},
    {"Bogey", B, 0}, {"BogeyPivotX", V, 1}, {"BogeyPivotY", V, 1}, {"BogeyBlueprint", T, 1},
    {"StopgoRemapper", V, 0}, {"IntermediateRemapper", V, 0}, {"ExpertRemapper", V, 0},
    {"BogieAudioControlName", V, 0}, {"CouplingAudioControlName", V, 0}, {"EngineType", V, 0},
    {"EngineName", V, 0}, {"DriverPresent", V, 0},
    {"HeadOutCameraBlueprint", T, 0}, {"PrimaryNamedTextureSet", T, 0}, {"SecondaryNamedTextureSet", T, 0},
    {"GeometryID", V, 0}, {"CollisionGeometryID", V, 0}, {"Pickable", V, 0}, {"ShadowType", V, 0},
    {"HeatHaze", V, 0}, {"TexText", V, 0},
    // One set of rows for each light.
    {"ProjectedLightElement", B, 0}, {"TextureID", V, 1}, {"FOV", V, 1}, {"Type", V, 1},
    {"Instancable", V, 0},
    {"DetailLevelGenerationRange", H, 0}, {"HighestLevel_1isHighest", V, 1}, {"LowestLevel_10isLowest", V, 1},
    {"AnimSet", B, 0}, {"AnimationID", V, 1}, {"AnimationName", V, 1}, {"AnimateInEditor", V, 1},
    {"EngineSimulationContainer", T, 0},
    {"ControlContainerComponent", H, 0},
    {"ControlValues", B, 1}, {"ControlName", V, 2}, {"DefaultValue", V, 2}, {"MinimumValue", V, 2},
    {"MaximumValue", V, 2},
    // The cab, then the carriage's interior.
    {"InteriorGeometryID", V, 0}, {"NumberOfCabs", V, 0}, {"InteriorCamera", T, 0}, {"CabOcclusion", T, 0},
    {"CarriageInteriorInterface", H, 0}, {"InteriorGeometryID", V, 1}, {"NumberOfCabs", V, 1},
    {"InteriorCamera", T, 1}, {"CabOcclusion", T, 1},
    {"Children", B, 0}, {"ChildName", V, 1},
    {"ScriptComponent", H, 0}, {"Name", V, 1},
    {"CargoComponent", H, 0}, {"Capacity", V, 1}, {"BulkFreightType", V, 1}, {"AnimationID", V, 1},
    {"CargoBlueprintID", T, 1},
};

// The brake assemblies, the same in both simulation grids.
#define FERROLUND_BRAKE_CONTROL                                                                                  \
    {"Control", H, 1}, {"CabControlName", V, 2}, {"MaxQuickReleaseRate", V, 2},                                  \
        {"EmergencyApplicationRate", V, 2}, {"MinimumReductionPressure", V, 2}, {"FullServicePressureDrop", V, 2}, \
        {"MaxPressureDropInNormalApplication", V, 2}, {"MinContinuousServiceReleaseRate", V, 2}
#define FERROLUND_BRAKE_ASSEMBLIES                                                                              \
    {"Name", V, 0}, {"English", V, 0}, {"LocoBrakeAssembly", H, 0}, {"EquipmentType", V, 1},                    \
        {"MaxForcePercentOfVehicleWeight", V, 1}, FERROLUND_BRAKE_CONTROL, {"TrainBrakeAssembly", H, 0},        \
        {"EquipmentType", V, 1}, {"MaxForcePercentOfVehicleWeight", V, 1}, FERROLUND_BRAKE_CONTROL,             \
        {"GraduatedRelease", V, 1}, {"ProportionalBrake", V, 1}, {"MaxReleaseRate", V, 1},                      \
        {"MaxApplicationRate", V, 1}, {"MaxCylinderPressure", V, 1}, {"PressureForMaxForce", V, 1},             \
        {"MaxSystemPressure", V, 1}, {"MinSystemPressure", V, 1}
// The hand brake's values, as the diesel grid and the steam grid's safety valve read them.
#define FERROLUND_HANDBRAKE(level)                                                                              \
    {"MaxForce", V, level}, {"GraduatedRelease", V, level}, {"ProportionalBrake", V, level},                    \
        {"MaxReleaseRate", V, level}, {"MaxApplicationRate", V, level}, {"MaxCylinderPressure", V, level},     \
        {"PressureForMaxForce", V, level}, {"MaxSystemPressure", V, level}, {"MinSystemPressure", V, level}
#define FERROLUND_AIR_SYSTEM                                                                                   \
    {"HasLowPressureTest", V, 1}, {"MinAirPressure", V, 1}, {"CutOutPressure", V, 1}, {"RestartPressure", V, 1}, \
        {"ReservoirVolume", V, 1}, {"MainResMaxAirPressure", V, 1}
#define FERROLUND_POWER                                                                                          \
    {"MaxPower", V, 0}, {"MaxForce", V, 0}, {"Has3rdRailPowerSupply", V, 0}, {"MaxSpeed", V, 0},              \
        {"StartupTime", V, 0}, {"ShutdownTime", V, 0}

constexpr GridTag kDieselTags[] = {
    FERROLUND_BRAKE_ASSEMBLIES,
    {"Handbrake", H, 0}, FERROLUND_HANDBRAKE(1),
    {"EmergencyBraking", H, 0}, {"TriggerRate", V, 1}, {"ReservoirPressure", V, 1}, {"ReservoirCapacity", V, 1},
    {"ReservoirVolumeMultiplier", V, 1}, {"ApplicationRate", V, 1}, {"ChargeRate", V, 1},
    {"AuxiliaryBraking", H, 0}, {"MaxChargingRate", V, 1}, {"MaxReservoirPressure", V, 1},
    {"PressureUsedFromPipePerPoundGained", V, 1}, {"PressureGainedFromOnePipePounds", V, 1},
    {"RetainerType", V, 1}, {"TripleValve", V, 1}, {"TripleValveRatio", V, 1}, {"RetainerSlowReleaseRate", V, 1},
    FERROLUND_POWER,
    {"TractiveForceVSpeed", H, 0}, {"CsvFile", C, 1},
    {"TractiveEffortVThrottle", H, 0}, {"CsvFile", C, 1},
    {"AntiSlipBrakeCylinderPressure", V, 0}, {"HasThyristorControl", V, 0}, {"QuickPowerOffAtZeroThrottle", V, 0},
    {"SlowSpeedFittedPresent", V, 0}, {"SlowSpeedFittedSpeedLimit", V, 0},
    {"CylinderPressureForBrakeToCutPower", V, 0}, {"MaxContinuousForce", V, 0},
    {"AirSystem", H, 0}, FERROLUND_AIR_SYSTEM,
    {"Compressor", H, 0}, {"Type", V, 1}, {"PowerRating", V, 1},
    {"DynamicBrakesSystem", H, 0}, {"DelayBeforeEngaging", V, 1}, {"MaxEffectiveSpeed", V, 1},
    {"AutomaticCutInSpeed", V, 1}, {"MinimumUsableSpeed", V, 1}, {"MaxForce", V, 1}, {"MaxResistorCurrent", V, 1},
    {"BrakeEffortVsSpeed", H, 0}, {"CsvFile", C, 1},
    {"CausesAutoBailOff", V, 0}, {"DieselUsedPerHourAtMaxPower", V, 0}, {"DieselUsedPerHourAtIdle", V, 0},
    {"TimeToGetToMaxForce", V, 0}, {"MaxCurrent", V, 0}, {"OverloadCurrent", V, 0},
    {"TractiveEffortVFieldDivertProportion", H, 0}, {"CsvFile", C, 1},
    {"PowerUnit", H, 0}, {"IdleRPM", V, 1}, {"MaxRpm", V, 1}, {"MaxRpmChangePerSecond", V, 1},
    {"MaxPowerAtRail", V, 1}, {"ThrottleSettleTime", V, 1}, {"AudioRpmAttackTime", V, 1},
    {"AudioRpmHoldTime", V, 1}, {"AudioRpmReleaseTime", V, 1},
    {"GearBox", H, 0}, {"Gear", V, 1}, {"EngineBraking", V, 1}, {"CoastingResistance", V, 1},
    {"ForceForEngineSlowing", V, 1}, {"Automatic", V, 1}, {"EngineBrakingForce", V, 1}, {"ChangeUpPoint", V, 1},
    {"ChangeDownPoint", V, 1}, {"ActivationSpeed", V, 1},
    {"ScriptComponent", H, 0}, {"Name", V, 1},
};

constexpr GridTag kSteamTags[] = {
    FERROLUND_BRAKE_ASSEMBLIES,
    {"HandBrake", H, 0}, {"MaxForce", V, 1}, {"MaxReleaseRate", V, 1}, {"MaxApplicationRate", V, 1},
    {"MaxCylinderPressure", V, 1}, {"PressureForMaxForce", V, 1}, {"MaxSystemPressure", V, 1},
    {"MinSystemPressure", V, 1},
    {"ProportionalBrake", H, 0}, {"PressureUsedFromPipePerPoundGained", V, 1},
    FERROLUND_POWER,
    {"Injector", H, 0}, {"Type", V, 1}, {"MinBoilerPressure", V, 1}, {"MinInjectorProportion", V, 1},
    {"MaxInjectorProportion", V, 1}, {"Size", V, 1}, {"FeedRateMultiplier", V, 1}, {"PrimingFailureLevel", V, 1},
    {"SteamUsageMultiplier", V, 1}, {"TenderRequired", V, 1},
    {"TractiveEffortVsCutoff", H, 0}, {"CsvFile", C, 1},
    {"TractiveEffortLinearVsSpeed", H, 0}, {"CsvFile", C, 1},
    {"CutoffSteamUsageScaler", V, 0}, {"SpeedSteamUsageScaler", V, 0}, {"TotalSteamUsageScaler", V, 0},
    {"BasicSteamUsage", V, 0},
    {"ConditionChangeVsTemp", H, 0}, {"CsvFile", C, 1},
    {"BurnRateVsSteamUsageRate", H, 0}, {"CsvFile", C, 1},
    {"MinTemp", V, 0}, {"MaxTemp", V, 0}, {"MaxFuelMass", V, 0}, {"IdealFuelMass", V, 0}, {"IdleFuelMass", V, 0},
    {"GrateLimit", V, 0}, {"BasicCoalUsageRate", V, 0}, {"ManuallyStoked", V, 0}, {"MinStokingRate", V, 0},
    {"MaxStokingRate", V, 0}, {"MinStokingRateSteamUsage", V, 0}, {"MaxStokingRateSteamUsage", V, 0},
    {"MinOperatingPressureForStoker", V, 0}, {"SmokePerPoundOfFuel", V, 0}, {"MaxSmokeRate", V, 0},
    {"Boiler", H, 0}, {"Volume", V, 1}, {"MaxPressure", V, 1}, {"ExhaustLimit", V, 1}, {"BlastExponent", V, 1},
    {"MaxOutput", V, 1}, {"DraftingEffect", V, 1}, {"Effectiveness", V, 1}, {"MaxWaterHeightMultiple", V, 1},
    {"MinPrimingLevel", V, 1}, {"PrimingFactor", V, 1}, {"PrimingReductionWithCylinderCocksOpen", V, 1},
    {"PrimingPowerLossProportion", V, 1}, {"MaxWaterMass", V, 1}, {"PrimingWaterUsageIncreaseProportion", V, 1},
    {"Superheater", H, 0}, {"Responsiveness", V, 1}, {"Length", V, 1}, {"GaugeHeight", V, 1},
    {"SafetyValve", H, 0}, {"Handbrake", H, 1}, FERROLUND_HANDBRAKE(2),
    {"PressureForOpen", V, 1}, {"PressureForClose", V, 1}, {"SteamUsage", V, 1},
    {"Cylinders", H, 0}, {"CylinderCocksPowerEfficiency", V, 1}, {"AutomatedCylinderCocks", V, 1},
    {"NumCylinders", V, 1}, {"NumStrokes", V, 1}, {"Stroke", V, 1}, {"Diameter", V, 1}, {"Effectivity", V, 1},
    {"Blower", H, 0}, {"EffectExponent", V, 1}, {"EfficiencyExponent", V, 1}, {"MaxSteamUsageRate", V, 1},
    {"ProportionOfBlastEffect", V, 1},
    {"Regulator", H, 0}, {"Type", V, 1}, {"SecondValveStartPos", V, 1}, {"PilotValveFullOpening", V, 1},
    {"MainValveInitialOpening", V, 1},
    {"Generator", H, 0}, {"Present", V, 1}, {"MinWorkingPressure", V, 1}, {"SteamUsageRate", V, 1},
    {"CompressorEjector", H, 0}, FERROLUND_AIR_SYSTEM,
    {"SmallEjector", H, 0}, {"Present", V, 1}, {"VacuumCreationRate", V, 1}, {"MinBoilerPressureForMaxVacuum", V, 1},
    {"BoilerPressureForZeroVacuum", V, 1}, {"SteamUsageRate", V, 1},
    {"LargeEjector", H, 0}, {"Present", V, 1}, {"VacuumCreationRate", V, 1}, {"MinBoilerPressureForMaxVacuum", V, 1},
    {"BoilerPressureForZeroVacuum", V, 1}, {"SteamUsageRate", V, 1},
    {"VacuumPump", H, 0}, {"Present", V, 1}, {"SpeedOfMaxEffect", V, 1}, {"Power", V, 1},
    {"CompressorSteamUsageRate", V, 1},
    {"SteamHeating", H, 0}, {"Present", V, 1}, {"MaxPressure", V, 1}, {"MaxSupplyRate", V, 1},
    {"FuelBurnRate", V, 1},
    {"ScriptComponent", H, 0}, {"Name", V, 1},
};

#undef FERROLUND_BRAKE_CONTROL
#undef FERROLUND_BRAKE_ASSEMBLIES
#undef FERROLUND_HANDBRAKE
#undef FERROLUND_AIR_SYSTEM
#undef FERROLUND_POWER

}  // namespace

std::span<const GridTag> GridTags(GridKind grid) {
    switch (grid) {
        case GridKind::Blueprint: return kBlueprintTags;
        case GridKind::Diesel: return kDieselTags;
        case GridKind::Steam: return kSteamTags;
    }
    return {};
}

}  // namespace ferrolund::simdata
