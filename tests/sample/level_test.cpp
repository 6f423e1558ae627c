#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <span>

#include "core/text.h"
#include "data/archive.h"
#include "data/game_file.h"
#include "data/level_settings.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "sample/content_archives.h"
#include "sample/installation.h"
#include "sample/level_members.h"
#include "sample/object_textures.h"
#include "sample/objects.h"
#include "sample/settings_scripts.h"
#include "support/golden.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"

namespace mw::sample {
namespace {

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

bool IsListed(std::string_view name) {
  return std::ranges::any_of(ObjectKinds(), [&](const auto& kind) { return kind.name == name; });
}

// It fits together at its edges and is seldom steep.
void ExpectSoundGround(const Grid& height) {
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

void ExpectListedObjectsInTheLevel(const Level& level) {
  EXPECT_LT(level.objects.size(), 2047u);
  for (const PlacedObject& object : level.objects) {
    EXPECT_TRUE(IsListed(object.name)) << object.name;
    EXPECT_GT(std::min(object.at.x, object.at.z), 0);
    EXPECT_LT(std::max(object.at.x, object.at.z), level.land.height.WorldSize());
  }
  EXPECT_LE(level.controlPoints.size(), 8u);
  for (const ControlPointPlan& point : level.controlPoints) {
    EXPECT_GT(level.land.height.Sample(point.at), level.land.waterLevel) << point.name;
    for (const VehicleSpawn& spawn : point.vehicles) EXPECT_TRUE(IsListed(spawn.vehicle));
  }
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
  const Level& level;
};

INSTANTIATE_TEST_SUITE_P(Levels, SampleLevelTest, ::testing::Values(HarbourPoint, StoneRidge),
                         [](const auto& parameter) {
                           return parameter.index == 0 ? "HarbourPoint" : "StoneRidge";
                         });

// In one, since a level takes long to make.
TEST_P(SampleLevelTest, IsSoundAndTheEditorReadsIt) {
  ExpectSoundGround(level.land.height);
  ExpectListedObjectsInTheLevel(level);

  const std::string name(level.name), path = name + ".vra";
  std::ofstream("varnhold.cfg") << ModConfigText(GameFolder(), "For a test.");
  ASSERT_TRUE(ParseModConfig("varnhold", modConfig));
  ASSERT_TRUE(WriteArchive(path, StorageMode::Compressed, LevelMembers(level, 16)));
  ASSERT_TRUE(archives.OpenArchive(path, true));
  modConfig.LevelName = name;
  openLevel.folder = GameFolder() + "Mods\\varnhold\\varnhold\\levels\\" + name;
  ReadLevelSettings();
  EXPECT_EQ(modConfig.MaterialSize, level.land.height.Side());
  EXPECT_EQ(modConfig.WorldSize, 4 * level.land.height.Side());
  EXPECT_EQ(modConfig.HeightScale, level.heightScale);
  EXPECT_EQ(modConfig.WaterLevel, level.land.waterLevel);
  EXPECT_EQ(modConfig.chosenTeam, (std::array<std::int32_t, 2>{0, 1}));
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

// The sample is the same on every machine: names, sizes and checksums of all that it holds.
TEST(SampleGame, EveryMemberHasItsBytes) {
  std::string told;
  const auto tell = [&told](const char* title, const std::vector<Member>& members) {
    told += std::string(title) + "\n";
    for (const Member& member : members) {
      std::uint32_t sum = 0;
      for (const std::uint8_t byte : member.bytes) sum = (sum ^ byte) * 0x01000193;
      told += FormatText("  %s %zu %08x\n", member.name.c_str(), member.bytes.size(), sum);
    }
  };
  tell("Harbour Point", LevelMembers(HarbourPoint(), 16));
  tell("Stone Ridge", LevelMembers(StoneRidge(), 16));
  tell("Objects", ObjectMembers());
  tell("Meshes", StandardMeshMembers());
  tell("Trees", TreeMeshMembers());
  tell("Textures", TextureMembers());
  ExpectGolden("sample/members.txt", told + ModConfigText("C:\\Game\\", "For a test."));
}

TEST(SampleGame, EveryMeshShowsPaintedMaterials) {
  std::set<std::string> painted;
  for (const ObjectMaterial& material : ObjectMaterials()) {
    painted.insert({material.name, std::string(material.name) + "_shade"});
  }
  for (const ObjectKind& kind : ObjectKinds()) {
    for (const MeshPart& part : kind.build().parts) {
      EXPECT_TRUE(painted.contains(part.material)) << kind.name << ": " << part.material;
    }
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
