#include "app/light_map_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/commands.h"
#include "app/level.h"
#include "app/level_fixture.h"
#include "data/image.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "terrain/shadow_work.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kTerrainTemplate[] =
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
    EXPECT_TRUE(WriteWholeFile("scripts\\terrainLightmap.con", kTerrainTemplate));
    EXPECT_TRUE(WriteWholeFile("scripts\\objectsLightmap.con", kTerrainTemplate));
    AnswerDialogs("Valley");
    EXPECT_TRUE(OpenLevel());
    modConfig.currentSky.sunDirection = {0.5f, 0.25f, -1};
    scripted::script.status[1].clear();
    Choose(1, 0);
    Choose(0, 1);
    levelTextures.SurfaceAssigned[2][2] = true;
    terrain.shadowSettings.ShadowSelected[3][3] = true;
  }

  static void Choose(std::size_t row, std::size_t column) {
    levelTextures.SurfaceAssigned[row][column] = true;
    terrain.shadowSettings.ShadowSelected[row][column] = true;
  }
  static void Answer(std::vector<PromptAnswer> answers) {
    scripted::script.answers = std::move(answers);
  }
  static std::string Scratch(const std::string& file) {
    return modConfig.GamePath.String() + "ShadowWork\\varnhold\\levels\\Valley\\" + file;
  }
  static Bytes ScratchBytes(const std::string& file) {
    return ReadWholeFile(Scratch(file)).value_or(Bytes{});
  }
  std::string CommandLine(const std::string& rest) const {
    return "\"" + GameFolder() + "varnhold.exe\" +workingFolder \"" + GameFolder() +
           "ShadowWork\\\" " + rest;
  }
  // What the game leaves of a merged tile: white above, blue below.
  static void WriteMergedTile(const char* name) {
    EXPECT_TRUE(MakeScratchFolder(ScratchMergedFolder()));
    Bytes rgb(std::size_t{1024} * 1024 * 3, 255);
    for (std::size_t i = rgb.size() / 2; i < rgb.size(); ++i) rgb[i] = i % 3 == 2 ? 255 : 0;
    EXPECT_TRUE(WriteTga(Scratch(std::string("textures\\merged\\") + name), 1024, 1024, rgb));
  }
};

