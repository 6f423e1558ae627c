#include "app/light_map_commands.h"

#include <gmock/gmock.h>

#include "app/commands.h"
#include "app/level.h"
#include "app/level_fixture.h"
#include "data/image.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "support/archive_bytes.h"
#include "terrain/shadow_work.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr PromptAnswer kYes = PromptAnswer::Yes, kNo = PromptAnswer::No, kOk = PromptAnswer::Ok;

constexpr char kTemplate[] =
    "rem light\r\n"
    "geometrytemplate.ShadowPrecision 9\r\n"
    "Raytracer.Light.Direction 0/1/0\r\n"
    "raytracer.light.direction 1/2/3\r\n"
    "raytracer.light.direction 4/5/6\r\n"
    "  kept  as it is\r\n";

class LightMapCommandsTest : public LevelTest {
 protected:
  LightMapCommandsTest() {
    CreateFolder("scripts");
    for (const char* script : {"terrain", "objects"}) {
      EXPECT_TRUE(WriteWholeFile(std::string("scripts\\") + script + "Lightmap.con", kTemplate));
    }
    Open("Valley");
    modConfig.currentSky.sunDirection = {0.5f, 0.25f, -1};
    terrain.shadowSettings.ShadowPrecision = 2.5f;
    auto& surfaces = levelTextures.SurfaceAssigned;
    auto& chosen = terrain.shadowSettings.ShadowSelected;
    for (const auto& [row, column] : {std::pair{1, 0}, {0, 1}}) {
      surfaces[row][column] = chosen[row][column] = true;
    }
    surfaces[2][2] = chosen[3][3] = true;  // one without the other
    EXPECT_TRUE(MakeScratchFolder(ScratchMergedFolder()));
    EXPECT_TRUE(MakeScratchFolder(ScratchObjectLightMapsFolder()));
    scripted::script.program = [](std::string_view) { return LeaveResults(); };
  }

  static std::string Scratch(const std::string& file) {
    return modConfig.GamePath.String() + "ShadowWork\\varnhold\\levels\\Valley\\" + file;
  }
  // What the game leaves of its tracing. The merged tile is white above, blue below.
  static bool LeaveResults() {
    Bytes rgb(std::size_t{1024} * 1024 * 3, 255);
    for (std::size_t i = rgb.size() / 2; i < rgb.size(); ++i) rgb[i] = i % 3 == 2 ? 255 : 0;
    return WriteTga(Scratch("textures\\merged\\Tx01x00.tga"), 1024, 1024, rgb) &&
           WriteWholeFile(Scratch("textures\\LightmapShadowBits.lsb"), "bits") &&
           WriteWholeFile(Scratch("ObjectLightMaps\\new.dds"), "new");
  }
  void TellResults() {
    for (const char* member :
         {"terrainLightmap.con", "objectsLightmap.con", "Textures/LightmapShadowBits.lsb",
          "Textures/Tx01x00.dds", "Textures/Tx00x01.dds", "ObjectLightMaps/old.dds",
          "ObjectLightMaps/new.dds", "ObjectLightMaps/Palette.pal"}) {
      TellMember("Valley", member);
    }
  }
};

TEST_F(LightMapCommandsTest, TerrainShadowsGetTheTilesTheLightAndTheGame) {
  Do("shadows", GenerateTerrainShadows, {kNo});
  EXPECT_THAT(ReadWholeFile(Scratch("textures\\lmList.dat")).value(),
              testing::ElementsAre(1, 0, 0, 1));
  TellResults();
}

TEST_F(LightMapCommandsTest, MergedTilesBecomeTheLevelsAndMissingOnesAreCounted) {
  Do("merge", MergeTerrainLightmaps);
  TellResults();
  EXPECT_EQ(MemberOnDisk("Valley", "Textures/Tx01x00.dds")[128], 0xFF) << "white above";
}

TEST_F(LightMapCommandsTest, ObjectLightMapsReplaceThoseOfTheLastRun) {
  textureSet.objectPalette.loaded = true;
  EXPECT_TRUE(WriteWholeFile(Scratch("ObjectLightMaps\\old.dds"), "old"));
  Do("objects, but not now", GenerateObjectLightmaps, {kNo});
  Do("objects", GenerateObjectLightmaps, {kYes});
  TellResults();
}

TEST_F(LightMapCommandsTest, NoOtherLevelCanBeOpenedWhileTheGameTraces) {
  scripted::script.program = [this](std::string_view) {
    AnswerDialogs("Island");
    for (const auto command : {kCommandOpenLevel, kCommandNewLevel, kCommandExit}) {
      RunCommand(command);
    }
    return LeaveResults();
  };
  Answer({kYes});
  GenerateObjectLightmaps();
  EXPECT_EQ(modConfig.LevelName, "Valley");
  RunCommand(kCommandOpenLevel);
  EXPECT_EQ(modConfig.LevelName, "Island");
}

TEST_F(LightMapCommandsTest, ACancelledRunLeavesTheLevelAsItWas) {
  scripted::script.processesCancelled = true;
  for (const std::string script : {"", "rem of my own\r\n"}) {
    if (!script.empty()) {
      ASSERT_TRUE(LevelArchive()->WriteMember("varnhold/levels/Valley/objectsLightmap.con",
                                              TextBytes(script)));
    }
    Do("shadows", GenerateTerrainShadows);
    Do("merge", MergeTerrainLightmaps);
    Do("objects", GenerateObjectLightmaps, {kYes});
    TellResults();
  }
}

TEST_F(LightMapCommandsTest, WithoutATileNothingIsWrittenOrRun) {
  SelectAllShadows(false);
  Do("none selected", GenerateTerrainShadows);
  terrain.shadowSettings.ShadowSelected[3][3] = true;
  Do("one without a surface", GenerateTerrainShadows, {kOk});
  TellResults();
}

TEST_F(LightMapCommandsTest, UnsavedChangesAreSavedOrEndTheCommand) {
  for (const auto command :
       {GenerateTerrainShadows, MergeTerrainLightmaps, GenerateObjectLightmaps}) {
    editor.levelModified = true;
    Do("with edits", command, {kNo});
  }
  Do("saved first", MergeTerrainLightmaps, {kYes});
}

TEST_F(LightMapCommandsTest, WhatDoesNotStartOrCannotBeWrittenIsTold) {
  scripted::script.program = [](std::string_view) { return false; };
  Do("shadows without the game", GenerateTerrainShadows, {kYes});
  Do("objects without the game", GenerateObjectLightmaps, {kYes});
  std::filesystem::remove_all(folder / "ShadowWork");
  EXPECT_TRUE(WriteWholeFile("ShadowWork", "a file in the way"));
  Do("shadows without a folder", GenerateTerrainShadows, {kOk});
  DeleteDiskFile("ShadowWork");
  DeleteDiskFile("scripts\\terrainLightmap.con");
  Do("objects without a template", GenerateObjectLightmaps, {kYes, kOk});
}

}  // namespace
}  // namespace mw
