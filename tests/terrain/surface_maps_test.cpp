#include "terrain/surface_maps.h"

#include "data/level_archive_test.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "support/golden.h"
#include "support/test.h"
#include "terrain/dds_writer.h"
#include "terrain/flat_ground.h"
#include "terrain/level_textures.h"

namespace mw {
namespace {

constexpr std::size_t kTileBytes = std::size_t{1024} * 1024 * 3;

// A plug-in that paints each tile in a colour of its own and notes what it was asked.
struct FakePlugin {
  bool accepts = true;
  const std::uint32_t* materials = nullptr;
  std::string asked;
  std::string cannotPaint;
  Bytes picture;
};
FakePlugin fake;

bool InitMap(const std::uint32_t* materials, std::int32_t size, std::int32_t offsetX,
             std::int32_t offsetY) {
  fake.materials = materials;
  fake.asked += FormatText("level of %i cells, offsets %i, %i\n", size, offsetX, offsetY);
  return fake.accepts;
}
void InitBmp(std::int32_t slot, const MapwrightTextureSlot* texture) {
  fake.asked += FormatText("picture %i", slot);
  if (texture->loaded) {
    fake.asked +=
        FormatText(": %s, %s, %i x %i, %i %i %i ...", texture->name, texture->file, texture->width,
                   texture->height, texture->pixels[0], texture->pixels[1], texture->pixels[2]);
  }
  fake.asked += '\n';
}
const std::uint8_t* PaintMap(std::int32_t size, std::int32_t row, std::int32_t column) {
  const std::string tile = std::to_string(row) + "x" + std::to_string(column);
  fake.asked += "paint " + tile + ", " + std::to_string(size) + " pixels\n";
  if (tile == fake.cannotPaint) return nullptr;
  // The upper half is the tile's own; the lower one is red.
  fake.picture.assign(kTileBytes, static_cast<std::uint8_t>(16 * row + 8 * column));
  for (std::size_t i = kTileBytes / 2; i < kTileBytes; ++i) fake.picture[i] = i % 3 == 0 ? 255 : 0;
  return fake.picture.data();
}
constexpr SurfacePlugin kFakePlugin{InitMap, InitBmp, PaintMap};

class SurfaceMapsTest : public FlatGround<LevelArchiveTest> {
 protected:
  SurfaceMapsTest() {
    fake = {};
    levelTextures = {};
    textureSet = {};
    modConfig.TexOffsetX = 1;
    modConfig.TexOffsetY = 2;
    SetTexture& grass = textureSet.textures[3];
    grass.name = "Grass";
    grass.file = "grass.bmp";
    grass.loaded = true;
    grass.width = 2;
    grass.height = 1;
    grass.rgb = {1, 2, 3, 4, 5, 6};
  }

  // What a run asks of the plug-in, says to the user and leaves in the level.
  std::string Listing(const SurfacePlugin& plugin) {
    const bool done = GenerateSurfaceMaps(plugin);
    std::string listing = std::exchange(fake.asked, "");
    for (const std::string& text : std::exchange(scripted::script.status[1], {}))
      listing += "status: " + text + "\n";
    for (const std::string& box : TakePrompts()) listing += "box: " + box + "\n";
    for (const auto& [name, entry] : level->Entries())
      listing += std::string(name) + ", " + std::to_string(entry.size) + " bytes\n";
    return listing + (done ? "done\n" : "not done\n");
  }
  static void Assign(std::initializer_list<Cell> tiles) {
    levelTextures.SurfaceAssigned = {};
    for (const auto& [row, column] : tiles) levelTextures.SurfaceAssigned[row][column] = true;
  }
  std::string ScratchFolder() const {
    return GameFolder() + "ShadowWork\\Varnhold\\levels\\Island\\textures\\";
  }
};

TEST_F(SurfaceMapsTest, EachRunAsksPaintsAndTellsAsListed) {
  std::string listing;
  const auto run = [&](const char* name, const SurfacePlugin& plugin,
                       std::initializer_list<PromptAnswer> answers) {
    Answer(answers);
    listing += std::string("== ") + name + "\n" + Listing(plugin);
  };
  run("no tile", kFakePlugin, {PromptAnswer::Ok});
  Assign({{0, 1}, {1, 0}, {7, 7}});
  run("no plug-in", {}, {});
  fake.accepts = false;
  run("declining plug-in", kFakePlugin, {});
  EXPECT_FALSE(FolderExists(GameFolder() + "ShadowWork"));
  fake.accepts = true;
  run("three tiles", kFakePlugin, {});
  EXPECT_EQ(fake.materials, &materialMapper->grid[0][0]);
  EXPECT_GT(scripted::script.waitCursorCount, 0);
  Assign({{0, 0}, {1, 0}});
  run("one is there, cancelled", kFakePlugin, {PromptAnswer::Cancel});
  fake.cannotPaint = "0x0";
  run("one cannot be painted", kFakePlugin, {PromptAnswer::Ok, PromptAnswer::Ok});
  Assign({{0, 1}, {1, 0}});
  run("two are there, cancelled", kFakePlugin, {PromptAnswer::Cancel});
  modConfig.MaterialSize = 2048;
  run("level of an impossible size", kFakePlugin, {});
  modConfig.MaterialSize = kSide;
  archives.Clear();
  Answer({PromptAnswer::Ok});
  GenerateSurfaceMaps(kFakePlugin);
  ExpectBoxes({{"No archive is open for writing.", "Error", PromptButtons::Ok, PromptIcon::Stop}});
  ExpectGolden("terrain/surface_maps.txt", listing);
}

TEST_F(SurfaceMapsTest, APaintedTileIsInTheLevelAndInTheScratchFolderOrTheReasonIsTold) {
  Assign({{2, 1}});
  textureSet.terrainPalette.loaded = true;
  textureSet.terrainPalette.data[0] = 99;
  EXPECT_TRUE(GenerateSurfaceMaps(kFakePlugin));
  EXPECT_TRUE(Get("Textures/Tx02x01.dds") == Text(EncodeDds(1024, 1024, fake.picture, true)));
  const auto tga = ReadWholeFile(ScratchFolder() + "Tx02x01.tga");
  ASSERT_TRUE(tga);
  ASSERT_EQ(tga->size(), 18 + kTileBytes);
  EXPECT_EQ((*tga)[18 + 2], 255) << "the lower half, which is red, comes first; red is third";
  EXPECT_EQ(tga->back(), 16 * 2 + 8);
  const auto palette = ReadWholeFile(ScratchFolder() + "terrainPalette.pal");
  ASSERT_TRUE(palette);
  ASSERT_EQ(palette->size(), 24u + 1024u);
  EXPECT_EQ((*palette)[24], 99);
  for (const char* file : {"Tx02x01.tga", "terrainPalette.pal"}) {
    std::filesystem::remove_all(folder / "ShadowWork");
    std::filesystem::create_directories(SystemPath(ScratchFolder() + file) + "/in the way");
    Answer({PromptAnswer::Ok, PromptAnswer::Ok});
    EXPECT_TRUE(GenerateSurfaceMaps(kFakePlugin));
    ExpectPrompts(
        {"This will replace 1 surface map", std::string(file) + " could not be written. (Stop)"});
  }
}

}  // namespace
}  // namespace mw
