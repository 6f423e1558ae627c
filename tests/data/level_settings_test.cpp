#include "data/level_settings.h"

#include <clocale>
#include <gmock/gmock.h>
#include <limits>
#include <stdlib.h>

#include "data/level_archive_test.h"
#include "data/level_settings_lines.h"
#include "data/load_report.h"
#include "data/open_level.h"

namespace mw {
namespace {

constexpr float kMaxFloat = std::numeric_limits<float>::max();

class LevelSettingsTest : public LevelArchiveTest {
 protected:
  LevelSettingsTest() {
    AddTeam("Axis", "AxisSoldier", "AxisSkin");
    AddTeam("Allies", "AlliedSoldier", "AlliedSkin");
    AddTeam("Desert", "DesertSoldier", "DesertSkin");
    modConfig.chosenTeam = {0, 1};
    modConfig.configurationName = "mymod";
    openLevel.settingsDefaults = {};
  }

  static void AddTeam(const char* name, const char* soldier, const char* skin) {
    Team& team = modConfig.teams[modConfig.teamCount++];
    team.name = name;
    team.templateName = soldier;
    team.skin = skin;
    for (int kit = 0; kit < 3; ++kit) {
      team.kits[kit] = std::string(name) + "Kit" + std::to_string(kit);
    }
  }

