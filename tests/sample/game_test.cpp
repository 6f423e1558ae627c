#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/bytes.h"
#include "data/archive.h"
#include "data/image.h"
#include "platform/disk.h"
#include "sample/archive_writer.h"
#include "sample/game/game_commands.h"
#include "sample/game/shadow_tracer.h"
#include "support/golden.h"
#include "support/sandbox.h"

namespace mw::sample {
namespace {

constexpr int kSide = 256, kTileSide = 1024;
constexpr int kWallColumn = 40;  // a wall from south to north, 30 units high, in the first tile
constexpr char kLights[] =
    "GeometryTemplate.shadowPrecision 1\nraytracer.light.create sun\n"
    "raytracer.light.direction 1/1/0\n";  // from the east

// The ground of a level that is flat but for the wall.
Bytes HeightMap() {
  Bytes samples;
  for (int i = 0; i < kSide * kSide; ++i) {
    samples.push_back(0);
    samples.push_back(i % kSide == kWallColumn ? 40 : 10);
  }
  return samples;
}

class StandInGameTest : public SandboxTest {
 protected:
  StandInGameTest() {
    std::filesystem::create_directories(folder / "Mods/mymod/Archives/varnhold/levels");
    std::filesystem::create_directories(folder / "Mods/mymod/Settings");
    std::filesystem::create_directories(folder / kTextures);
    std::filesystem::create_directories(folder / "ShadowWork/varnhold/levels/Wall/ObjectLightMaps");
    const std::string base = "varnhold/levels/Wall/";
    EXPECT_TRUE(WriteArchive(
        (folder / "Mods/mymod/Archives/varnhold/levels/Wall.vra").string(), StorageMode::Compressed,
        {TextMember(base + "Init/Terrain.con",
                    "GeometryTemplate.materialSize 256\nGeometryTemplate.yScale 1\n"),
         TextMember(base + "StaticObjects.con",
                    "Object.create barn\nObject.absolutePosition 40/10/40\n"),
         TextMember(base + "Conquest.con", ""),
         TextMember(base + "terrainLightmap.con", kLights),
         TextMember(base + "objectsLightmap.con", kLights),
         {base + "heightmap.raw", HeightMap()}}));
  }

  // As the editor starts it for a level.
  int Trace(const std::string& what, const std::string& level, const std::string& more = "") const {
    return RunGame({"varnhold", "+workingFolder", (folder / "ShadowWork").string(), "+" + what,
                    "varnhold\\levels\\" + level + "\\" + more},
                   folder);
  }

  // The brightness of a pixel of a traced or merged tile; rows from the south.
  int Brightness(const std::string& file, int x, int y) const {
    const auto bytes = ReadWholeFile((folder / kTextures / file).string());
    if (!bytes || bytes->size() < 18) return -1;
    const int side = (*bytes)[12] + 256 * (*bytes)[13];
    // The file keeps the last row first.
    const auto at = static_cast<std::size_t>(18 + 3 * ((side - 1 - y) * side + x));
    return at < bytes->size() ? (*bytes)[at] : -1;
  }

  static constexpr char kTextures[] = "ShadowWork/varnhold/levels/Wall/textures";
};

TEST_F(StandInGameTest, AWallShadesTheGroundBehindIt) {
  Grid height(kSide, 10);
  for (int row = 0; row < kSide; ++row) height.At(kWallColumn, row) = 40;
  Vector3 sun{1, 1, 0};
  sun.Normalise();
  EXPECT_EQ(LightAt(height, {140, 100}, 10, sun), 0) << "20 units west of the wall";
  EXPECT_EQ(LightAt(height, {120, 100}, 10, sun), 1) << "beyond its shadow";
  EXPECT_EQ(LightAt(height, {170, 100}, 10, sun), 1) << "on the sunny side";
  EXPECT_EQ(LightAt(height, {140, 100}, 45, sun), 1) << "above the wall";
  EXPECT_EQ(LightAt(height, {140, 100}, 10, {0, -1, 0}), 0);
  const Lighting lighting{1, {{sun, 1}}};
  EXPECT_LT(std::ranges::min(TraceTile(height, lighting, 0, 0, 64)), 0.1f);
  EXPECT_GT(std::ranges::min(TraceTile(height, lighting, 1, 0, 64)), 0.5f) << "no wall there";
}

TEST_F(StandInGameTest, ShadowsAreTracedAndMergedIntoTheTiles) {
  EXPECT_TRUE(WriteWholeFile((folder / kTextures / "lmList.dat").string(), Bytes{0, 0}));
  const Bytes grey(std::size_t{kTileSide} * kTileSide * 3, 200);
  EXPECT_TRUE(WriteTga((folder / kTextures / "Tx00x00.tga").string(), kTileSide, kTileSide, grey));
  ASSERT_EQ(Trace("traceTerrainShadows", "Wall"), 0);
  EXPECT_EQ(Brightness("Tx00x00_shadow.tga", 140, 100), 0);
  EXPECT_EQ(Brightness("Tx00x00_shadow.tga", 110, 100), 255);
  const auto bits = ReadWholeFile((folder / kTextures / "LightmapShadowBits.lsb").string());
  ASSERT_TRUE(bits);
  ASSERT_EQ(bits->size(), std::size_t{kSide} * kSide / 8);
  EXPECT_EQ((*bits)[36 / 8] >> (36 % 8) & 1, 0) << "just west of the wall";
  EXPECT_EQ((*bits)[44 / 8] >> (44 % 8) & 1, 1);

  ASSERT_EQ(Trace("mergeTerrainShadows", "Wall", " 1.5 0.6"), 0);
  EXPECT_EQ(Brightness("merged/Tx00x00.tga", 4 * 140, 4 * 100), 120);
  EXPECT_EQ(Brightness("merged/Tx00x00.tga", 4 * 200, 4 * 100), 200);
}

TEST_F(StandInGameTest, EveryObjectGetsALightMap) {
  ASSERT_EQ(Trace("traceObjectShadows", "Wall"), 0);
  ExpectGolden("sample/barn_shadow.tga",
               ReadWholeFile("ShadowWork/varnhold/levels/Wall/ObjectLightMaps/barn_0000.tga")
                   .value_or(Bytes{}));
}

TEST_F(StandInGameTest, AHostSaysWhatItLoads) {
  EXPECT_TRUE(WriteWholeFile("Mods/mymod/Settings/maplist.con",
                             "game.addLevel WALL\ngame.setCurrentLevel WALL\n"));
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(RunGame({"varnhold", "+game", "mymod", "+restart", "1", "+hostServer", "1"}, folder),
            0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(),
            "Varnhold hosts WALL of mymod: 6 files, 1 objects, ground complete.\n"
            "  game mode Conquest\n");
}

TEST_F(StandInGameTest, WhatIsMissingIsSaid) {
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(RunGame({"varnhold", "+game", "mymod", "+restart", "1", "+hostServer", "1"}, folder),
            1);
  EXPECT_EQ(Trace("traceTerrainShadows", "Nowhere"), 1);
  EXPECT_EQ(Trace("mergeTerrainShadows", "Wall", " 1.5 0.6"), 1);
  EXPECT_THAT(::testing::internal::GetCapturedStderr(),
              ::testing::AllOf(::testing::HasSubstr("map list"), ::testing::HasSubstr("Nowhere"),
                               ::testing::HasSubstr("no list of tiles")));
}

}  // namespace
}  // namespace mw::sample
