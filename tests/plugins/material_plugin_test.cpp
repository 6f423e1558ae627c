// The material map that the plug-in makes of a coast with a mountain: what lies where, how coherent
// it is, and that nothing else is touched.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "plugins/mapwright_plugin.h"
#include "plugins/materials.h"
#include "support/golden.h"

namespace mw::plugin {
namespace {

constexpr std::uint32_t kUntouched = 0xDEADBEEF;
constexpr float kCell = 4, kWaterLevel = 40;
constexpr std::size_t kRecords = std::size_t{MAPWRIGHT_GRID_ROW} * MAPWRIGHT_GRID_ROW;

constexpr float kSteep = 3.6f;  // a cone's rise in a cell

// Falls gently to the sea in the low columns; a cone stands on the plain.
float CoastHeight(int i, int j, int size, float rise) {
  const float scale = static_cast<float>(size) / 256;
  const float inland = (static_cast<float>(j) / scale - 60) * 0.3f;
  const float bumps =
      1.5f * std::sin(0.21f * static_cast<float>(i)) * std::sin(0.17f * static_cast<float>(j));
  const float fromPeak =
      std::hypot(static_cast<float>(i) - 128 * scale, static_cast<float>(j) - 180 * scale) / scale;
  const float cone = std::max(0.0f, 140 - rise * fromPeak);
  return std::clamp(kWaterLevel + std::min(inland, 18.0f) + bumps + cone, 0.0f, 256.0f);
}

class MaterialPluginTest : public ::testing::Test {
 protected:
  void MakeCoast(int size, float rise = kSteep) {
    side = size;
    vertices.assign(kRecords, MapwrightVertex{});
    for (int i = 0; i < MAPWRIGHT_GRID_ROW; ++i) {
      for (int j = 0; j < MAPWRIGHT_GRID_ROW; ++j) {
        const float x = static_cast<float>(i) * kCell, z = static_cast<float>(j) * kCell;
        Vertex(i, j).x = x;
        Vertex(i, j).z = z;
        Vertex(i, j).h = CoastHeight(i, j, size, rise);
      }
    }
  }
  std::vector<std::uint32_t> Generate() {
    std::vector<std::uint32_t> materials(kRecords, kUntouched);
    EXPECT_TRUE(initMatMap());
    generateMatMap(side, materials.data(), vertices.data(), kWaterLevel, 1);
    return materials;
  }
  static std::size_t Record(int i, int j) {
    return static_cast<std::size_t>(i) * MAPWRIGHT_GRID_ROW + static_cast<std::size_t>(j);
  }
  MapwrightVertex& Vertex(int i, int j) { return vertices[Record(i, j)]; }

  int side = 0;
  std::vector<MapwrightVertex> vertices;
};

// A letter a material, of every fourth cell; the sea lies to the left. Then how many cells have it.
TEST_F(MaterialPluginTest, ACoastHasSandAPlainGrassAndAMountainRockAndFrost) {
  std::string told;
  // A peak, one that is cut level, and one that is all scree.
  for (const auto& [top, rise] :
       {std::pair{256.0f, kSteep}, {kWaterLevel + 120, kSteep}, {256, 2.4f}}) {
    MakeCoast(256, rise);
    for (MapwrightVertex& vertex : vertices) vertex.h = std::min(vertex.h, top);
    const std::vector<std::uint32_t> materials = Generate();
    std::size_t counts[MAPWRIGHT_MATERIALS] = {}, beyond = 0;
    for (int i = 0; i < MAPWRIGHT_GRID_ROW; ++i) {
      for (int j = 0; j < MAPWRIGHT_GRID_ROW; ++j) {
        const bool inLevel = i >= 1 && i <= side && j < side;
        const std::uint32_t material = materials[Record(i, j)];
        ASSERT_TRUE(inLevel ? material < MAPWRIGHT_MATERIALS : material == kUntouched) << i << j;
        ++(inLevel ? counts[material] : beyond);
        if (inLevel && i % 4 == 0 && j % 4 == 0) told += static_cast<char>('A' + material);
      }
      if (i >= 1 && i <= side && i % 4 == 0) told += "\n";
    }
    for (std::size_t material = 0; material < MAPWRIGHT_MATERIALS; ++material) {
      told += std::string(1, static_cast<char>('A' + material)) + " " +
              std::to_string(counts[material]) + "\n";
    }
  }
  ExpectGolden("plugins/material_map.txt", told);
}

TEST_F(MaterialPluginTest, NoCellStandsAloneAndTheSameTerrainGivesTheSameMap) {
  MakeCoast(512);
  for (int i = 1; i <= side; ++i) {  // ground so rough that the rules alone would speckle it
    for (int j = 0; j < side; ++j) Vertex(i, j).h += static_cast<float>((i * 7 + j * 13) % 5) - 2;
  }
  const std::vector<std::uint32_t> materials = Generate();
  EXPECT_EQ(materials, Generate());
  int alone = 0;
  for (int i = 2; i < side; ++i) {
    for (int j = 1; j < side - 1; ++j) {
      const std::uint32_t own = materials[Record(i, j)];
      alone += materials[Record(i - 1, j)] != own && materials[Record(i + 1, j)] != own &&
               materials[Record(i, j - 1)] != own && materials[Record(i, j + 1)] != own;
    }
  }
  EXPECT_EQ(alone, 0);
}

TEST_F(MaterialPluginTest, HeightsThatAreNoNumbersGetAMaterialToo) {
  MakeCoast(256);
  const float odd[] = {NAN, INFINITY, -INFINITY, 3e38f};
  for (int i = 1; i <= side; ++i) Vertex(i, i * 7 % side).h = odd[i % 4];
  for (const std::uint32_t material : Generate()) {
    ASSERT_TRUE(material < MAPWRIGHT_MATERIALS || material == kUntouched);
  }
}

TEST_F(MaterialPluginTest, SizesOutsideTheGridLeaveTheMapAsItWas) {
  MakeCoast(256);
  for (const int size : {-1, 0, MAPWRIGHT_MAX_SIZE + 1}) {
    side = size;
    EXPECT_EQ(Generate(), std::vector<std::uint32_t>(kRecords, kUntouched)) << size;
  }
}

}  // namespace
}  // namespace mw::plugin
