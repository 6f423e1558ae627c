#include "assets/landscape.h"

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "assets/ground.h"
#include "assets/noise.h"
#include "assets/sky.h"
#include "core/steady_math.h"

namespace mw {
namespace {

constexpr int kWorldSide = 1024;  // units; heights are stored once per unit
constexpr float kWaterLevel = 0, kFarthest = 820, kHighest = 190;
constexpr Direction3 kSunlight{-0.62f, 0.50f, -0.60f};  // towards the sun; length 1

struct Eye {
  float x = 500, y = 30, z = 46;
  float pitch = -0.03f;          // radians, up positive
  float halfWidthAngle = 0.62f;  // tangent of half the angle of view
};

// A texture with its halvings, so that distant ground does not glitter.
class MipTexture {
 public:
  explicit MipTexture(Picture picture) {
    levels_.push_back(std::move(picture));
    while (levels_.back().width > 1) levels_.push_back(Halved(levels_.back()));
  }
  // `footprint` is the size in units of what one pixel of the scene sees.
  Colour At(float x, float z, float footprint) const {
    const float wanted = steady::Log2(std::max(1.0f, footprint * kTexelsPerUnit));
    const auto level = std::min(levels_.size() - 1, static_cast<std::size_t>(wanted + 0.5f));
    const Picture& picture = levels_[level];
    const float scale = kTexelsPerUnit / static_cast<float>(1 << level);
    const int column = static_cast<int>(std::floor(x * scale)) & (picture.width - 1);
    const int row = static_cast<int>(std::floor(z * scale)) & (picture.width - 1);
    return picture.At(column, row);
  }

