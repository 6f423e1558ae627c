#include "sample/levels.h"
#include "sample/placement.h"

namespace mw::sample {
namespace {

constexpr float kSouth = 180, kWest = 270, kEast = 90, kNorth = 0;

void PlaceBridgeVillage(Placer& place) {
  const BridgePlace bridge = RidgeBridge();
  place.PutAt("bridge", {(bridge.west.x + bridge.east.x) / 2, bridge.west.z}, kEast, bridge.height);
  const Point centre{bridge.east.x + 90, bridge.east.z + 20};
  const auto at = [&](float east, float north) { return Point{centre.x + east, centre.z + north}; };
  place.Put("farmhouse", at(-34, 14), kSouth);
  place.Put("farmhouse", at(-14, 18), kSouth);
  place.Put("farmhouse", at(8, 20), kSouth);
  place.Put("barn", at(30, 26), kWest);
  place.Put("farmhouse", at(-26, -48), kNorth);
  place.Put("barn", at(-2, -54), kNorth);
  place.Put("farmhouse", at(22, -46), kWest);
  place.PutRow("stone_wall", at(-44, 32), at(16, 40), 12);
  place.PutRow("stone_wall", at(-40, -58), at(-14, -66), 12);
  place.PutRow("fence", at(34, -34), at(34, -58), 8);
  place.Put("sandbags", at(-56, -8), kWest);
  place.Put("sandbags", at(-56, 4), kWest);
  place.Put("crate", at(4, -36), 20);
  place.Put("barrel", at(6, -35), 0);
}

void PlaceAirfield(Placer& place) {
  place.Put("hangar", {532, 590}, kEast);
  place.Put("hangar", {532, 552}, kEast);
  place.Put("watchtower", {574, 612}, kSouth);
  place.Put("tent", {588, 528}, kWest);
  place.Put("tent", {588, 540}, kWest);
  place.Put("truck", {572, 520}, 20);
  for (const float x : {548.0f, 549.3f, 550.6f}) place.Put("barrel", {x, 530}, 0);
  place.PutRow("sandbags", {600, 570}, {600, 604}, 5.5f);
  place.PutRow("fence", {500, 520}, {500, 600}, 8);
}

void PlaceFort(Placer& place) {
  place.Put("bunker", {1370, 1276}, kWest);
  place.Put("bunker", {1366, 1302}, 300);
  place.Put("bunker", {1380, 1260}, 220);
  place.Put("field_gun", {1368, 1288}, kWest);
  place.Put("sandbags", {1370, 1288}, kWest);
  place.Put("watchtower", {1396, 1282}, kWest);
  place.Put("tent", {1394, 1268}, kNorth);
  place.Put("crate", {1390, 1294}, 30);
  place.Put("crate", {1392, 1294.6f}, 70);
}

void PlaceQuarryAndCamp(Placer& place) {
  place.Put("barn", {1166, 500}, kSouth);
  place.Put("truck", {1186, 486}, 110);
  place.Put("crate", {1196, 470}, 0);
  place.Put("barrel", {1198, 472}, 0);
  for (const float x : {446.0f, 460.0f, 474.0f}) {
    place.Put("tent", {x, 1556}, kNorth);
    place.Put("tent", {x, 1572}, kSouth);
  }
  place.Put("truck", {492, 1564}, 60);
  place.Put("watchtower", {440, 1538}, 135);
  place.PutRow("sandbags", {446, 1534}, {490, 1534}, 5.5f);
  place.Put("crate", {496, 1550}, 5);
  place.Put("barrel", {498, 1552}, 0);
}

std::vector<ControlPointPlan> ControlPoints() {
  const BridgePlace bridge = RidgeBridge();
  const Point village{bridge.east.x + 90, bridge.east.z + 4};
  const auto at = [&](float east, float north) {
    return Point{village.x + east, village.z + north};
  };
  return {
      {"Western_Camp",
       1,
       true,
       {466, 1564},
       40,
       {true, true, true},
       {{{454, 1564}, kEast}, {{470, 1582}, kSouth}, {{484, 1546}, kSouth}, {{444, 1550}, kEast}},
       {{"jeep", {{500, 1572}, kSouth}},
        {"medium_tank", {{500, 1536}, kSouth}},
        {"truck", {{486, 1590}, kSouth}}}},
      {"Airfield",
       1,
       false,
       {562, 566},
       50,
       {true, false, true},
       {{{556, 540}, kEast}, {{556, 602}, kEast}, {{580, 590}, kEast}},
       {{"jeep", {{584, 562}, kEast}}, {"field_gun", {{606, 586}, kEast}}}},
      {"Bridge_Village",
       0,
       false,
       village,
       45,
       {true, false, true},
       {{at(-20, 24), kSouth}, {at(14, 28), kSouth}, {at(10, -30), kNorth}},
       {{"truck", {at(24, -20), kWest}}, {"field_gun", {at(-60, 8), kWest}}}},
      {"Ridge_Fort",
       2,
       false,
       {1384, 1280},
       30,
       {true, false, false},
       {{{1388, 1286}, kWest}, {{1388, 1272}, kWest}},
       {{"field_gun", {{1372, 1268}, kWest}}}},
      {"Quarry",
       2,
       true,
       {1180, 480},
       40,
       {true, true, true},
       {{{1170, 470}, kNorth}, {{1190, 496}, kNorth}, {{1200, 484}, kNorth}, {{1176, 506}, kNorth}},
       {{"jeep", {{1160, 474}, kNorth}}, {"medium_tank", {{1206, 496}, kNorth}}}},
  };
}

Environment RidgeEnvironment() {
  Environment environment;
  environment.theatre = "Highland";
  environment.skyMesh = "Sky_Highland_m1";
  environment.skyHeight = 150;
  environment.skyAngle = 180;
  environment.fogColour = {0.66f, 0.68f, 0.66f};
  environment.ambient = {0.38f, 0.39f, 0.40f};
  environment.diffuse = {0.78f, 0.74f, 0.66f};
  environment.specular = {0.35f, 0.35f, 0.33f};
  environment.fogStart = 120;
  environment.fogEnd = 900;
  environment.waterColour = {0.48f, 0.58f, 0.50f};
  environment.deepWaterColour = {0.14f, 0.22f, 0.22f};
  environment.waterTexture = 5;
  return environment;
}

}  // namespace

Level MakeStoneRidge() {
  Level level{"Stone_Ridge", MakeRidgeLandscape(), 1.0f, RidgeEnvironment(), {}, {}};
  Placer place(level.land);
  PlaceBridgeVillage(place);
  PlaceAirfield(place);
  PlaceFort(place);
  PlaceQuarryAndCamp(place);
  place.PlantWoods(1100, 701);
  level.objects = place.Take();
  level.controlPoints = ControlPoints();
  return level;
}

}  // namespace mw::sample
