#include "plugins/plane.h"

#include <array>
#include <numbers>

#include "core/parallel.h"

namespace mw::plugin {
namespace {

// Rows that are taken together, so that their results fill a cache line of the turned plane.
constexpr int kBand = 16;

// The running mean along each row, written as a column: two calls blur both directions.
Plane<float> RowMeansTurned(const Plane<float>& plane, int radius) {
  Plane<float> turned(plane.side);
  const double share = 1.0 / (2 * radius + 1);
  const int bands = (plane.side + kBand - 1) / kBand;
  SpreadOverCores(static_cast<std::size_t>(bands), [&](std::size_t band) {
    const int first = static_cast<int>(band) * kBand;
    const int rows = std::min(kBand, plane.side - first);
    std::array<double, kBand> sums{};
    for (int r = 0; r < rows; ++r) {
      for (int c = -radius; c <= radius; ++c) sums[r] += plane.Near(first + r, c);
    }
    for (int c = 0; c < plane.side; ++c) {
      for (int r = 0; r < rows; ++r) {
        turned.At(c, first + r) = static_cast<float>(sums[r] * share);
        sums[r] += plane.Near(first + r, c + radius + 1) - plane.Near(first + r, c - radius);
      }
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