 private:
  static constexpr float kTexelsPerUnit = 9;
  std::vector<Picture> levels_;
};

struct Spot3 {
  float x = 0, y = 0, z = 0;  // units
};

struct Scene {
  Field heights;
  MipTexture grass, rock, sand;
};

// Mountains behind, a bay in front, hills to both sides.
float SceneHeight(float u, float v) {
  const Place place = Warp(u, v, 0.02f, {{4, 4}, 3, 0.4f, 400});
  const float crests = Ridged(place.u, place.v, {{4, 4}, 5, 0.34f, 401});
  const float hills = Fbm(u, v, {{6, 6}, 5, 0.38f, 402});
  const float behind = SmoothStep(0.25f, 0.62f, v);
  const float bayX = u - 0.50f, bayY = v - 0.16f;
  const float bay = SmoothStep(0.30f, 0.05f, std::sqrt(bayX * bayX * 1.7f + bayY * bayY * 1.5f));
  return 14 + 20 * hills + behind * (150 * crests * crests - 30) - 30 * bay;
}

float HeightAt(const Field& field, float x, float z) {
  const float floorX = std::floor(x), floorZ = std::floor(z);
  const int column = static_cast<int>(floorX), row = static_cast<int>(floorZ);
  const float s = x - floorX, t = z - floorZ;
  const float near = field.At(column, row) * (1 - s) + field.At(column + 1, row) * s;
  const float far = field.At(column, row + 1) * (1 - s) + field.At(column + 1, row + 1) * s;
  return near * (1 - t) + far * t;
}

Direction3 NormalAt(const Field& field, float x, float z) {
  constexpr float kStep = 1.5f;
  const float dx = HeightAt(field, x + kStep, z) - HeightAt(field, x - kStep, z);
  const float dz = HeightAt(field, x, z + kStep) - HeightAt(field, x, z - kStep);
  const float scale = 1 / std::sqrt(dx * dx + dz * dz + 4 * kStep * kStep);
  return {-dx * scale, 2 * kStep * scale, -dz * scale};
}

bool IsBelowGround(const Field& heights, const Eye& eye, Direction3 ray, float distance) {
  const float ground = HeightAt(heights, eye.x + ray.x * distance, eye.z + ray.z * distance);
  return eye.y + ray.y * distance <= std::max(ground, kWaterLevel);
}

float RefineMeeting(const Field& heights, const Eye& eye, Direction3 ray, float above,
                    float below) {
  constexpr int kHalvings = 8;
  for (int i = 0; i < kHalvings; ++i) {
    const float middle = (above + below) / 2;
    (IsBelowGround(heights, eye, ray, middle) ? below : above) = middle;
  }
  return below;
}

// Distance at which a ray meets the ground or the water.
std::optional<float> MeetGround(const Field& heights, const Eye& eye, Direction3 ray) {
  float step = 0.8f, before = 0;
  for (float distance = 2; distance < kFarthest; distance += step) {
    const float y = eye.y + ray.y * distance;
    if (y > kHighest && ray.y > 0) return std::nullopt;
    if (IsBelowGround(heights, eye, ray, distance))
      return RefineMeeting(heights, eye, ray, before, distance);
    before = distance;
    step = 0.3f + 0.006f * distance;
  }
  return std::nullopt;
}

float Shade(const Field& heights, float x, float y, float z) {
  for (float distance = 3; distance < 160; distance += 3) {
    const float rayY = y + 0.6f + kSunlight.y * distance;
    if (HeightAt(heights, x + kSunlight.x * distance, z + kSunlight.z * distance) > rayY)
      return 0.45f;
  }
  return 1;
}

Colour GroundColour(const Scene& scene, Spot3 spot, Direction3 normal, float footprint) {
  const auto [x, y, z] = spot;
  const float patch = Fbm(x / kWorldSide, z / kWorldSide, {{40, 40}, 4, 0.55f, 410});
  const Colour grass =
      Mix(scene.grass.At(x, z, footprint), Rgb(132, 138, 74), Clamp01(0.3f + 0.5f * patch));
  const Colour rock =
      scene.rock.At(x + z, y * 1.3f + 0.4f * z, footprint);  // upright on a steep face
  Colour colour =
      Mix(grass * 1.15f, rock * 1.1f, SmoothStep(0.88f, 0.76f, normal.y + 0.1f * patch));
  colour = Mix(colour, Rgb(236, 240, 244),
               SmoothStep(78, 104, y + 14 * patch) * SmoothStep(0.45f, 0.7f, normal.y));
  return Mix(colour, scene.sand.At(x, z, footprint), SmoothStep(4.5f, 2.0f, y + 1.5f * patch));
}

Colour LitGround(const Scene& scene, Spot3 spot, float footprint) {
  const auto [x, y, z] = spot;
  const Direction3 normal = NormalAt(scene.heights, x, z);
  const float sun = std::max(0.0f, Dot(normal, kSunlight)) * Shade(scene.heights, x, y, z);
  const Colour ground = GroundColour(scene, spot, normal, footprint);
  const Colour light = Rgb(255, 236, 204) * (1.25f * sun) + Rgb(120, 144, 176) * 0.62f;
  return {ground.r * light.r, ground.g * light.g, ground.b * light.b};
}

Colour WaterColour(const Scene& scene, const Eye& eye, Direction3 ray, float x, float z) {
  const float ripple = Fbm(x / kWorldSide, z / kWorldSide, {{90, 260}, 3, 0.5f, 420});
  const float depth = SmoothStep(0, -9, HeightAt(scene.heights, x, z));
  const Colour bed = Mix(Rgb(112, 158, 150), Rgb(30, 78, 104), depth);
  Direction3 up = ray;
  up.y = std::fabs(ray.y) + 0.05f + 0.05f * ripple;
  const float mirror = steady::Pow(1 - std::min(1.0f, std::fabs(ray.y)), 4.0f);
  const Eye surface{x, kWaterLevel + 0.3f, z, eye.pitch, eye.halfWidthAngle};
  const bool hills = MeetGround(scene.heights, surface, up).has_value();
  const Colour mirrored = hills ? Rgb(74, 98, 88) : SkyColour(up);
  return Mix(bed * (0.95f + 0.12f * ripple), mirrored, 0.15f + 0.6f * mirror);
}

// How strongly a line of the 8-unit grid covers a place; `footprint` is a pixel's size in units
// there.
float GridLine(float coordinate, float footprint) {
  constexpr float kSpacing = 8;
  const float cells = coordinate / kSpacing;
  const float distance = std::fabs(cells - std::round(cells)) * kSpacing;
  const float width = std::max(0.05f, 0.5f * footprint);
  return SmoothStep(width + footprint, width * 0.4f, distance) *
         SmoothStep(kSpacing * 0.32f, kSpacing * 0.05f, footprint);
}

Colour WireGround(const Scene& scene, float x, float z, float distance, float pixelAngle) {
  const Direction3 normal = NormalAt(scene.heights, x, z);
  const float footprint = distance * pixelAngle;
  const float line = std::max(GridLine(x, footprint), GridLine(z, footprint * 2.2f));
  const float sun = std::max(0.0f, Dot(normal, kSunlight));
  const Colour paper = Mix(Rgb(16, 44, 70), Rgb(40, 92, 128), sun);
  return Mix(paper, Rgb(178, 222, 246), 0.9f * line);
}

// 0 in the wire frame on the left, 1 in the finished landscape on the right.
float Finished(float across, float down) {
  const float border = 0.40f + 0.10f * (0.5f - down);
  return SmoothStep(border - 0.004f, border + 0.004f, across);
}

Colour ScenePixel(const Scene& scene, const Eye& eye, Direction3 ray, float finished,
                  float pixelAngle) {
  const Direction3 skyRay{ray.x, std::max(0.0f, ray.y), ray.z};
  const std::optional<float> distance = MeetGround(scene.heights, eye, ray);
  if (!distance) return SkyColour(skyRay);
  const float x = eye.x + ray.x * *distance, z = eye.z + ray.z * *distance;
  const float y = HeightAt(scene.heights, x, z);
  const Colour haze = Rgb(190, 208, 222);
  const float far = SmoothStep(60, kFarthest * 1.15f, *distance);
  const auto real = [&] {
    const Colour near = y < kWaterLevel ? WaterColour(scene, eye, ray, x, z)
                                        : LitGround(scene, {x, y, z}, 2 * *distance * pixelAngle);
    return Mix(near, haze, 0.85f * far);
  };
  const auto wire = [&] {
    return Mix(WireGround(scene, x, z, *distance, pixelAngle), Rgb(120, 164, 196), 0.5f * far);
  };
  if (finished <= 0) return wire();
  if (finished >= 1) return real();
  return Mix(wire(), real(), finished);
}

}  // namespace

Picture PaintSplashLandscape(int width, int height) {
  const Scene scene{MakeField(kWorldSide, SceneHeight), MipTexture(PaintWetGrass()),
                    MipTexture(PaintRockSurface()), MipTexture(PaintDrySand())};
  const Eye eye;
  const float pixelAngle = 2 * eye.halfWidthAngle / static_cast<float>(width);
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const float across = (static_cast<float>(x) + 0.5f) / static_cast<float>(width);
      const float down = (static_cast<float>(y) + 0.5f) / static_cast<float>(height);
      const float right = (2 * across - 1) * eye.halfWidthAngle;
      const float up =
          eye.pitch + (0.5f * static_cast<float>(height) - static_cast<float>(y)) * pixelAngle;
      const float scale = 1 / std::sqrt(right * right + up * up + 1);
      picture.At(x, y) = ScenePixel(scene, eye, {right * scale, up * scale, scale},
                                    Finished(across, down), pixelAngle);
    }
  }
  return picture;
}

}  // namespace mw
