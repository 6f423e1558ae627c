// The scripts of a new level, word for word as the game is to read them.
#include "app/level_skeleton.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>

#include "data/level_archive_test.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* kHeader =
    "rem *********************************************\n"
    "rem Created by Mapwright\n"
    "rem *********************************************\n";

class LevelSkeletonTest : public LevelArchiveTest {
 protected:
  LevelSkeletonTest() {
    modConfig.configurationName = "mymod";
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    modConfig.HeightScale = 0.7f;
    modConfig.AlternativePath = "Texture/Desert";
    editor.levelHasWater = false;
  }

  // A script as it is in the archive, without its carriage returns.
  std::string Script(const char* file) {
    const std::string text = Get(file);
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool wholeLineEnd = text[i] != '\n' || (i > 0 && text[i - 1] == '\r');
      EXPECT_TRUE(wholeLineEnd) << file;
      if (text[i] != '\r') lines += text[i];
    }
    return lines;
  }
  // The script's text; checks the header before it.
  std::string Body(const char* file) {
    const std::string script = Script(file);
    EXPECT_THAT(script, StartsWith(kHeader)) << file;
    return script.substr(std::min(script.size(), std::string(kHeader).size()));
  }
  std::vector<std::string> Members() const {
    std::vector<std::string> names;
    for (const auto& [name, entry] : level->Entries()) {
      names.emplace_back(name.substr(std::string("varnhold/levels/Island/").size()));
    }
    return names;
  }
};

TEST_F(LevelSkeletonTest, EachGameRuleHasItsFiles) {
  EXPECT_TRUE(WriteLevelScripts({.conquest = true}));
  EXPECT_THAT(
      Members(),
      ElementsAre("Conquest.con", "Conquest/ControlPoints.con",
                  "Conquest/ControlPointTemplates.con", "Conquest/ObjectSpawns.con",
                  "Conquest/ObjectSpawnTemplates.con", "Conquest/SoldierSpawns.con",
                  "Conquest/SoldierSpawnTemplates.con", "Conquest/spawnPointManagerSettings.con",
                  "GameTypes/Conquest.con", "Init.con", "Init/SkyAndSun.con", "Init/Terrain.con",
                  "Menu/Init.con", "StaticObjects.con"));
}

TEST_F(LevelSkeletonTest, OnlyCaptureTheFlagHasNoControlPoints) {
  editor.levelHasWater = true;
  EXPECT_TRUE(WriteLevelScripts({.captureTheFlag = true}));
  EXPECT_THAT(Members(),
              ElementsAre("Ctf.con", "Ctf/ObjectSpawns.con", "Ctf/ObjectSpawnTemplates.con",
                          "Ctf/SoldierSpawns.con", "Ctf/SoldierSpawnTemplates.con",
                          "Ctf/spawnPointManagerSettings.con", "GameTypes/Ctf.con", "Init.con",
                          "Init/SkyAndSun.con", "Init/Terrain.con", "Menu/Init.con",
                          "StaticObjects.con", "Watershader.rs"));
}

TEST_F(LevelSkeletonTest, ConquestCountsTicketsTeamDeathMatchDoesNot) {
  EXPECT_TRUE(WriteLevelScripts({.conquest = true, .teamDeathMatch = true}));
  EXPECT_EQ(Body("Conquest.con"),
            "Game.setNumberOfTickets 1 100\nGame.setNumberOfTickets 2 100\n"
            "Game.setTicketLostPerMin 1 10\nGame.setTicketLostPerMin 2 10\n"
            "\nrun Conquest/SpawnpointManagerSettings\nrun Conquest/SoldierSpawnTemplates\n"
            "run Conquest/SoldierSpawns\nrun Conquest/ObjectSpawnTemplates\n"
            "run Conquest/ControlPointTemplates\n\nif v_arg1 == host\nrun ai\n"
            "run Conquest/ObjectSpawns\nrun Conquest/ControlPoints\nelse\nendIf\n");
  EXPECT_EQ(Body("GameTypes/Conquest.con"), Body("Conquest.con"));
  EXPECT_EQ(Body("tdm.con"),
            "\nrun TDM/SpawnpointManagerSettings\nrun TDM/SoldierSpawnTemplates\n"
            "run TDM/SoldierSpawns\nrun TDM/ObjectSpawnTemplates\n"
            "run TDM/ControlPointTemplates\n\nif v_arg1 == host\nrun ai\n"
            "run TDM/ObjectSpawns\nrun TDM/ControlPoints\nelse\nendIf\n");
  EXPECT_EQ(Body("GameTypes/tdm.con"), Body("tdm.con"));
}

