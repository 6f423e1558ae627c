#include "terrain/random_terrain.h"

#include "core/game_random.h"
#include "data/load_report.h"
#include "support/test.h"
#include "terrain/flat_ground.h"

namespace mw {
namespace {

// Ground of material 7 and the game's random numbers from seed 1.
class RandomTerrainTest : public FlatGround<SandboxTest> {
 protected:
  RandomTerrainTest() {
    modConfig.WaterLevel = 61;
    for (auto& row : materialMapper->grid) row.fill(7);
    SeedGameRandom(1);
  }
  // The height of the r-th data row and c-th data column, both from 0.
  static float& Sample(int r, int c) { return Height(r + 1, c); }
  static std::vector<float> Generated(std::uint32_t seed, RandomTerrainParameters parameters) {
    SeedGameRandom(seed);
    GenerateTerrain(parameters);
    std::vector<float> all;
    for (int r = 0; r < kSide; ++r) {
      for (int c = 0; c < kSide; ++c) all.push_back(Sample(r, c));
    }
    return all;
  }
};

// Left of column 10 and above row 10 lies the border, which is at 0 during the walk.
TEST_F(RandomTerrainTest, EachSampleIsARandomStepOnTheDampedMeanOfTheRowBefore) {
  GenerateTerrain({127, 25, 0});
  SeedGameRandom(1);  // 41, 18467, 6334, 26500 ...
  std::vector<double> before(kSide), row(kSide);
  for (int r = 0; r < kSide; ++r) {
    for (int c = 0; c < kSide; ++c) {
      double& sample = row[static_cast<std::size_t>(c)] = 0;
      if (r >= 10 && c >= 10 && r <= 246 && c <= 246) {
        for (int tap = -2; tap <= 2; ++tap)
          sample += before[static_cast<std::size_t>(c + tap)] * 20 / 101;
        sample += (GameRandom() % 151 - 75) * 0.02;
      }
      ASSERT_NEAR(Sample(r, c), 127 + 25 * sample, 0.002) << r << ", " << c;
    }
    ASSERT_EQ(Height(0, r), kFlatHeight) << "no sample of the level";
    ASSERT_EQ(Height(r, kSide), kFlatHeight);
    before = row;
  }
}

TEST_F(RandomTerrainTest, SmoothingGoesInPlaceAndLeavesTheOutermostSamples) {
  const auto before = Generated(5, {127, 10, 0});
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

TEST_F(RandomTerrainTest, HeightsBeyondTheScaleAreKeptAndLimitedInTheFile) {
  for (const auto& [base, grey, stored] :
       {std::tuple{300, 300 - 256, 0xFFFF}, {-3, 256 - 3, 0}}) {  // its low eight bits
    GenerateTerrain({base, 1, 0});
    EXPECT_EQ(Sample(0, 0), static_cast<float>(base));
    EXPECT_EQ(terrain.miniMap.grey[64 * kMiniMapSize + 1], grey);
    EXPECT_EQ(Material(1, 0), base > 255 ? 7u : 11u) << "above the highest band it stays";
    ASSERT_TRUE(StoreHeightsInBuffer());
    EXPECT_EQ(terrain.heightBuffer[0] + 256 * terrain.heightBuffer[1], stored);
  }
}

TEST_F(RandomTerrainTest, TheWholeMiniMapIsThatOfTheTerrainReadFromItsFile) {
  GenerateTerrain({127, 25, 3});
  const auto painted = terrain.miniMap.grey;
  terrain.miniMap = MiniMapPicture{};
  ASSERT_TRUE(StoreHeightsInBuffer());
  LoadHeightsFromBuffer();
  EXPECT_TRUE(terrain.miniMap.grey == painted);
}

TEST_F(RandomTerrainTest, EveryCellGetsTheMaterialOfItsHeightAndOnlyThoseOfTheLevel) {
  const float heights[] = {-4,  25,  25.0001f, 70,        70.5f, 80,        81,
                           127, 128, 200,      200.0001f, 255,   255.0001f, 256};
  int column = 0;
  for (const float h : heights) Height(1, column++) = h;
  Height(kSide, kSide - 1) = 20;
  AssignMaterialsByHeight();
  EXPECT_EQ(ListGround(7, Material),
            "1: 0-1=11 2-3=10 4-5=2 6-7=3 8-9=12 10-11=9 14-255=3\n"
            "2-255: 0-255=3\n"
            "256: 0-254=3 255=11\n");
}

TEST_F(RandomTerrainTest, TheCommandWarnsAsksAndGenerates) {
  int seatings = 0;
  hooks.seatObjectsOnGround = [&] {
    ++seatings;
    EXPECT_NE(Heights(), "") << "seated on the new ground";
  };
  editor.levelHasWater = true;
  BeginLoadReport();
  NoteDamagedPart(LevelPart::HeightMap, "cut off");
  NoteDamagedPart(LevelPart::MaterialMap, "cut off");
  Answer({PromptAnswer::Ok});
  EXPECT_TRUE(RandomTerrain(true, [] { return RandomTerrainParameters{}; }));
  ExpectBoxes({{"This will replace any existing terrain.", "WARNING", PromptButtons::OkCancel,
                PromptIcon::Exclamation}});
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(scripted::script.waitCursorCount, 1);
  EXPECT_EQ(repaints, 1);
  EXPECT_EQ(seatings, 1);
  EXPECT_TRUE(MayWrite(LevelPart::HeightMap) && MayWrite(LevelPart::MaterialMap))
      << "what was damaged is replaced";
  ClearLoadReport();
  EXPECT_EQ(modConfig.WaterLevel, 25);
  modConfig.WaterLevel = 61;
  editor.levelHasWater = false;
  EXPECT_TRUE(RandomTerrain(false, [] { return RandomTerrainParameters{}; }));
  EXPECT_EQ(modConfig.WaterLevel, 61);
  ExpectBoxes({});  // of a new level nothing is lost
}

TEST_F(RandomTerrainTest, CancellingOrAnImpossibleSizeChangesNothing) {
  Answer({PromptAnswer::Cancel});
  EXPECT_FALSE(RandomTerrain(true, []() -> std::optional<RandomTerrainParameters> {
    ADD_FAILURE() << "asked after the warning was cancelled";
    return std::nullopt;
  }));
  EXPECT_FALSE(RandomTerrain(false, [] { return std::optional<RandomTerrainParameters>(); }));
  for (const int size : {0, 4096}) {
    modConfig.MaterialSize = size;
    EXPECT_FALSE(RandomTerrain(false, [] { return RandomTerrainParameters{}; }));
  }
  EXPECT_EQ(Heights() + ListGround(7, Material), "");
  EXPECT_EQ(modConfig.WaterLevel, 61);
  EXPECT_FALSE(editor.levelModified);
  EXPECT_EQ(scripted::script.waitCursorCount, 0);
}

}  // namespace
}  // namespace mw
