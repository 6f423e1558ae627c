#include "sample/grid.h"

#include <algorithm>
#include <cmath>

#include "core/steady_math.h"

namespace mw::sample {

float Distance(Point a, Point b) { return steady::Hypot(a.x - b.x, a.z - b.z); }

Grid::Grid(int side, float value)
    : side_(side),
      values_(static_cast<std::size_t>(side) * static_cast<std::size_t>(side), value) {}

float Grid::Sample(Point at) const {
  const float x = at.x / kCellSize, z = at.z / kCellSize;
  const float column = std::floor(x), row = std::floor(z);
  const int c = static_cast<int>(column), r = static_cast<int>(row);
  const float south = std::lerp(At(c, r), At(c + 1, r), x - column);
  const float north = std::lerp(At(c, r + 1), At(c + 1, r + 1), x - column);
  return std::lerp(south, north, z - row);
}

float Grid::Slope(int column, int row) const {
  const float dx = At(column + 1, row) - At(column - 1, row);
  const float dz = At(column, row + 1) - At(column, row - 1);
  return steady::Hypot(dx, dz) / (2.0f * kCellSize);
}

void Smooth(Grid& field, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    const Grid before = field;
    for (int row = 0; row < field.Side(); ++row) {
      for (int column = 0; column < field.Side(); ++column) {
        float sum = 0;
        for (int z = -1; z <= 1; ++z) {
          for (int x = -1; x <= 1; ++x) sum += before.At(column + x, row + z);
        }
        field.At(column, row) = sum / 9.0f;
      }
    }
  }
}

}  // namespace mw::sample
