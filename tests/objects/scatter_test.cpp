// What the sheet of the scatter brush takes. How it scatters is told by a story of the shell.
#include "objects/scatter.h"

#include <gtest/gtest.h>

#include "objects/object_level_test.h"

namespace mw {
namespace {

TEST_F(ObjectLevelTest, TheScatterSheetOffersWhatIsSelectedAndKeepsWithinItsRanges) {
  for (const char* name : {"oak", "hut", "oak"}) AddObject(name, {1, 2, 3}).selected = true;
  AddObject("bunker01", {1, 2, 3});
  CancelSheets();
  EXPECT_FALSE(EditScatter());
  EXPECT_FALSE(HasScatterKinds());
  AcceptSheets(
      "Share 2: -1; Per 100 x 100 units: 99999; Least distance: -4; Steepest slope: 100; "
      "Scale from, to: 50 0; Stand: Turned");
  ASSERT_TRUE(EditScatter());
  const ScatterSettings& settings = objectStore.scatter.settings;
  EXPECT_EQ(settings.kinds[0].name, "oak");
  EXPECT_EQ(settings.kinds[0].share, 2);
  EXPECT_EQ(settings.kinds[1].name, "hut");
  EXPECT_EQ(settings.kinds[1].share, 0);
  EXPECT_TRUE(settings.kinds[2].name.empty());
  EXPECT_EQ(settings.density, kDensestScatter);
  EXPECT_EQ(settings.distance, 0);
  EXPECT_EQ(settings.steepest, kSteepestScatter);
  EXPECT_EQ(settings.scale, (std::array{kSmallestScatter, kLargestScatter}));
  EXPECT_TRUE(settings.turned);
  EXPECT_FALSE(settings.aboveWater);
}

}  // namespace
}  // namespace mw
