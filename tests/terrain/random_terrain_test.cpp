#include "terrain/random_terrain.h"

#include "core/game_random.h"
#include "support/test.h"
#include "terrain/flat_ground.h"

namespace mw {
namespace {

// Ground of material 7 and the game's random numbers from seed 1.
class RandomTerrainTest : public FlatGround<SandboxTest> {
 protected:
  RandomTerrainTest() {
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

}  // namespace
}  // namespace mw
