#include "data/level_settings.h"

#include <clocale>
#include <gmock/gmock.h>
#include <limits>
#include <sstream>

#include "data/level_archive_test.h"
#include "data/level_settings_lines.h"
#include "data/load_report.h"
#include "data/open_level.h"
#include "support/comma_locale.h"
#include "support/golden.h"

namespace mw {
namespace {

constexpr const char* kTerrain = "init/terrain.con";
constexpr const char* kSky = "init/skyandsun.con";
const std::string kLongName(40, 'n');

class LevelSettingsTest : public LevelArchiveTest {
 protected:
  LevelSettingsTest() {
    for (const std::string name : {"Axis", "Allies", "Desert"}) {
      Team& team = modConfig.teams[modConfig.teamCount++];
      team.templateName = name + "Soldier";
      team.skin = name + "Skin";
      for (int kit = 0; kit < 3; ++kit) team.kits[kit] = name + "Kit" + std::to_string(kit);
    }
    modConfig.chosenTeam = {0, 1};
    modConfig.configurationName = "mymod";
    openLevel.settingsDefaults = {};
  }

  // What the sky's script becomes when the level is saved, and before that opened.
  std::string Save() {
    EXPECT_TRUE(WriteLevelSettings());
    EXPECT_EQ(GameFileError(), "");
    return Get(kSky);
  }
  std::string OpenAndSave(std::string_view script) {
    Put(kSky, script);
    ReadLevelSettings();
    return Save();
  }
  // All three scripts after a save, with their line ends to be seen, and what no script has a place
  // for.
  std::string SavedScripts() {
    std::string all;
    if (!WriteLevelSettings()) all += "(not everything could be written)\n";
    for (const char* file : {"init.con", kTerrain, kSky}) {
      all += std::string("-- ") + file + "\n";
      for (const char c : Get(file)) all += c == '\r' ? std::string("\\r") : std::string(1, c);
      all += "\n";
    }
    for (const std::string& command : SettingsNotSaved()) all += "not saved: " + command + "\n";
    return all + "\n";
  }
};

TEST_F(LevelSettingsTest, EveryOwnedLineComesBackInItsOwnSpelling) {
  const std::string script = GoldenText("data/every_setting.con");
  ExpectGolden("data/every_setting.con", OpenAndSave(LowerCase(script)));
  EXPECT_EQ(modConfig.currentSky.mesh, "skydome");
  EXPECT_EQ(modConfig.fogStart, 150);
  EXPECT_EQ(modConfig.FogColor, (Floats3{0.5f, 0.6f, 0.7f}));
  EXPECT_EQ(modConfig.chosenTeam[1], 2);
  EXPECT_EQ(modConfig.beforeSpawnCamera[0], (Floats3{1.5f, 2.5f, 3.5f}));
  EXPECT_EQ(modConfig.combatArea[3], 2000);
  EXPECT_EQ(modConfig.WorldSize, 1024);
}

// Lines, and what is made of them by opening and saving where they are not kept byte for byte.
TEST_F(LevelSettingsTest, LinesAreReadAsTheGameDoesOrKept) {
  std::string told;
  std::istringstream lines(GoldenText("data/settings_lines.txt"));
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("  ")) continue;  // what was made last time
    const std::string script = Unescaped(line) + "\r\n", saved = OpenAndSave(script);
    told += line + "\n  " + (saved == script ? "kept" : Escaped(saved)) + "\n";
  }
  ExpectGolden("data/settings_lines.txt", told);
  OpenAndSave("water.tileLayer1 -inf\r\n");
  EXPECT_EQ(modConfig.WaterTileLayer1, -std::numeric_limits<float>::max());
  modConfig.WaterTileLayer1 = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(Save(), "water.tileLayer1 0.000000\r\n");
}

