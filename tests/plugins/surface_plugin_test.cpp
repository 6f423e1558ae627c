// Tiles as the surface plug-in paints them: where each cell shows, how grounds meet, and that tiles
// meet without a seam.
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/text.h"
#include "plugins/mapwright_plugin.h"
#include "plugins/materials.h"
#include "support/golden.h"

namespace mw::plugin {
namespace {

constexpr int kSize = 256, kTile = MAPWRIGHT_TILE_PIXELS, kPixelsPerCell = 16;
constexpr std::uint32_t kGrass = static_cast<std::uint32_t>(Material::WetGrass);
constexpr std::uint32_t kSand = static_cast<std::uint32_t>(Material::DrySand);

struct Colour {
  int r = 0, g = 0, b = 0;
  friend bool operator==(const Colour&, const Colour&) = default;
};

int Distance(const Colour& a, const Colour& b) {
  return std::abs(a.r - b.r) + std::abs(a.g - b.g) + std::abs(a.b - b.b);
}

class SurfacePluginTest : public ::testing::Test {
 protected:
  std::uint32_t& Material(int i, int j) {
    return materials[static_cast<std::size_t>(i) * MAPWRIGHT_GRID_ROW +
                     static_cast<std::size_t>(j)];
  }
  void Fill(std::uint32_t material) { std::fill(materials.begin(), materials.end(), material); }
  // Both grounds in a pattern that repeats nowhere near.
  void Mix(int down, int across) {
    for (int i = 0; i <= kSize; ++i) {
      for (int j = 0; j <= kSize; ++j)
        Material(i, j) = (i / down + j / across) % 2 ? kGrass : kSand;
    }
  }
  void Begin(int offsetX = 0, int offsetY = 0) {
    ASSERT_TRUE(initSurfaceMap(materials.data(), kSize, offsetX, offsetY));
  }
  static void GiveTexture(std::uint32_t material, int width, int height,
                          const std::vector<std::uint8_t>& rgb) {
    MapwrightTextureSlot slot{};
    slot.loaded = 1;
    slot.width = width;
    slot.height = height;
    slot.pixels = rgb.data();
    initSurfaceBmp(static_cast<std::int32_t>(material), &slot);
  }
  static std::vector<std::uint8_t> Paint(int tileRow, int tileCol) {
    const std::uint8_t* pixels = generateSurfaceMap(kTile, tileRow, tileCol);
    if (!pixels) return {};
    return {pixels, pixels + std::size_t{3} * kTile * kTile};
  }
  static Colour At(const std::vector<std::uint8_t>& tile, int y, int x) {
    const std::uint8_t* p =
        tile.data() +
        (std::size_t{kTile} * static_cast<std::size_t>(y) + static_cast<std::size_t>(x)) * 3;
    return {p[0], p[1], p[2]};
  }
  // Three colours of noise, so that a shift of the picture cannot go unseen.
  static std::vector<std::uint8_t> Speckled(int width, int height, int base) {
    std::vector<std::uint8_t> rgb;
    std::uint32_t state = 12345;
    for (int k = 0; k < 3 * width * height; ++k) {
      state = state * 1664525 + 1013904223;
      rgb.push_back(static_cast<std::uint8_t>(base + static_cast<int>(state >> 26)));
    }
    return rgb;
  }

