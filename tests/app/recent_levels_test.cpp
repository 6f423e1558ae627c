#include "app/recent_levels.h"

#include <filesystem>
#include <gmock/gmock.h>

#include "app/level.h"
#include "app/level_fixture.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "platform/disk.h"
#include "support/prompts.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

constexpr const char* kSetting = "RecentLevels";

class RecentLevelsTest : public LevelTest {
 protected:
  RecentLevelsTest() {
    FindMods();
    SelectMod(0);
  }
  std::string& Kept() { return scripted::script.editorSettings[kSetting]; }
  static void Remember(const std::string& archive, const std::string& mod = "m") {
    openLevel.archivePath = archive;
    openLevel.mod = mod;
    RememberLevel();
    openLevel.archivePath.clear();
  }
  static std::vector<std::string> Paths() {
    std::vector<std::string> paths;
    for (const RecentLevel& level : RecentLevels()) paths.push_back(level.archive);
    return paths;
  }
};

TEST_F(RecentLevelsTest, TheNewestTenAreKeptEachOnce) {
  EXPECT_THAT(Paths(), ElementsAre());
  for (int i = 0; i < 12; ++i) Remember("\\l\\" + std::to_string(i) + ".vra");
  ASSERT_EQ(RecentLevels().size(), kMaxRecentLevels);
  EXPECT_EQ(Paths().front(), "/l/11.vra");
  EXPECT_EQ(Paths().back(), "/l/2.vra");
  Remember("\\l\\5.vra", "other");
  EXPECT_EQ(RecentLevels().size(), kMaxRecentLevels);
  EXPECT_EQ(RecentLevels().front().mod, "other");
  EXPECT_EQ(std::ranges::count(Paths(), "/l/5.vra"), 1);
  EXPECT_EQ(Paths().back(), "/l/2.vra");
  Remember("\\l\\a\tb.vra");
  EXPECT_EQ(Paths().front(), "/l/5.vra") << "a name that the list cannot hold";
}

TEST_F(RecentLevelsTest, ADamagedListGivesWhatIsWhole) {
  Kept() = "\n\t\nno tab\nrelative.vra\tm\n/a.vra\tm\n/a.vra\tm2\n\t/b\n/c.vra\t";
  EXPECT_THAT(Paths(), ElementsAre("/a.vra", "/c.vra"));
  for (int i = 0; i < 1000; ++i) Kept() += "\n/x" + std::to_string(i) + "\tm";
  EXPECT_EQ(RecentLevels().size(), kMaxRecentLevels);
}

TEST_F(RecentLevelsTest, CaptionsTellEqualNamesApart) {
  EXPECT_THAT(RecentLevelCaptions({{"/a/X.vra", "m"}, {"/b/X.vra", "m"}, {"/b/X.vra", "n"}}),
              ElementsAre("X (m) in /a", "X (m) in /b", "X (n)"));
}

TEST_F(RecentLevelsTest, OpeningALevelPutsItFirstAndItOpensAgain) {
  for (const char* level : {"Island", "Valley"}) {
    AnswerDialogs(level);
    ASSERT_TRUE(OpenLevel());
  }
  const std::vector<std::string> paths = Paths();
  EXPECT_THAT(paths,
              ElementsAre(SystemPath(ArchivePath("Valley")), SystemPath(ArchivePath("Island"))));
  ASSERT_TRUE(OpenRecentLevel(paths[1]));
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(Paths().front(), paths[1]);
  EXPECT_EQ(RecentLevels().front().mod, "varnhold");

  editor.levelModified = true;
  Answer({PromptAnswer::Cancel});
  EXPECT_FALSE(OpenRecentLevel(paths[0])) << "the user keeps the changes";
  ExpectPrompts({"Save?"});
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_TRUE(editor.levelModified);

  ASSERT_TRUE(DeleteDiskFile(ArchivePath("Valley")));
  Answer({PromptAnswer::Ok});
  EXPECT_FALSE(OpenRecentLevel(paths[0]));
  ExpectPrompts({"no longer among the recent levels"});
  EXPECT_THAT(Paths(), ElementsAre(paths[1]));
  EXPECT_TRUE(editor.levelLoaded && editor.levelModified);
}

}  // namespace
}  // namespace mw
