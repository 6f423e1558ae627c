#include "terrain/surface_maps.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "data/level_archive_test.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "support/prompts.h"
#include "terrain/dds_writer.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/surface_assignments.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ByteVector = std::vector<std::uint8_t>;

constexpr std::size_t kTileBytes = std::size_t{1024} * 1024 * 3;

// A plug-in that paints each tile in a colour of its own and remembers what it was asked.
struct FakePlugin {
  bool accepts = true;
  const std::uint32_t* materials = nullptr;
  std::vector<std::int32_t> level;          // size and offsets
  std::vector<MapwrightTextureSlot> slots;  // in the order in which they came
  std::vector<std::string> painted;
  std::string cannotPaint;
  ByteVector picture;
};
FakePlugin fake;

bool InitMap(const std::uint32_t* materials, std::int32_t size, std::int32_t offsetX,
             std::int32_t offsetY) {
  fake.materials = materials;
  fake.level = {size, offsetX, offsetY};
  return fake.accepts;
}
void InitBmp(std::int32_t slot, const MapwrightTextureSlot* textureSlot) {
  EXPECT_EQ(slot, static_cast<std::int32_t>(fake.slots.size()));
  fake.slots.push_back(*textureSlot);
}
const std::uint8_t* PaintMap(std::int32_t size, std::int32_t row, std::int32_t column) {
  const std::string tile = std::to_string(row) + "x" + std::to_string(column);
  fake.painted.push_back(std::to_string(size) + " " + tile);
  if (tile == fake.cannotPaint) return nullptr;
  // The upper half is the tile's own; the lower one is red.
  fake.picture.assign(kTileBytes, static_cast<std::uint8_t>(16 * row + 8 * column));
  for (std::size_t i = kTileBytes / 2; i < kTileBytes; ++i) fake.picture[i] = i % 3 == 0 ? 255 : 0;
  return fake.picture.data();
}
constexpr SurfacePlugin kFakePlugin{InitMap, InitBmp, PaintMap};

class SurfaceMapsTest : public LevelArchiveTest {
 protected:
  SurfaceMapsTest() {
    fake = {};
    levelTextures = {};
    textureSet = {};
    modConfig.MaterialSize = 512;
    modConfig.TexOffsetX = 1;
    modConfig.TexOffsetY = 2;
    CreateMaterialMapper();
  }
  ~SurfaceMapsTest() override { DestroyMaterialMapper(); }

  std::string ScratchFolder() const {
    return GameFolder() + "ShadowWork\\Varnhold\\levels\\Island\\textures\\";
  }
};

TEST_F(SurfaceMapsTest, TilesArePaintedColumnByColumnAndTold) {
  for (const auto& [row, column] : {std::pair{0, 1}, {1, 0}, {7, 7}}) {
    levelTextures.SurfaceAssigned[row][column] = true;
  }
  GenerateSurfaceMaps(kFakePlugin);
  EXPECT_THAT(fake.painted, ElementsAre("1024 1x0", "1024 0x1", "1024 7x7"));
  EXPECT_THAT(scripted::script.status[1],
              ElementsAre("Generating Surface Map 1 of 3...", "Generating Surface Map 2 of 3...",
                          "Generating Surface Map 3 of 3...", ""));
  EXPECT_GT(scripted::script.waitCursorCount, 0);
}

TEST_F(SurfaceMapsTest, ThePluginGetsTheMaterialsTheOffsetsAndAllSixteenPictures) {
  SetTexture& grass = textureSet.textures[3];
  grass.name = "Grass";
  grass.file = "grass.bmp";
  grass.loaded = true;
  grass.width = 2;
  grass.height = 1;
  grass.rgb = {1, 2, 3, 4, 5, 6};
  levelTextures.SurfaceAssigned[0][0] = true;
  GenerateSurfaceMaps(kFakePlugin);
  EXPECT_EQ(fake.materials, &materialMapper->grid[0][0]);
  EXPECT_THAT(fake.level, ElementsAre(512, 1, 2));
  ASSERT_EQ(fake.slots.size(), 16u) << "loaded or not";
  EXPECT_STREQ(fake.slots[3].name, "Grass");
  EXPECT_STREQ(fake.slots[3].file, "grass.bmp");
  EXPECT_EQ(fake.slots[3].width, 2);
  EXPECT_EQ(fake.slots[3].height, 1);
  EXPECT_EQ(fake.slots[3].pixels, grass.rgb.data());
  EXPECT_TRUE(fake.slots[3].loaded);
  EXPECT_FALSE(fake.slots[4].loaded);
}

TEST_F(SurfaceMapsTest, APaintedTileIsInTheLevelAndInTheScratchFolder) {
  levelTextures.SurfaceAssigned[2][1] = true;
  textureSet.terrainPalette.loaded = true;
  textureSet.terrainPalette.data[0] = 99;
  GenerateSurfaceMaps(kFakePlugin);

  const std::string dds = Get("Textures/Tx02x01.dds");
  EXPECT_EQ(dds.size(), 128u + 699064u);
  EXPECT_EQ(dds, Text(EncodeDds(1024, 1024, fake.picture, true)));

  const auto tga = ReadWholeFile(ScratchFolder() + "Tx02x01.tga");
  ASSERT_TRUE(tga);
  ASSERT_EQ(tga->size(), 18 + kTileBytes);
  EXPECT_EQ((*tga)[18 + 2], 255) << "the lower half, which is red, comes first; red is third";
  EXPECT_EQ(tga->back(), 16 * 2 + 8);
  const auto palette = ReadWholeFile(ScratchFolder() + "terrainPalette.pal");
  ASSERT_TRUE(palette);
  ASSERT_EQ(palette->size(), 24u + 1024u);
  EXPECT_EQ((*palette)[24], 99);
}

