#include "app/new_level.h"

#include <fstream>
#include <gmock/gmock.h>

#include "app/level.h"
#include "app/level_fixture.h"
#include "app/modes.h"
#include "app/start_up.h"
#include "objects/entities.h"
#include "support/archive_bytes.h"
#include "terrain/level_textures.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr PromptAnswer kYes = PromptAnswer::Yes, kNo = PromptAnswer::No, kOk = PromptAnswer::Ok;

class NewLevelTest : public LevelTest {
 protected:
  NewLevelTest() {
    shell.selectMod = [](bool) { return true; };
    shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
    choices.name = "Atoll";
    choices.size = LevelSize::Small;
    choices.randomTerrain = false;
  }

  void Create(std::initializer_list<PromptAnswer> answers = {}) {
    Do(
        "create " + choices.name, [this] { return NewLevel([this] { return choices; }); }, answers);
  }

  NewLevelChoices choices;
};

TEST_F(NewLevelTest, EverySizeIsCompleteAndOpensAgain) {
  const struct {
    LevelSize size;
    int samples;
    std::vector<std::size_t> tiles;  // around the middle, those that have surface maps
  } cases[] = {{LevelSize::Small, 256, {1, 2}},
               {LevelSize::Medium, 512, {3, 4}},
               {LevelSize::Large, 1024, {3, 4}}};
  for (const auto& [size, samples, tiles] : cases) {
    choices.size = size;
    choices.name = "Size" + std::to_string(samples);
    choices.heightScaleTenths = 13;
    Create();
    EXPECT_TRUE(editor.levelLoaded);
    for (std::size_t row = 0; row < kMaxTiles; ++row) {
      for (std::size_t column = 0; column < kMaxTiles; ++column) {
        EXPECT_EQ(levelTextures.SurfaceAssigned[row][column],
                  std::ranges::count(tiles, row) && std::ranges::count(tiles, column));
      }
    }
    Open(choices.name);
    EXPECT_EQ(modConfig.MaterialSize, samples);
    EXPECT_EQ(modConfig.WorldSize, samples * 4);
    EXPECT_FLOAT_EQ(modConfig.HeightScale, 1.3f);
    EXPECT_FLOAT_EQ(modConfig.WaterLevel, 35);
    EXPECT_EQ(modConfig.fogEnd, 400);
    EXPECT_FLOAT_EQ(terrain.grid[samples][samples - 1].h, 127);
    for (const std::string& member : MembersOnDisk(choices.name)) {
      Tell(member + ' ' + std::to_string(MemberOnDisk(choices.name, member).size()));
    }
  }
  EXPECT_EQ(MemberOnDisk("Size256", "loadcounter.dat"), (Bytes{0x88, 0x94, 0xAE, 0x01}));
  for (const char* texture : {"Textures/Detail.dds", "Textures/ingamemap.dds"}) {
    const Bytes dds = MemberOnDisk("Size256", texture);
    EXPECT_EQ(dds[12] + 256 * dds[13], 512) << "height";
  }
  EXPECT_TRUE(fs::is_directory(folder / "Mods/varnhold/varnhold/levels/Size256/ObjectLightMaps"));
}

TEST_F(NewLevelTest, EveryChoiceOfGameRulesOpensAgainAndNoneBecomesConquest) {
  for (unsigned rules = 0; rules < 16; ++rules) {
    choices.rules = {(rules & 1) != 0, (rules & 2) != 0, (rules & 4) != 0, (rules & 8) != 0};
    CloseLevelArchive();
    fs::remove(island);
    choices.name = "Rules" + std::to_string(rules);
    if (rules == 0) {
      Create({kOk});
    } else {
      EXPECT_TRUE(NewLevel([this] { return choices; }));
    }
    Open(choices.name);
    std::string line = "rules " + std::to_string(rules) + ':';
    for (const std::string& member : MembersOnDisk(choices.name)) {
      const bool isOfRules = member == "SinglePlayer/ControlPoints.con" ||
                             member == "Conquest.con" || member == "GameTypes/tdm.con" ||
                             member == "GameTypes/Ctf.con";
      if (isOfRules) line += ' ' + member;
    }
    for (const EntityKind kind : {EntityKind::ControlPoint, EntityKind::SoldierSpawn}) {
      line += ' ' + std::to_string(entities.Of(kind).instances.size());
    }
    Tell(line);
  }
}

