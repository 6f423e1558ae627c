#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <span>

#include "core/editor_state.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/dds.h"
#include "data/game_file.h"
#include "data/level_settings.h"
#include "data/mod_config.h"
#include "sample/installation.h"
#include "sample/level_members.h"
#include "sample/placement.h"
#include "sample/settings_scripts.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"

namespace mw::sample {
namespace {

constexpr float kTileSize = 256;     // world units
constexpr float kSteepRise = 3.92f;  // per cell; the editor marks what is steeper

// Made once; the tests only look at them.
const Level& HarbourPoint() {
  static const Level level = MakeHarbourPoint();
  return level;
}
const Level& StoneRidge() {
  static const Level level = MakeStoneRidge();
  return level;
}

class SampleLevelTest : public SandboxTest,
                        public ::testing::WithParamInterface<const Level& (*)()> {
 protected:
  SampleLevelTest() : level(GetParam()()) { archives.Clear(); }
  ~SampleLevelTest() override {
    archives.Clear();
    DestroyTerrain();
    modConfig = ModConfig{};
  }

  // As the program does on opening a level, up to its settings.
  void Open(int tileSide) {
    const std::string name(level.name);
    std::ofstream("varnhold.cfg") << ModConfigText(GameFolder(), "For a test.");
    ASSERT_TRUE(ParseModConfig("varnhold", modConfig));
    const std::string path = name + ".vra";
    ASSERT_TRUE(WriteArchive(path, StorageMode::Compressed, LevelMembers(level, tileSide)));
    ASSERT_NE(archives.OpenArchive(path, true), nullptr);
    modConfig.LevelName = name;
    editor.levelFolder = GameFolder() + "Mods\\varnhold\\varnhold\\levels\\" + name;
    ReadLevelSettings();
  }

  const Level& level;
};

TEST_P(SampleLevelTest, TheEditorReadsItsSettingsAndHeights) {
  Open(16);
  EXPECT_EQ(modConfig.MaterialSize, level.land.height.Side());
  EXPECT_EQ(modConfig.WorldSize, 4 * level.land.height.Side());
  EXPECT_EQ(modConfig.HeightScale, level.heightScale);
  EXPECT_EQ(modConfig.WaterLevel, level.land.waterLevel);
  EXPECT_EQ(modConfig.chosenTeam[0], 0);
  EXPECT_EQ(modConfig.chosenTeam[1], 1);
  EXPECT_EQ(modConfig.fogEnd, level.environment.fogEnd);
  const auto mesh = modConfig.currentSky.mesh;
  EXPECT_TRUE(std::ranges::any_of(std::span(modConfig.skies).first(modConfig.skyCount),
                                  [&](const Sky& sky) { return sky.settings.mesh == mesh.View(); }))
      << mesh.c_str();

  CreateTerrain();
  ASSERT_TRUE(LoadHeightBuffer());
  InitGrid();
  LoadHeightsFromBuffer();
  const ControlPointPlan& point = level.controlPoints.front();
  EXPECT_NEAR(HeightAt(point.at.x, point.at.z), level.land.height.Sample(point.at), 1.0f);
}

// Pixel of a tile that the renderer shows at a place, along one side.
int TilePixel(float position, int side) {
  return static_cast<int>(std::fmod(position, kTileSize) / kTileSize * static_cast<float>(side));
}

TEST_P(SampleLevelTest, PavedRoadsInTheTilesLieOnTheirBeds) {
  Open(128);
  const Road& road = level.land.roads.front();
  ASSERT_EQ(road.surface, Material::PavedRoad);
  int grey = 0, count = 0;
  for (const PathPoint& point : road.path) {
    if (point.bridge || point.at.x >= level.land.height.WorldSize()) continue;
    EXPECT_NEAR(level.land.height.Sample(point.at), point.height, 2.0f);
    const auto tile = LoadDds(FormatText("%s/textures/Tx0%ix0%i.dds", editor.levelFolder.c_str(),
                                         static_cast<int>(point.at.x / kTileSize),
                                         static_cast<int>(point.at.z / kTileSize)));
    ASSERT_TRUE(tile);
    const auto pixel = DecodeDxt1Pixel(tile->data, tile->width, TilePixel(point.at.x, tile->width),
                                       TilePixel(point.at.z, tile->height));
    grey += std::abs(pixel[0] - pixel[2]) < 40 ? 1 : 0;
    ++count;
  }
  EXPECT_GT(grey, count * 2 / 3) << "of " << count;
}

TEST_P(SampleLevelTest, TheGroundFitsTogetherAtItsEdgesAndIsSeldomSteep) {
  const Grid& height = level.land.height;
  const int side = height.Side();
  int steep = 0;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const float rise = std::max(std::abs(height.At(column + 1, row) - height.At(column, row)),
                                  std::abs(height.At(column, row + 1) - height.At(column, row)));
      steep += rise > kSteepRise ? 1 : 0;
      if (row < side - 1 && column < side - 1) continue;
      EXPECT_LT(rise, 2 * kSteepRise) << column << ", " << row;
    }
  }
  EXPECT_LT(steep, side * side / 500);
}

