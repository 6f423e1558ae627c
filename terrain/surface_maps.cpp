#include "terrain/surface_maps.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "core/text.h"
#include "data/game_file.h"
#include "data/image.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "platform/prompts.h"
#include "terrain/dds_writer.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/shadow_work.h"

namespace mw {
namespace {

constexpr int kTilePixels = MAPWRIGHT_TILE_PIXELS;  // per side of a tile

MapwrightTextureSlot SlotOf(const SetTexture& texture) {
  MapwrightTextureSlot slot{};
  static_assert(sizeof slot.name == decltype(texture.name)::kCapacity + 1);
  static_assert(sizeof slot.file == decltype(texture.file)::kCapacity + 1);
  std::memcpy(slot.name, texture.name.c_str(), texture.name.size());
  std::memcpy(slot.file, texture.file.c_str(), texture.file.size());
  slot.texture = texture.texture;
  slot.loaded = texture.loaded;
  slot.width = texture.width;
  slot.height = texture.height;
  slot.pixels = texture.rgb.data();
  return slot;
}

void GivePicturesTo(const SurfacePlugin& plugin,
                    std::array<MapwrightTextureSlot, kMaxSetTextures>& slots) {
  for (std::size_t k = 0; k < slots.size(); ++k) {
    slots[k] = SlotOf(textureSet.textures[k]);
    plugin.InitSurfaceBmp(static_cast<std::int32_t>(k), &slots[k]);
  }
}

// `written` as it is, with the reason noted when it is false.
bool IsWritten(bool written, const std::string& path) {
  if (!written) SetGameFileError("The file " + SystemPath(path) + " could not be written.");
  return written;
}

std::string TileName(const TileIndex& tile) {
  return FormatText("Tx0%ix0%i", tile.row, tile.column);
}

std::string TilePath(const TileIndex& tile) {
  return FormatText("%s/Textures/%s.dds", openLevel.folder.c_str(), TileName(tile).c_str());
}

bool PaintTile(const SurfacePlugin& plugin, const TileIndex& tile,
               const std::string& shadowFolder) {
  const std::string name = TileName(tile);
  const std::uint8_t* const pixels = plugin.GenerateSurfaceMap(kTilePixels, tile.row, tile.column);
  if (!pixels) {
    SetGameFileError("The surface plug-in could not paint the tile " + name + ".");
    return false;
  }
  const std::span rgb(pixels, std::size_t{kTilePixels} * kTilePixels * 3);
  bool written = SaveDDS(TilePath(tile), kTilePixels, kTilePixels, rgb, true);
  const std::string tga = shadowFolder + "\\" + name + ".tga";
  written &= IsWritten(WriteTga(tga, kTilePixels, kTilePixels, rgb), tga);
  return written;
}

bool PaintTiles(const SurfacePlugin& plugin, const std::vector<TileIndex>& tiles) {
  const std::string shadowFolder = ScratchTexturesFolder();
  bool written = MakeScratchFolder(shadowFolder);
  int number = 0;
  for (const TileIndex& tile : tiles) {
    SetStatusText(1, FormatText("Generating Surface Map %i of %i...", ++number,
                                static_cast<int>(tiles.size())));
    written &= PaintTile(plugin, tile, shadowFolder);
  }
  if (textureSet.terrainPalette.loaded) {
    written &= IsWritten(WriteTerrainPalette(shadowFolder), shadowFolder + "\\terrainPalette.pal");
  }
  return written;
}

void ShowNothingAssigned() {
  ShowPrompt(
      "ERROR: There are no surface assigments specified.\n"
      "Please activate the 'Surface Map Assignements' dialog and assign some\n"
      "surface areas to generate.",
      "Surface Mapper Error", PromptButtons::Ok, PromptIcon::Stop);
}

// Asks when the level has some of the tiles already.
bool MayReplace(const std::vector<TileIndex>& tiles) {
  const int count = CountTilesInLevel(tiles);
  return count == 0 || ConfirmReplacing(FormatText(
                           "This will replace %i surface %s of the level, with the "
                           "shadows merged into %s.",
                           count, count == 1 ? "map" : "maps", count == 1 ? "it" : "them"));
}

}  // namespace

int CountTilesInLevel(const std::vector<TileIndex>& tiles) {
  return static_cast<int>(std::ranges::count_if(
      tiles, [](const TileIndex& tile) { return IsInWritableArchive(TilePath(tile)); }));
}

bool GenerateSurfaceMaps(const SurfacePlugin& plugin) {
  const std::vector<TileIndex> tiles = AssignedTiles();
  if (tiles.empty()) {
    ShowNothingAssigned();
    return false;
  }
  if (!plugin.InitSurfaceMap || !plugin.InitSurfaceBmp || !plugin.GenerateSurfaceMap) return false;
  if (!materialMapper || !HasUsableSize() || !MayReplace(tiles)) return false;
  ShowWaitCursor();
  if (!plugin.InitSurfaceMap(materialMapper->grid[0].data(), modConfig.MaterialSize,
                             modConfig.TexOffsetX, modConfig.TexOffsetY)) {
    return false;
  }
  std::array<MapwrightTextureSlot, kMaxSetTextures> slots;  // valid as long as the plug-in paints
  GivePicturesTo(plugin, slots);
  // One group for all tiles: the disk is waited for once, not at every tile.
  const std::string failure = WriteAsOneChange([&] { return PaintTiles(plugin, tiles); });
  SetStatusText(1, "");
  if (failure.empty()) return true;
  ShowArrowCursor();
  ShowPrompt(failure, "Error", PromptButtons::Ok, PromptIcon::Stop);
  return true;
}

}  // namespace mw
