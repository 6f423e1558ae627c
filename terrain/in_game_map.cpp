#include "terrain/in_game_map.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "core/little_endian.h"
#include "core/text.h"
#include "data/dds.h"
#include "data/game_file.h"
#include "data/image.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/prompts.h"
#include "terrain/dds_writer.h"
#include "terrain/level_textures.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr int kGridSpacing = 64;  // pixels
constexpr int kGlyphs = 16, kGlyphWidth = 8, kGlyphHeight = 9;
constexpr int kLabelInset = 5, kFirstLabel = 28;  // pixels from the map's edges

using Colour = std::array<std::uint8_t, 3>;

// The picture on the way: RGB pixels, black at first, rows from the top.
class MapPicture {
 public:
  void Set(int row, int column, const Colour& colour) {
    const auto offset =
        (static_cast<std::size_t>(row) * kInGameMapSide + static_cast<std::size_t>(column)) *
        colour.size();
    std::ranges::copy(colour, rgb.begin() + static_cast<std::ptrdiff_t>(offset));
  }

  std::vector<std::uint8_t> rgb =
      std::vector<std::uint8_t>(std::size_t{kInGameMapSide} * kInGameMapSide * 3);
};

// How the tiles of a level fill the map.
struct Mosaic {
  int tiles = 0;       // per side
  int tilePixels = 0;  // per side of a tile, in the map
};

std::optional<Mosaic> MosaicOf(int materialSize) {
  switch (materialSize) {
    case 256:
      return Mosaic{4, 128};
    case 512:
      return Mosaic{8, 64};
    case 1024:
      return Mosaic{8, 32};
    default:
      return std::nullopt;
  }
}

// A tile as it lies in the level; nothing unless it is a square DXT1 picture.
std::optional<CompressedImage> LoadTile(int tileRow, int tileColumn) {
  auto image = LoadDds(
      FormatText("%s\\Textures\\Tx0%ix0%i.dds", openLevel.folder.c_str(), tileRow, tileColumn));
  if (!image || image->format != GL_COMPRESSED_RGBA_S3TC_DXT1_EXT ||
      image->width != image->height) {
    return std::nullopt;
  }
  return image;
}

// Every step-th pixel of every step-th row. Only the blocks that hold one of them are decoded.
void PaintTile(const CompressedImage& tile, int tileRow, int tileColumn, int tilePixels,
               MapPicture& picture) {
  const int step = std::max(1, tile.width / tilePixels);
  const int side = std::min(tilePixels, tile.width);
  for (int y = 0; y < side; ++y) {
    const int row = kInGameMapSide - 1 - (tileColumn * tilePixels + y);
    for (int x = 0; x < side; ++x) {
      const auto rgba = DecodeDxt1Pixel(tile.data, tile.width, x * step, y * step);
      picture.Set(row, tileRow * tilePixels + x, {rgba[0], rgba[1], rgba[2]});
    }
  }
}

// Tile rows run to the right and tile columns upwards: a tile's own rows run along the columns of
// the height field.
void PaintTiles(const Mosaic& mosaic, MapPicture& picture) {
  for (int column = 0; column < mosaic.tiles; ++column) {
    for (int row = 0; row < mosaic.tiles; ++row) {
      const bool assigned =
          levelTextures
              .SurfaceAssigned[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
      const auto tile = assigned ? LoadTile(row, column) : std::nullopt;
      if (tile) PaintTile(*tile, row, column, mosaic.tilePixels, picture);
    }
  }
}

// Darker the deeper it is, down to the colour of water that is 70 units deep. `depth` is above 0.
Colour WaterColour(double depth) {
  constexpr double kBlackest = 255.0;
  const int d = static_cast<int>(std::min(kBlackest, depth));
  const auto channel = [d](int shallow, int deep) {
    return static_cast<std::uint8_t>(std::max(shallow - d, deep));
  };
  return {channel(100, 30), channel(115, 45), channel(145, 75)};
}

// The grid index that a pixel of the map samples, limited to the level's data.
int SampledIndex(int materialSize, int pixel, int lowest, int highest) {
  const double scale = materialSize / static_cast<double>(kInGameMapSide);
  return std::clamp(static_cast<int>(materialSize - pixel * scale), lowest, highest);
}

void PaintWater(int materialSize, MapPicture& picture) {
  const float level = modConfig.WaterLevel;
  for (int row = 0; row < kInGameMapSide; ++row) {
    const int j = SampledIndex(materialSize, row, 0, materialSize - 1);
    for (int column = 0; column < kInGameMapSide; ++column) {
      const int i = SampledIndex(materialSize, column, 1, materialSize);
      const float ground = modConfig.HeightScale *
                           terrain.grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)].h;
      if (ground <= level) picture.Set(row, column, WaterColour(double{level - ground} + 1.0));
    }
  }
}