  // What init.con becomes when the level is opened and saved.
  std::string OpenAndSave(std::string_view script) {
    Put("init.con", script);
    ReadLevelSettings();
    EXPECT_TRUE(WriteLevelSettings());
    EXPECT_EQ(GameFileError(), "");
    return Get("init.con");
  }
  // What saving makes of init.con, without opening.
  std::string Save(std::string_view script) {
    Put("init.con", script);
    EXPECT_TRUE(WriteLevelSettings());
    return Get("init.con");
  }
};

// Every command with its own values, in the spelling in which it is written.
constexpr std::string_view kEveryCommand =
    "GeometryTemplate.file skydome\r\n"
    "sky.changeOfsSkyHeight -20\r\n"
    "sky.setRotAngle 45\r\n"
    "sky.sunLightDirectionVec 0.500000/-0.750000/0.125000\r\n"
    "renderer.vertexFogEnable 1\r\n"
    "renderer.fogstart 150\r\n"
    "renderer.fogend 900\r\n"
    "renderer.fogColorVec 0.500000/0.600000/0.700000\r\n"
    "water.specularEnable 1\r\n"
    "water.texLayer1 texture/water/layer1\r\n"
    "water.texLayer2 texture\\water\\layer2\r\n"
    "water.normalMap texture/water/bump\r\n"
    "water.scrollDirectionNormalmap 0.100000/0.200000\r\n"
    "water.scrollDirection1 0.300000/0.400000\r\n"
    "water.scrollDirection2 -0.500000/0.600000\r\n"
    "water.specularColor 0.110000/0.120000/0.130000\r\n"
    "water.scrollLayer1 1.500000\r\n"
    "water.scrollLayer2 2.500000\r\n"
    "water.scrollNormalmap 3.500000\r\n"
    "water.specularStreakFactor 4.500000\r\n"
    "water.tileLayer1 5.500000\r\n"
    "water.tileLayer2 6.500000\r\n"
    "water.tileNormalmap 7.500000\r\n"
    "water.lightDirection 0.210000/0.220000/0.230000\r\n"
    "water.color 0.310000/0.320000/0.330000\r\n"
    "water.deepColor 0.410000/0.420000/0.430000\r\n"
    "water.waterAlphaDepth 8.500000\r\n"
    "water.waterShallowAlpha 9.500000\r\n"
    "renderer.globalAmbientColor 0.510000/0.520000/0.530000\r\n"
    "renderer.ambientColor 0.610000/0.620000/0.630000\r\n"
    "renderer.diffuseColor 0.710000/0.720000/0.730000\r\n"
    "renderer.specularColor 0.810000/0.820000/0.830000\r\n"
    "shadow.shadowColor 0.250000\r\n"
    "Terrain.ShadowAmbient 10/20/255\r\n"
    "Terrain.ShadowSamplingCullY 12\r\n"
    "textureManager.alternativePath texture/winter\r\n"
    "ObjectTemplate.team 1\r\n"
    "ObjectTemplate.addTemplate AxisSoldier\r\n"
    "game.setTeamSkin 2 DesertSkin\r\n"
    "game.setKit 2 1 DesertKit1\r\n"
    "ObjectTemplate.addTemplate DesertSoldier\r\n"
    "game.setBeforeSpawnCameraPosition 1 1.500000/2.500000/3.500000\r\n"
    "ObjectTemplate.addTemplate AxisSoldier\r\n"
    "game.setActiveCombatArea 10 20 1000 2000\r\n"
    "GeometryTemplate.materialSize 256\r\n"
    "GeometryTemplate.worldSize 1024\r\n"
    "Console.worldSize 1024\r\n"
    "GeometryTemplate.yScale 0.600000\r\n"
    "GeometryTemplate.texOffsetX 3\r\n"
    "GeometryTemplate.texOffsetY 4\r\n"
    "GeometryTemplate.waterLevel 32.500000\r\n";

TEST_F(LevelSettingsTest, EveryOwnedLineComesBackInItsOwnSpelling) {
  Put("init/skyandsun.con", LowerCase(kEveryCommand));
  ReadLevelSettings();
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init/skyandsun.con"), kEveryCommand);
}

TEST_F(LevelSettingsTest, ReadsIntoTheFieldsThatTheDialogsEdit) {
  Put("init/skyandsun.con", kEveryCommand);
  ReadLevelSettings();
  EXPECT_EQ(modConfig.currentSky.mesh, "skydome");
  EXPECT_EQ(modConfig.fogStart, 150);
  EXPECT_EQ(modConfig.FogColor, (Floats3{0.5f, 0.6f, 0.7f}));
  EXPECT_EQ(modConfig.chosenTeam[1], 2);
  EXPECT_EQ(modConfig.beforeSpawnCamera[0], (Floats3{1.5f, 2.5f, 3.5f}));
  EXPECT_EQ(modConfig.combatArea[3], 2000);
  EXPECT_EQ(modConfig.WorldSize, 1024);
}

TEST_F(LevelSettingsTest, TheSkyMeshIsReadFromTheSkyScriptOnly) {
  Put("init/terrain.con", "GeometryTemplate.file  heightmap.raw\r\n");
  Put("init/skyandsun.con", "GeometryTemplate.file  dome\r\n");
  ReadLevelSettings();
  EXPECT_EQ(modConfig.currentSky.mesh, "dome");
  modConfig.currentSky.mesh = "night";
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init/terrain.con"), "GeometryTemplate.file  heightmap.raw\r\n");
  EXPECT_EQ(Get("init/skyandsun.con"), "GeometryTemplate.file night\r\n");
}

TEST_F(LevelSettingsTest, UnknownLinesStayByteForByte) {
  const std::string script =
      "rem renderer.fogstart 10\r\nrun init/terrain\r\nif v_arg1 == host\r\n\tgame.setKit "
      "x\r\nendIf\r\n"
      "renderer.fogstart\t5\r\n\r\nbeginrem\nunknown.command 1 2 3\r\n" +
      std::string(400, 'z') + "\r\nno line feed";
  EXPECT_EQ(OpenAndSave(script), script);
  EXPECT_EQ(modConfig.fogStart, 0);
}

TEST_F(LevelSettingsTest, MissingScriptsAreSkippedAndNotMade) {
  Put("init/terrain.con", "GeometryTemplate.waterLevel 20");
  ReadLevelSettings();
  EXPECT_EQ(modConfig.WaterLevel, 20.0f) << "also a last line without a line feed";
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(level->Entries().size(), 1u);
  EXPECT_EQ(GameFileError(), "");
}

TEST_F(LevelSettingsTest, NumbersAreReadAsTheGameDoes) {
  EXPECT_EQ(OpenAndSave("water.specularEnable 5\r\n"), "water.specularEnable 1\r\n");
  EXPECT_EQ(OpenAndSave("renderer.vertexFogEnable 257.9\r\n"), "renderer.vertexFogEnable 1\r\n");
  EXPECT_EQ(OpenAndSave("Terrain.ShadowAmbient 256/-1/7x\r\n"),
            "Terrain.ShadowAmbient 0/255/7\r\n");
  EXPECT_EQ(OpenAndSave("water.color 0.25\r\n"), "water.color 0.250000/0.250000/0.250000\r\n");
  EXPECT_EQ(OpenAndSave("renderer.ambientColor 0.25\r\n"),
            "renderer.ambientColor 0.250000/0.000000/0.000000\r\n");
  EXPECT_EQ(OpenAndSave("renderer.fogend\r\n"), "renderer.fogend 0\r\n");
}

TEST_F(LevelSettingsTest, HostileNumbersAreLimitedOnBothWays) {
  EXPECT_EQ(OpenAndSave("renderer.fogend 99999999999\r\n"), "renderer.fogend 2147483647\r\n");
  EXPECT_EQ(OpenAndSave("renderer.vertexFogEnable 1e30\r\n"), "renderer.vertexFogEnable 255\r\n");
  EXPECT_EQ(OpenAndSave("water.tileLayer1 nan\r\n"), "water.tileLayer1 0.000000\r\n");
  OpenAndSave("water.tileLayer1 -inf\r\n");
  EXPECT_EQ(modConfig.WaterTileLayer1, -kMaxFloat);
  modConfig.WaterTileLayer1 = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(Save("water.tileLayer1 1\r\n"), "water.tileLayer1 0.000000\r\n");
}

TEST_F(LevelSettingsTest, AlternativePathJoinsItsTwoNames) {
  EXPECT_EQ(OpenAndSave("textureManager.alternativePath texture winter\r\n"),
            "textureManager.alternativePath texture/winter\r\n");
  EXPECT_EQ(OpenAndSave("textureManager.alternativePath desert\r\n"),
            "textureManager.alternativePath desert\r\n");
  EXPECT_EQ(modConfig.AlternativePath, "desert");
}

TEST_F(LevelSettingsTest, ATextThatWasReadCutKeepsItsLine) {
  const std::string mesh(40, 'm'), path(300, 'p');
  const std::string sky = "GeometryTemplate.file " + mesh + "\r\n";
  const std::string water = "water.texLayer1 " + path + "\r\n";
  const std::string alternative = "textureManager.alternativePath texture/winter/snow\r\n";
  Put("init/skyandsun.con", sky + water + alternative + "water.normalMap\r\n");
  ReadLevelSettings();
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init/skyandsun.con"), sky + water + alternative + "water.normalMap\r\n");

  modConfig.currentSky.mesh = "dome";
  modConfig.WaterTexLayer1 = "texture/sea";
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init/skyandsun.con"),
            "GeometryTemplate.file dome\r\nwater.texLayer1 texture/sea\r\n" + alternative +
                "water.normalMap\r\n")
      << "a value chosen since replaces it";
}

TEST_F(LevelSettingsTest, TwoNamesThatFitOnlyInPartKeepTheirLine) {
  const std::string line =
      "textureManager.alternativePath " + std::string(100, 'a') + " " + std::string(100, 'b');
  EXPECT_EQ(OpenAndSave(line + "\r\n"), line + "\r\n");
  const std::string zero = std::string("textureManager.alternativePath a ") + '\0' + "b\r\n";
  EXPECT_EQ(OpenAndSave(zero), zero);
}

TEST_F(LevelSettingsTest, TheChosenTeamGivesSkinTemplateAndKits) {
  modConfig.chosenTeam[1] = 2;
  EXPECT_EQ(Save("ObjectTemplate.team 2\r\nObjectTemplate.addTemplate old\r\n"
                 "game.setTeamSkin 2 old\r\ngame.setKit 2 0 old\r\ngame.setKit 1 2 old\r\n"),
            "ObjectTemplate.team 2\r\nObjectTemplate.addTemplate DesertSoldier\r\n"
            "game.setTeamSkin 2 DesertSkin\r\ngame.setKit 2 0 DesertKit0\r\n"
            "game.setKit 1 2 AxisKit2\r\n");
}

TEST_F(LevelSettingsTest, AnotherTeamHasItsOwnKitsAndNoOthers) {
  modConfig.teams[0].kits[3] = "AxisKit3";
  const std::string axis =
      "game.setKit 1 0 AxisKit0\r\ngame.setKit 1 3 AxisKit3\r\ngame.setTeamSkin 1 AxisSkin\r\n";
  Put("init.con", axis + "game.setKit 1 9 x\r\n");
  ReadLevelSettings();
  modConfig.chosenTeam[0] = 2;
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init.con"),
            "game.setKit 1 0 DesertKit0\r\ngame.setTeamSkin 1 DesertSkin\r\ngame.setKit 1 9 x\r\n"
            "game.setKit 1 1 DesertKit1\r\ngame.setKit 1 2 DesertKit2\r\n");
  modConfig.chosenTeam[0] = 0;
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_NE(Get("init.con").find("game.setKit 1 3 AxisKit3\r\n"), std::string::npos)
      << "the first team's kits come back with it";
}

