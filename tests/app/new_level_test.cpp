#include "app/new_level.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "app/level.h"
#include "app/level_fixture.h"
#include "app/modes.h"
#include "app/start_up.h"
#include "core/hooks.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "support/archive_bytes.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/random_terrain.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class NewLevelTest : public LevelTest {
 protected:
  NewLevelTest() {
    entities = Entities{};
    objectStore = ObjectStore{};
    levelTextures = LevelTextures{};
    for (const char* level : {"Island", "Valley"}) AddObjectsScript(level);
    std::ofstream("varnhold.cfg", std::ios::app)
        << "Team=Axis/German/GermanSoldier\nTeam=Allies/US/USSoldier\n";
    shell.selectMod = [](bool) { return true; };
    shell.newLevelDialog = [this] { return Choose(); };
    choices.name = "Atoll";
    choices.size = LevelSize::Small;
    choices.randomTerrain = false;
  }
  ~NewLevelTest() override {
    entities = Entities{};
    objectStore = ObjectStore{};
  }

  void AddObjectsScript(const std::string& level) const {
    Archive archive;
    ASSERT_TRUE(archive.Open(ArchivePath(level), true));
    ASSERT_TRUE(archive.WriteMember("varnhold/levels/" + level + "/StaticObjects.con", {}));
    ASSERT_TRUE(archive.Close());
  }
  // What the dialog would answer.
  std::optional<NewLevelChoices> Choose() const {
    if (cancelled) return std::nullopt;
    return choices;
  }
  bool Create() { return NewLevel(shell.newLevelDialog); }
  void OpenAgain(const std::string& name) {
    AnswerDialogs(name);
    ASSERT_TRUE(OpenLevel());
  }
  std::vector<std::string> MembersOnDisk(const std::string& level) const {
    Archive reader;
    EXPECT_TRUE(reader.Open(ArchivePath(level), false)) << reader.Error();
    std::vector<std::string> names;
    for (const auto& [name, entry] : reader.Entries()) {
      names.emplace_back(name.substr(std::string("varnhold/levels/").size() + level.size() + 1));
    }
    return names;
  }
  std::filesystem::path Levels() const { return folder / "Mods/varnhold/Archives/varnhold/levels"; }

  NewLevelChoices choices;
  bool cancelled = false;
};

struct SizeCase {
  LevelSize size;
  int samples, units;
};

TEST_F(NewLevelTest, EverySizeIsCompleteAndOpensAgain) {
  for (const auto& [size, samples, units] :
       {SizeCase{LevelSize::Small, 256, 1024}, SizeCase{LevelSize::Medium, 512, 2048},
        SizeCase{LevelSize::Large, 1024, 4096}}) {
    choices.size = size;
    choices.name = "Size" + std::to_string(samples);
    choices.heightScaleTenths = 13;
    ASSERT_TRUE(Create());
    EXPECT_TRUE(editor.levelLoaded);
    EXPECT_FALSE(editor.levelModified);
    EXPECT_EQ(status().back(), "Saved level " + choices.name);
    OpenAgain(choices.name);
    EXPECT_EQ(modConfig.MaterialSize, samples);
    EXPECT_EQ(modConfig.WorldSize, units);
    EXPECT_FLOAT_EQ(modConfig.HeightScale, 1.3f);
    EXPECT_FLOAT_EQ(modConfig.WaterLevel, 35);
    EXPECT_EQ(modConfig.fogEnd, 400);
    EXPECT_FLOAT_EQ(terrain.grid[samples][samples - 1].h, 127);
    EXPECT_EQ(MemberOnDisk(choices.name, "heightmap.raw").size(),
              static_cast<std::size_t>(samples) * static_cast<std::size_t>(samples) * 2);
    EXPECT_EQ(MemberOnDisk(choices.name, "materialmap.raw").size(),
              static_cast<std::size_t>(samples) * static_cast<std::size_t>(samples));
  }
}