TEST_F(LevelSkeletonTest, SinglePlayerHasAScriptForEachSideAndCoop) {
  EXPECT_TRUE(WriteLevelScripts({.singlePlayer = true}));
  EXPECT_EQ(Body("SinglePlayerAllied.con"),
            "run singleplayer/ControlPointTemplates\nrun singleplayer/SpawnpointManagerSettings\n"
            "run singleplayer/SoldierSpawnTemplates\nrun singleplayer/SoldierSpawns\n"
            "run singleplayer/ObjectSpawnTemplates\n\nGame.setNumberOfTickets 1 100\n"
            "Game.setNumberOfTickets 2 100\nGame.setTicketLostPerMin 1 15\n"
            "Game.setTicketLostPerMin 2 15\ngame.maxNrofPlayers 16\n\nif v_arg1 == host\n"
            "\trun ai\n\trun SinglePlayer/ObjectSpawns\n\trun singleplayer/ControlPoints\n"
            "\tgame.timeToNextWave 20\nendIf\n");
  EXPECT_EQ(Body("SinglePlayerAxis.con"), Body("SinglePlayerAllied.con"));
  EXPECT_THAT(Body("Coop.con"), StartsWith("Game.setNumberOfTickets 1 60\n"
                                           "Game.setNumberOfTickets 2 100\n"
                                           "Game.setTicketLostPerMin 1 10000\n"
                                           "Game.setTicketLostPerMin 2 10\n\n"
                                           "run SinglePlayer/SpawnpointManagerSettings\n"));
  EXPECT_EQ(Body("GameTypes/Coop.con"), Body("Coop.con"));
  EXPECT_EQ(Members().size(), 4u + 7u + 5u) << "scripts, entities, common files";
}

TEST_F(LevelSkeletonTest, FlagsStandAQuarterOfTheLevelFromItsEdges) {
  EXPECT_TRUE(WriteLevelScripts({.captureTheFlag = true}));
  const std::string beforeElse =
      "run Ctf/SpawnpointManagerSettings\n\nrun Ctf/SoldierSpawnTemplates\nrun Ctf/SoldierSpawns\n"
      "\nrun Ctf/ObjectSpawnTemplates\nrun Ctf/ControlPointTemplates\n\nif v_arg1 == host\n"
      "\trun Ctf/ObjectSpawns\n\trun Ctf/ControlPoints\n\n\tobject.create gebase\n"
      "\tObject.absolutePosition 512.00/60.00/256.00\n\tObject.rotation 0/0/0\n\n"
      "\tobject.create usbase\n\tObject.absolutePosition 512.00/60.00/768.00\n"
      "\tObject.rotation 0/0/0\n";
  const std::string fromElse =
      "else\n\tobject.create FlagPole\n\tObject.absolutePosition 512.00/60.00/256.00\n"
      "\tObject.rotation 0/0/0\n\n\tobject.create FlagPole\n"
      "\tObject.absolutePosition 512.00/60.00/768.00\n\tObject.rotation 0/0/0\nendIf\n";
  EXPECT_EQ(Body("Ctf.con"), beforeElse + fromElse);
  EXPECT_EQ(Body("GameTypes/Ctf.con"), beforeElse + "\n" + fromElse);
}

