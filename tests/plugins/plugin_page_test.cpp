// The plug-in of docs/plugins.md, compiled as it stands there and loaded as a module.
#include <algorithm>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <vector>

#include "plugins/mapwright_plugin.h"

namespace {

constexpr int kSize = 5;
constexpr std::uint32_t kUntouched = 0xDEADBEEF;
constexpr float kCell = 4, kWaterLevel = 20, kHeightScale = 2;

TEST(PluginPage, ItsPluginDoesWhatThePageSays) {
  void* const module = dlopen(MAPWRIGHT_PLUGIN_PAGE, RTLD_NOW);
  ASSERT_TRUE(module) << dlerror();
  const auto init = reinterpret_cast<decltype(&initMatMap)>(dlsym(module, "initMatMap"));
  const auto generate =
      reinterpret_cast<decltype(&generateMatMap)>(dlsym(module, "generateMatMap"));
  ASSERT_TRUE(init && generate);
  EXPECT_TRUE(init());

  // The same in every row: under water, beach, meadow, and the foot and the top of a cliff.
  constexpr float kHeights[] = {9, 10.5f, 12, 13, 20};
  constexpr std::size_t kRow = MAPWRIGHT_GRID_ROW;
  std::vector<MapwrightVertex> vertices(kRow * kRow);
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    vertices[i].h = kHeights[std::min<std::size_t>(i % kRow, kSize - 1)];
    vertices[i].z = static_cast<float>(i % kRow) * kCell;
  }
  std::vector<std::uint32_t> materials(vertices.size(), kUntouched);
  generate(kSize, materials.data(), vertices.data(), kWaterLevel, kHeightScale);
  for (std::size_t row = 1; row <= kSize; ++row) {
    const std::vector<std::uint32_t> made(&materials[row * kRow], &materials[row * kRow + kSize]);
    EXPECT_THAT(made, testing::ElementsAre(1u, 11u, 2u, 12u, 12u)) << "row " << row;
  }
  EXPECT_EQ(std::ranges::count(materials, kUntouched), kRow * kRow - kSize * kSize);
  dlclose(module);
}

}  // namespace