TEST_F(LevelSettingsTest, TheSkyMeshIsReadFromTheSkyScriptOnly) {
  const std::string heights = "GeometryTemplate.file heightmap.raw\r\n";
  Put(kTerrain, heights);
  Put(kSky, "GeometryTemplate.file dome\r\nwater.texLayer1 " + std::string(300, 'p') + "\r\n");
  ReadLevelSettings();
  EXPECT_EQ(modConfig.currentSky.mesh, "dome");
  modConfig.currentSky.mesh = "night";
  modConfig.WaterTexLayer1 = "texture/sea";
  EXPECT_EQ(Save(), "GeometryTemplate.file night\r\nwater.texLayer1 texture/sea\r\n")
      << "a value chosen since replaces a line that was read only in part";
  EXPECT_EQ(Get(kTerrain), heights);
  EXPECT_EQ(level->Entries().size(), 2u) << "a script that is missing is not made";
}

TEST_F(LevelSettingsTest, AnotherTeamHasItsOwnKitsAndNoOthers) {
  modConfig.teams[0].kits[3] = "AxisKit3";
  Put("init.con",
      "game.setKit 1 0 AxisKit0\r\ngame.setKit 1 3 AxisKit3\r\ngame.setTeamSkin 1 AxisSkin\r\n"
      "ObjectTemplate.team 1\r\nObjectTemplate.addTemplate old\r\ngame.setKit 1 9 x\r\n");
  ReadLevelSettings();
  std::string told;
  for (const int team : {2, 0}) {  // the first team's kits come back with it
    modConfig.chosenTeam[0] = team;
    told += SavedScripts();
  }
  ExpectGolden("data/settings_of_teams.txt", told);
}

TEST_F(LevelSettingsTest, TeamLinesAreKeptWhereTheTableHasNothingForThem) {
  const std::string lines = " " + kLongName + "\r\ngame.setKit 1 0 " + kLongName +
                            "\r\nObjectTemplate.team 1\r\nObjectTemplate.addTemplate " + kLongName +
                            "\r\n";
  Team& desert = modConfig.teams[2];
  desert.skin = desert.templateName = desert.kits[0] = kLongName;
  EXPECT_EQ(OpenAndSave("game.setTeamSkin 1" + lines), "game.setTeamSkin 1" + lines) << "cut texts";
  EXPECT_EQ(modConfig.chosenTeam[0], 2);
  desert = {};
  openLevel.settingsDefaults = {};
  EXPECT_EQ(Save(), "game.setTeamSkin 1" + lines) << "an entry without texts";
  modConfig.teamCount = 0;
  EXPECT_EQ(Save(), "game.setTeamSkin 1" + lines) << "an empty table";
}

TEST_F(LevelSettingsTest, AnUnknownSkinWarnsAndTakesTheSidesOwnEntry) {
  modConfig.chosenTeam = {2, 2};
  Put("init.con", "game.setTeamSkin 1 Pirates\r\n");
  BeginLoadReport();
  ReadLevelSettings();
  EXPECT_THAT(openLevel.loadReport.lines,
              testing::Contains("Team skin \"Pirates\" not available in config file \"mymod\""));
  ClearLoadReport();
  EXPECT_EQ(modConfig.chosenTeam[0], 0);
  modConfig.teamCount = 1;
  Put("init.con", "game.setTeamSkin 2 Pirates\r\n");
  ReadLevelSettings();
  EXPECT_EQ(modConfig.chosenTeam[1], 2) << "the side has no entry of its own";
}