TEST_P(SampleLevelTest, EveryObjectIsListedAndStandsInTheLevel) {
  const auto isListed = [](std::string_view name) {
    return std::ranges::any_of(ObjectKinds(), [&](const auto& kind) { return kind.name == name; });
  };
  EXPECT_LT(level.objects.size(), 2047u);
  for (const PlacedObject& object : level.objects) {
    EXPECT_TRUE(isListed(object.name)) << object.name;
    EXPECT_GT(std::min(object.at.x, object.at.z), 0);
    EXPECT_LT(std::max(object.at.x, object.at.z), level.land.height.WorldSize());
  }
  EXPECT_LE(level.controlPoints.size(), 8u);
  for (const ControlPointPlan& point : level.controlPoints) {
    EXPECT_GT(level.land.height.Sample(point.at), level.land.waterLevel) << point.name;
    for (const VehicleSpawn& spawn : point.vehicles) EXPECT_TRUE(isListed(spawn.vehicle));
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, SampleLevelTest, ::testing::Values(HarbourPoint, StoneRidge),
                         [](const auto& parameter) {
                           return parameter.index == 0 ? "HarbourPoint" : "StoneRidge";
                         });

TEST(SampleLevels, AFenceFollowsARoad) {
  const Landscape land = MakeCoastLandscape();
  Placer place(land);
  const std::vector<Road> road{land.roads.front()};
  place.PutAlongRoad("fence", road.front(), {500, 540}, {860, 520}, 7, 8);
  const std::vector<PlacedObject> row = place.Take();
  const RoadIndex index(road, land.height.WorldSize(), 12);
  ASSERT_GT(row.size(), 40u);
  for (std::size_t k = 0; k < row.size(); ++k) {
    EXPECT_NEAR(index.Nearest(row[k].at).distance, 7, 0.6f) << k;
    if (k == 0) continue;
    EXPECT_NEAR(Distance(row[k - 1].at, row[k].at), 8, 0.3f) << "no gap before " << k;
    const float turn = std::remainder(row[k].heading - row[k - 1].heading, 360.0f);
    EXPECT_LT(std::abs(turn), 30) << "it turns with the road at " << k;
  }
}

TEST(SampleLevels, AreTheSameOnEveryRun) {
  const std::vector<Member> first = LevelMembers(HarbourPoint(), 16);
  const std::vector<Member> second = LevelMembers(MakeHarbourPoint(), 16);
  ASSERT_EQ(first.size(), second.size());
  for (std::size_t k = 0; k < first.size(); ++k) {
    EXPECT_EQ(first[k].name, second[k].name);
    EXPECT_TRUE(first[k].bytes == second[k].bytes) << first[k].name;
  }
}

struct SampleInstallationTest : SandboxTest {};

TEST_F(SampleInstallationTest, WhatNoRunWroteIsSomebodysWork) {
  const Installation installation{folder / "game", folder / "work"};
  const auto write = [](const std::filesystem::path& path) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "mine";
  };
  EXPECT_FALSE(IsEdited(installation)) << "empty folders";
  write(installation.workingFolder / "varnhold.cfg");
  EXPECT_TRUE(IsEdited(installation));
  std::filesystem::remove(installation.workingFolder / "varnhold.cfg");
  write(installation.gameFolder / "Mods/varnhold/Archives/varnhold/levels/Stone_Ridge.vra");
  EXPECT_TRUE(IsEdited(installation)) << "a level";
  write(installation.workingFolder / "sample.unfinished");
  EXPECT_FALSE(IsEdited(installation)) << "a run that did not finish may be repeated";
}

}  // namespace
}  // namespace mw::sample
