#include "sample/game/shadow_tracer.h"

#include <algorithm>
#include <cmath>

#include "assets/picture.h"
#include "core/parallel.h"

namespace mw::sample {
namespace {

constexpr float kStep = kCellSize / 2;  // world units along the ground between two samples
constexpr float kPenumbra = 1.5f;       // world units over which a shadow fades in
constexpr float kHighestGround = 256;   // nothing of a level is higher

Vector3 NormalAt(const Grid& height, Point at) {
  const float dx =
      height.Sample({at.x + kCellSize, at.z}) - height.Sample({at.x - kCellSize, at.z});
  const float dz =
      height.Sample({at.x, at.z + kCellSize}) - height.Sample({at.x, at.z - kCellSize});
  Vector3 normal{-dx, 2 * kCellSize, -dz};
  normal.Normalise();
  return normal;
}

// How much brighter than level ground a slope is under a light; ground that looks away gets none.
float Facing(const Vector3& normal, const Vector3& towardsLight) {
  const float dot =
      normal.x * towardsLight.x + normal.y * towardsLight.y + normal.z * towardsLight.z;
  return std::max(dot, 0.0f) / std::max(towardsLight.y, 0.01f);
}

float BrightnessAt(const Grid& height, const Lighting& lighting, Point at) {
  const float ground = height.Sample(at);
  const Vector3 normal = NormalAt(height, at);
  float light = 0, all = 0;
  for (const Light& source : lighting.lights) {
    light += source.intensity * LightAt(height, at, ground, source.direction) *
             Facing(normal, source.direction);
    all += source.intensity;
  }
  return all > 0 ? std::clamp(light / all, 0.0f, 1.0f) : 1;
}

}  // namespace

float LightAt(const Grid& height, Point at, float y, const Vector3& towardsLight) {
  if (towardsLight.y <= 0) return 0;
  const float flat = std::hypot(towardsLight.x, towardsLight.z);
  if (flat < 1e-4f) return 1;
  const float rise = towardsLight.y / flat;
  const float furthest = std::min((kHighestGround - y) / rise, height.WorldSize());
  float hidden = 0;
  for (float away = kStep; away < furthest; away += kStep) {
    const Point there{at.x + towardsLight.x / flat * away, at.z + towardsLight.z / flat * away};
    // Beyond the level's edge there is no ground.
    if (there.x < 0 || there.z < 0 || there.x >= height.WorldSize() ||
        there.z >= height.WorldSize()) {
      break;
    }
    hidden = std::max(hidden, height.Sample(there) - y - rise * away);
    if (hidden >= kPenumbra) return 0;
  }
  return 1 - SmoothStep(0, kPenumbra, hidden);
}

std::vector<float> TraceTile(const Grid& height, const Lighting& lighting, int tileRow,
                             int tileColumn, int side) {
  const auto size = static_cast<std::size_t>(side);
  std::vector<float> light(size * size);
  const float spacing = kTracedTileSize / static_cast<float>(side);
  const Point corner{static_cast<float>(tileRow) * kTracedTileSize,
                     static_cast<float>(tileColumn) * kTracedTileSize};
  SpreadOverCores(size, [&](std::size_t row) {
    for (std::size_t column = 0; column < size; ++column) {
      const Point at{corner.x + (static_cast<float>(column) + 0.5f) * spacing,
                     corner.z + (static_cast<float>(row) + 0.5f) * spacing};
      light[row * size + column] = BrightnessAt(height, lighting, at);
    }
  });
  return light;
}

}  // namespace mw::sample
