// A square grid of numbers over a level's ground, which wraps at its edges as the game's height
// field does. Everything that shapes or paints the sample levels works on it.
#pragma once

#include <cstddef>
#include <vector>

namespace mw::sample {

// World units between two samples of a height field, the same for every level size.
inline constexpr float kCellSize = 4.0f;

// Level coordinates in world units: x towards east, z towards north.
struct Point {
  float x = 0, z = 0;
};

float Distance(Point a, Point b);

class Grid {
 public:
  // `side` is a power of two.
  explicit Grid(int side, float value = 0);

  int Side() const { return side_; }
  float WorldSize() const { return static_cast<float>(side_) * kCellSize; }
  // Columns run east, rows north; both wrap.
  float& At(int column, int row) { return values_[Index(column, row)]; }
  float At(int column, int row) const { return values_[Index(column, row)]; }
  // Bilinear, at a position in world units.
  float Sample(Point at) const;
  // Rise per unit of length at a sample, the steeper of both directions combined.
  float Slope(int column, int row) const;

 private:
  std::size_t Index(int column, int row) const {
    return static_cast<std::size_t>(row & (side_ - 1)) * static_cast<std::size_t>(side_) +
           static_cast<std::size_t>(column & (side_ - 1));
  }

  int side_;
  std::vector<float> values_;
};

// Where a sample lies.
inline Point PositionOf(int column, int row) {
  return {static_cast<float>(column) * kCellSize, static_cast<float>(row) * kCellSize};
}

// Calls value(position) for every sample.
template <typename Value>
Grid MakeGrid(int side, Value value) {
  Grid grid(side);
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      grid.At(column, row) = value(PositionOf(column, row));
    }
  }
  return grid;
}

// Each value becomes the mean of itself and its eight neighbours, `rounds` times.
void Smooth(Grid& field, int rounds);

}  // namespace mw::sample
