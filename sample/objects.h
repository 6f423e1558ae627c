// The objects of the sample game: what they are called, which list they stand in and how they look.
#pragma once

#include <span>
#include <string_view>

#include "sample/mesh_builder.h"

namespace mw::sample {

struct ObjectKind {
  std::string_view name;      // in the object list and in levels
  std::string_view category;  // of the object list
  std::string_view mesh;      // file name without extension
  Mesh (*build)();
  bool tree = false;
};

// In the order of the object list; objects of one category stand together.
std::span<const ObjectKind> ObjectKinds();

Mesh BuildBunker();
Mesh BuildFarmhouse();
Mesh BuildFisherHut();
Mesh BuildLighthouse();
Mesh BuildWatchtower();
Mesh BuildHangar();
Mesh BuildBridge();
Mesh BuildPier();
Mesh BuildStoneWall();
Mesh BuildBarn();

Mesh BuildCrate();
Mesh BuildBarrel();
Mesh BuildSandbags();
Mesh BuildTent();
Mesh BuildFence();
Mesh BuildFlagBase();
Mesh BuildRedFlag();
Mesh BuildBlueFlag();
Mesh BuildMarker();

Mesh BuildTank();
Mesh BuildJeep();
Mesh BuildTruck();
Mesh BuildLandingBoat();
Mesh BuildFieldGun();

Mesh BuildOak();
Mesh BuildPine();
Mesh BuildBirch();

}  // namespace mw::sample
