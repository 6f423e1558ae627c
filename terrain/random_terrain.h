// The random terrain generator: a new height field from a row-by-row filtered random walk,
// smoothed, with materials by height. Used by the Tools menu and by the creation of a new level.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace mw {

inline constexpr std::int32_t kRandomTerrainBase = 127;  // height units
inline constexpr std::int32_t kMinTerrainAmplitude = 1, kMaxTerrainAmplitude = 25;
inline constexpr std::int32_t kMinSmoothPasses = 1, kMaxSmoothPasses = 7;

struct RandomTerrainParameters {
  std::int32_t base = kRandomTerrainBase;  // added to every sample, height units
  std::int32_t amplitude = 10;             // what the walk, a few units high, is multiplied by
  std::int32_t smoothPasses = 6;
};

// Replaces every height of the level and, by height, its materials; sets the water level when the
// level has water, seats the placed objects on the new ground and marks the level as modified. The
// same seed of the game's random numbers gives the same terrain. Heights can lie outside 0 ... 256;
// they are limited where they are saved. Amplitude and passes are in the ranges above. Does nothing
// without a terrain of a usable size.
void GenerateTerrain(const RandomTerrainParameters& parameters);

// Gives every cell the material of its height; a cell above the highest band keeps its material.
void AssignMaterialsByHeight();

// Lets the user choose; nothing when the user cancels.
using AskRandomTerrainParameters = std::function<std::optional<RandomTerrainParameters>()>;

// Warns on request that the terrain will be replaced, asks for the parameters and generates. True
// when it did.
bool RandomTerrain(bool askFirst, const AskRandomTerrainParameters& ask);

}  // namespace mw
