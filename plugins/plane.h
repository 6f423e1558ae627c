// A square of values, one per ground cell, and the filters that the material-map plug-in runs over
// it. Row 0 belongs to grid row 1.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace mw::plugin {

template <typename Value>
struct Plane {
  explicit Plane(int sideLength)
      : side(sideLength), values(static_cast<std::size_t>(sideLength) * sideLength) {}
  std::size_t Index(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(side) +
           static_cast<std::size_t>(column);
  }
  Value& At(int row, int column) { return values[Index(row, column)]; }
  const Value& At(int row, int column) const { return values[Index(row, column)]; }
  // Beyond its edges the plane goes on as it is there.
  const Value& Near(int row, int column) const {
    return At(std::clamp(row, 0, side - 1), std::clamp(column, 0, side - 1));
  }

  int side;
  std::vector<Value> values;
};

// Mean over squares of 2 * radius + 1 cells, taken twice, which is close to a Gaussian.
Plane<float> Blurred(const Plane<float>& plane, int radius);
// For every cell the distance, in cells, to the nearest one that is set; kFarAway where there is
// none. Chamfer distance (Borgefors, "Distance Transformations in Digital Images", 1986), within
// one part in ten of the true one.
inline constexpr float kFarAway = 1e6f;
Plane<float> DistanceTo(const Plane<unsigned char>& set);

}  // namespace mw::plugin
