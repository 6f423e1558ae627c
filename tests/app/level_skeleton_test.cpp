// The scripts of a new level, word for word as the game is to read them.
#include "app/level_skeleton.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "data/level_archive_test.h"
#include "support/golden.h"

namespace mw {
namespace {

class LevelSkeletonTest : public LevelArchiveTest {
 protected:
  LevelSkeletonTest() {
    modConfig.configurationName = "mymod";
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    modConfig.HeightScale = 0.7f;
    modConfig.AlternativePath = "Texture/Desert";
  }

  // Every member of the level's archive under its path, without carriage returns.
  std::string AllScripts() {
    std::string all;
    for (const auto& [name, entry] : level->Entries()) {
      const std::string file(name.substr(std::string("varnhold/levels/Island/").size()));
      std::string script = Get(file.c_str());
      EXPECT_EQ(std::ranges::count(script, '\n'), std::erase(script, '\r')) << file;
      all += "==== " + file + "\n" + script + "\n";
    }
    return all;
  }
};

TEST_F(LevelSkeletonTest, EachGameRuleHasItsFilesAndWaterItsCommands) {
  const struct {
    const char* golden;
    GameRules rules;
    bool water;
  } cases[] = {{"app/skeleton_conquest.txt", {.conquest = true}, false},
               {"app/skeleton_team_death_match.txt", {.teamDeathMatch = true}, false},
               {"app/skeleton_single_player.txt", {.singlePlayer = true}, false},
               {"app/skeleton_capture_the_flag_water.txt", {.captureTheFlag = true}, true}};
  for (const auto& [golden, rules, water] : cases) {
    level->RemoveMembersIf([](std::string_view) { return true; });
    editor.levelHasWater = water;
    EXPECT_TRUE(WriteLevelScripts(rules));
    ExpectGolden(golden, AllScripts());
  }
}

TEST_F(LevelSkeletonTest, FoldersOnDiskComeWithTheirParents) {
  std::filesystem::create_directories(folder / "Mods/MYMOD");
  EXPECT_EQ(CreateLevelFolders({.singlePlayer = true, .captureTheFlag = true}), std::nullopt);
  const auto inLevel = folder / "Mods/MYMOD/varnhold/levels/Island";
  for (const char* name : {"AI", "GameTypes", "Init", "Menu", "ObjectLightMaps", "Pathfinding",
                           "Sounds", "Textures", "SinglePlayer", "Ctf"}) {
    EXPECT_TRUE(std::filesystem::is_directory(inLevel / name)) << name;
  }
  EXPECT_FALSE(std::filesystem::exists(inLevel / "TDM"));
  EXPECT_TRUE(std::filesystem::is_directory(folder / "Mods/MYMOD/Archives/varnhold/levels"));
  EXPECT_EQ(CreateLevelFolders({.teamDeathMatch = true}), std::nullopt) << "most are there already";
}

}  // namespace
}  // namespace mw
