#include "sample/erosion.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "core/steady_math.h"

namespace mw::sample {
namespace {

constexpr int kDropLifetime = 34;  // steps of one sample
constexpr float kInertia = 0.08f;  // how much a drop keeps its direction
constexpr float kCapacity = 4.0f;  // ground that a drop carries, per fall, speed and water
constexpr float kLeastCapacity = 0.008f;
constexpr float kDepositRate = 0.3f, kErodeRate = 0.28f;
constexpr float kEvaporation = 0.015f;  // water lost per step
constexpr float kGravity = 4.0f;
constexpr float kHeightRange = 120.0f;  // world units that count as 1 in the rules above
constexpr int kBrushRadius = 3;         // samples around a drop that lose ground together

struct BrushCell {
  int x, z;
  float weight;
};

std::vector<BrushCell> MakeBrush() {
  std::vector<BrushCell> brush;
  float sum = 0;
  for (int z = -kBrushRadius; z <= kBrushRadius; ++z) {
    for (int x = -kBrushRadius; x <= kBrushRadius; ++x) {
      const float weight = static_cast<float>(kBrushRadius) -
                           steady::Hypot(static_cast<float>(x), static_cast<float>(z));
      if (weight <= 0) continue;
      brush.push_back({x, z, weight});
      sum += weight;
    }
  }
  for (BrushCell& cell : brush) cell.weight /= sum;
  return brush;
}

// Position in samples, the cell it lies in and how far into it.
struct Spot {
  explicit Spot(Point at)
      : column(static_cast<int>(std::floor(at.x))),
        row(static_cast<int>(std::floor(at.z))),
        u(at.x - static_cast<float>(column)),
        v(at.z - static_cast<float>(row)) {}
  int column, row;
  float u, v;
};

struct HeightAndSlope {
  float height, slopeX, slopeZ;
};

HeightAndSlope Look(const Grid& height, const Spot& spot) {
  const float sw = height.At(spot.column, spot.row), se = height.At(spot.column + 1, spot.row);
  const float nw = height.At(spot.column, spot.row + 1),
              ne = height.At(spot.column + 1, spot.row + 1);
  return {std::lerp(std::lerp(sw, se, spot.u), std::lerp(nw, ne, spot.u), spot.v),
          std::lerp(se - sw, ne - nw, spot.v), std::lerp(nw - sw, ne - se, spot.u)};
}

void Deposit(Grid& height, const Spot& spot, float amount) {
  height.At(spot.column, spot.row) += amount * (1 - spot.u) * (1 - spot.v);
  height.At(spot.column + 1, spot.row) += amount * spot.u * (1 - spot.v);
  height.At(spot.column, spot.row + 1) += amount * (1 - spot.u) * spot.v;
  height.At(spot.column + 1, spot.row + 1) += amount * spot.u * spot.v;
}

void FollowDrop(Grid& height, Point at, const std::vector<BrushCell>& brush) {
  float directionX = 0, directionZ = 0, speed = 1, water = 1, sediment = 0;
  for (int step = 0; step < kDropLifetime; ++step) {
    const Spot spot(at);
    const HeightAndSlope here = Look(height, spot);
    directionX = directionX * kInertia - here.slopeX * (1 - kInertia);
    directionZ = directionZ * kInertia - here.slopeZ * (1 - kInertia);
    const float length = steady::Hypot(directionX, directionZ);
    if (length < 1e-6f) return;
    directionX /= length;
    directionZ /= length;
    at.x += directionX;
    at.z += directionZ;

    const float rise = Look(height, Spot(at)).height - here.height;
    const float capacity = std::max(-rise * speed * water * kCapacity, kLeastCapacity);
    if (rise > 0 || sediment > capacity) {
      const float amount =
          rise > 0 ? std::min(rise, sediment) : (sediment - capacity) * kDepositRate;
      sediment -= amount;
      Deposit(height, spot, amount);
    } else {
      const float amount = std::min((capacity - sediment) * kErodeRate, -rise);
      for (const BrushCell& cell : brush) {
        height.At(spot.column + cell.x, spot.row + cell.z) -= amount * cell.weight;
      }
      sediment += amount;
    }
    speed = std::sqrt(std::max(0.0f, speed * speed - rise * kGravity));
    water *= 1 - kEvaporation;
  }
}

void Scale(Grid& field, float factor) {
  for (int row = 0; row < field.Side(); ++row) {
    for (int column = 0; column < field.Side(); ++column) field.At(column, row) *= factor;
  }
}

}  // namespace

void ErodeByRain(Grid& height, int drops, std::uint32_t seed) {
  const std::vector<BrushCell> brush = MakeBrush();
  std::mt19937 random(seed);
  const float side = static_cast<float>(height.Side());
  const auto position = [&] { return side * static_cast<float>(random() >> 8) / 16777216.0f; };
  Scale(height, 1.0f / kHeightRange);
  for (int drop = 0; drop < drops; ++drop) {
    const float x = position(), z = position();
    FollowDrop(height, {x, z}, brush);
  }
  Scale(height, kHeightRange);
}

void SettleSlopes(Grid& height, float maxSlope, int rounds) {
  constexpr int kNeighbours[4][2] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
  constexpr float kSlideRate = 0.22f;  // of the excess, per neighbour and round
  const float maxRise = maxSlope * kCellSize;
  for (int round = 0; round < rounds; ++round) {
    const Grid before = height;
    for (int row = 0; row < height.Side(); ++row) {
      for (int column = 0; column < height.Side(); ++column) {
        for (const auto& [x, z] : kNeighbours) {
          const float excess = before.At(column, row) - before.At(column + x, row + z) - maxRise;
          if (excess <= 0) continue;
          height.At(column, row) -= excess * kSlideRate;
          height.At(column + x, row + z) += excess * kSlideRate;
        }
      }
    }
  }
}

}  // namespace mw::sample
