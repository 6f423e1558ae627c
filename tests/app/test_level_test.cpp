#include "app/test_level.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "app/level_fixture.h"
#include "platform/disk.h"
#include "support/archive_bytes.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TestLevelTest : public LevelTest {
 protected:
  TestLevelTest() {
    std::filesystem::create_directories(folder / "Mods/varnhold/settings");
    modConfig.LevelName = "Island_2";
  }
  std::string MapList() const {
    const Bytes bytes = ReadBytes(folder / "Mods/varnhold/settings/maplist.con");
    return {bytes.begin(), bytes.end()};
  }
};

TEST_F(TestLevelTest, TheLevelIsTheOnlyMapAndTheGameIsItsHost) {
  std::ofstream(folder / "Mods/varnhold/settings/maplist.con")
      << "game.addLevel A\r\ngame.addLevel B\r\ngame.setCurrentLevel A\r\n";
  TestLevel();
  EXPECT_EQ(MapList(), "game.addLevel ISLAND_2\r\ngame.setCurrentLevel ISLAND_2\r\n");
  EXPECT_THAT(
      scripted::script.startedProcesses,
      ElementsAre("\"" + GameFolder() + "varnhold.exe\" +game varnhold +restart 1 +hostServer 1"));
}

TEST_F(TestLevelTest, ItIsSaidThatChangesAreNotTested) {
  editor.levelModified = true;
  TestLevel();
  EXPECT_EQ(status().front(), "Testing level Island_2 as it was last saved, without later changes");
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(TestLevelTest, AModThatWasNeverPlayedGetsItsSettingsFolder) {
  std::filesystem::remove(folder / "Mods/varnhold/settings");
  TestLevel();
  EXPECT_TRUE(FileExists("Mods/varnhold/Settings/maplist.con"));
}

TEST_F(TestLevelTest, WithoutAMapListTheGameIsNotStarted) {
  std::filesystem::remove(folder / "Mods/varnhold/settings");
  std::ofstream(folder / "Mods/varnhold/settings") << "a file in the way";
  scripted::script.answers = {PromptAnswer::Ok};
  TestLevel();
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text, "Error writing to maplist.con");
  EXPECT_EQ(scripted::script.prompts[0].caption, "Error");
  EXPECT_EQ(scripted::script.prompts[0].icon, PromptIcon::Stop);
  EXPECT_THAT(scripted::script.startedProcesses, IsEmpty());
}

}  // namespace
}  // namespace mw