TEST_F(SurfaceMapsTest, WithoutATileNothingIsAskedOfThePlugin) {
  scripted::script.answers = {PromptAnswer::Ok};
  GenerateSurfaceMaps(kFakePlugin);
  ExpectBoxes(
      {{"ERROR: There are no surface assigments specified.\n"
        "Please activate the 'Surface Map Assignements' dialog and assign some\n"
        "surface areas to generate.",
        "Surface Mapper Error", PromptButtons::Ok, PromptIcon::Stop}});
  EXPECT_TRUE(fake.level.empty());
}

TEST_F(SurfaceMapsTest, APluginThatDeclinesOrIsMissingWritesNothing) {
  levelTextures.SurfaceAssigned[0][0] = true;
  fake.accepts = false;
  GenerateSurfaceMaps(kFakePlugin);
  GenerateSurfaceMaps({});
  EXPECT_TRUE(fake.slots.empty());
  EXPECT_TRUE(level->Entries().empty());
  EXPECT_FALSE(FolderExists(GameFolder() + "ShadowWork"));
}

TEST_F(SurfaceMapsTest, ATileThatThePluginCannotPaintStaysAsItWasAndIsTold) {
  Put("Textures/Tx00x00.dds", "old");
  levelTextures.SurfaceAssigned[0][0] = levelTextures.SurfaceAssigned[1][0] = true;
  fake.cannotPaint = "0x0";
  scripted::script.answers = {PromptAnswer::Cancel};
  EXPECT_FALSE(GenerateSurfaceMaps(kFakePlugin));
  EXPECT_TRUE(fake.painted.empty());
  EXPECT_EQ(scripted::script.prompts.back().text,
            "This will replace 1 surface map of the level, with the shadows merged into it.");
  scripted::script.answers = {PromptAnswer::Ok, PromptAnswer::Ok};
  EXPECT_TRUE(GenerateSurfaceMaps(kFakePlugin));
  EXPECT_EQ(Get("Textures/Tx00x00.dds"), "old");
  EXPECT_NE(Get("Textures/Tx01x00.dds"), "(none)");
  scripted::script.answers = {PromptAnswer::Cancel};
  GenerateSurfaceMaps(kFakePlugin);
  EXPECT_EQ(scripted::script.prompts.back().text,
            "This will replace 2 surface maps of the level, with the shadows merged into them.");
  scripted::script.prompts.pop_back();
  ASSERT_EQ(scripted::script.prompts.size(), 3u);
  EXPECT_EQ(scripted::script.prompts[2].text,
            "The surface plug-in could not paint the tile Tx00x00.");
}

TEST_F(SurfaceMapsTest, WithoutAnArchiveToWriteToTheReasonIsTold) {
  levelTextures.SurfaceAssigned[0][0] = true;
  archives.Clear();
  scripted::script.answers = {PromptAnswer::Ok};
  GenerateSurfaceMaps(kFakePlugin);
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text, "No archive is open for writing.");
  EXPECT_EQ(scripted::script.prompts[0].caption, "Error");
}

// Assignments.

int CountAssigned() {
  int count = 0;
  for (const auto& row : levelTextures.SurfaceAssigned) {
    count += static_cast<int>(std::ranges::count(row, true));
  }
  return count;
}

TEST_F(SurfaceMapsTest, DefaultAssignsTheWholeLevelAndNothingElse) {
  for (const auto& [size, tiles] : {std::pair{256, 4}, {512, 8}, {1024, 8}}) {
    modConfig.MaterialSize = size;
    modConfig.TexOffsetX = 3;
    editor.levelModified = false;
    levelTextures.SurfaceAssigned = {};
    levelTextures.SurfaceAssigned[7][7] = true;
    AssignAllTiles();
    EXPECT_EQ(CountAssigned(), tiles * tiles) << size;
    EXPECT_TRUE(levelTextures.SurfaceAssigned[tiles - 1][tiles - 1]);
    EXPECT_EQ(modConfig.TexOffsetX, 0);
    EXPECT_EQ(modConfig.TexOffsetY, 0);
    EXPECT_TRUE(editor.levelModified);
  }
}

TEST_F(SurfaceMapsTest, OffsetsShiftTheCellsThatCanBeToggled) {
  using State = AssignmentCell::State;
  modConfig.MaterialSize = 256;  // 4 x 4 tiles
  EXPECT_EQ(AssignmentCellAt(0, 2).state, State::BeforeOffset);
  EXPECT_EQ(AssignmentCellAt(5, 2).state, State::OutsideLevel);
  EXPECT_EQ(AssignmentCellAt(4, 2).state, State::Free);
  EXPECT_FALSE(ToggleAssignment(0, 2));
  EXPECT_FALSE(ToggleAssignment(5, 2));
  EXPECT_FALSE(editor.levelModified);
  EXPECT_TRUE(ToggleAssignment(4, 2));
  EXPECT_TRUE(levelTextures.SurfaceAssigned[3][0]);
  EXPECT_EQ(AssignmentCellAt(4, 2).state, State::Assigned);
  EXPECT_TRUE(editor.levelModified);
  EXPECT_TRUE(ToggleAssignment(4, 2));
  EXPECT_EQ(CountAssigned(), 0);

  modConfig.TexOffsetX = std::numeric_limits<std::int32_t>::min();
  EXPECT_FALSE(ToggleAssignment(7, 2)) << "an offset that no level has";
}

}  // namespace
}  // namespace mw