TEST_F(LevelSettingsTest, WhatTheUserChangedGetsALineWhereItBelongs) {
  modConfig.WaterColor = {1, 0.5f, 0};
  modConfig.WaterLevel = 20;
  Put("init.con", "renderer.fogend 400");
  Put("init/terrain.con",
      "geometryTemplate.create PatchTerrain patch\r\nGeometryTemplate.lodDistance 350\r\n\r\n"
      "ObjectTemplate.create SimpleObject terrainObject\r\nbeginrem\r\n"
      "GeometryTemplate.old 1\r\nendrem\r\n");
  Put("init/skyandsun.con",
      "GeometryTemplate.create StandardMesh SkyBox\n\nGeometryTemplate.create StandardMesh Moon\n"
      "GeometryTemplate.scale 1\n");
  ReadLevelSettings();
  const std::string terrain = Get("init/terrain.con"), sky = Get("init/skyandsun.con");
  modConfig.WaterColor[1] = 127 / 255.0f;  // what a dialog makes of 0.5
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init.con"), "renderer.fogend 400\r\n") << "nothing was changed";

  Put("init.con", "rem no line end");
  modConfig.WaterLevel = 0.0004f;
  modConfig.fogEnd = 300;
  modConfig.WaterColor[1] = 1;
  modConfig.terrainShadowAmbient[0] = 9;
  modConfig.currentSky.mesh = "night";
  modConfig.currentSky.rotationAngle = 90;
  modConfig.MaterialSize = 512;  // not the user's to change
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init.con"),
            "rem no line end\r\nrenderer.fogend 300\r\n"
            "water.color 1.000000/1.000000/0.000000\r\n");
  EXPECT_EQ(Get("init/terrain.con"),
            "geometryTemplate.create PatchTerrain patch\r\nGeometryTemplate.lodDistance 350\r\n"
            "GeometryTemplate.waterLevel 0.000400\r\n" +
                terrain.substr(terrain.find("\r\n\r\nObject") + 2) +
                "Terrain.ShadowAmbient 9/0/0\r\n");
  EXPECT_EQ(Get("init/skyandsun.con"),
            "GeometryTemplate.create StandardMesh SkyBox\nGeometryTemplate.file night\r\n" +
                sky.substr(sky.find("\n\n") + 1) + "sky.setRotAngle 90\r\n");
  const std::string before = Get("init.con");
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(Get("init.con"), before) << "a line is added once";
  EXPECT_TRUE(SettingsNotSaved().empty());
  Put("init/terrain.con", "rem no template\r\n");
  EXPECT_TRUE(WriteLevelSettings());
  EXPECT_EQ(SettingsNotSaved(), std::vector<std::string>{"GeometryTemplate.waterLevel"});

  Damage("init/skyandsun.con");
  ASSERT_TRUE(level->Reopen());
  modConfig.WaterAlphaDepth = 7;
  EXPECT_FALSE(WriteLevelSettings());
  EXPECT_EQ(Get("init.con"), before) << "the line may stand in what cannot be read";
}

