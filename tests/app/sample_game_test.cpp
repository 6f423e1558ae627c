#include "app/sample_game.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "app/level_fixture.h"
#include "data/mods.h"
#include "support/each_change.h"
#include "support/prompts.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

// No mod is there. The writer's work is stood in for by the fixture's game.
class SampleGameTest : public LevelTest {
 protected:
  SampleGameTest() {
    MakeLevel("Stone_Ridge", 256, 1024);
    fs::create_directory(folder / "made");
    fs::rename(folder / "Mods", folder / "made/Mods");
    fs::rename(folder / "varnhold.cfg", folder / "made.cfg.text");
    FindMods();
    shell.writeSampleGame = [this](const std::string& game, const std::string& work) {
      // Not into a folder that is there: MinGW takes any two folders for the same.
      fs::create_directories(fs::path(game).parent_path());
      fs::copy(folder / "made", game, fs::copy_options::recursive);
      fs::copy_file(folder / "made.cfg.text", fs::path(work) / "varnhold.cfg");
      std::ofstream(fs::path(work) / "varnhold.lst") << "rem\n";
      return writing;
    };
  }
  // What the working folder has, but the fixture's own.
  std::vector<std::string> Left() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
      const std::string name = entry.path().filename().string();
      if (name != "made" && name != "made.cfg.text") names.push_back(name);
    }
    return names;
  }
  void StartOver() {
    archives.Clear();
    editor.levelLoaded = editor.levelModified = false;
    for (const std::string& name : Left()) fs::remove_all(folder / name);
    FindMods();
  }

  SampleGameWriting writing{true, {}};
};

TEST_F(SampleGameTest, IsPutInPlaceAndOpenedBesideWhatIsThere) {
  fs::create_directory(folder / "game");
  Answer({PromptAnswer::Ok});  // the fixture's mod has no content
  EXPECT_TRUE(TrySampleGame());
  EXPECT_EQ(modConfig.LevelName, "Stone_Ridge");
  EXPECT_EQ(modConfig.GamePath, GameFolder() + "game-2\\");
  EXPECT_TRUE(fs::is_empty(folder / "game"));
  EXPECT_EQ(scripted::script.gameSettings["INSTALLEDVERSION"], "1.04");
  EXPECT_FALSE(fs::exists(folder / "sample_game.unfinished"));
}

TEST_F(SampleGameTest, CancelOrAFailedWriterLeavesNothing) {
  writing = {};
  EXPECT_FALSE(TrySampleGame());
  ExpectPrompts({});
  EXPECT_THAT(Left(), ::testing::IsEmpty());
  writing = {false, "No space left on device"};
  Answer({PromptAnswer::Ok});
  EXPECT_FALSE(TrySampleGame());
  ExpectPrompts({"No space left on device"});
  EXPECT_THAT(Left(), ::testing::IsEmpty());
}

TEST_F(SampleGameTest, AFailureAtAnyChangeLeavesAllOfItOrNothing) {
  EachChange(4, [&](std::size_t change) {
    StartOver();
    scripted::script.answers.assign(3, PromptAnswer::Ok);
    const bool hit = HitWhile(FaultKind::Fail, change, [] { TrySampleGame(); });
    TakePrompts();
    EXPECT_FALSE(fs::exists(folder / "sample_game.unfinished"));
    const bool named = fs::exists(folder / "varnhold.cfg");
    EXPECT_EQ(named, change >= 3) << "the game, its object list and its configuration are moved";
    EXPECT_EQ(fs::exists(folder / "game"), named);
    EXPECT_EQ(fs::exists(folder / "varnhold.lst"), named);
    EXPECT_TRUE(named || !editor.levelLoaded);
    return hit;
  });
}

}  // namespace
}  // namespace mw