TEST_F(NewLevelTest, EveryChoiceOfGameRulesOpensAgain) {
  for (unsigned rules = 1; rules < 16; ++rules) {
    SCOPED_TRACE(rules);
    choices.rules = {(rules & 1) != 0, (rules & 2) != 0, (rules & 4) != 0, (rules & 8) != 0};
    scripted::script.answers = {PromptAnswer::Yes};
    ASSERT_TRUE(Create());
    OpenAgain("Atoll");
    const std::vector<std::string> members = MembersOnDisk("Atoll");
    const auto has = [&](const char* member) { return std::ranges::count(members, member) == 1; };
    EXPECT_EQ(has("SinglePlayer/ControlPoints.con"), choices.rules.singlePlayer);
    EXPECT_EQ(has("Conquest.con"), choices.rules.conquest);
    EXPECT_EQ(has("GameTypes/tdm.con"), choices.rules.teamDeathMatch);
    EXPECT_EQ(has("GameTypes/Ctf.con"), choices.rules.captureTheFlag);
    const bool hasBases = choices.rules.conquest || choices.rules.teamDeathMatch;
    EXPECT_EQ(entities.Of(EntityKind::ControlPoint).instances.size(), hasBases ? 2u : 0u);
    const bool hasSpawns = hasBases || choices.rules.captureTheFlag;
    EXPECT_EQ(entities.Of(EntityKind::SoldierSpawn).instances.size(), hasSpawns ? 2u : 0u);
  }
}

TEST_F(NewLevelTest, TheFilesThatAreNoScripts) {
  ASSERT_TRUE(Create());
  CloseLevelArchive();
  EXPECT_THAT(MembersOnDisk("Atoll"), Contains("Init/SkyAndSun.con"));
  EXPECT_EQ(MemberOnDisk("Atoll", "loadcounter.dat"), (Bytes{0x88, 0x94, 0xAE, 0x01}));
  const std::size_t mipChain =
      (512 * 512 + 256 * 256 + 128 * 128 + 64 * 64 + 32 * 32 + 16 * 16 + 8 * 8 + 4 * 4 + 16 + 16) /
      2;  // a block of 8 bytes for 4 x 4
  for (const char* file : {"Textures/Detail.dds", "Textures/ingamemap.dds"}) {
    const Bytes dds = MemberOnDisk("Atoll", file);
    EXPECT_EQ(dds.size(), 128 + mipChain) << file;
    EXPECT_EQ(dds[12] + 256 * dds[13], 512) << "height";
  }
  EXPECT_EQ(MemberOnDisk("Atoll", "Menu/thumbnail.dds").size(), 128u + 128 * 128 / 2);
  EXPECT_THAT(TextOnDisk("Atoll", "Textures/ENVMAP_G_.rcm"), HasSubstr("[CubeMap]"));
  EXPECT_TRUE(std::filesystem::is_directory(folder /
                                            "Mods/varnhold/varnhold/levels/Atoll/ObjectLightMaps"));
}

TEST_F(NewLevelTest, ItStartsInTheObjectMapperWithACameraOverTheGround) {
  editor.savedCameraPosition = {300, 999, 200};
  choices.heightScaleTenths = 5;
  ASSERT_TRUE(Create());
  EXPECT_EQ(camera.position, (Vector3{1024 - 300, (127 + 4) * 0.5f + 20, 200}));
  EXPECT_FLOAT_EQ(camera.pitch, 0);
  EXPECT_FLOAT_EQ(camera.yaw, 180);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  EXPECT_TRUE(editor.ShowGrid);
  EXPECT_FALSE(editor.ShowTextures);
}

TEST_F(NewLevelTest, TheTilesAroundTheMiddleAreAssignedAndStaySo) {
  const auto assigned = [] {
    std::vector<std::string> tiles;
    for (int row = 0; row < kMaxTiles; ++row) {
      for (int column = 0; column < kMaxTiles; ++column) {
        if (levelTextures
                .SurfaceAssigned[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]) {
          tiles.push_back(std::to_string(row) + "x" + std::to_string(column));
        }
      }
    }
    return tiles;
  };
  ASSERT_TRUE(Create());
  EXPECT_THAT(assigned(), ElementsAre("1x1", "1x2", "2x1", "2x2"));
  choices.name = "Wide";
  choices.size = LevelSize::Medium;
  ASSERT_TRUE(Create());
  EXPECT_THAT(assigned(), ElementsAre("3x3", "3x4", "4x3", "4x4"));
}

TEST_F(NewLevelTest, RandomTerrainIsMadeWithoutAQuestion) {
  choices.randomTerrain = true;
  choices.water = true;
  shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
  ASSERT_TRUE(Create());
  const float made = terrain.grid[100][100].h;
  EXPECT_NE(made, 127);
  EXPECT_FALSE(editor.levelModified);
  OpenAgain("Atoll");
  EXPECT_NEAR(terrain.grid[100][100].h, made, 1.0f / 256);
  EXPECT_FLOAT_EQ(modConfig.WaterLevel, 35);
  EXPECT_THAT(TextOnDisk("Atoll", "Init.con"), HasSubstr("water.texLayer1"));
}

