#include "terrain/random_terrain.h"

#include <algorithm>
#include <vector>

#include "core/game_random.h"
#include "core/hooks.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "support/sandbox.h"
#include "support/test.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr int kSide = 256;

// A flat level of 256 samples made of material 7, and the game's random numbers from seed 1.
class RandomTerrainTest : public SandboxTest {
 protected:
  RandomTerrainTest() {
    modConfig = ModConfig{};
    modConfig.MaterialSize = kSide;
    modConfig.WorldSize = 4 * kSide;
    modConfig.WaterLevel = 61;
    CreateTerrain();
    InitGrid();
    CreateMaterialMapper();
    for (auto& row : materialMapper->grid) row.fill(7);
    SeedGameRandom(1);
  }
  ~RandomTerrainTest() override {
    DestroyMaterialMapper();
    DestroyTerrain();
    modConfig = ModConfig{};
  }

  // The height of the r-th data row and c-th data column, both from 0.
  static float& Height(int r, int c) { return terrain.grid[r + 1][c].h; }
  static std::vector<float> Heights() {
    std::vector<float> all;
    for (int r = 0; r < kSide; ++r) {
      for (int c = 0; c < kSide; ++c) all.push_back(Height(r, c));
    }
    return all;
  }
  static std::vector<float> Generated(std::uint32_t seed, RandomTerrainParameters parameters) {
    SeedGameRandom(seed);
    GenerateTerrain(parameters);
    return Heights();
  }
  static bool IsFlat() {
    const auto heights = Heights();
    return std::all_of(heights.begin(), heights.end(), [](float h) { return h == 127; });
  }
};

constexpr RandomTerrainParameters kUnsmoothed{127, 10, 0};

// A step of the walk from the game's random number, before the amplitude.
double Step(int random) { return (random % 151 - 75) * 0.02; }

TEST_F(RandomTerrainTest, TheBorderIsAtTheBaseAndTheRestIsNot) {
  GenerateTerrain({127, 25, 0});
  int inside = 0, flat = 0;
  for (int r = 0; r < kSide; ++r) {
    for (int c = 0; c < kSide; ++c) {
      if (r < 10 || c < 10 || r > 246 || c > 246) {
        ASSERT_EQ(Height(r, c), 127) << r << ", " << c;
      } else {
        ++inside;
        flat += Height(r, c) == 127;
      }
    }
  }
  EXPECT_EQ(inside, 237 * 237);
  EXPECT_LT(flat, inside / 50);
}

TEST_F(RandomTerrainTest, TheFirstRowIsRandomStepsAndTheNextStandsOnIt) {
  // The first random numbers from seed 1 are 41, 18467, 6334, 26500 ...
  GenerateTerrain(kUnsmoothed);
  EXPECT_FLOAT_EQ(Height(10, 10), 127 + 10 * (41 - 75) * 0.02f);
  EXPECT_FLOAT_EQ(Height(10, 11), 127 + 10 * (18467 % 151 - 75) * 0.02f);
  EXPECT_FLOAT_EQ(Height(10, 12), 127 + 10 * (6334 % 151 - 75) * 0.02f);

  SeedGameRandom(1);
  double first[237];
  for (double& h : first) h = Step(GameRandom());
  EXPECT_NEAR(Height(10, 246), 127 + 10 * first[236], 1e-4)
      << "one number for each sample, in order";
  // Left of column 10 lies the border, at 0 during the walk.
  const double second = (first[0] + first[1] + first[2]) * 20 / 101 + Step(GameRandom());
  EXPECT_NEAR(Height(11, 10), 127 + 10 * second, 1e-4);
  const double third = (first[0] + first[1] + first[2] + first[3]) * 20 / 101 + Step(GameRandom());
  EXPECT_NEAR(Height(11, 11), 127 + 10 * third, 1e-4);
  const double fourth =
      (first[0] + first[1] + first[2] + first[3] + first[4]) * 20 / 101 + Step(GameRandom());
  EXPECT_NEAR(Height(11, 12), 127 + 10 * fourth, 1e-4);
}

TEST_F(RandomTerrainTest, SmoothingGoesInPlaceAndLeavesTheOutermostSamples) {
  const auto before = Generated(5, kUnsmoothed);
  const auto after = Generated(5, {127, 10, 1});
  const auto at = [](int r, int c) { return static_cast<std::size_t>(r * kSide + c); };
  for (int r = 0; r < kSide; ++r) {
    for (int c = 0; c < kSide; ++c) {
      const bool outermost = r == 0 || c == 0 || r == kSide - 1 || c == kSide - 1;
      const float expected = outermost ? before[at(r, c)]
                                       : (before[at(r + 1, c)] + after[at(r - 1, c)] +
                                          before[at(r, c + 1)] + after[at(r, c - 1)]) *
                                             0.25f;
      ASSERT_EQ(after[at(r, c)], expected) << r << ", " << c;
    }
  }
}

TEST_F(RandomTerrainTest, TheSeedDecidesTheTerrain) {
  const RandomTerrainParameters usual;
  const auto terrainOfSeed3 = Generated(3, usual);
  EXPECT_NE(Generated(4, usual), terrainOfSeed3);
  EXPECT_EQ(Generated(3, usual), terrainOfSeed3);
}

TEST_F(RandomTerrainTest, RowZeroAndTheColumnBehindTheLastStayAsTheyAre) {
  GenerateTerrain({90, 25, 7});
  for (int k = 0; k <= kSide; ++k) {
    ASSERT_EQ(terrain.grid[0][k].h, 127);
    ASSERT_EQ(terrain.grid[k][kSide].h, 127);
    ASSERT_EQ(materialMapper->grid[0][k], 7u);
    ASSERT_EQ(materialMapper->grid[k][kSide], 7u);
  }
}