  std::vector<std::uint32_t> materials =
      std::vector<std::uint32_t>(std::size_t{MAPWRIGHT_GRID_ROW} * MAPWRIGHT_GRID_ROW);
};

TEST_F(SurfacePluginTest, ASignLiesWhereItsCellsAre) {
  Fill(kGrass);
  // An L in tile (1, 2): long along falling rows, short along columns, three cells thick.
  const int row = kSize - 64 - 10, column = 64 * 2 + 30;
  const auto inSign = [](int down, int across) {
    return (across >= 0 && across < 3 && down >= 0 && down < 18) ||
           (down >= 0 && down < 3 && across >= 0 && across < 10);
  };
  for (int down = 0; down < 18; ++down) {
    for (int across = 0; across < 10; ++across) {
      if (inSign(down, across)) Material(row - down, column + across) = kSand;
    }
  }
  Begin();
  const Colour grass = At(Paint(0, 0), 500, 500);
  const std::vector<std::uint8_t> tile = Paint(1, 2);
  int wrong = 0;
  for (int cellX = 0; cellX < 64; ++cellX) {
    for (int cellY = 0; cellY < 64; ++cellY) {
      const Colour middle = At(tile, cellY * kPixelsPerCell + 8, cellX * kPixelsPerCell + 8);
      const bool showsSand = Distance(middle, grass) > 90;
      wrong += showsSand != inSign(cellX - 10, cellY - 30);
    }
  }
  EXPECT_LE(wrong, 3) << "cells of an uneven border";
}

TEST_F(SurfacePluginTest, TexturesRepeatEverySixteenCellsAsInTheSurfaceView) {
  Fill(kGrass);
  Begin();
  const std::vector<std::uint8_t> picture = Speckled(256, 256, 100);
  GiveTexture(kGrass, 256, 256, picture);
  const std::vector<std::uint8_t> tile = Paint(2, 1);
  for (const auto& [y, x] : {std::pair{0, 0}, {16, 0}, {17, 5}, {300, 700}, {1023, 1023}}) {
    const std::size_t texel =
        static_cast<std::size_t>((y - kPixelsPerCell + 256) % 256 * 256 + x % 256) * 3;
    EXPECT_EQ(At(tile, y, x), (Colour{picture[texel], picture[texel + 1], picture[texel + 2]}))
        << y << ", " << x;
  }
}

TEST_F(SurfacePluginTest, PicturesOfAnySizeAreScaled) {
  Fill(kGrass);
  Begin();
  const std::vector<std::uint8_t> even(std::size_t{3} * 37 * 700, 120);
  for (const auto& [width, height] : {std::pair{37, 700}, {700, 37}, {1, 1}}) {
    GiveTexture(kGrass, width, height, even);
    EXPECT_EQ(At(Paint(0, 0), 321, 123), (Colour{120, 120, 120})) << width << " x " << height;
  }
}

// The level's ground along a line through three tiles, every 12 pixels, in hexadecimal digits: the
// edges of the tiles do not show.
TEST_F(SurfacePluginTest, GroundsAreBlendedOverAboutACellAndTilesMeetWithoutASeam) {
  Mix(5, 7);
  Begin();
  GiveTexture(kGrass, 256, 256, Speckled(256, 256, 20));
  GiveTexture(kSand, 1, 1, {200, 180, 160});
  std::string told;
  for (const auto& [right, down] : {std::pair{1, 0}, {0, 1}}) {
    for (int tile = 0; tile < 3; ++tile) {
      const std::vector<std::uint8_t> pixels = Paint(1 + tile * right, tile * down);
      for (int at = 0; at < kTile; at += 12) {
        const Colour colour = right ? At(pixels, 500, at) : At(pixels, at, 500);
        told += FormatText("%02x%02x%02x ", colour.r, colour.g, colour.b);
      }
      told += "\n";
    }
  }
  ExpectGolden("plugins/blended_grounds.txt", told);
}

TEST_F(SurfacePluginTest, OffsetsMoveTheTilesOverTheLevel) {
  Mix(11, 19);
  Begin();
  const std::vector<std::uint8_t> tile = Paint(2, 3);
  EXPECT_NE(tile, Paint(1, 1));
  Begin(1, 2);
  EXPECT_EQ(tile, Paint(1, 1));
}

// The colours of a line of pixels through bands of all grounds, in hexadecimal digits.
TEST_F(SurfacePluginTest, GroundsWithoutAPictureHaveAPlainColourOfTheirOwn) {
  for (int i = 0; i <= kSize; ++i) {
    for (int j = 0; j < kSize; ++j) Material(i, j) = static_cast<std::uint32_t>(j / 4) % 17;
  }
  Begin();
  const MapwrightTextureSlot empty{};
  for (std::int32_t material = 0; material < MAPWRIGHT_MATERIALS; ++material) {
    initSurfaceBmp(material, &empty);
  }
  const std::vector<std::uint8_t> tile = Paint(0, 0), next = Paint(0, 1);
  std::string told;
  for (int y = 0; y < 2 * kTile; y += 8) {
    const Colour colour = At(y < kTile ? tile : next, y % kTile, 100);
    told += FormatText("%02x%02x%02x", colour.r, colour.g, colour.b) + (y % 64 == 56 ? "\n" : " ");
  }
  ExpectGolden("plugins/plain_grounds.txt", told);
}

TEST_F(SurfacePluginTest, WhatCannotBePaintedIsDeclined) {
  EXPECT_FALSE(initSurfaceMap(nullptr, kSize, 0, 0));
  EXPECT_FALSE(initSurfaceMap(materials.data(), MAPWRIGHT_MAX_SIZE + 1, 0, 0));
  EXPECT_TRUE(Paint(0, 0).empty()) << "no run has begun";
  Begin();
  EXPECT_FALSE(generateSurfaceMap(512, 0, 0));
  EXPECT_FALSE(Paint(0, 0).empty());
  EXPECT_FALSE(Paint(7, -3).empty()) << "beyond the level its edge goes on";
}

}  // namespace
}  // namespace mw::plugin
