// Surface tiles: encoding and decoding them, the in-game map made of them, and painting them.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <squish.h>
#include <string>
#include <vector>

#include "bench/table/machine.h"
#include "bench/table/pictures.h"
#include "bench/table/table.h"
#include "core/bytes.h"
#include "core/editor_state.h"
#include "core/little_endian.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/dds.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "plugins/mapwright_plugin.h"
#include "terrain/dds_writer.h"
#include "terrain/in_game_map.h"
#include "terrain/level_textures.h"
#include "terrain/terrain.h"

#define STB_DXT_IMPLEMENTATION
#define STB_DXT_STATIC
#include <stb/stb_dxt.h>

namespace mw::bench {
namespace {

// One level of a picture as the other encoder takes it.
struct RgbaLevel {
  int side = 0;
  Bytes rgba;
};

Bytes HalveRgba(const RgbaLevel& from) {
  const int side = from.side / 2;
  Bytes rgba;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const auto at = static_cast<std::size_t>((2 * y * from.side + 2 * x) * 4);
      const auto below = at + static_cast<std::size_t>(from.side) * 4;
      for (std::size_t c = 0; c < 4; ++c) {
        const int sum = from.rgba[at + c] + from.rgba[at + 4 + c] + from.rgba[below + c] +
                        from.rgba[below + 4 + c];
        rgba.push_back(static_cast<std::uint8_t>((sum + 2) / 4));
      }
    }
  }
  return rgba;
}

// The levels that have whole blocks; the two below them are one block each.
std::vector<RgbaLevel> LevelsOf(const Bytes& rgb) {
  std::vector<RgbaLevel> levels(1);
  levels[0].side = kPictureSide;
  for (std::size_t i = 0; i < rgb.size(); i += 3) {
    levels[0].rgba.insert(levels[0].rgba.end(), {rgb[i], rgb[i + 1], rgb[i + 2], 255});
  }
  while (levels.back().side > 4) {
    levels.push_back({levels.back().side / 2, HalveRgba(levels.back())});
  }
  return levels;
}

void EncodeOther(const RgbaLevel& level, Bytes& out) {
  std::array<std::uint8_t, kDxt1BlockSize> encoded;
  for (int y = 0; y < level.side; y += 4) {
    for (int x = 0; x < level.side; x += 4) {
      std::uint8_t block[64];
      for (int row = 0; row < 4; ++row) {
        const auto from = static_cast<std::size_t>(((y + row) * level.side + x) * 4);
        std::memcpy(block + 16 * row, level.rgba.data() + from, 16);
      }
      stb_compress_dxt_block(encoded.data(), block, 0, STB_DXT_NORMAL);
      out.insert(out.end(), encoded.begin(), encoded.end());
    }
  }
}

// The best that is usual, which takes far longer.
Bytes EncodeByClusterFit(const RgbaLevel& level) {
  Bytes blocks(level.rgba.size() / 4 / 16 * kDxt1BlockSize);
  squish::CompressImage(level.rgba.data(), level.side, level.side, blocks.data(),
                        squish::kDxt1 | squish::kColourClusterFit);
  return blocks;
}

// In decibels.
void AddQuality(const std::string& against, double ours, double other, double loss) {
  AddResult("its quality", Decimal(ours, 2) + " dB", against, Decimal(other, 2) + " dB",
            ">= its - " + Decimal(loss, 2), ours >= other - loss);
}