TEST_F(NewLevelTest, ItShowsNothingOfTheOneBefore) {
  Open("Island");
  ASSERT_NE(terrain.miniMap.grey, MiniMapPicture{}.grey);
  editor.savedCameraPosition = {300, 999, 200};
  choices.heightScaleTenths = 5;
  choices.theatre = "Desert";
  Create();
  EXPECT_EQ(terrain.miniMap.grey, MiniMapPicture{}.grey);
  EXPECT_EQ(camera.position, (Vector3{1024 - 300, (127 + 4) * 0.5f + 20, 200}));
  EXPECT_FLOAT_EQ(camera.pitch, 0);
  EXPECT_FLOAT_EQ(camera.yaw, 180);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper) && editor.ShowGrid && !editor.ShowTextures);
  EXPECT_THAT(TextOnDisk("Atoll", "Init.con"),
              testing::HasSubstr("alternativePath Texture/Desert\r\n"));
}

TEST_F(NewLevelTest, RandomTerrainIsMadeWithoutAQuestion) {
  choices.randomTerrain = choices.water = true;
  Create();
  const float made = terrain.grid[100][100].h;
  EXPECT_NE(made, 127);
  Open("Atoll");
  EXPECT_NEAR(terrain.grid[100][100].h, made, 1.0f / 256);
  EXPECT_FLOAT_EQ(modConfig.WaterLevel, 35);
  EXPECT_THAT(TextOnDisk("Atoll", "Init.con"), testing::HasSubstr("water.texLayer1"));
}

TEST_F(NewLevelTest, CancellingLeavesTheOpenLevelAlone) {
  Open("Island");
  Edit();
  Do("cancel", [] {
    return NewLevel([] {
      modConfig.LevelName = "MyLevel";  // as Defaults does
      return std::nullopt;
    });
  });
  EXPECT_EQ(modConfig.LevelName, "Island");
  Do("save", [] { return SaveLevel(); });
}

TEST_F(NewLevelTest, TheWelcomeDialogComesBackUntilThereIsALevel) {
  int shown = 0;
  shell.welcomeDialog = [&] {
    return ++shown == 1 ? WelcomeChoice::OpenLevel : WelcomeChoice::NewLevel;
  };
  AnswerDialogs("");
  shell.newLevelDialog = [&] { return shown < 3 ? std::nullopt : std::optional(choices); };
  Do("welcome", RunWelcomeLoop);
  EXPECT_EQ(shown, 3);
  shell.welcomeDialog = [] { return WelcomeChoice::Close; };
  Do("close", RunWelcomeLoop);
}

TEST_F(NewLevelTest, AnOverwrittenLevelStaysAsItsBackup) {
  Open("Island");
  choices.name = "Island";
  Create();
  Open("Island");
  EXPECT_FLOAT_EQ(terrain.grid[10][10].h, 127);
}

TEST_F(NewLevelTest, AFolderThatCannotBeMadeIsNamedAndTheEditorStaysUsable) {
  Open("Island");
  Edit();
  std::ofstream(folder / "Mods/varnhold/varnhold") << "a file in the way";
  Create({kOk});
  choices.name = "Island";
  Create({kOk});
  EXPECT_FALSE(editor.levelLoaded);
  Open("Island");
  Do("save", [] { return SaveLevel(); });
}

TEST_F(NewLevelTest, NamesAreMadeUsableOrRefused) {
  const auto accept = [this](const std::string& typed,
                             std::initializer_list<PromptAnswer> answers = {}) {
    std::optional<std::string> name;
    const auto act = [&] { return (name = AcceptLevelName(typed)).has_value(); };
    Do(typed, act, answers);
    Tell("name   " + name.value_or("none"));
  };
  for (const char* typed : {"My Level!", "Käse 2.vra", "Isle_12"}) accept(typed);
  for (const char* typed : {"", "?! -", "Isle-123"}) accept(typed, {kOk});
  modConfig.LevelName = "Unsaved";
  for (const char* typed : {"Island", "Unsaved"}) {
    accept(typed, {kNo});
    accept(typed, {kYes});
  }
  Archive other;
  ASSERT_TRUE(other.Open(ArchivePath("Valley"), true));
  accept("Valley", {kOk});
  modConfig.GamePath = GameFolder() + std::string(100, 'x') + "\\";
  accept(std::string(127, 'n'), {kOk});
}

TEST_F(NewLevelTest, TheLongestNameThatIsAcceptedHoldsEveryFile) {
  std::string name(127, 'n');
  scripted::script.answers.assign(name.size(), kOk);
  while (!AcceptLevelName(name)) name.pop_back();
  scripted::script.answers.clear();
  choices.name = name;
  choices.rules = {true, true, true, true};
  EXPECT_TRUE(NewLevel([this] { return choices; }));
}

}  // namespace
}  // namespace mw
