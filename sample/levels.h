// The two levels of the sample game, as data: ground, placed objects, game-mode entities,
// environment.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "sample/landscape.h"

namespace mw::sample {

struct PlacedObject {
  std::string_view name;
  Point at;
  float height = 0;   // world units
  float heading = 0;  // degrees from north towards east
  float scale = 1;    // written only where it is not 1
};

// The game modes that an entity takes part in.
struct Modes {
  bool conquest = true, captureTheFlag = false, teamDeathMatch = false;
};

struct SpawnPlace {
  Point at;
  float heading = 0;
};

struct VehicleSpawn {
  std::string_view vehicle;
  SpawnPlace place;
};

// A control point with everything that appears at it. The points of a level are numbered from 1 in
// their order; the number is also that of the spawn group.
struct ControlPointPlan {
  std::string_view name;
  int team = 0;         // 0 neutral
  bool isBase = false;  // cannot be taken
  Point at;
  int radius = 30;
  Modes modes;
  std::vector<SpawnPlace> soldiers;
  std::vector<VehicleSpawn> vehicles;
};

struct Environment {
  std::string_view theatre, skyMesh;
  int skyHeight = 0, skyAngle = 0;
  std::array<float, 3> fogColour{}, ambient{}, diffuse{}, specular{};
  int fogStart = 0, fogEnd = 0;
  std::array<float, 3> waterColour{}, deepWaterColour{};
  int waterTexture = 5;  // the first of two that follow each other
};

struct Level {
  std::string_view name;
  Landscape land;
  float heightScale = 1;  // world units per height unit
  Environment environment;
  std::vector<PlacedObject> objects;
  std::vector<ControlPointPlan> controlPoints;
};

// Small: a fishing village in a bay, with hills behind it and a battery on the point.
Level MakeHarbourPoint();
// Medium: a river in a valley, a village at its bridge, and a long ridge of stone in the east.
Level MakeStoneRidge();

// The ground of the two levels.
Landscape MakeCoastLandscape();
Landscape MakeRidgeLandscape();
// The ends of the bridge of the second, west and east; its road lies at `bridgeHeight`.
struct BridgePlace {
  Point west, east;
  float height = 0;
};
BridgePlace RidgeBridge();

}  // namespace mw::sample