TEST_F(NewLevelTest, AFlatLevelShowsNothingOfTheOneBeforeInTheMiniMap) {
  OpenAgain("Island");
  ASSERT_NE(terrain.miniMap.grey, MiniMapPicture{}.grey);
  ASSERT_TRUE(Create());
  EXPECT_EQ(terrain.miniMap.grey, MiniMapPicture{}.grey);
}

TEST_F(NewLevelTest, TheTheatreNamesTheTextures) {
  choices.theatre = "Desert";
  ASSERT_TRUE(Create());
  EXPECT_EQ(modConfig.AlternativePath, "Texture/Desert");
  EXPECT_THAT(TextOnDisk("Atoll", "Init.con"), HasSubstr("alternativePath Texture/Desert\r\n"));
}

TEST_F(NewLevelTest, WithoutGameRulesItBecomesConquest) {
  choices.rules = {};
  scripted::script.answers = {PromptAnswer::Ok};
  ASSERT_TRUE(Create());
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "Levels without a game rule specified cannot be created.\n"
            "This new level will be created using CONQUEST (CQ) game rules.");
  EXPECT_EQ(scripted::script.prompts[0].caption, "No Games Rules");
  EXPECT_EQ(scripted::script.prompts[0].icon, PromptIcon::Exclamation);
  EXPECT_THAT(MembersOnDisk("Atoll"), Contains("Conquest.con"));
}

TEST_F(NewLevelTest, CancellingLeavesTheOpenLevelAlone) {
  OpenAgain("Island");
  terrain.grid[10][10].h = 99;
  editor.levelModified = true;
  cancelled = true;
  shell.newLevelDialog = [] {
    modConfig.LevelName = "MyLevel";  // as Defaults does
    return std::nullopt;
  };
  EXPECT_FALSE(Create());
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_TRUE(editor.levelModified);
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw")[(10 * 256 + 256 - 10) * 2 + 1], 99);
}

TEST_F(NewLevelTest, TheWelcomeDialogCreatesTheFirstLevel) {
  std::vector<WelcomeChoice> answers{WelcomeChoice::NewLevel, WelcomeChoice::NewLevel};
  cancelled = true;
  shell.welcomeDialog = [&](const auto&) {
    const WelcomeChoice answer = answers.back();
    answers.pop_back();
    cancelled = !answers.empty();  // the first time the user thinks better of it
    return answer;
  };
  EXPECT_TRUE(RunWelcomeLoop());
  EXPECT_TRUE(answers.empty());
  EXPECT_TRUE(editor.levelLoaded);
}

TEST_F(NewLevelTest, AnOverwrittenLevelStaysAsItsBackup) {
  const Bytes island = ReadBytes(Levels() / "Island.vra");
  OpenAgain("Island");
  choices.name = "Island";
  ASSERT_TRUE(Create());
  EXPECT_EQ(ReadBytes(Levels() / "Island.vra.bak"), island);
  EXPECT_THAT(ListLevels(), ElementsAre("Island", "Valley"));
  OpenAgain("Island");
  EXPECT_THAT(MembersOnDisk("Island"), Not(Contains("notes.txt")));
  EXPECT_FLOAT_EQ(terrain.grid[10][10].h, 127);
}

// Every change to the disk fails in turn, and the program is told to go on.
TEST_F(NewLevelTest, AFailureLeavesTheOldLevelAndAnEditorThatIsUsable) {
  const Bytes island = ReadBytes(Levels() / "Island.vra");
  choices.name = "Island";
  for (int failing = 0;; ++failing) {
    ASSERT_LT(failing, 200) << "the level is never created";
    SCOPED_TRACE(failing);
    int change = 0;
    hooks.diskFault = [&](const DiskChange&) -> std::optional<DiskFault> {
      if (change++ == failing) return DiskFault{ENOSPC, 1};
      return std::nullopt;
    };
    scripted::script.answers = {PromptAnswer::Ok};
    const bool created = Create();
    hooks.diskFault = nullptr;
    if (created) break;
    EXPECT_THAT(scripted::script.prompts.back().text,
                HasSubstr("The level could not be created.\n\n"));
    EXPECT_FALSE(editor.levelLoaded);
    EXPECT_FALSE(editor.levelModified);
    EXPECT_FALSE(std::filesystem::exists(Levels() / "Island.vra-new"));
    if (ReadBytes(Levels() / "Island.vra") != island) {
      EXPECT_EQ(ReadBytes(Levels() / "Island.vra.bak"), island);
      std::filesystem::copy(Levels() / "Island.vra.bak", Levels() / "Island.vra",
                            std::filesystem::copy_options::overwrite_existing);
    }
    OpenAgain("Valley");
    ASSERT_TRUE(SaveLevel());
    CloseLevelArchive();  // its compaction is none of the new level's changes
  }
  EXPECT_TRUE(editor.levelLoaded);
  EXPECT_EQ(ReadBytes(Levels() / "Island.vra.bak"), island);
}