TEST_F(LevelSkeletonTest, EachSideHasABaseAndASpawnBesideIt) {
  EXPECT_TRUE(WriteLevelScripts({.conquest = true}));
  EXPECT_EQ(Body("Conquest/ControlPoints.con"),
            "Object.create AxisBase\nObject.absolutePosition 512.00/60.00/452.00\n\n"
            "Object.create AlliedBase\nObject.absolutePosition 512.00/60.00/572.00\n\n");
  EXPECT_EQ(Body("Conquest/SoldierSpawns.con"),
            "Object.create AxisBase_Spawn1\nObject.absolutePosition 522.00/60.00/452.00\n"
            "Object.rotation 0.0000/0.0000/0.0000\n\n"
            "Object.create AlliedBase_Spawn1\nObject.absolutePosition 522.00/60.00/572.00\n"
            "Object.rotation 0.0000/0.0000/0.0000\n\n");
  EXPECT_EQ(Body("Conquest/SoldierSpawnTemplates.con"),
            "ObjectTemplate.create SpawnPoint AxisBase_Spawn1\nObjectTemplate.setSpawnId 0\n"
            "ObjectTemplate.setGroup 1\n\n"
            "ObjectTemplate.create SpawnPoint AlliedBase_Spawn1\nObjectTemplate.setSpawnId 1\n"
            "ObjectTemplate.setGroup 2\n\n");
  EXPECT_EQ(Body("Conquest/spawnPointManagerSettings.con"),
            "spawnPointManager.group 1\nspawnPointManager.groupTeam 1\n"
            "spawnPointManager.groupIcon test1.tga\n\n"
            "spawnPointManager.group 2\nspawnPointManager.groupTeam 2\n"
            "spawnPointManager.groupIcon test1.tga\n\n");
  const std::string templates = Body("Conquest/ControlPointTemplates.con");
  EXPECT_THAT(
      templates,
      EndsWith("ObjectTemplate.create ControlPoint AlliedBase\n"
               "ObjectTemplate.networkableInfo ControlPointInfo\n"
               "ObjectTemplate.setControlPointName Allied_Home_Base\nObjectTemplate.radius 5\n"
               "ObjectTemplate.team 2\nObjectTemplate.spawnGroupId 2\n"
               "ObjectTemplate.objectSpawnerId 2\nObjectTemplate.areaValue 0\n"
               "ObjectTemplate.timeToGetControl 9999\nObjectTemplate.timeToLoseControl 9999\n"
               "ObjectTemplate.disableIfEnemyInsideRadius 0\n"
               "ObjectTemplate.disableWhenLosingControl 0\n"
               "ObjectTemplate.loseControlWhenEnemyClose 1\n"
               "ObjectTemplate.loseControlWhenNotClose 0\n"
               "ObjectTemplate.geometry flagbase_m1\nObjectTemplate.hasCollisionPhysics 1\n"
               "ObjectTemplate.addTemplate AnimatedFlag\nObjectTemplate.unableToChangeTeam 1\n"
               "ObjectTemplate.setPosition 0/8.2/0\nObjectTemplate.setTeamGeometry 1 flagge_m1\n"
               "ObjectTemplate.setTeamGeometry 2 flaguk_m1\n\n"));
  EXPECT_THAT(templates, StartsWith("ObjectTemplate.create ControlPoint AxisBase\n"));
}

TEST_F(LevelSkeletonTest, TheTerrainScriptHasSizesNameAndScale) {
  EXPECT_TRUE(WriteLevelScripts({.conquest = true}));
  EXPECT_EQ(Body("Init/Terrain.con"),
            "GeometryTemplate.create PatchTerrain patchGeometry\n"
            "GeometryTemplate.file varnhold\\levels\\Island\\Heightmap\n"
            "GeometryTemplate.materialMap varnhold\\levels\\Island\\Materialmap\n"
            "GeometryTemplate.materialSize 256\nGeometryTemplate.targetTriCount 5000\n"
            "GeometryTemplate.worldSize 1024\nGeometryTemplate.yScale 0.700000\n"
            "GeometryTemplate.texBaseName varnhold\\levels\\Island\\Textures\\Tx\n"
            "GeometryTemplate.texOffsetX 0\nGeometryTemplate.texOffsetY 0\n"
            "GeometryTemplate.detailTexName varnhold\\levels\\Island\\Textures\\Detail\n"
            "GeometryTemplate.waterLevel 35\nGeometryTemplate.seaFloorLevel 0\n"
            "GeometryTemplate.lodDistance 350\n\nObjectTemplate.create SimpleObject terrainObject\n"
            "ObjectTemplate.geometry patchGeometry\nobjectTemplate.createNotInGrid 1\n\n"
            "Object.create terrainObject\nObject.setName track\nObject.absolutePosition 0/0/0\n"
            "Object.rotation 0/0/0\n\nConsole.worldSize 1024\n\nTerrain.ShadowAmbient 80/80/90\n"
            "Terrain.ShadowBorderFadeTime 0.25\nTerrain.ShadowSamplingCullY 15\n\n");
}

