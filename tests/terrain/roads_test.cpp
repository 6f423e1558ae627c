#include "terrain/roads.h"

#include "support/golden.h"
#include "support/test.h"
#include "terrain/flat_ground.h"

namespace mw {
namespace {

class RoadsTest : public FlatGround<SandboxTest> {
 protected:
  // Picks a place in cell (i, j), whose corner is at this height.
  static void Pick(int i, int j, float h) {
    Height(i, j) = h;
    AddRoadPointAt(static_cast<float>(i) * 4 + 3, static_cast<float>(j) * 4 + 1);
  }
};

// Lengths are measured with the heights: 16 units along the columns and 4 up are four steps of 3.88
// units along the columns, each one height unit higher. Each segment leaves out the cell of its
// last point.
TEST_F(RoadsTest, EachRoadGradesAndPaintsWhatIsListed) {
  struct Point {
    int i, j;
    float h;
  };
  const struct {
    const char* name;
    int width, material;
    std::vector<Point> points;
  } roads[] = {
      {"path that rises", 1, 0, {{10, 20, 100}, {10, 24, 104}}},
      {"path that turns", 1, 14, {{40, 50, 60}, {44, 50, 60}, {44, 53, 60}}},
      {"path of a step", 1, 15, {{100, 100, 80}, {101, 100, 80}}},
      {"single lane", 2, 15, {{100, 100, 80}, {101, 100, 80}}},
      {"double lane", 3, 15, {{100, 100, 80}, {101, 100, 80}}},
      {"quadruple lane", 4, 15, {{100, 100, 80}, {101, 100, 80}}},
      {"first corner of the level", 4, 3, {{1, 1, 70}, {1, 2, 70}}},
      {"last corner of the level", 4, 3, {{255, 255, 50}, {254, 255, 50}}},
      {"no whole step", 1, 5, {{10, 20, 90}, {10, 20, 90}}},
      {"one point", 1, 5, {{10, 20, 90}}},
  };
  std::string listing;
  for (const auto& [name, width, material, points] : roads) {
    StartFlat();
    terrain.roadWidth = width;
    terrain.roadAutoMaterial = material != 0;
    terrain.roadMaterial = material == 0 ? 7 : material;
    for (const auto& [i, j, h] : points) Pick(i, j, h);
    listing += std::string("== ") + name + "\n";
    for (int k = 0; k < terrain.roadPointCount; ++k) {
      const auto& [x, h, z] = terrain.roadPoints[static_cast<std::size_t>(k)];
      listing += FormatText("point at %g, %g, height %g\n", x, z, h);
    }
    CreateRoad();
    EXPECT_EQ(terrain.roadPointCount, 0);
    listing += Told() + "heights\n" + Heights() + "materials\n" + Materials();
  }
  ExpectGolden("terrain/roads.txt", listing);
}

TEST_F(RoadsTest, PointsLieBehindTheFirstRowAndColumnInTheLevelAndAreAtMost32) {
  for (const auto& [x, z] : {std::pair{3.9f, 100.0f},
                             {100, 3.9f},
                             {-50, 100},
                             {257 * 4, 100},
                             {100, 256 * 4},
                             {1e30f, -1e30f}})
    AddRoadPointAt(x, z);
  EXPECT_EQ(terrain.roadPointCount, 0);
  AddRoadPointAt(4, 4);
  AddRoadPointAt(256 * 4, 255 * 4);
  EXPECT_EQ(terrain.roadPointCount, 2);
  for (int i = 1; i <= 31; ++i) Pick(i, 5, static_cast<float>(i));
  EXPECT_EQ(terrain.roadPointCount, 32);
  EXPECT_EQ(terrain.roadPoints[31].h, 30);
  InitGrid();
  EXPECT_EQ(terrain.roadPointCount, 0) << "they do not reach the next level";
}

TEST_F(RoadsTest, ARoadOfTwoPointsIsBuiltAsItWasConfirmedAndElseDiscarded) {
  for (const bool confirmed : {false, true}) {
    for (const int points : {1, 2}) {
      StartFlat();
      Pick(10, 20, 90);
      if (points == 2) Pick(10, 24, 90);
      int asked = 0;
      FinishRoadPoints([&] {
        ++asked;
        terrain.roadWidth = 2;
        return confirmed;
      });
      const bool built = confirmed && points == 2;
      EXPECT_EQ(asked, points - 1) << "of a single point nothing is asked";
      EXPECT_EQ(Height(9, 21), built ? 90 : kFlatHeight);
      EXPECT_EQ(editor.levelModified, built);
      EXPECT_EQ(terrain.roadPointCount, 0);
    }
  }
}

}  // namespace
}  // namespace mw