TEST_F(NewLevelTest, AFolderThatCannotBeMadeIsNamed) {
  std::ofstream(folder / "Mods/varnhold/varnhold") << "a file in the way";
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(Create());
  EXPECT_EQ(scripted::script.prompts.back().text,
            "The level could not be created.\n\nThe folder " +
                (folder / "Mods/varnhold/varnhold").string() +
                " could not be created.\n\nNo level is open.");
  EXPECT_FALSE(FileExists(ArchivePath("Atoll")));
}

class LevelNameTest : public NewLevelTest {
 protected:
  std::string Refusal(const std::string& typed) {
    scripted::script.prompts.clear();
    scripted::script.answers = {PromptAnswer::Ok};
    EXPECT_EQ(AcceptLevelName(typed), std::nullopt);
    const scripted::Prompt& shown = scripted::script.prompts.at(0);
    EXPECT_EQ(shown.caption, "New Level");
    EXPECT_EQ(shown.icon, PromptIcon::Exclamation);
    return shown.text;
  }
};

TEST_F(LevelNameTest, OnlyLettersAndDigitsStay) {
  EXPECT_EQ(AcceptLevelName("My Level!"), "My_Level_");
  EXPECT_EQ(AcceptLevelName("Käse 2.vra"), "K_se_2_vra");
}

TEST_F(LevelNameTest, NamesWithoutLettersLongNamesAndThoseOfAnotherEditorAreRefused) {
  Archive other;
  ASSERT_TRUE(other.Open(ArchivePath("Valley"), true));
  EXPECT_EQ(Refusal("Valley"), "The level Valley is open in another Mapwright.");
  EXPECT_EQ(Refusal(""), "Please enter a name for the level.");
  EXPECT_EQ(Refusal("?! -"), "Please enter a name for the level.");
  EXPECT_EQ(Refusal("Isle-123"), "Level names must not end with an underscore and three digits.");
  EXPECT_EQ(AcceptLevelName("Isle_12"), "Isle_12");
  modConfig.GamePath = GameFolder() + std::string(100, 'x') + "\\";
  EXPECT_EQ(Refusal(std::string(127, 'n')), "The name of the level is too long.");
}

TEST_F(LevelNameTest, TheLongestNameThatIsAcceptedHoldsEveryFile) {
  std::string name(127, 'n');
  scripted::script.answers.assign(name.size(), PromptAnswer::Ok);
  while (!AcceptLevelName(name)) name.pop_back();
  scripted::script.answers.clear();
  choices.name = name;
  choices.rules = {true, true, true, true};
  EXPECT_TRUE(Create());
}

TEST_F(LevelNameTest, OverwritingIsAskedForByNameAndByFile) {
  modConfig.LevelName = "Unsaved";
  for (const char* name : {"Island", "Unsaved"}) {
    scripted::script.prompts.clear();
    scripted::script.answers = {PromptAnswer::No, PromptAnswer::Yes};
    EXPECT_EQ(AcceptLevelName(name), std::nullopt);
    EXPECT_EQ(AcceptLevelName(name), name);
    ASSERT_EQ(scripted::script.prompts.size(), 2u);
    EXPECT_EQ(scripted::script.prompts[0].text,
              "This will overwrite your existing " + std::string(name) +
                  ".vra file\nin your Varnhold directory.\n\nDo you wish to proceed?");
    EXPECT_EQ(scripted::script.prompts[0].caption, "New Level");
    EXPECT_EQ(scripted::script.prompts[0].buttons, PromptButtons::YesNo);
    EXPECT_EQ(scripted::script.prompts[0].icon, PromptIcon::Information);
  }
}

}  // namespace
}  // namespace mw
