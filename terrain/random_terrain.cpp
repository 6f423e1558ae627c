#include "terrain/random_terrain.h"

#include "core/editor_state.h"
#include "core/game_random.h"
#include "core/history.h"
#include "core/hooks.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/prompts.h"
#include "terrain/ground_history.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr int kBorder = 10;  // samples along each edge that the walk leaves at the base
constexpr int kReach = 2;    // samples to either side in the row before that a step stands on
constexpr float kDamping = 20.0f / 101.0f;  // a little less than one over their number
constexpr int kWalkSteps = 151;             // different steps of the walk
constexpr float kStepSize = 0.02f;          // height units before the amplitude
constexpr float kWaterLevel = 25.0f;        // world units

// The sample of the r-th data row and c-th data column, both from 0.
float& Sample(int r, int c) { return terrain.grid[r + 1][c].h; }

// Calls change(sample) with every sample, row by row.
template <typename Change>
void ForEachSample(Change change) {
  for (int r = 0; r < modConfig.MaterialSize; ++r) {
    for (int c = 0; c < modConfig.MaterialSize; ++c) change(Sample(r, c));
  }
}

// A uniform step of -1.5 ... 1.5.
float RandomStep() {
  const int steps = GameRandom() % kWalkSteps - kWalkSteps / 2;
  return static_cast<float>(steps) * kStepSize;
}

float DampedMeanOfRowBefore(int r, int c) {
  float sum = 0;
  for (int tap = -kReach; tap <= kReach; ++tap) sum += Sample(r - 1, c + tap);
  return sum * kDamping;
}

// Each row is the damped mean of the row before plus a random step at every sample.
void Walk() {
  ForEachSample([](float& h) { h = 0; });
  const int last = modConfig.MaterialSize - kBorder;
  for (int r = kBorder; r <= last; ++r) {
    for (int c = kBorder; c <= last; ++c) Sample(r, c) = DampedMeanOfRowBefore(r, c) + RandomStep();
  }
}

// In place: two of the neighbours are smoothed already. The outermost samples stay.
void Smooth() {
  const int last = modConfig.MaterialSize - 2;
  for (int r = 1; r <= last; ++r) {
    for (int c = 1; c <= last; ++c) {
      Sample(r, c) =
          (Sample(r + 1, c) + Sample(r - 1, c) + Sample(r, c + 1) + Sample(r, c - 1)) * 0.25f;
    }
  }
}

struct HeightBand {
  float highest;  // height units, included
  std::uint32_t material;
};

constexpr HeightBand kHeightBands[] = {
    {25, 11},   // Wet Sand
    {70, 10},   // Dry Sand
    {80, 2},    // Dry Grass
    {127, 3},   // Wet Grass
    {200, 12},  // Rock Surface
    {255, 9},   // Frozen Ground
};

std::optional<std::uint32_t> MaterialAtHeight(float h) {
  for (const HeightBand& band : kHeightBands) {
    if (h <= band.highest) return band.material;
  }
  return std::nullopt;
}

}  // namespace

void GenerateTerrain(const RandomTerrainParameters& parameters) {
  if (!HasUsableTerrain()) return;
  const HistoryStep step("Random Terrain");
  KeepAllHeights();
  KeepAllMaterials();
  KeepSetting(openLevel.loadReport.parts);
  KeepSetting(modConfig.WaterLevel);
  Walk();
  const auto amplitude = static_cast<float>(parameters.amplitude);
  const auto base = static_cast<float>(parameters.base);
  ForEachSample([&](float& h) { h = amplitude * h + base; });
  for (int pass = 0; pass < parameters.smoothPasses; ++pass) Smooth();
  MarkAllTerrainChanged();
  ShowAllOnMiniMap();
  AssignMaterialsByHeight();
  SetReplaced(LevelPart::HeightMap);
  SetReplaced(LevelPart::MaterialMap);
  if (editor.levelHasWater) modConfig.WaterLevel = kWaterLevel;
  hooks.seatObjectsOnGround();
  editor.levelModified = true;
}

void AssignMaterialsByHeight() {
  if (!HasUsableTerrain()) return;
  for (int i = 1; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j < modConfig.MaterialSize; ++j) {
      if (const auto material = MaterialAtHeight(terrain.grid[i][j].h)) {
        SetMaterial(*material, i, j);
      }
    }
  }
}

bool RandomTerrain(bool askFirst, const AskRandomTerrainParameters& ask) {
  if (askFirst && !ConfirmReplacing("This will replace any existing terrain.")) return false;
  const auto parameters = ask();
  if (!parameters || !HasUsableTerrain() || !MayReplaceGround()) return false;
  ShowWaitCursor();
  GenerateTerrain(*parameters);
  hooks.invalidateMiniMap();
  return true;
}

}  // namespace mw
