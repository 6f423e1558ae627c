#include "assets/scatter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/steady_math.h"

namespace mw {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

void Splat(Picture& picture, Spot centre, float radius, Colour colour, float strength) {
  const int left = static_cast<int>(std::floor(centre.x - radius - 0.5f));
  const int right = static_cast<int>(std::floor(centre.x + radius + 0.5f));
  const int top = static_cast<int>(std::floor(centre.y - radius - 0.5f));
  const int bottom = static_cast<int>(std::floor(centre.y + radius + 0.5f));
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) {
      const float dx = static_cast<float>(x) + 0.5f - centre.x;
      const float dy = static_cast<float>(y) + 0.5f - centre.y;
      const float cover = Clamp01(radius + 0.5f - std::sqrt(dx * dx + dy * dy)) * strength;
      Colour& pixel = picture.Wrapped(x, y);
      pixel = Mix(pixel, colour, cover);
    }
  }
}

// Calls place(spot, t) along the blade, every half pixel or so, t from 0 at the root to 1 at the
// tip.
template <typename Function>
void WalkBlade(const Blade& blade, Function place) {
  const int steps = std::max(2, static_cast<int>(blade.length * 1.6f));
  const float stride = blade.length / static_cast<float>(steps);
  Spot spot = blade.root;
  for (int i = 0; i <= steps; ++i) {
    const float t = static_cast<float>(i) / static_cast<float>(steps);
    place(spot, t);
    const float angle = blade.angle + blade.bend * t;
    spot.x += stride * steady::Cos(angle);
    spot.y += stride * steady::Sin(angle);
  }
}

float BladeRadius(const Blade& blade, float t) { return blade.width / 2 * (1 - 0.75f * t * t); }

struct Stone {
  Spot centre;
  float radius, stretch, angle, dome, shade, lumpiness;
  float phase;
};

// Distance from the centre in units of the stone's own, slightly lumpy outline.
float OutlineDistance(const Stone& stone, float dx, float dy) {
  const float c = steady::Cos(stone.angle), s = steady::Sin(stone.angle);
  const float along = (dx * c + dy * s) / (stone.radius * stone.stretch);
  const float across = (dy * c - dx * s) * stone.stretch / stone.radius;
  const float turn = steady::Atan2(across, along);
  const float lump = 1 + stone.lumpiness * (steady::Sin(2 * turn + stone.phase) +
                                            0.6f * steady::Sin(3 * turn + 2.3f * stone.phase));
  return std::sqrt(along * along + across * across) / lump;
}

void LayStone(StoneBed& bed, const Stone& stone) {
  const float reach = stone.radius * stone.stretch * (1 + 2 * stone.lumpiness) + 1;
  const int left = static_cast<int>(stone.centre.x - reach);
  const int top = static_cast<int>(stone.centre.y - reach);
  const int span = static_cast<int>(2 * reach) + 2;
  const float ground =
      bed.height.At(static_cast<int>(stone.centre.x), static_cast<int>(stone.centre.y));
  for (int y = top; y < top + span; ++y) {
    for (int x = left; x < left + span; ++x) {
      const float dx = static_cast<float>(x) + 0.5f - stone.centre.x;
      const float dy = static_cast<float>(y) + 0.5f - stone.centre.y;
      const float d = OutlineDistance(stone, dx, dy);
      if (d >= 1) continue;
      const float dome = ground + stone.dome * std::sqrt(1 - d * d * d);
      if (dome <= bed.height.At(x, y)) continue;
      bed.height.At(x, y) = dome;
      bed.cover.At(x, y) = std::max(bed.cover.At(x, y), Clamp01((1 - d) * stone.radius));
      bed.shade.At(x, y) = stone.shade;
    }
  }
}

}  // namespace

float Dice::Between(float low, float high) {
  const float unit = static_cast<float>(engine_() >> 8) * (1.0f / (1 << 24));
  return low + (high - low) * unit;
}

std::vector<Spot> StrewnSpots(int side, int count, Dice& dice) {
  const int perSide = std::max(1, static_cast<int>(std::lround(std::sqrt(count))));
  const float step = static_cast<float>(side) / static_cast<float>(perSide);
  std::vector<Spot> spots;
  spots.reserve(static_cast<std::size_t>(perSide) * perSide);
  for (int j = 0; j < perSide; ++j) {
    for (int i = 0; i < perSide; ++i) {
      const float x = (static_cast<float>(i) + dice.Between(0, 1)) * step;
      const float y = (static_cast<float>(j) + dice.Between(0, 1)) * step;
      spots.push_back({x, y});
    }
  }
  for (std::size_t i = spots.size() - 1; i > 0; --i) {
    const auto other = static_cast<std::size_t>(dice.Between(0, static_cast<float>(i + 1)));
    std::swap(spots[i], spots[std::min(other, i)]);
  }
  return spots;
}

void DrawBlade(Picture& picture, const Blade& blade) {
  const Colour black;
  WalkBlade(blade, [&](Spot spot, float t) {
    const Spot beside{spot.x + 1.2f, spot.y + 1.4f};
    Splat(picture, beside, BladeRadius(blade, t), black, blade.shadow * 0.5f * t);
  });
  WalkBlade(blade, [&](Spot spot, float t) {
    Splat(picture, spot, BladeRadius(blade, t), Mix(blade.rootColour, blade.tipColour, t), 0.85f);
  });
}

void ScatterStones(StoneBed& bed, int count, StoneSizes sizes, Dice& dice) {
  for (const Spot& spot : StrewnSpots(bed.height.side, count, dice)) {
    // Small stones are more frequent than large ones.
    const float share = dice.Between(0, 1);
    Stone stone{};
    stone.centre = spot;
    stone.radius = sizes.smallest + (sizes.largest - sizes.smallest) * share * share;
    stone.stretch = dice.Between(1.0f, 1.3f);
    stone.angle = dice.Between(0, kPi);
    stone.dome = stone.radius * sizes.flatness * dice.Between(0.7f, 1.1f);
    stone.shade = dice.Between(0, 1);
    stone.lumpiness = dice.Between(0.02f, 0.09f);
    stone.phase = dice.Between(0, 2 * kPi);
    LayStone(bed, stone);
  }
}

}  // namespace mw