TEST_F(LevelSkeletonTest, TheLevelScriptHasWhatTheUserChose) {
  EXPECT_TRUE(WriteLevelScripts({.conquest = true}));
  const std::string init = Body("Init.con");
  EXPECT_THAT(init, StartsWith("ShaderManager.setTextureParam envmap "
                               "varnhold\\levels\\Island\\Textures\\ENVMAP_G_.rcm\n"
                               "renderer.globalLodPercent 1\n"
                               "renderer.globalAmbientColor .1/.1/.1\n"
                               "renderer.ambientColor .12/.11/.12\n"
                               "renderer.diffuseColor .35/.3/.2\n"
                               "renderer.specularColor .3/.3/.3\nrenderer.vertexFogEnable 1 \n"
                               "renderer.fogColorVec 0.68/0.62/0.55\n"
                               "renderer.animatedMeshAmbientColor 0.15\n"
                               "textureManager.alternativePath Texture/Desert\n\n"
                               "shadow.shadowColor 0.55\n\nGame.setViewDistance 400\n"));
  EXPECT_THAT(init, HasSubstr("game.setKit 2 4 US_Engineer\ngame.setLevelCheck 1357913579\n"
                              "game.setActiveCombatArea 0 0 1024 1024\n\n"
                              "shaderManager.setDefaultShaderSolidColor 0.2/0.2/0.2\n\n"
                              "run Init/SkyAndSun\nrun Init/Terrain\n\ngame.assaultTeam 2\n\n"
                              "run Sounds/Environment\n\n"));
  EXPECT_THAT(init, EndsWith("game.setBeforeSpawnCameraPosition 1 512.00/60.00/382.00\n"
                             "game.setBeforeSpawnCameraPosition 2 512.00/60.00/502.00\n"));
  EXPECT_THAT(init, Not(HasSubstr("water.")));
  EXPECT_EQ(Body("Menu/Init.con"),
            "Game.setLocalized 1\n\ngame.setLoadPicture Load/Eastern.tga\n\n"
            "game.setMapId \"mymod\"");
  EXPECT_EQ(Body("StaticObjects.con"), "");
}

TEST_F(LevelSkeletonTest, WaterHasItsCommandsAndItsShader) {
  editor.levelHasWater = true;
  EXPECT_TRUE(WriteLevelScripts({.conquest = true}));
  EXPECT_THAT(
      Body("Init.con"),
      HasSubstr("game.assaultTeam 2\n\nwater.specularEnable 1\nwater.texLayer1 texture/water05\n"
                "water.texLayer2 texture/water06\nwater.normalMap texture/normalMap01\n"
                "water.scrollDirectionNormalmap 1/0\nwater.scrollDirection1 1/-0.5\n"
                "water.scrollDirection2 1/0.5\nwater.specularColor 0.65/0.55/0.4\n"
                "water.scrollLayer1 0.02\nwater.scrollLayer2 0.02\nwater.scrollNormalmap 0.02\n"
                "water.specularStreakFactor 0.001\nwater.tileLayer1 0.5\nwater.tileLayer2 0.5\n"
                "water.tileNormalmap 1\nwater.lightDirection -0.3/0.5/-0.65\nwater.color 1/1/1\n"
                "water.deepColor 1/1/1\nwater.waterAlphaDepth 0\nwater.waterShallowAlpha 0.5\n\n"
                "run Sounds/Environment\n"));
  EXPECT_EQ(Get("Watershader.rs"), "subshader \"WaterElala\" \"PatchTerrain/Water\"\r\n{\r\n}\r\n");
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
