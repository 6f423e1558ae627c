#include "sample/tile_painter.h"

#include <algorithm>
#include <cmath>

#include "assets/noise.h"
#include "core/steady_math.h"
#include "sample/ground_light.h"
#include "sample/ground_noise.h"

namespace mw::sample {
namespace {

constexpr float kRoadVerge = 5.0f;   // world units beside a road that its dust reaches
constexpr float kWetBand = 2.2f;     // world units above the water that are dark with damp
constexpr float kClearDepth = 6.0f;  // depth at which the bottom has mostly faded
constexpr float kFray = 4.5f;        // world units by which borders of materials wander
constexpr int kGrainSide = 512;

const Colour kDeepWater = Rgb(24, 54, 66), kShallowWater = Rgb(62, 112, 108);
const Colour kFoam = Rgb(226, 226, 214);

// Grain of several sizes on a grid that wraps: every pixel a little different, in small clumps.
Grid MakeGrain() {
  return MakeGrid(kGrainSide, [](Point at) {
    const float speck = 2 * HashUnit(static_cast<int>(at.x), static_cast<int>(at.z), 1) - 1;
    const float clumps = Noise(at, kGrainSide * kCellSize, {64, 3, 7});
    return std::clamp(0.9f * clumps + 0.45f * speck, -1.0f, 1.0f);
  });
}

Grid MakeMottle(const Grid& height) {
  return MakeGrid(height.Side(), [&](Point at) {
    return std::clamp(1.4f * Noise(at, height.WorldSize(), {16, 4, 40}), -1.0f, 1.0f);
  });
}

// A ground varies between two colours; its grain is a share of its brightness.
struct GroundLook {
  Colour dark, light;
  float grain;
};

GroundLook LookOf(Material material) {
  switch (material) {
    case Material::DryGrass:
      return {Rgb(96, 106, 52), Rgb(154, 144, 84), 0.17f};
    case Material::WetGrass:
      return {Rgb(70, 90, 42), Rgb(116, 122, 62), 0.18f};
    case Material::DryDirt:
      return {Rgb(134, 110, 80), Rgb(156, 134, 100), 0.14f};
    case Material::WetDirt:
      return {Rgb(92, 78, 54), Rgb(112, 102, 64), 0.16f};
    case Material::Mud:
      return {Rgb(78, 66, 46), Rgb(98, 84, 60), 0.1f};
    case Material::Gravel:
      return {Rgb(126, 118, 104), Rgb(152, 142, 126), 0.22f};
    case Material::DrySand:
      return {Rgb(206, 186, 140), Rgb(222, 204, 162), 0.07f};
    case Material::Water:
    case Material::WetSand:
      return {Rgb(168, 148, 108), Rgb(184, 164, 122), 0.07f};
    case Material::Rock:
      return {Rgb(108, 102, 94), Rgb(148, 140, 128), 0.17f};
    default:
      return {Rgb(128, 110, 80), Rgb(150, 130, 96), 0.12f};  // what shows beside a road
  }
}

// Two ruts where wheels run, as a factor on the road's brightness.
float Ruts(float distance, float width) {
  const float fromRut = std::abs(distance - width * 0.24f);
  return 1 - 0.16f * (1 - SmoothStep(0.2f, 0.9f, fromRut));
}

Colour RoadColour(const RoadHit& hit, float grain, float patch) {
  const float width = hit.road->width;
  switch (hit.road->surface) {
    case Material::PavedRoad: {
      const Colour tar = Rgb(92, 92, 92) * (1 + 0.1f * grain + 0.1f * patch);
      const float line = 1 - SmoothStep(0.12f, 0.42f, hit.distance);
      const bool dash = std::fmod(hit.along, 12.0f) < 6.0f;
      return dash ? Mix(tar, Rgb(206, 200, 176), 0.75f * line) : tar;
    }
    case Material::SandRoad:
      return Rgb(196, 172, 126) * (1 + 0.1f * grain + 0.06f * patch) * Ruts(hit.distance, width);
    default:
      return Rgb(132, 107, 76) * (1 + 0.14f * grain + 0.1f * patch) * Ruts(hit.distance, width);
  }
}

}  // namespace

GroundPainter::GroundPainter(const Landscape& land)
    : land_(land),
      roads_(land.roads, land.height.WorldSize(), kRoadVerge + 2.0f),
      light_(GroundLight(land)),
      mottle_(MakeMottle(land.height)),
      grain_(MakeGrain()) {}

float GroundPainter::Grain(Point at, float unitsPerTexel) const {
  return grain_.At(static_cast<int>(std::floor(at.x / unitsPerTexel)),
                   static_cast<int>(std::floor(at.z / unitsPerTexel)));
}

Material GroundPainter::MaterialAt(int column, int row) const {
  const int side = land_.height.Side();
  const auto wrap = [side](int k) { return static_cast<std::size_t>(k & (side - 1)); };
  return land_.materials[wrap(row) * static_cast<std::size_t>(side) + wrap(column)];
}

Colour GroundPainter::MaterialColour(Material material, Point at) const {
  const float fine = Grain(at, 0.5f);
  const float clumps = grain_.Sample({at.x * 2.0f, at.z * 2.0f});
  const float patches = mottle_.Sample(at);
  float light = 0.5f + 0.35f * patches + 0.3f * clumps;
  if (material == Material::Rock) {
    // Layers of stone show as bands along the height lines.
    light =
        0.5f + 0.5f * steady::Sin(0.45f * land_.height.Sample(at) + 1.1f * clumps + 2.0f * patches);
  }
  const GroundLook look = LookOf(material);
  return Mix(look.dark, look.light, Clamp01(light)) * (1 + look.grain * (fine + 0.6f * clumps));
}

// The materials of the four cells around the point, their borders frayed.
Colour GroundPainter::BlendedMaterials(Point at) const {
  const float frayX = kFray * grain_.Sample({at.x * 1.3f, at.z * 1.3f});
  const float frayZ = kFray * grain_.Sample({at.z * 1.3f + 700.0f, at.x * 1.3f});
  const float x = (at.x + frayX) / kCellSize - 0.5f, z = (at.z + frayZ) / kCellSize - 0.5f;
  const int column = static_cast<int>(std::floor(x)), row = static_cast<int>(std::floor(z));
  const float u = SmoothStep(0, 1, x - std::floor(x)), v = SmoothStep(0, 1, z - std::floor(z));
  const Material corners[4] = {MaterialAt(column, row), MaterialAt(column + 1, row),
                               MaterialAt(column, row + 1), MaterialAt(column + 1, row + 1)};
  const float weights[4] = {(1 - u) * (1 - v), u * (1 - v), (1 - u) * v, u * v};
  Colour sum;
  for (int k = 0; k < 4; ++k) {
    float weight = weights[k];
    if (std::find(corners, corners + k, corners[k]) != corners + k) continue;  // counted already
    for (int other = k + 1; other < 4; ++other) {
      if (corners[other] == corners[k]) weight += weights[other];
    }
    sum = sum + MaterialColour(corners[k], at) * weight;
  }
  return sum;
}

Colour GroundPainter::OverlayRoad(Colour ground, Point at) const {
  const RoadHit hit = roads_.Nearest(at);
  if (!hit.road) return ground;
  const float grain = Grain(at, 0.5f), patch = mottle_.Sample(at);
  const float ragged = hit.road->surface == Material::PavedRoad ? 0.15f : 0.7f;
  const float edge =
      hit.distance - hit.road->width / 2 + ragged * grain_.Sample({at.x * 3, at.z * 3});
  const float dust = 0.55f * (1 - SmoothStep(0, kRoadVerge, edge));
  ground = Mix(ground, Rgb(142, 120, 88) * (1 + 0.12f * grain), dust);
  return Mix(ground, RoadColour(hit, grain, patch), 1 - SmoothStep(-0.6f, 0.5f, edge));
}

Colour GroundPainter::GroundColour(Point at) const {
  const float aboveWater = land_.height.Sample(at) - land_.waterLevel;
  Colour colour = OverlayRoad(BlendedMaterials(at), at);
  colour = colour * std::lerp(0.7f, 1.0f, SmoothStep(0.1f, kWetBand, aboveWater));
  if (aboveWater < 0) {
    const float depth = -aboveWater;
    colour = Mix(colour, kShallowWater, 0.6f * SmoothStep(0, 2.0f, depth));
    colour = Mix(kDeepWater, colour, steady::Exp(-depth / kClearDepth));
  }
  const float surf = std::abs(aboveWater - 0.12f * Grain(at, 1.0f));
  colour = Mix(colour, kFoam, 0.35f * (1 - SmoothStep(0.02f, 0.1f, surf)));
  return colour * light_.Sample(at);
}

Picture GroundPainter::Paint(Point corner, float unitsPerPixel, int pixels) const {
  Picture picture(pixels, pixels);
  for (int y = 0; y < pixels; ++y) {
    for (int x = 0; x < pixels; ++x) {
      const Point at{corner.x + (static_cast<float>(x) + 0.5f) * unitsPerPixel,
                     corner.z + (static_cast<float>(y) + 0.5f) * unitsPerPixel};
      picture.At(x, y) = GroundColour(at);
    }
  }
  return picture;
}

}  // namespace mw::sample