void AddEncoding(Picture picture, const std::string& name) {
  const Bytes rgb = Paint(picture);
  const std::vector<RgbaLevel> levels = LevelsOf(rgb);
  Bytes ours, others;
  const auto encodeOurs = [&] {
    return Time([&] { ours = EncodeDds(kPictureSide, kPictureSide, rgb, true); });
  };
  const auto encodeOthers = [&] {
    others.clear();
    others.reserve(rgb.size());
    return Time([&] {
      for (const RgbaLevel& level : levels) EncodeOther(level, others);
    });
  };
  const std::string what = "encode 1024 x 1024 with mip-maps, " + name;
  AddTimes(what, "stb_dxt normal, one core", Compare(9, encodeOurs, encodeOthers), 1.0 / 3);
  {
    const OnOneCore one;
    AddTimes(what + ", one core", "stb_dxt normal, one core", Compare(9, encodeOurs, encodeOthers),
             std::nullopt);
  }
  const double quality = Quality(rgb, std::span(ours).subspan(kDdsHeaderSize));
  AddQuality("stb_dxt normal", quality, Quality(rgb, others), 0.02);
  AddQuality("cluster fit", quality, Quality(rgb, EncodeByClusterFit(levels[0])), 0.1);
}

// Each pixel from its block, as the format is described.
Bytes DecodePlainly(ByteView blocks, int width, int height) {
  Bytes rgba(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  const auto expand = [](unsigned c) {
    return std::array<unsigned, 3>{c >> 8 & 0xF8, c >> 3 & 0xFC, c << 3 & 0xF8};
  };
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto block = static_cast<std::size_t>(y / 4 * (width / 4) + x / 4) * kDxt1BlockSize;
      const unsigned c0 = LoadU16(blocks, block), c1 = LoadU16(blocks, block + 2);
      const unsigned index =
          blocks[block + 4 + static_cast<std::size_t>(y % 4)] >> (2 * (x % 4)) & 3;
      const auto a = expand(c0), b = expand(c1);
      std::uint8_t* const out = rgba.data() + static_cast<std::size_t>(y * width + x) * 4;
      out[3] = 255;
      for (std::size_t c = 0; c < 3; ++c) {
        unsigned value = index == 0 ? a[c] : b[c];
        if (index == 2) value = c0 > c1 ? (2 * a[c] + b[c]) / 3 : (a[c] + b[c]) / 2;
        if (index == 3) value = c0 > c1 ? (a[c] + 2 * b[c]) / 3 : (c == 0 ? 0 : 255);
        out[c] = static_cast<std::uint8_t>(value);
      }
      if (index == 3 && c0 <= c1) out[3] = 0;
    }
  }
  return rgba;
}

Bytes EncodedTile() { return EncodeDds(kPictureSide, kPictureSide, Paint(Picture::Natural), true); }

void AddDecoding() {
  const Bytes file = EncodedTile();
  const Bytes blocks(file.begin() + kDdsHeaderSize, file.end());
  Bytes ours, plain;
  const Times times = Compare(
      15, [&] { return Time([&] { ours = DecodeDxt1(blocks, kPictureSide, kPictureSide); }); },
      [&] { return Time([&] { plain = DecodePlainly(blocks, kPictureSide, kPictureSide); }); });
  Require(ours == plain, "the same decoded bytes");
  AddTimes("decode DXT1, 1024 x 1024, same bytes", "pixel by pixel", times, 1.0 / 3);
}

constexpr int kTiles = 8;  // per side of the level

// The mosaic of the map with every tile decoded whole.
Bytes MosaicPlainly() {
  constexpr int kTilePixels = kInGameMapSide / kTiles, kStep = kPictureSide / kTilePixels;
  Bytes rgb(std::size_t{kInGameMapSide} * kInGameMapSide * 3);
  for (int column = 0; column < kTiles; ++column) {
    for (int row = 0; row < kTiles; ++row) {
      const auto tile =
          LoadDds(FormatText("%s\\Textures\\Tx0%ix0%i.dds", openLevel.folder.c_str(), row, column));
      const Bytes rgba = DecodePlainly(tile->data, tile->width, tile->height);
      for (int y = 0; y < kTilePixels; ++y) {
        for (int x = 0; x < kTilePixels; ++x) {
          const int mapRow = kInGameMapSide - 1 - (column * kTilePixels + y);
          const int mapColumn = row * kTilePixels + x;
          std::memcpy(&rgb[static_cast<std::size_t>(mapRow * kInGameMapSide + mapColumn) * 3],
                      &rgba[static_cast<std::size_t>(y * kStep * kPictureSide + x * kStep) * 4], 3);
        }
      }
    }
  }
  return rgb;
}