TEST_F(LightMapCommandsTest, TerrainShadowsGetTheTilesTheLightAndTheGame) {
  terrain.shadowSettings.ShadowPrecision = 2.5f;
  scripted::script.program = [](std::string_view) {
    return WriteWholeFile(Scratch("textures\\LightmapShadowBits.lsb"), "bits");
  };
  Answer({PromptAnswer::No});
  GenerateTerrainShadows();
  EXPECT_THAT(ScratchBytes("textures\\lmList.dat"), ElementsAre(1, 0, 0, 1));
  EXPECT_THAT(scripted::script.startedProcesses,
              ElementsAre(CommandLine("+traceTerrainShadows \"varnhold\\levels\\Valley\\\"")));
  EXPECT_EQ(TextOnDisk("Valley", "terrainLightmap.con"),
            "rem light\r\nGeometryTemplate.shadowPrecision 2.500000\r\n"
            "Raytracer.Light.Direction 0/1/0\r\n"
            "raytracer.light.direction 0.500000/0.250000/-1.000000\r\n"
            "raytracer.light.direction 4/5/6\r\n  kept  as it is\r\n");
  const std::string sun = "raytracer.light.direction 0.500000/0.250000/-1.000000\r\n";
  EXPECT_EQ(TextOnDisk("Valley", "objectsLightmap.con"),
            "rem light\r\ngeometrytemplate.ShadowPrecision 9\r\n" + sun + sun + sun +
                "  kept  as it is\r\n");
  EXPECT_EQ(TextOnDisk("Valley", "Textures/LightmapShadowBits.lsb"), "bits");
  EXPECT_THAT(status(),
              ElementsAre("Generating Terrain Shadows...", "Completed Terrain Shadow Generation."));
  EXPECT_EQ(scripted::script.prompts.back().caption, "Merge Surface Light Maps");
  EXPECT_EQ(scripted::script.prompts.back().icon, PromptIcon::Question);
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(LightMapCommandsTest, NoOtherLevelCanBeOpenedWhileTheGameTraces) {
  scripted::script.program = [this](std::string_view) {
    AnswerDialogs("Island");
    for (const auto command : {kCommandOpenLevel, kCommandNewLevel, kCommandExit}) {
      RunCommand(command);
    }
    return WriteWholeFile(Scratch("textures\\LightmapShadowBits.lsb"), "bits");
  };
  Answer({PromptAnswer::No});
  GenerateTerrainShadows();
  EXPECT_EQ(modConfig.LevelName, "Valley");
  EXPECT_EQ(TextOnDisk("Valley", "Textures/LightmapShadowBits.lsb"), "bits");
  RunCommand(kCommandOpenLevel);
  EXPECT_EQ(modConfig.LevelName, "Island");
}

TEST_F(LightMapCommandsTest, ACancelledRunLeavesTheLevelAsItWas) {
  const auto cancel = [this](void (*command)(), const char* result, const char* expected) {
    scripted::script.processesCancelled = true;
    scripted::script.program = [result](std::string_view) {
      WriteMergedTile("Tx01x00.tga");
      return WriteWholeFile(Scratch(result), "half");
    };
    Answer({PromptAnswer::Yes});  // to begin with the object light maps
    command();
    EXPECT_EQ(status().back(), expected);
  };
  EXPECT_TRUE(MakeScratchFolder(ScratchObjectLightMapsFolder()));
  for (const std::string script : {"", "rem of my own\r\n"}) {
    if (!script.empty()) {
      ASSERT_TRUE(archives.LastWritable()->WriteMember(
          "varnhold/levels/Valley/objectsLightmap.con",
          std::span(reinterpret_cast<const std::uint8_t*>(script.data()), script.size())));
    }
    cancel(GenerateTerrainShadows, "textures\\LightmapShadowBits.lsb",
           "Cancelled Terrain Shadow Generation. The level is as it was.");
    cancel(MergeTerrainLightmaps, "textures\\x",
           "Cancelled Merging Terrain Lightmaps. The level is as it was.");
    cancel(GenerateObjectLightmaps, "ObjectLightMaps\\new.dds",
           "Cancelled Generating Object Light Maps. The level is as it was.");
    EXPECT_EQ(TextOnDisk("Valley", "objectsLightmap.con"), script);
    EXPECT_EQ(TextOnDisk("Valley", "terrainLightmap.con"), "");
  }
  for (const char* const member : {"Textures/LightmapShadowBits.lsb", "Textures/Tx01x00.dds",
                                   "ObjectLightMaps/new.dds", "ObjectLightMaps/Palette.pal"}) {
    EXPECT_THAT(MemberOnDisk("Valley", member), IsEmpty()) << member;
  }
}

TEST_F(LightMapCommandsTest, WithoutATileNothingIsWrittenOrRun) {
  SelectAllShadows(false);
  GenerateTerrainShadows();
  EXPECT_THAT(scripted::script.prompts, IsEmpty());
  terrain.shadowSettings.ShadowSelected[3][3] = true;  // which has no surface
  Answer({PromptAnswer::Ok});
  GenerateTerrainShadows();
  EXPECT_THAT(scripted::script.prompts.at(0).text,
              ::testing::StartsWith("None of the selected tiles has a surface map"));
  EXPECT_THAT(scripted::script.startedProcesses, IsEmpty());
  EXPECT_FALSE(FolderExists(modConfig.GamePath.String() + "ShadowWork"));
  EXPECT_EQ(TextOnDisk("Valley", "terrainLightmap.con"), "");
}

TEST_F(LightMapCommandsTest, MergedTilesBecomeTheLevelsAndMissingOnesAreCounted) {
  scripted::script.program = [](std::string_view) {
    WriteMergedTile("Tx01x00.tga");
    return true;
  };
  MergeTerrainLightmaps();
  EXPECT_THAT(
      scripted::script.startedProcesses,
      ElementsAre(CommandLine("+mergeTerrainShadows \"varnhold\\levels\\Valley\\ 1.5 0.6\"")));
  EXPECT_THAT(status(),
              ElementsAre("Merging Terrain Lightmaps...", "Compressing Surface Map 1 of 2...",
                          "Compressing Surface Map 2 of 2...",
                          "Completed Merging Terrain Lightmaps. 1 merged tile was missing "
                          "or of another size."));
  const Bytes tile = MemberOnDisk("Valley", "Textures/Tx01x00.dds");
  ASSERT_GT(tile.size(), 140u);
  EXPECT_EQ(tile[128], 0xFF) << "the first block is white";
  EXPECT_THAT(MemberOnDisk("Valley", "Textures/Tx00x01.dds"), IsEmpty());
}

TEST_F(LightMapCommandsTest, ObjectLightMapsReplaceThoseOfTheLastRun) {
  textureSet.objectPalette.loaded = true;
  EXPECT_TRUE(MakeScratchFolder(ScratchObjectLightMapsFolder()));
  EXPECT_TRUE(WriteWholeFile(Scratch("ObjectLightMaps\\old.dds"), "old"));
  scripted::script.program = [](std::string_view) {
    return WriteWholeFile(Scratch("ObjectLightMaps\\new.dds"), "new");
  };
  Answer({PromptAnswer::Yes});
  GenerateObjectLightmaps();
  EXPECT_THAT(scripted::script.startedProcesses,
              ElementsAre(CommandLine("+traceObjectShadows \"varnhold\\levels\\Valley\\\"")));
  EXPECT_EQ(TextOnDisk("Valley", "ObjectLightMaps/new.dds"), "new");
  EXPECT_EQ(MemberOnDisk("Valley", "ObjectLightMaps/Palette.pal").size(), 24u + 1024u);
  EXPECT_EQ(TextOnDisk("Valley", "ObjectLightMaps/old.dds"), "");
  EXPECT_EQ(status().back(), "Completed Generating Object Light Maps.");

  Answer({PromptAnswer::No});
  GenerateObjectLightmaps();
  EXPECT_EQ(scripted::script.prompts.back().icon, PromptIcon::Question);
  EXPECT_EQ(scripted::script.startedProcesses.size(), 1u);
}

TEST_F(LightMapCommandsTest, UnsavedChangesAreSavedOrEndTheCommand) {
  for (const auto command :
       {GenerateTerrainShadows, MergeTerrainLightmaps, GenerateObjectLightmaps}) {
    editor.levelModified = true;
    Answer({PromptAnswer::No});
    command();
    EXPECT_EQ(scripted::script.prompts.back().caption, "Save?");
  }
  EXPECT_THAT(scripted::script.startedProcesses, IsEmpty());
  Answer({PromptAnswer::Yes});
  MergeTerrainLightmaps();
  EXPECT_FALSE(editor.levelModified);
  EXPECT_EQ(scripted::script.startedProcesses.size(), 1u);
}

TEST_F(LightMapCommandsTest, AGameThatDoesNotStartIsToldAndNothingIsLost) {
  const Bytes heights = MemberOnDisk("Valley", "heightmap.raw");
  scripted::script.program = [](std::string_view) { return false; };
  Answer({PromptAnswer::Yes});
  GenerateTerrainShadows();
  EXPECT_EQ(status().back(),
            "Completed Merging Terrain Lightmaps. The game could not be started. 2 merged tiles "
            "were missing or of another size.");
  EXPECT_EQ(MemberOnDisk("Valley", "heightmap.raw"), heights);
}

TEST_F(LightMapCommandsTest, WhatCannotBeWrittenEndsTheCommandWithAMessage) {
  EXPECT_TRUE(WriteWholeFile(modConfig.GamePath.String() + "ShadowWork", "a file in the way"));
  Answer({PromptAnswer::Ok});
  GenerateTerrainShadows();
  EXPECT_THAT(scripted::script.prompts.back().text, ::testing::HasSubstr("could not be created"));
  DeleteDiskFile(modConfig.GamePath.String() + "ShadowWork");
  DeleteDiskFile("scripts\\terrainLightmap.con");
  Answer({PromptAnswer::Yes, PromptAnswer::Ok});
  GenerateObjectLightmaps();
  EXPECT_EQ(
      scripted::script.prompts.back().text,
      "The template scripts/terrainLightmap.con could not be read: No such file or directory.");
  EXPECT_THAT(scripted::script.startedProcesses, IsEmpty());
}

}  // namespace
}  // namespace mw