void PaintGridLine(int position, MapPicture& picture) {
  constexpr Colour kWhite = {255, 255, 255};
  for (int i = 0; i < kInGameMapSide; ++i) {
    picture.Set(position, i, kWhite);
    picture.Set(i, position, kWhite);
  }
}

void PaintGrid(MapPicture& picture) {
  for (int line = 0; line < kInGameMapSide; line += kGridSpacing) PaintGridLine(line, picture);
  PaintGridLine(kInGameMapSide - 1, picture);
}

// The labels' glyphs side by side in the bottom rows of a picture whose rows run from the bottom.
struct GlyphFont {
  static constexpr int kWidth = kGlyphs * kGlyphWidth;
  std::vector<std::uint8_t> rgb;

  Colour Pixel(int glyph, int row, int column) const {
    const int storedRow = kGlyphHeight - 1 - row;
    const auto offset =
        static_cast<std::size_t>(storedRow * kWidth + glyph * kGlyphWidth + column) * 3;
    return {rgb[offset], rgb[offset + 1], rgb[offset + 2]};
  }
};

std::optional<GlyphFont> LoadGlyphFont() {
  constexpr std::size_t kWidthField = 4;  // in the bitmap's information header
  auto bitmap = LoadBmp24("media/igmfont.bmp");
  constexpr std::size_t kNeeded = std::size_t{GlyphFont::kWidth} * kGlyphHeight * 3;
  if (!bitmap || LoadU32(bitmap->information, kWidthField) != GlyphFont::kWidth ||
      bitmap->pixels.size() < kNeeded) {
    return std::nullopt;
  }
  return GlyphFont{std::move(bitmap->pixels)};
}

void PaintGlyph(const GlyphFont& font, int glyph, int left, int top, MapPicture& picture) {
  constexpr Colour kTransparent = {255, 0, 0};
  for (int row = 0; row < kGlyphHeight; ++row) {
    for (int column = 0; column < kGlyphWidth; ++column) {
      const Colour colour = font.Pixel(glyph, row, column);
      if (colour != kTransparent) picture.Set(top + row, left + column, colour);
    }
  }
}

void PaintLabels(MapPicture& picture) {
  const auto font = LoadGlyphFont();
  if (!font) return;
  for (int k = 0; k < kInGameMapSide / kGridSpacing; ++k) {
    const int along = kFirstLabel + kGridSpacing * k;
    PaintGlyph(*font, k, along, kLabelInset, picture);
    PaintGlyph(*font, kGlyphs / 2 + k, kLabelInset, along, picture);
  }
}

}  // namespace

std::vector<std::uint8_t> PaintInGameMap() {
  MapPicture picture;
  if (const auto mosaic = MosaicOf(modConfig.MaterialSize)) {
    PaintTiles(*mosaic, picture);
    if (terrain.grid) PaintWater(modConfig.MaterialSize, picture);
  }
  PaintGrid(picture);
  PaintLabels(picture);
  return std::move(picture.rgb);
}

void GenerateInGameMap() {
  const std::string path = FormatText("%s/Textures/ingamemap.dds", openLevel.folder.c_str());
  if (IsInWritableArchive(path) &&
      !ConfirmReplacing("This will replace the in-game map of the level.")) {
    return;
  }
  ShowWaitCursor();
  SetStatusText(1, "Generating In-Game Map...");
  const std::string failure = WhyNotWritten(
      [&path] { return SaveDDS(path, kInGameMapSide, kInGameMapSide, PaintInGameMap(), true); });
  SetStatusText(1, "");
  ShowArrowCursor();
  if (failure.empty()) return;
  ShowPrompt(failure, "Error", PromptButtons::Ok, PromptIcon::Stop);
}

}  // namespace mw
