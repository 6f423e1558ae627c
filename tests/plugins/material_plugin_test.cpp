// The material map that the plug-in makes of a coast with a mountain: what lies where, how coherent
// it is, and that nothing else is touched.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <vector>

#include "plugins/mapwright_plugin.h"
#include "plugins/materials.h"

namespace mw::plugin {
namespace {

constexpr std::uint32_t kUntouched = 0xDEADBEEF;
constexpr float kCell = 4, kWaterLevel = 40;
constexpr std::size_t kRecords = std::size_t{MAPWRIGHT_GRID_ROW} * MAPWRIGHT_GRID_ROW;

// Falls gently to the sea in the low columns; a cone stands on the plain.
float CoastHeight(int i, int j, int size) {
  const float scale = static_cast<float>(size) / 256;
  const float inland = (static_cast<float>(j) / scale - 60) * 0.3f;
  const float bumps =
      1.5f * std::sin(0.21f * static_cast<float>(i)) * std::sin(0.17f * static_cast<float>(j));
  const float fromPeak =
      std::hypot(static_cast<float>(i) - 128 * scale, static_cast<float>(j) - 180 * scale) / scale;
  const float cone = std::max(0.0f, 140 - 3.6f * fromPeak);
  return std::clamp(kWaterLevel + std::min(inland, 18.0f) + bumps + cone, 0.0f, 256.0f);
}

class MaterialPluginTest : public ::testing::Test {
 protected:
  void MakeCoast(int size) {
    side = size;
    vertices.assign(kRecords, MapwrightVertex{});
    for (int i = 0; i < MAPWRIGHT_GRID_ROW; ++i) {
      for (int j = 0; j < MAPWRIGHT_GRID_ROW; ++j) {
        MapwrightVertex& vertex = Vertex(i, j);
        vertex.x = static_cast<float>(i) * kCell;
        vertex.z = static_cast<float>(j) * kCell;
        vertex.h = CoastHeight(i, j, size);
      }
    }
  }
  std::vector<std::uint32_t> Generate() {
    std::vector<std::uint32_t> materials(kRecords, kUntouched);
    EXPECT_TRUE(initMatMap());
    generateMatMap(side, materials.data(), vertices.data(), kWaterLevel, 1);
    return materials;
  }
  MapwrightVertex& Vertex(int i, int j) {
    return vertices[static_cast<std::size_t>(i) * MAPWRIGHT_GRID_ROW + static_cast<std::size_t>(j)];
  }
  static std::uint32_t At(const std::vector<std::uint32_t>& materials, int i, int j) {
    return materials[static_cast<std::size_t>(i) * MAPWRIGHT_GRID_ROW +
                     static_cast<std::size_t>(j)];
  }
  // Share of the materials among the level's cells that are chosen.
  template <typename Chosen>
  std::map<Material, double> Shares(const std::vector<std::uint32_t>& materials, Chosen chosen) {
    std::map<Material, double> shares;
    double count = 0;
    for (int i = 1; i <= side; ++i) {
      for (int j = 0; j < side; ++j) {
        if (!chosen(i, j)) continue;
        shares[static_cast<Material>(At(materials, i, j))] += 1;
        ++count;
      }
    }
    for (auto& share : shares) share.second /= count;
    return shares;
  }

  int side = 0;
  std::vector<MapwrightVertex> vertices;
};

TEST_F(MaterialPluginTest, EveryCellOfTheLevelAndNoOtherGetsAMaterial) {
  MakeCoast(256);
  const std::vector<std::uint32_t> materials = Generate();
  for (int i = 0; i < MAPWRIGHT_GRID_ROW; ++i) {
    for (int j = 0; j < MAPWRIGHT_GRID_ROW; ++j) {
      const bool inLevel = i >= 1 && i <= side && j < side;
      const std::uint32_t material = At(materials, i, j);
      ASSERT_TRUE(inLevel ? material < MAPWRIGHT_MATERIALS : material == kUntouched)
          << i << ", " << j << ": " << material;
    }
  }
}

TEST_F(MaterialPluginTest, SameTerrainGivesTheSameMap) {
  MakeCoast(512);
  const std::vector<std::uint32_t> first = Generate();
  EXPECT_EQ(first, Generate());
}

TEST_F(MaterialPluginTest, SandLinesTheWater) {
  MakeCoast(256);
  auto shares = Shares(Generate(), [&](int i, int j) {
    const float above = Vertex(i, j).h - kWaterLevel;
    return above > 0.3f && above < 1.0f;
  });
  EXPECT_GT(shares[Material::WetSand] + shares[Material::DrySand], 0.9);
  EXPECT_GT(shares[Material::WetSand], 0.5);
}

TEST_F(MaterialPluginTest, SteepGroundIsRockBelowTheFrost) {
  MakeCoast(256);
  auto shares = Shares(Generate(), [&](int i, int j) {
    const float above = Vertex(i, j).h - kWaterLevel;
    return above > 30 && above < 80;
  });
  EXPECT_GT(shares[Material::RockSurface], 0.9);
}

TEST_F(MaterialPluginTest, AMountainsLevelTopIsFrozenAndAPlainIsNot) {
  MakeCoast(256);
  for (MapwrightVertex& vertex : vertices) vertex.h = std::min(vertex.h, kWaterLevel + 120);
  const std::vector<std::uint32_t> materials = Generate();
  EXPECT_EQ(At(materials, 128, 180), static_cast<std::uint32_t>(Material::FrozenGround));
  auto plain = Shares(materials, [&](int i, int j) { return j > 90 && j < 120 && i < 60; });
  EXPECT_GT(plain[Material::DryGrass] + plain[Material::WetGrass], 0.8);
}

TEST_F(MaterialPluginTest, NoCellStandsAlone) {
  MakeCoast(512);
  for (int i = 1; i <= side; ++i) {  // ground so rough that the rules alone would speckle it
    for (int j = 0; j < side; ++j) Vertex(i, j).h += static_cast<float>((i * 7 + j * 13) % 5) - 2;
  }
  const std::vector<std::uint32_t> materials = Generate();
  int alone = 0;
  for (int i = 2; i < side; ++i) {
    for (int j = 1; j < side - 1; ++j) {
      const std::uint32_t own = At(materials, i, j);
      alone += At(materials, i - 1, j) != own && At(materials, i + 1, j) != own &&
               At(materials, i, j - 1) != own && At(materials, i, j + 1) != own;
    }
  }
  EXPECT_EQ(alone, 0);
}

TEST_F(MaterialPluginTest, HeightsThatAreNoNumbersGetAMaterialToo) {
  MakeCoast(256);
  const float odd[] = {NAN, INFINITY, -INFINITY, 3e38f};
  for (int i = 1; i <= side; ++i) Vertex(i, i * 7 % side).h = odd[i % 4];
  auto shares = Shares(Generate(), [](int, int) { return true; });
  EXPECT_LE(shares.rbegin()->first, Material::PavedRoad);
}

TEST_F(MaterialPluginTest, SizesOutsideTheGridLeaveTheMapAsItWas) {
  MakeCoast(256);
  for (const int size : {-1, 0, MAPWRIGHT_MAX_SIZE + 1}) {
    side = size;
    const std::vector<std::uint32_t> materials = Generate();
    EXPECT_EQ(std::count(materials.begin(), materials.end(), kUntouched),
              static_cast<std::ptrdiff_t>(kRecords));
  }
}

}  // namespace
}  // namespace mw::plugin
