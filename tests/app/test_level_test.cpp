#include "app/test_level.h"

#include <fstream>

#include "app/level_fixture.h"
#include "support/archive_bytes.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

TEST_F(LevelTest, TestingMakesTheLevelTheOnlyMapAndTheGameItsHost) {
  const fs::path settings = folder / "Mods/varnhold/Settings", list = settings / "maplist.con";
  modConfig.LevelName = "Island_2";
  Do("test in a mod that was never played", TestLevel);
  for (const bool starts : {true, false}) {
    scripted::script.program = [starts](std::string_view) { return starts; };
    std::ofstream(list) << "game.addLevel A\r\ngame.addLevel B\r\ngame.setCurrentLevel A\r\n";
    editor.levelModified = true;
    Do("test with edits", TestLevel);
    EXPECT_EQ(ReadBytes(list),
              TextBytes("game.addLevel ISLAND_2\r\ngame.setCurrentLevel ISLAND_2\r\n"));
  }
  fs::remove_all(settings);
  std::ofstream(settings) << "a file in the way";
  Do("test without a map list", TestLevel, {PromptAnswer::Ok});
}

}  // namespace
}  // namespace mw
