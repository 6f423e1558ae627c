#include "sample/object_textures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "assets/noise.h"
#include "core/steady_math.h"
#include "sample/ground_noise.h"

namespace mw::sample {
namespace {

constexpr float kSide = kObjectTextureSide;
constexpr float kTurn = 2 * std::numbers::pi_v<float> / kSide;

float Cloud(int x, int y, int cycles, std::uint32_t seed) {
  return Noise({static_cast<float>(x), static_cast<float>(y)}, kSide, {cycles, 4, seed});
}

// -1 ... 1, unrelated for every pixel.
float Speck(int x, int y) { return 2 * HashUnit(x, y, 1) - 1; }

// A steady value 0 ... 1 for a brick, plank or tile.
float ValueOf(int column, int row) { return HashUnit(column, row, 2); }

Colour Worn(const Colour& colour, int x, int y, float stains, float grain) {
  return colour * (1 + stains * Cloud(x, y, 4, 3) + grain * Speck(x, y));
}

// A wall of courses, each shifted against the one below; `joint` pixels of mortar.
struct Course {
  int column, row, inX, inY;
};
Course CourseAt(int x, int y, int width, int height) {
  const int row = y / height;
  const int shifted = (x + (row % 2) * width / 2) % kObjectTextureSide;
  return {shifted / width, row, shifted % width, y % height};
}

Colour Brick(int x, int y) {
  const Course c = CourseAt(x, y, 32, 16);
  if (c.inX < 2 || c.inY < 2) return Worn(Rgb(176, 166, 150), x, y, 0.15f, 0.06f);
  const Colour brick = Mix(Rgb(136, 66, 50), Rgb(170, 92, 66), ValueOf(c.column, c.row));
  return Worn(brick, x, y, 0.2f, 0.07f) * (c.inY < 4 ? 1.1f : c.inY > 13 ? 0.88f : 1.0f);
}

Colour Stone(int x, int y) {
  const Course c = CourseAt(x, y, 64, 32);
  const float uneven = 1.5f * Cloud(x, y, 16, 8);
  if (static_cast<float>(c.inX) < 3 + uneven || static_cast<float>(c.inY) < 3 - uneven) {
    return Worn(Rgb(104, 98, 86), x, y, 0.2f, 0.08f);
  }
  const Colour stone = Mix(Rgb(132, 128, 116), Rgb(172, 164, 146), ValueOf(c.column, c.row));
  return Worn(stone, x, y, 0.22f, 0.09f);
}

Colour Concrete(int x, int y) {
  const bool seam = y % 64 < 2;  // left by the boards of the formwork
  return Worn(Rgb(152, 150, 142), x, y, 0.22f, 0.06f) * (seam ? 0.82f : 1.0f);
}

Colour Plaster(int x, int y) {
  const float dirt = std::max(0.0f, Cloud(x, y, 4, 12));
  return Mix(Worn(Rgb(222, 212, 190), x, y, 0.06f, 0.03f), Rgb(158, 140, 112), 0.6f * dirt);
}

Colour Planks(int x, int y) {
  const int plank = x / 32, inPlank = x % 32;
  if (inPlank < 2) return Rgb(52, 40, 28);
  const float rings = steady::Sin(kTurn * 8 * static_cast<float>(x) + 6 * Cloud(4 * x, y, 2, 5));
  const Colour wood = Mix(Rgb(116, 88, 58), Rgb(150, 116, 78), ValueOf(plank, 1));
  return Worn(wood, x, y, 0.12f, 0.05f) * (1 + 0.08f * rings);
}

Colour RoofTiles(int x, int y) {
  const Course c = CourseAt(x, y, 32, 32);
  const float round = steady::Sin(std::numbers::pi_v<float> * static_cast<float>(c.inX) / 32);
  const float lip = c.inY > 27 ? 0.55f : 1.0f;
  const Colour tile = Mix(Rgb(140, 72, 48), Rgb(178, 98, 66), ValueOf(c.column, c.row));
  return Worn(tile, x, y, 0.16f, 0.06f) * (0.66f + 0.4f * round) * lip;
}

Colour Corrugated(int x, int y) {
  const float wave = steady::Sin(kTurn * 16 * static_cast<float>(x));
  const float rust = SmoothStep(0.15f, 0.6f, Cloud(x, y, 4, 22) + 0.1f * wave);
  const Colour sheet = Mix(Rgb(134, 140, 138), Rgb(134, 84, 54), 0.8f * rust);
  return Worn(sheet, x, y, 0.08f, 0.04f) * (0.86f + 0.2f * wave) * (y % 128 < 2 ? 0.7f : 1.0f);
}

Colour Camouflage(int x, int y) {
  const float green = Cloud(x, y, 4, 31), brown = Cloud(x, y, 4, 37);
  const Colour base = green > 0.08f   ? Rgb(74, 88, 52)
                      : brown > 0.16f ? Rgb(96, 74, 50)
                                      : Rgb(128, 124, 84);
  return Worn(base, x, y, 0.06f, 0.05f);
}

Colour Canvas(int x, int y) {
  const float weave = 0.05f * static_cast<float>((x / 2 + y / 2) % 2);
  const float fold =
      0.08f * steady::Sin(kTurn * 3 * static_cast<float>(x) + 3 * Cloud(x, y, 2, 41));
  return Worn(Rgb(118, 116, 82), x, y, 0.1f, 0.05f) * (0.97f + weave + fold);
}

Colour Sandbag(int x, int y) {
  const Course c = CourseAt(x, y, 64, 32);
  const float u = static_cast<float>(c.inX) / 32 - 1, v = static_cast<float>(c.inY) / 16 - 1;
  const float bulge = std::max(0.0f, 1 - 0.75f * u * u * u * u - v * v);
  const Colour sack = Mix(Rgb(150, 130, 92), Rgb(176, 154, 112), ValueOf(c.column, c.row));
  return Worn(sack, x, y, 0.1f, 0.07f) * (0.42f + 0.62f * std::sqrt(bulge));
}

Colour Steel(int x, int y) {
  const float scratch = Cloud(4 * x, y, 4, 51) > 0.42f ? 1.15f : 1.0f;
  return Worn(Rgb(86, 90, 92), x, y, 0.12f, 0.05f) * scratch;
}

Colour Rust(int x, int y) {
  return Worn(Mix(Rgb(96, 52, 34), Rgb(150, 88, 50), 0.5f + 0.8f * Cloud(x, y, 8, 57)), x, y, 0.1f,
              0.1f);
}

Colour RedPaint(int x, int y) {
  const float band = y % 85 < 5 ? 1.2f : 1.0f;  // the ribs of a barrel
  const float chipped = SmoothStep(0.3f, 0.5f, Cloud(x, y, 8, 58));
  return Mix(Worn(Rgb(146, 44, 36), x, y, 0.14f, 0.04f) * band, Rust(x, y), chipped);
}

Colour WhitePaint(int x, int y) {
  const float seam = y % 32 < 2 ? 0.8f : 1.0f;
  return Worn(Rgb(216, 214, 204), x, y, 0.1f, 0.03f) * seam;
}

Colour Tread(int x, int y) {
  const bool gap = y % 16 < 5 || x % 64 < 4;
  return Worn(gap ? Rgb(34, 32, 30) : Rgb(74, 70, 64), x, y, 0.15f, 0.08f);
}

Colour Bark(int x, int y) {
  const float ridges = steady::Sin(kTurn * 12 * static_cast<float>(x) + 5 * Cloud(2 * x, y, 2, 61));
  return Worn(Rgb(96, 78, 58), x, y, 0.2f, 0.08f) * (0.84f + 0.22f * ridges);
}

// Leaves are light at the top of the picture, where a crown meets the sky, and dark at its bottom.
Colour Foliage(int x, int y, const Colour& dark, const Colour& light) {
  const float down = static_cast<float>(y) / kSide;
  const float clumps = 0.5f + 0.9f * Cloud(x, y, 16, 71) + 0.2f * Speck(x / 2, y / 2);
  const Colour leaf = Mix(dark, light, std::clamp(clumps, 0.0f, 1.0f));
  return leaf * (1.18f - 0.75f * down) * (1 + 0.1f * Speck(x, y));
}
Colour Leaves(int x, int y) { return Foliage(x, y, Rgb(46, 62, 26), Rgb(126, 138, 66)); }
Colour Needles(int x, int y) { return Foliage(x, y, Rgb(26, 48, 32), Rgb(84, 108, 66)); }
Colour BirchLeaves(int x, int y) { return Foliage(x, y, Rgb(72, 86, 34), Rgb(168, 170, 84)); }

Colour BirchBark(int x, int y) {
  const bool mark = Cloud(x, 4 * y, 4, 81) > 0.42f;
  return Worn(mark ? Rgb(58, 54, 50) : Rgb(206, 202, 192), x, y, 0.08f, 0.05f);
}

Colour Window(int x, int y) {
  const bool frame = x < 20 || x >= 236 || y < 20 || y >= 236;
  const bool bar = std::abs(x - 128) < 7 || std::abs(y - 128) < 7;
  if (frame || bar) return Worn(Rgb(198, 192, 176), x, y, 0.08f, 0.04f);
  const int gloss = 256 - y + x / 2;
  return Mix(Rgb(40, 52, 62), Rgb(98, 122, 138), static_cast<float>(gloss) / 384.0f);
}

Colour Door(int x, int y) {
  const bool frame = x < 14 || x >= 242 || y < 12;
  if (frame) return Worn(Rgb(92, 72, 50), x, y, 0.1f, 0.04f);
  const bool knob = steady::Hypot(static_cast<float>(x - 212), static_cast<float>(y - 140)) < 8;
  return knob ? Rgb(190, 168, 96) : Planks(x, y) * 0.85f;
}

Colour Cloth(int x, int y, const Colour& field, const Colour& stripe) {
  const float fold = 1 + 0.14f * steady::Sin(kTurn * 3 * static_cast<float>(x));
  return Worn(y / 86 == 1 ? stripe : field, x, y, 0.05f, 0.03f) * fold;
}
Colour RedCloth(int x, int y) { return Cloth(x, y, Rgb(168, 38, 34), Rgb(226, 216, 196)); }
Colour BlueCloth(int x, int y) { return Cloth(x, y, Rgb(40, 66, 140), Rgb(226, 222, 206)); }

}  // namespace

const std::vector<ObjectMaterial>& ObjectMaterials() {
  static const std::vector<ObjectMaterial> materials{
      {"brick", Brick},           {"stone", Stone},
      {"concrete", Concrete},     {"plaster", Plaster},
      {"planks", Planks},         {"rooftiles", RoofTiles},
      {"corrugated", Corrugated}, {"camouflage", Camouflage},
      {"canvas", Canvas},         {"sandbag", Sandbag},
      {"steel", Steel},           {"rust", Rust},
      {"redpaint", RedPaint},     {"whitepaint", WhitePaint},
      {"tread", Tread},           {"bark", Bark},
      {"birchbark", BirchBark},   {"leaves", Leaves},
      {"needles", Needles},       {"birchleaves", BirchLeaves},
      {"window", Window},         {"door", Door},
      {"redcloth", RedCloth},     {"bluecloth", BlueCloth}};
  return materials;
}

Picture PaintMaterial(const ObjectMaterial& material) {
  Picture picture(kObjectTextureSide, kObjectTextureSide);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) picture.At(x, y) = material.paint(x, y);
  }
  return picture;
}

