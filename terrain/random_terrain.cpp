#include "terrain/random_terrain.h"

#include <cstddef>
#include <vector>

#include "core/editor_state.h"
#include "core/game_random.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "platform/prompts.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr int kBorder = 10;  // samples along each edge that the walk leaves at the base
constexpr int kTaps = 5;     // samples of the row before that a step starts from
constexpr float kDamping = 20.0f / 101.0f;  // a little less than one over the taps
constexpr int kSteps = 151;                 // different steps of the walk
constexpr float kStepSize = 0.02f;          // height units before the amplitude
constexpr float kWaterLevel = 25.0f;        // world units

// The samples side by side in one block: grid row r + 1, column c of the grid for r, c in
// 0 ... side - 1. The passes run over it many times; the grid's wide records would not stay in the
// processor's cache.
class HeightField {
 public:
  explicit HeightField(int side)
      : side_(side), heights_(static_cast<std::size_t>(side) * static_cast<std::size_t>(side)) {}

  int Side() const { return side_; }
  float* Row(int r) {
    return heights_.data() + static_cast<std::size_t>(r) * static_cast<std::size_t>(side_);
  }

 private:
  int side_;
  std::vector<float> heights_;
};

// A uniform step of -1.5 ... 1.5.
float RandomStep() { return static_cast<float>(GameRandom() % kSteps - kSteps / 2) * kStepSize; }

// Each row is the damped mean of the row before plus a random step at every sample.
void Walk(HeightField& field) {
  const int last = field.Side() - kBorder;
  for (int r = kBorder; r <= last; ++r) {
    const float* before = field.Row(r - 1);
    float* row = field.Row(r);
    for (int c = kBorder; c <= last; ++c) {
      float sum = 0;
      for (int tap = 0; tap < kTaps; ++tap) sum += before[c - kTaps / 2 + tap];
      row[c] = sum * kDamping + RandomStep();
    }
  }
}

void Scale(HeightField& field, float amplitude, float base) {
  for (int r = 0; r < field.Side(); ++r) {
    float* row = field.Row(r);
    for (int c = 0; c < field.Side(); ++c) row[c] = amplitude * row[c] + base;
  }
}

// In place: the neighbours above and to the left are smoothed already.
void Smooth(HeightField& field) {
  for (int r = 1; r <= field.Side() - 2; ++r) {
    const float *above = field.Row(r - 1), *below = field.Row(r + 1);
    float* row = field.Row(r);
    for (int c = 1; c <= field.Side() - 2; ++c) {
      row[c] = (below[c] + above[c] + row[c + 1] + row[c - 1]) * 0.25f;
    }
  }
}

void StoreInGrid(HeightField& field) {
  for (int r = 0; r < field.Side(); ++r) {
    const float* row = field.Row(r);
    for (int c = 0; c < field.Side(); ++c) terrain->grid[r + 1][c].h = row[c];
  }
  MarkAllTerrainChanged();
}

// The outermost samples do not reach the picture.
void PaintMiniMap() {
  const int side = modConfig.MaterialSize;
  for (int r = 1; r <= side - 2; ++r) {
    for (int c = 1; c <= side - 2; ++c) ShowOnMiniMap(r + 1, c);
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

bool ConfirmReplacing() {
  return ShowPrompt("This will replace any existing terrain.", "WARNING", PromptButtons::OkCancel,
                    PromptIcon::Exclamation) == PromptAnswer::Ok;
}

}  // namespace

void GenerateTerrain(const RandomTerrainParameters& parameters) {
  if (!HasUsableTerrain()) return;
  HeightField field(modConfig.MaterialSize);
  Walk(field);
  Scale(field, static_cast<float>(parameters.amplitude), static_cast<float>(parameters.base));
  for (int pass = 0; pass < parameters.smoothPasses; ++pass) Smooth(field);
  StoreInGrid(field);
  PaintMiniMap();
  AssignMaterialsByHeight();
  if (editor.levelHasWater) modConfig.WaterLevel = kWaterLevel;
  hooks.seatObjectsOnGround();
  editor.levelModified = true;
}

void AssignMaterialsByHeight() {
  if (!HasUsableTerrain()) return;
  for (int i = 1; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j < modConfig.MaterialSize; ++j) {
      if (const auto material = MaterialAtHeight(terrain->grid[i][j].h)) {
        SetMaterial(*material, i, j);
      }
    }
  }
}

bool RandomTerrain(bool askFirst, const AskRandomTerrainParameters& ask) {
  if (askFirst && !ConfirmReplacing()) return false;
  const auto parameters = ask();
  if (!parameters || !HasUsableTerrain()) return false;
  ShowWaitCursor();
  GenerateTerrain(*parameters);
  hooks.invalidateMiniMap();
  return true;
}

}  // namespace mw