TEST_F(RandomTerrainTest, HeightsBeyondTheScaleAreKeptAndLimitedInTheFile) {
  GenerateTerrain({300, 1, 0});
  EXPECT_EQ(Height(0, 0), 300);
  EXPECT_EQ(terrain.miniMap.grey[64 * kMiniMapSize + 1], 300 - 256) << "its low eight bits";
  EXPECT_EQ(materialMapper->grid[1][0], 7u) << "above the highest band";
  ASSERT_TRUE(StoreHeightsInBuffer());
  EXPECT_EQ(terrain.heightBuffer[0], 0xFF);
  EXPECT_EQ(terrain.heightBuffer[1], 0xFF);

  GenerateTerrain({-3, 1, 0});
  EXPECT_EQ(Height(0, 0), -3);
  EXPECT_EQ(terrain.miniMap.grey[64 * kMiniMapSize + 1], 256 - 3);
  ASSERT_TRUE(StoreHeightsInBuffer());
  EXPECT_EQ(terrain.heightBuffer[1], 0);
}

TEST_F(RandomTerrainTest, TheWholeMiniMapIsThatOfTheTerrainReadFromItsFile) {
  GenerateTerrain({127, 25, 3});
  const auto painted = terrain.miniMap.grey;
  terrain.miniMap = MiniMapPicture{};
  ASSERT_TRUE(StoreHeightsInBuffer());
  LoadHeightsFromBuffer();
  EXPECT_TRUE(terrain.miniMap.grey == painted);
}

TEST_F(RandomTerrainTest, EveryCellGetsTheMaterialOfItsHeight) {
  const struct {
    float h;
    std::uint32_t material;
  } cases[] = {{-4, 11},       {25, 11}, {25.0001f, 10}, {70, 10},  {70.5f, 2},
               {80, 2},        {81, 3},  {127, 3},       {128, 12}, {200, 12},
               {200.0001f, 9}, {255, 9}, {255.0001f, 7}, {256, 7}};
  int column = 0;
  for (const auto& [h, material] : cases) terrain.grid[1][column++].h = h;
  terrain.grid[kSide][kSide - 1].h = 20;
  AssignMaterialsByHeight();
  column = 0;
  for (const auto& [h, material] : cases) {
    EXPECT_EQ(materialMapper->grid[1][column++], material) << h;
  }
  EXPECT_EQ(materialMapper->grid[kSide][kSide - 1], 11u);
  EXPECT_EQ(materialMapper->grid[100][100], 3u) << "flat ground";
}

TEST_F(RandomTerrainTest, WaterIsSetOnlyInALevelThatHasIt) {
  editor.levelHasWater = false;
  GenerateTerrain({});
  EXPECT_EQ(modConfig.WaterLevel, 61);
  editor.levelHasWater = true;
  GenerateTerrain({});
  EXPECT_EQ(modConfig.WaterLevel, 25);
}

TEST_F(RandomTerrainTest, TheCommandWarnsAsksAndGenerates) {
  int repaints = 0, seatings = 0;
  hooks.invalidateMiniMap = [&] { ++repaints; };
  hooks.seatObjectsOnGround = [&] {
    ++seatings;
    EXPECT_FALSE(IsFlat()) << "seated on the new ground";
  };
  BeginLoadReport();
  NoteDamagedPart(LevelPart::HeightMap, "cut off");
  NoteDamagedPart(LevelPart::MaterialMap, "cut off");
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_TRUE(RandomTerrain(true, [] { return RandomTerrainParameters{}; }));
  ExpectBoxes({{"This will replace any existing terrain.", "WARNING", PromptButtons::OkCancel,
                PromptIcon::Exclamation}});
  EXPECT_FALSE(IsFlat());
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(scripted::script.waitCursorCount, 1);
  EXPECT_EQ(repaints, 1);
  EXPECT_EQ(seatings, 1);
  EXPECT_TRUE(MayWrite(LevelPart::HeightMap) && MayWrite(LevelPart::MaterialMap))
      << "what was damaged is replaced";
  ClearLoadReport();
  EXPECT_TRUE(RandomTerrain(false, [] { return RandomTerrainParameters{}; }));
  ExpectBoxes({});  // of a new level nothing is lost
}

TEST_F(RandomTerrainTest, CancellingChangesNothing) {
  scripted::script.answers = {PromptAnswer::Cancel};
  EXPECT_FALSE(RandomTerrain(true, []() -> std::optional<RandomTerrainParameters> {
    ADD_FAILURE() << "asked after the warning was cancelled";
    return std::nullopt;
  }));
  EXPECT_FALSE(RandomTerrain(false, [] { return std::optional<RandomTerrainParameters>(); }));
  EXPECT_TRUE(IsFlat());
  EXPECT_EQ(materialMapper->grid[100][100], 7u);
  EXPECT_EQ(modConfig.WaterLevel, 61);
  EXPECT_FALSE(editor.levelModified);
  EXPECT_EQ(scripted::script.waitCursorCount, 0);
}

TEST_F(RandomTerrainTest, WithoutALevelNothingIsGenerated) {
  modConfig.MaterialSize = 0;
  EXPECT_FALSE(RandomTerrain(false, [] { return RandomTerrainParameters{}; }));
  modConfig.MaterialSize = 4096;
  EXPECT_FALSE(RandomTerrain(false, [] { return RandomTerrainParameters{}; }));
  EXPECT_FALSE(editor.levelModified);
}

}  // namespace
}  // namespace mw