TEST_F(LevelSettingsTest, LinesOfOtherTeamsAndKitsAreKept) {
  const std::string script =
      "objecttemplate.addTemplate beforeAnyTeam\r\n"
      "game.setTeamSkin 3 x\r\n"
      "game.setTeamSkin -1 x\r\n"
      "objecttemplate.addTemplate ofNoTeam\r\n"
      "objecttemplate.team 3\r\n"
      "objecttemplate.addTemplate ofTeam3\r\n"
      "game.setKit 1 8 x\r\n"
      "game.setKit 1 -1 x\r\n"
      "game.setKit 1 3 kitThatTheEntryDoesNotHave\r\n"
      "game.setKit 2000000000 0 x\r\n"
      "game.setBeforeSpawnCameraPosition 0 1/2/3\r\n";
  Save("ObjectTemplate.team 2\r\n");  // a team does not outlive its save
  EXPECT_EQ(OpenAndSave(script), script);
}

TEST_F(LevelSettingsTest, TeamTextsThatTheTableHasOnlyInPartKeepTheirLines) {
  const std::string name(40, 'n');
  modConfig.teams[2].skin = modConfig.teams[2].templateName = modConfig.teams[2].kits[0] = name;
  const std::string script = "game.setTeamSkin 1 " + name + "\r\ngame.setKit 1 0 " + name +
                             "\r\nObjectTemplate.addTemplate " + name + "\r\n";
  EXPECT_EQ(OpenAndSave(script), script);
  EXPECT_EQ(modConfig.chosenTeam[0], 2);
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

TEST_F(LevelSettingsTest, TeamLinesAreKeptWhereTheTableHasNothingForThem) {
  modConfig.teams[0] = {};
  const std::string script =
      "game.setTeamSkin 1 x\r\ngame.setKit 1 0 y\r\nObjectTemplate.addTemplate z\r\n";
  EXPECT_EQ(Save(script), script) << "an entry without texts";
  modConfig.teamCount = 0;
  EXPECT_EQ(Save(script), script) << "an empty table";
}

// What the scripts say, what the height map says, and what comes of it.
TEST_F(LevelSettingsTest, TheSizeIsTakenFromTheHeightMapWhereTheScriptsGiveNone) {
  struct Case {
    const char* terrainScript;  // null: missing
    std::size_t heights;
    int materialSize, worldSize;
    bool scriptIsKept = false;
  };
  constexpr const char* kSmall =
      "GeometryTemplate.materialSize 256\nGeometryTemplate.worldSize 2000\n";
  constexpr const char* kBroken =
      "GeometryTemplate.materialSize 656\nGeometryTemplate.worldSize 2000\n";
  for (const Case& c :
       {Case{nullptr, 256 * 256 * 2, 256, 1024}, Case{nullptr, 1024, 512, 2048},
        Case{"rem no size", 256 * 256 * 2, 512, 2048}, Case{kSmall, 1024 * 1024 * 2, 256, 2000},
        Case{kBroken, 256 * 256 * 2, 256, 2000, true}, Case{kBroken, 1000, 656, 2000}}) {
    archives.Clear();
    level = archives.CreateArchive((folder / "Sizes.vra").string());
    if (c.terrainScript) Put("init/terrain.con", c.terrainScript);
    Put("heightmap.raw", std::string(c.heights, 'h'));
    modConfig.MaterialSize = 512;
    modConfig.WorldSize = 2048;
    BeginLoadReport();
    ReadLevelSettings();
    EXPECT_EQ(modConfig.MaterialSize, c.materialSize);
    EXPECT_EQ(modConfig.WorldSize, c.worldSize);
    EXPECT_EQ(MayWrite(LevelPart::TerrainScript), !c.scriptIsKept);
  }
}

// A comma locale for the life of the test, made on the spot where the system has none.
TEST_F(LevelSettingsTest, NumbersDoNotFollowTheUsersLocale) {
  const std::string name = (folder / "de_DE.UTF-8").string();
  if (std::system(("localedef -i de_DE -f UTF-8 '" + name + "' >/dev/null 2>&1").c_str()) != 0) {
    GTEST_SKIP() << "localedef or its definition of de_DE is not installed";
  }
  setenv("LOCPATH", folder.c_str(), 1);
  const bool set = std::setlocale(LC_ALL, "de_DE.UTF-8");
  unsetenv("LOCPATH");
  ASSERT_TRUE(set);
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  EXPECT_EQ(OpenAndSave("GeometryTemplate.waterLevel 32.25\r\n"),
            "GeometryTemplate.waterLevel 32.250000\r\n");
  EXPECT_EQ(modConfig.WaterLevel, 32.25f);
  std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace mw
