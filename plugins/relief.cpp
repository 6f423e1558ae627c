#include "plugins/relief.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/parallel.h"

namespace mw::plugin {
namespace {

constexpr float kUsualCell = 4;         // world units, where the grid does not tell
constexpr int kSlopeBlur = 1;           // cells; single bumps are no slope
constexpr int kSurroundings = 18;       // cells of the ground that a hollow is measured against
constexpr int kWaterSurroundings = 12;  // cells
constexpr double kLowGround = 0.05, kHighGround = 0.995;  // of the heights above water, in order
// Frozen ground needs a mountain: it starts this high above the low ground, and not below this
// share of the range.
constexpr float kLeastFrost = 70, kFrostShare = 0.76f;

float CellSizeOf(const MapwrightVertex* vertices) {
  const float size = vertices[MAPWRIGHT_GRID_ROW + 1].z - vertices[MAPWRIGHT_GRID_ROW].z;
  return std::isfinite(size) && size > 0 ? size : kUsualCell;
}

constexpr float kMost = 1e6f;  // world units above or below the water

// Mean of the four vertices around each cell, so that heights belong to cells as materials do.
Plane<float> CellHeights(int size, const MapwrightVertex* vertices, float waterLevel,
                         float heightScale) {
  const auto height = [&](int i, int j) {
    return vertices[std::max(i, 1) * MAPWRIGHT_GRID_ROW + std::min(j, size - 1)].h;
  };
  Plane<float> heights(size);
  for (int i = 1; i <= size; ++i) {
    for (int j = 0; j < size; ++j) {
      const float mean =
          (height(i, j) + height(i, j + 1) + height(i - 1, j) + height(i - 1, j + 1)) / 4;
      const float above = mean * heightScale - waterLevel;
      // What follows sorts and sums the heights, which needs numbers.
      heights.At(i - 1, j) = std::isfinite(above) ? std::clamp(above, -kMost, kMost) : 0.0f;
    }
  }
  return heights;
}

void MeasureSlope(Relief& relief, float cellSize) {
  const Plane<float> ground = Blurred(relief.aboveWater, kSlopeBlur);
  SpreadOverCores(static_cast<std::size_t>(ground.side), [&](std::size_t line) {
    const int row = static_cast<int>(line);
    for (int c = 0; c < ground.side; ++c) {
      const float alongRows = ground.Near(row + 1, c) - ground.Near(row - 1, c);
      const float alongColumns = ground.Near(row, c + 1) - ground.Near(row, c - 1);
      relief.slope.At(row, c) = std::hypot(alongRows, alongColumns) / (2 * cellSize);
    }
  });
}

void MeasureHollows(Relief& relief, float cellSize) {
  const Plane<float> near = Blurred(relief.aboveWater, 2);
  const Plane<float> around = Blurred(relief.aboveWater, kSurroundings);
  const float reach = static_cast<float>(kSurroundings) * cellSize;
  for (std::size_t k = 0; k < near.values.size(); ++k) {
    relief.hollow.values[k] = (around.values[k] - near.values[k]) / reach;
  }
}

void MeasureWater(Relief& relief) {
  const int side = relief.aboveWater.side;
  Plane<unsigned char> isWater(side);
  Plane<float> water(side);
  for (std::size_t k = 0; k < isWater.values.size(); ++k) {
    isWater.values[k] = relief.aboveWater.values[k] < 0;
    water.values[k] = isWater.values[k];
  }
  relief.toWater = DistanceTo(isWater);
  relief.openWater = Blurred(water, kWaterSurroundings);
}

void MeasureFrostLine(Relief& relief) {
  std::vector<float> heights = relief.aboveWater.values;
  const auto at = [&](double share) {
    const auto place = heights.begin() +
                       static_cast<std::ptrdiff_t>(share * static_cast<double>(heights.size() - 1));
    std::nth_element(heights.begin(), place, heights.end());
    return std::max(*place, 0.0f);
  };
  const float low = at(kLowGround);
  relief.range = at(kHighGround) - low;
  relief.frostLine = low + std::max(kLeastFrost, kFrostShare * relief.range);
}

}  // namespace

Relief MeasureRelief(int size, const MapwrightVertex* vertices, float waterLevel,
                     float heightScale) {
  Relief relief(size);
  relief.aboveWater = CellHeights(size, vertices, waterLevel, heightScale);
  const float cellSize = CellSizeOf(vertices);
  MeasureSlope(relief, cellSize);
  MeasureHollows(relief, cellSize);
  MeasureWater(relief);
  MeasureFrostLine(relief);
  return relief;
}

}  // namespace mw::plugin
