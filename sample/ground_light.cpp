#include "sample/ground_light.h"

#include <algorithm>
#include <cmath>

#include "assets/picture.h"
#include "core/steady_math.h"

namespace mw::sample {
namespace {

constexpr float kSkyLight = 0.5f, kSunLight = 0.62f;
constexpr int kShadowSteps = 90;       // samples towards the sun
constexpr float kPenumbra = 3.0f;      // world units over which a shadow fades in
constexpr float kHollowDepth = 14.0f;  // world units below its surroundings that darken a hollow

// 1 in the sun, 0 where the ground towards the sun hides it.
float Sunlit(const Landscape& land, int column, int row) {
  const auto [sunX, sunY, sunZ] = land.sunDirection;
  const float flat = steady::Hypot(sunX, sunZ);
  const float rise = sunY / flat * kCellSize;
  const float startX = static_cast<float>(column) * kCellSize;
  const float startZ = static_cast<float>(row) * kCellSize;
  const float own = land.height.At(column, row);
  float hidden = 0;
  for (int step = 1; step <= kShadowSteps; ++step) {
    const float away = static_cast<float>(step) * kCellSize;
    const float ground =
        land.height.Sample({startX + sunX / flat * away, startZ + sunZ / flat * away});
    hidden = std::max(hidden, ground - own - rise * static_cast<float>(step));
  }
  return 1 - SmoothStep(0, kPenumbra, hidden);
}

// Cosine of the angle between the ground's normal and the sun.
float Facing(const Landscape& land, int column, int row) {
  const Grid& height = land.height;
  const float dx = (height.At(column + 1, row) - height.At(column - 1, row)) / (2 * kCellSize);
  const float dz = (height.At(column, row + 1) - height.At(column, row - 1)) / (2 * kCellSize);
  const auto [x, y, z] = land.sunDirection;
  const float dot = (-dx * x + y - dz * z) / std::sqrt(dx * dx + 1 + dz * dz);
  return std::max(0.0f, dot / std::sqrt(x * x + y * y + z * z));
}

}  // namespace

Grid GroundLight(const Landscape& land) {
  const int side = land.height.Side();
  Grid surroundings = land.height;
  Smooth(surroundings, 10);
  const auto [x, y, z] = land.sunDirection;
  const float levelFacing = y / std::sqrt(x * x + y * y + z * z);
  Grid light(side);
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const float hollow = surroundings.At(column, row) - land.height.At(column, row);
      const float sky = kSkyLight * (1 - 0.35f * std::clamp(hollow / kHollowDepth, -0.3f, 1.0f));
      const float sun =
          kSunLight * Facing(land, column, row) / levelFacing * Sunlit(land, column, row);
      light.At(column, row) = std::min(sky + sun, 1.45f);
    }
  }
  Smooth(light, 1);
  return light;
}

}  // namespace mw::sample
