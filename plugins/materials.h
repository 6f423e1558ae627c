// The numbers of the ground materials, for both plug-ins.
#pragma once

#include <cstdint>

namespace mw::plugin {

enum class Material : std::uint32_t {
  Default,
  Water,
  DryGrass,
  WetGrass,
  DryDirt,
  WetDirt,
  Mud,
  OutsideMap,
  Gravel,
  FrozenGround,
  DrySand,
  WetSand,
  RockSurface,
  SandRoad,
  DirtRoad,
  PavedRoad,
};

}  // namespace mw::plugin
