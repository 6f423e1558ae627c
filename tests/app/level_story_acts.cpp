#include "app/level_story_acts.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

#include "app/input.h"
#include "app/keys.h"
#include "app/level.h"
#include "app/modes.h"
#include "app/shell.h"
#include "core/editor_state.h"
#include "data/archive.h"
#include "data/image.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "objects/entities.h"
#include "platform/disk.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/roads.h"
#include "terrain/shadow_work.h"
#include "terrain/terrain.h"

namespace mw {

std::string DescribeLevel(bool isOpen, int mark) {
  std::ostringstream out;
  out << "       " << (isOpen && editor.levelLoaded ? "level " : "no level ")
      << modConfig.LevelName.View() << " in " << openLevel.folder.View() << ", "
      << modConfig.MaterialSize << " samples over " << modConfig.WorldSize << " units x "
      << modConfig.HeightScale << ", water " << modConfig.WaterLevel << ", fog "
      << modConfig.fogStart << " to " << modConfig.fogEnd << "\n       camera at "
      << camera.position.x << ' ' << camera.position.y << ' ' << camera.position.z << ", pitch "
      << camera.pitch << ", yaw " << camera.yaw << (editor.ShowGrid ? ", grid" : "")
      << (editor.ShowTextures ? ", textures" : "")
      << (IsEditMode(EditMode::ObjectMapper) ? ", Object Mapper" : "") << "\n       heights "
      << terrain.grid[20][20].h << ' ' << terrain.grid[20][100].h << ' ' << terrain.grid[20][200].h
      << ", material " << materialMapper->grid[10][10] << ", mark " << mark << ", Mini-Map "
      << (terrain.miniMap.grey == MiniMapPicture{}.grey ? "flat" : "with hills") << ", tiles";
  for (std::size_t row = 0; row < kMaxTiles; ++row) {
    for (std::size_t column = 0; column < kMaxTiles; ++column) {
      if (levelTextures.SurfaceAssigned[row][column]) out << ' ' << row << 'x' << column;
    }
  }
  out << ", control points " << entities.Of(EntityKind::ControlPoint).instances.size()
      << ", soldier spawns " << entities.Of(EntityKind::SoldierSpawn).instances.size()
      << ", its archive is open ";
  int open = 0;  // two would write over each other
  for (std::size_t i = 0; i < archives.Count(); ++i) {
    open += archives.At(i)->Path() == LevelArchivePath();
  }
  out << open << "x";
  return out.str();
}

NewLevelChoices ChoicesOf(const std::vector<std::string>& words) {
  const auto has = [&words](const char* word) { return std::ranges::count(words, word) > 0; };
  NewLevelChoices choices;
  choices.name = words.at(0);
  choices.size = has("small")   ? LevelSize::Small
                 : has("large") ? LevelSize::Large
                                : LevelSize::Medium;
  choices.heightScaleTenths = has("high") ? 13 : 6;
  choices.rules = {has("SP"), has("CQ"), has("TDM"), has("CTF")};
  choices.water = has("water");
  choices.theatre = has("Desert") ? "Desert" : "";
  choices.randomTerrain = has("random");
  return choices;
}

std::string WithBreaks(const std::string& word) {
  return std::regex_replace(std::regex_replace(word, std::regex("/t"), "\t"), std::regex("/n"),
                            "\n");
}

void BuildRoad() {
  SetEditMode(EditMode::TerrainMapper);
  terrain.tool = TerrainTool::Road;
  SetHeight(10, 20, 90);
  SetHeight(12, 20, 90);
  AddRoadPointAt(40, 80);
  AddRoadPointAt(48, 80);
  shell.createRoadDialog = [] {
    terrain.roadAutoMaterial = 1;
    terrain.roadMaterial = 14;
    return true;
  };
  RouteKey(kKeyCtrl, true);
  RouteKey(kKeyCtrl, false);
}

std::string ValleyScratch(const std::string& file) {
  return modConfig.GamePath.String() + "ShadowWork\\varnhold\\levels\\Valley\\" + file;
}

bool LeaveTraced() {
  Bytes rgb(std::size_t{1024} * 1024 * 3, 255);
  for (std::size_t i = rgb.size() / 2; i < rgb.size(); ++i) rgb[i] = i % 3 == 2 ? 255 : 0;
  return WriteTga(ValleyScratch("textures\\merged\\Tx01x00.tga"), 1024, 1024, rgb) &&
         WriteWholeFile(ValleyScratch("textures\\LightmapShadowBits.lsb"), "bits") &&
         WriteWholeFile(ValleyScratch("ObjectLightMaps\\new.dds"), "new");
}

void PrepareTracing() {
  CreateFolder("scripts");
  for (const char* script : {"terrain", "objects"}) {
    EXPECT_TRUE(WriteWholeFile(std::string("scripts\\") + script + "Lightmap.con",
                               "rem light\r\ngeometrytemplate.ShadowPrecision 9\r\n"
                               "Raytracer.Light.Direction 0/1/0\r\n"
                               "raytracer.light.direction 1/2/3\r\n"
                               "raytracer.light.direction 4/5/6\r\n  kept  as it is\r\n"));
  }
  modConfig.currentSky.sunDirection = {0.5f, 0.25f, -1};
  terrain.shadowSettings.ShadowPrecision = 2.5f;
  auto& surfaces = levelTextures.SurfaceAssigned;
  auto& chosen = terrain.shadowSettings.ShadowSelected;
  surfaces[1][0] = surfaces[0][1] = surfaces[2][2] = true;
  chosen[1][0] = chosen[0][1] = chosen[3][3] = true;
  EXPECT_TRUE(MakeScratchFolder(ScratchMergedFolder()));
  EXPECT_TRUE(MakeScratchFolder(ScratchObjectLightMapsFolder()));
}

}  // namespace mw
