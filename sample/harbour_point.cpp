#include "sample/levels.h"
#include "sample/placement.h"

namespace mw::sample {
namespace {

constexpr float kSouth = 180, kWest = 270, kEast = 90, kNorth = 0;

void PlaceVillage(Placer& place, const Landscape& land) {
  place.Put("farmhouse", {396, 576}, kSouth);
  place.Put("fisher_hut", {414, 578}, kSouth);
  place.Put("barn", {448, 582}, kSouth);
  place.Put("farmhouse", {470, 528}, kWest);
  place.Put("fisher_hut", {410, 534}, kEast);
  place.Put("fisher_hut", {409, 520}, kEast);
  place.Put("fisher_hut", {438, 534}, kWest);
  place.Put("fisher_hut", {438, 520}, kWest);
  place.PutRow("stone_wall", {384, 596}, {432, 600}, 12);
  place.PutRow("fence", {456, 512}, {480, 514}, 8);
  place.PutAlongRoad("fence", land.roads.front(), {544, 520}, {636, 480}, 7, 8);
  place.Put("crate", {412, 482}, 10);
  place.Put("crate", {414, 483}, 40);
  place.Put("crate", {413, 482.4f}, 25, 1.5f);
  place.Put("barrel", {435, 481}, 0);
  place.Put("barrel", {436.2f, 482}, 0);
  place.Put("barrel", {434.8f, 482.6f}, 0);
  place.PutAt("pier", {424, 468}, kSouth, 31.8f);
  place.PutAt("landing_boat", {433, 436}, 190, 30);
  place.PutAt("landing_boat", {388, 424}, 150, 30);
}

void PlaceBattery(Placer& place) {
  place.Put("lighthouse", {752, 316}, kNorth);
  place.Put("bunker", {720, 312}, 200);
  place.Put("bunker", {738, 304}, kSouth);
  place.Put("field_gun", {728, 300}, kSouth);
  place.Put("field_gun", {748, 300}, 170);
  place.Put("sandbags", {728, 303.5f}, kSouth);
  place.Put("sandbags", {748, 303.5f}, 170);
  place.Put("tent", {730, 336}, kEast);
  place.Put("crate", {722, 326}, 15);
  place.Put("crate", {724, 327}, 60);
  place.PutRow("fence", {712, 340}, {744, 346}, 8);
}

void PlaceWesternCamp(Placer& place) {
  for (const float x : {164.0f, 176.0f, 188.0f}) {
    place.Put("tent", {x, 512}, kNorth);
    place.Put("tent", {x, 526}, kSouth);
  }
  place.Put("truck", {202, 520}, 30);
  place.Put("crate", {196, 508}, 0);
  place.Put("crate", {198, 508.5f}, 20);
  place.Put("barrel", {200, 510}, 0);
  place.PutRow("sandbags", {158, 498}, {198, 496}, 5.5f);
  place.Put("watchtower", {156, 534}, 135);
}

void PlaceBeachDefences(Placer& place) {
  place.Put("bunker", {268, 436}, kSouth);
  place.Put("bunker", {548, 452}, 230);
  place.Put("bunker", {880, 434}, 150);
  place.PutRow("sandbags", {226, 424}, {252, 426}, 5.5f);
  place.PutRow("sandbags", {532, 470}, {546, 462}, 5.5f);
  place.Put("watchtower", {560, 772}, kSouth);
  place.Put("sandbags", {552, 764}, 200);
  place.Put("sandbags", {568, 764}, 160);
}

std::vector<ControlPointPlan> ControlPoints() {
  return {
      {"Western_Camp",
       1,
       true,
       {182, 520},
       30,
       {true, true, true},
       {{{170, 519}, kEast}, {{182, 506}, kEast}, {{194, 532}, kSouth}},
       {{"jeep", {{206, 530}, kEast}}, {"medium_tank", {{208, 508}, kEast}}}},
      {"Harbour_Village",
       0,
       false,
       {430, 546},
       40,
       {true, false, true},
       {{{418, 546}, kSouth}, {{452, 540}, kWest}, {{400, 560}, kEast}},
       {{"truck", {{456, 562}, kWest}}, {"landing_boat", {{414, 432}, kSouth}}}},
      {"Point_Battery",
       0,
       false,
       {736, 322},
       30,
       {true, false, false},
       {{{742, 330}, kSouth}, {{724, 334}, kSouth}},
       {{"field_gun", {{738, 316}, kSouth}}}},
      {"Hill_Post",
       0,
       false,
       {564, 778},
       25,
       {true, false, false},
       {{{554, 776}, kSouth}, {{572, 772}, kSouth}},
       {}},
      {"Eastern_Road",
       2,
       true,
       {930, 556},
       30,
       {true, true, true},
       {{{922, 566}, kWest}, {{938, 566}, kWest}, {{944, 556}, kWest}},
       {{"jeep", {{912, 560}, kWest}}, {"medium_tank", {{950, 570}, kWest}}}},
  };
}

Environment CoastEnvironment() {
  Environment environment;
  environment.theatre = "Coast";
  environment.skyMesh = "Sky_Coast_m1";
  environment.skyHeight = 120;
  environment.skyAngle = 40;
  environment.fogColour = {0.70f, 0.76f, 0.80f};
  environment.ambient = {0.42f, 0.44f, 0.48f};
  environment.diffuse = {0.86f, 0.80f, 0.68f};
  environment.specular = {0.5f, 0.48f, 0.42f};
  environment.fogStart = 60;
  environment.fogEnd = 620;
  environment.waterColour = {0.55f, 0.75f, 0.72f};
  environment.deepWaterColour = {0.12f, 0.28f, 0.36f};
  environment.waterTexture = 1;
  return environment;
}

}  // namespace

Level MakeHarbourPoint() {
  Level level{"Harbour_Point", MakeCoastLandscape(), 0.5f, CoastEnvironment(), {}, {}};
  Placer place(level.land);
  PlaceVillage(place, level.land);
  PlaceBattery(place);
  PlaceWesternCamp(place);
  PlaceBeachDefences(place);
  place.PlantWoods(400, 501);
  level.objects = place.Take();
  level.controlPoints = ControlPoints();
  return level;
}

}  // namespace mw::sample