Picture PaintWater(int number) {
  // From clear shallows to a stormy sea.
  const float storm = static_cast<float>(number - 1) / 7.0f;
  const Colour trough = Mix(Rgb(38, 104, 112), Rgb(34, 52, 62), storm);
  const Colour crest = Mix(Rgb(150, 206, 200), Rgb(140, 154, 160), storm);
  Picture picture(kObjectTextureSide, kObjectTextureSide);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const Point at{static_cast<float>(x), static_cast<float>(y)};
      const float ripples = RidgedNoise(
          at, kSide, {number % 2 == 0 ? 8 : 4, 4, static_cast<std::uint32_t>(100 + number)});
      picture.At(x, y) = Mix(trough, crest, ripples * (0.5f + 0.3f * storm));
    }
  }
  return picture;
}

Picture PaintWaveNormals(int number) {
  const auto height = [&](int x, int y) {
    return Noise({static_cast<float>(x), static_cast<float>(y)}, kSide,
                 {8 * number, 3, static_cast<std::uint32_t>(120 + number)});
  };
  constexpr float kSteepness = 5.0f;
  Picture picture(kObjectTextureSide, kObjectTextureSide);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const float dx = kSteepness * (height(x + 1, y) - height(x - 1, y));
      const float dy = kSteepness * (height(x, y + 1) - height(x, y - 1));
      const float length = std::sqrt(dx * dx + dy * dy + 1);
      picture.At(x, y) = {0.5f - 0.5f * dx / length, 0.5f - 0.5f * dy / length,
                          0.5f + 0.5f / length};
    }
  }
  return picture;
}

}  // namespace mw::sample
