#include "sample/objects.h"

namespace mw::sample {
namespace {

constexpr ObjectKind kObjectKinds[] = {
    {"bunker", "STRUCTURES", "bunker_m1", BuildBunker},
    {"farmhouse", "STRUCTURES", "farmhouse_m1", BuildFarmhouse},
    {"barn", "STRUCTURES", "barn_m1", BuildBarn},
    {"fisher_hut", "STRUCTURES", "fisherhut_m1", BuildFisherHut},
    {"lighthouse", "STRUCTURES", "lighthouse_m1", BuildLighthouse},
    {"watchtower", "STRUCTURES", "watchtower_m1", BuildWatchtower},
    {"hangar", "STRUCTURES", "hangar_m1", BuildHangar},
    {"bridge", "STRUCTURES", "bridge_m1", BuildBridge},
    {"pier", "STRUCTURES", "pier_m1", BuildPier},
    {"stone_wall", "STRUCTURES", "stonewall_m1", BuildStoneWall},
    {"crate", "PROPS", "crate_m1", BuildCrate},
    {"barrel", "PROPS", "barrel_m1", BuildBarrel},
    {"sandbags", "PROPS", "sandbags_m1", BuildSandbags},
    {"tent", "PROPS", "tent_m1", BuildTent},
    {"fence", "PROPS", "fence_m1", BuildFence},
    {"oak", "VEGETATION", "oak_m1", BuildOak, true},
    {"pine", "VEGETATION", "pine_m1", BuildPine, true},
    {"birch", "VEGETATION", "birch_m1", BuildBirch, true},
    {"medium_tank", "VEHICLES_LAND", "mediumtank_m1", BuildTank},
    {"jeep", "VEHICLES_LAND", "jeep_m1", BuildJeep},
    {"truck", "VEHICLES_LAND", "truck_m1", BuildTruck},
    {"landing_boat", "VEHICLES_SEA", "landingboat_m1", BuildLandingBoat},
    {"field_gun", "STATIONARY_WEAPONS", "fieldgun_m1", BuildFieldGun},
    {"default", "SYSTEM", "default_m1", BuildMarker},
    {"flagpole", "SYSTEM", "flagbase_m1", BuildFlagBase},
    {"flag_red", "SYSTEM", "flagge_m1", BuildRedFlag},
    {"flag_blue", "SYSTEM", "flagus_m1", BuildBlueFlag},
};

}  // namespace

std::span<const ObjectKind> ObjectKinds() { return kObjectKinds; }

}  // namespace mw::sample
