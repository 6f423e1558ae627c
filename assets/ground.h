// Painters of the ground seen from straight above: one for each material of the terrain. Every
// picture is a square of kGroundSide pixels that tiles in both directions and is lit from the upper
// left.
#pragma once

#include <array>

#include "assets/picture.h"

namespace mw {

inline constexpr int kGroundSide = 512;

Picture PaintDefaultGround();
Picture PaintWaterGround();
Picture PaintDryGrass();
Picture PaintWetGrass();
Picture PaintDryDirt();
Picture PaintWetDirt();
Picture PaintMud();
Picture PaintOutsideMap();
Picture PaintGravel();
Picture PaintFrozenGround();
Picture PaintDrySand();
Picture PaintWetSand();
Picture PaintRockSurface();
Picture PaintSandRoad();
Picture PaintDirtRoad();
Picture PaintPavedRoad();

struct GroundKind {
  const char* key;   // in file names
  const char* name;  // as the editor shows it, at most 15 characters
  Picture (*paint)();
};
// In the order of the material numbers.
inline constexpr std::array<GroundKind, 16> kGroundKinds{{
    {"default", "Default", PaintDefaultGround},
    {"water", "Water", PaintWaterGround},
    {"drygrass", "Dry Grass", PaintDryGrass},
    {"wetgrass", "Wet Grass", PaintWetGrass},
    {"drydirt", "Dry Dirt", PaintDryDirt},
    {"wetdirt", "Wet Dirt", PaintWetDirt},
    {"mud", "Mud", PaintMud},
    {"outsidemap", "Outside Map", PaintOutsideMap},
    {"gravel", "Gravel", PaintGravel},
    {"frozenground", "Frozen Ground", PaintFrozenGround},
    {"drysand", "Dry Sand", PaintDrySand},
    {"wetsand", "Wet Sand", PaintWetSand},
    {"rocksurface", "Rock Surface", PaintRockSurface},
    {"sandroad", "Sand Road", PaintSandRoad},
    {"dirtroad", "Dirt Road", PaintDirtRoad},
    {"pavedroad", "Paved Road", PaintPavedRoad},
}};

}  // namespace mw