// Pixels that neither grid line nor label of the map covers must be those of the mosaic.
bool ShowsMosaic(const Bytes& map, const Bytes& mosaic) {
  constexpr int kSpacing = 64, kLabels = 20;
  for (int y = kLabels; y < kInGameMapSide - 1; ++y) {
    for (int x = kLabels; x < kInGameMapSide - 1; ++x) {
      if (x % kSpacing == 0 || y % kSpacing == 0) continue;
      const auto at = static_cast<std::size_t>(y * kInGameMapSide + x) * 3;
      if (std::memcmp(&map[at], &mosaic[at], 3) != 0) return false;
    }
  }
  return true;
}

// The tiles lie in an archive that stores them as they are, so that the row is about the map.
void AddInGameMap() {
  const ScratchFolder folder;
  modConfig = ModConfig{};
  modConfig.MaterialSize = 512;
  modConfig.WorldSize = 2048;
  modConfig.WaterLevel = -1;
  openLevel.folder = "level";
  CreateTerrain();
  InitGrid();
  Archive* const level = archives.CreateArchive(folder.File("level.vra").string());
  Require(level && level->SetMode(StorageMode::Stored) && level->BeginSave(), "a level");
  const Bytes tile = EncodedTile();
  for (int row = 0; row < kTiles; ++row) {
    for (int column = 0; column < kTiles; ++column) {
      level->WriteMember(FormatText("level/Textures/Tx0%ix0%i.dds", row, column), tile);
      levelTextures
          .SurfaceAssigned[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = true;
    }
  }
  Require(level->CommitSave(), "writing tiles");
  Bytes map, mosaic;
  const Times times = Compare(
      5, [&] { return Time([&] { map = PaintInGameMap(); }); },
      [&] { return Time([&] { mosaic = MosaicPlainly(); }); });
  Require(ShowsMosaic(map, mosaic), "the same map");
  AddTimes("in-game map of 64 tiles, same pixels", "decoding each tile whole", times, 1.0 / 10);
  archives.Clear();
  DestroyTerrain();
  levelTextures = LevelTextures{};
}

void AddPainting() {
  constexpr int kSize = 512;
  std::vector<std::uint32_t> materials(std::size_t{MAPWRIGHT_GRID_ROW} * MAPWRIGHT_GRID_ROW);
  for (std::size_t i = 0; i < materials.size(); ++i) {
    materials[i] =
        static_cast<std::uint32_t>(i / MAPWRIGHT_GRID_ROW / 9 + i % MAPWRIGHT_GRID_ROW / 7) %
        MAPWRIGHT_MATERIALS;
  }
  const Bytes ground = Paint(Picture::Natural);
  MapwrightTextureSlot slot{};
  slot.loaded = 1;
  slot.width = slot.height = 256;
  slot.pixels = ground.data();
  Require(initSurfaceMap(materials.data(), kSize, 0, 0), "a surface run");
  for (std::int32_t k = 0; k < MAPWRIGHT_MATERIALS; ++k) initSurfaceBmp(k, &slot);
  Bytes copy(ground.size());
  const std::uint8_t* painted = nullptr;
  const OnOneCore one;
  const Times times = Compare(
      9, [&] { return Time([&] { painted = generateSurfaceMap(MAPWRIGHT_TILE_PIXELS, 2, 3); }); },
      [&] { return Time([&] { std::memcpy(copy.data(), ground.data(), copy.size()); }); });
  Require(painted != nullptr, "a painted tile");
  AddTimes("paint a tile of 1024 x 1024 with mw_smg, one core", "copying its pixels once", times,
           std::nullopt);
}

}  // namespace

void AddPictureRows() {
  AddEncoding(Picture::Natural, "natural");
  AddEncoding(Picture::Smooth, "smooth");
  AddEncoding(Picture::HardEdged, "hard-edged");
  AddDecoding();
  AddInGameMap();
  AddPainting();
}

}  // namespace mw::bench