TEST_F(LevelSettingsTest, WhatTheUserChangedGetsALineWhereItBelongs) {
  modConfig.WaterColor = {1, 0.5f, 0};
  modConfig.WaterLevel = 20;
  Put("init.con", "renderer.fogend 400");
  Put(kTerrain,
      "geometryTemplate.create PatchTerrain patch\r\nGeometryTemplate.lodDistance 350\r\n\r\n"
      "ObjectTemplate.create SimpleObject terrainObject\r\nbeginrem\r\n"
      "GeometryTemplate.old 1\r\nendrem\r\n");
  Put(kSky,
      "GeometryTemplate.create StandardMesh SkyBox\n\nGeometryTemplate.create StandardMesh Moon\n"
      "GeometryTemplate.scale 1\n");
  ReadLevelSettings();
  modConfig.WaterColor[1] = 127 / 255.0f;  // what a dialog makes of 0.5
  std::string told = "Nothing was changed\n" + SavedScripts();

  Put("init.con", "rem no line end");
  modConfig.WaterLevel = 0.0004f;
  modConfig.fogEnd = 300;
  modConfig.WaterColor[1] = 1;
  modConfig.terrainShadowAmbient[0] = 9;
  modConfig.currentSky.mesh = "night";
  modConfig.currentSky.rotationAngle = 90;
  modConfig.MaterialSize = 512;  // not the user's to change
  for (const char* title : {"Each has its place\n", "A line is added once\n"}) {
    told += title + SavedScripts();
  }
  Put(kTerrain,
      "rem no template\r\nbeginrem\r\nGeometryTemplate.create PatchTerrain\r\nendrem\r\n");
  told += "A template in a comment is none\n" + SavedScripts();
  const auto why = [] { return WhyNotKept(FindSettingsPlaces(), "GeometryTemplate.waterLevel"); };
  told += why() + "\n" + WhyNotKept(FindSettingsPlaces(), "renderer.fogend") + "\n";
  EXPECT_TRUE(level->RemoveMember("varnhold/levels/Island/init/terrain.con"));
  told += why() + "\n";
  Damage(kSky);
  ASSERT_TRUE(level->Reopen());
  Put(kTerrain, "GeometryTemplate.create PatchTerrain\r\n");
  modConfig.WaterAlphaDepth = 7;
  told += why() + "\nThe line may stand in what cannot be read\n" + SavedScripts();
  ExpectGolden("data/added_settings.txt", told);
}

// What the terrain script says, what the height map says, and what comes of it.
TEST_F(LevelSettingsTest, TheSizeIsTakenFromTheHeightMapWhereTheScriptsGiveNone) {
  constexpr std::size_t kSmall = 256 * 256 * 2, kLarge = 1024 * 1024 * 2, kOdd = 1000;
  const std::string samples = "GeometryTemplate.materialSize ",
                    world = "GeometryTemplate.worldSize ";
  const struct {
    std::string script;  // "-": missing
    std::size_t heights;
    int materialSize, worldSize;
    bool isKept = false;
  } kCases[] = {{"-", kSmall, 256, 1024},
                {"-", kLarge, 1024, 4096},
                {"-", kOdd, 512, 2048},
                {"rem no size", kSmall, 512, 2048},
                {samples + "256\n" + world + "2000", kLarge, 256, 2000},
                {samples + "256\n" + world + "256", kLarge, 256, 256},
                {samples + "256\n" + world + "255", kLarge, 256, 1024, true},
                {samples + "656\n" + world + "2000", kSmall, 256, 2000, true},
                {samples + "656\n" + world + "2000", kOdd, 656, 2000}};
  for (const auto& c : kCases) {
    archives.Clear();
    level = archives.CreateArchive((folder / "Sizes.vra").string());
    if (c.script != "-") Put(kTerrain, c.script);
    Put("heightmap.raw", std::string(c.heights, 'h'));
    modConfig.MaterialSize = 512;
    modConfig.WorldSize = 2048;
    BeginLoadReport();
    ReadLevelSettings();
    EXPECT_EQ(modConfig.MaterialSize, c.materialSize) << c.script;
    EXPECT_EQ(modConfig.WorldSize, c.worldSize) << c.script;
    EXPECT_EQ(MayWrite(LevelPart::TerrainScript), !c.isKept) << c.script;
  }
}

// A comma locale for the life of the test, made on the spot where the system has none.
TEST_F(LevelSettingsTest, NumbersDoNotFollowTheUsersLocale) {
  if (!UseCommaLocale(folder)) GTEST_SKIP() << "the system has no German locale to give";
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  EXPECT_EQ(OpenAndSave("GeometryTemplate.waterLevel 32.25\r\n"),
            "GeometryTemplate.waterLevel 32.250000\r\n");
  EXPECT_EQ(modConfig.WaterLevel, 32.25f);
  std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace mw
