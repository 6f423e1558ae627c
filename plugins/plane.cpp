#include "plugins/plane.h"

#include <numbers>

#include "core/parallel.h"

namespace mw::plugin {
namespace {

// The running mean along each row, written as a column: two calls blur both directions.
Plane<float> RowMeansTurned(const Plane<float>& plane, int radius) {
  Plane<float> turned(plane.side);
  const double share = 1.0 / (2 * radius + 1);
  SpreadOverCores(static_cast<std::size_t>(plane.side), [&](std::size_t line) {
    const int row = static_cast<int>(line);
    double sum = 0;
    for (int c = -radius; c <= radius; ++c) sum += plane.Near(row, c);
    for (int c = 0; c < plane.side; ++c) {
      turned.At(c, row) = static_cast<float>(sum * share);
      sum += plane.Near(row, c + radius + 1) - plane.Near(row, c - radius);
    }
  });
  return turned;
}

}  // namespace

Plane<float> Blurred(const Plane<float>& plane, int radius) {
  Plane<float> result = RowMeansTurned(RowMeansTurned(plane, radius), radius);
  return RowMeansTurned(RowMeansTurned(result, radius), radius);
}

Plane<float> DistanceTo(const Plane<unsigned char>& set) {
  constexpr float kDiagonal = std::numbers::sqrt2_v<float>;
  const int last = set.side - 1;
  Plane<float> distance(set.side);
  // Takes over what the neighbours on the side that was visited before know.
  const auto visit = [&](int row, int column, int back) {
    float& here = distance.At(row, column);
    const int r = row + back, c = column + back;
    const bool hasRow = r >= 0 && r <= last;
    if (c >= 0 && c <= last) here = std::min(here, distance.At(row, c) + 1);
    if (!hasRow) return;
    here = std::min(here, distance.At(r, column) + 1);
    if (column > 0) here = std::min(here, distance.At(r, column - 1) + kDiagonal);
    if (column < last) here = std::min(here, distance.At(r, column + 1) + kDiagonal);
  };
  for (int row = 0; row <= last; ++row) {
    for (int column = 0; column <= last; ++column) {
      distance.At(row, column) = set.At(row, column) ? 0 : kFarAway;
      visit(row, column, -1);
    }
  }
  for (int row = last; row >= 0; --row) {
    for (int column = last; column >= 0; --column) visit(row, column, +1);
  }
  return distance;
}

}  // namespace mw::plugin
