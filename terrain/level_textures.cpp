#include "terrain/level_textures.h"

#include <GL/gl.h>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/editor_state.h"
#include "core/text.h"
#include "data/dds.h"
#include "data/game_file.h"
#include "data/image.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "platform/gl_context.h"
#include "terrain/dds_writer.h"
#include "terrain/terrain.h"

namespace mw {

LevelTextures levelTextures;

namespace {

constexpr int kDetailSide = 512, kEnvironmentSide = 128;  // pixels, as the game expects them

using Pixels = std::vector<std::uint8_t>;

std::string TilePath(const char* folder, int tileRow, int tileColumn) {
  return FormatText("%s/%s/Tx0%ix0%i.dds", editor.levelFolder.c_str(), folder, tileRow, tileColumn);
}

void DeleteTexture(unsigned& texture) {
  if (texture != 0 && MakeViewContextCurrent()) glDeleteTextures(1, &texture);
  texture = 0;
}

// Filters stay at their defaults. False when there is no context or not even the top level is
// whole.
bool MakeTexture(const CompressedImage& image, unsigned& texture) {
  if (!MakeViewContextCurrent()) return false;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  if (UploadCompressed(image) > 0) return true;
  DeleteTexture(texture);
  return false;
}

// At a tile's border its own texels count, not those of the opposite border.
void EndTextureAtItsEdges() {
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

void LoadTile(int tileRow, int tileColumn, LevelTextureLoad occasion) {
  const auto row = static_cast<std::size_t>(tileRow), column = static_cast<std::size_t>(tileColumn);
  SurfaceTile& tile = levelTextures.tiles[row][column];
  DeleteTexture(tile.texture);
  const auto image = LoadDds(TilePath("textures", tileRow, tileColumn));
  tile.hasTexture = image && MakeTexture(*image, tile.texture);
  if (tile.hasTexture) EndTextureAtItsEdges();
  bool& assigned = levelTextures.SurfaceAssigned[row][column];
  assigned = image.has_value() || (assigned && occasion == LevelTextureLoad::Reloading);
}

void LoadDetail() {
  DeleteTexture(levelTextures.detailTexture);
  const auto image = LoadDds(FormatText("%s\\textures\\detail.dds", editor.levelFolder.c_str()));
  levelTextures.hasDetail = image && MakeTexture(*image, levelTextures.detailTexture);
}

// The same rows in the opposite order.
Pixels TurnRows(std::span<const std::uint8_t> rgb, int width, int height) {
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 3;
  Pixels turned;
  turned.reserve(rowBytes * static_cast<std::size_t>(height));
  for (int row = height - 1; row >= 0; --row) {
    const auto from = rgb.subspan(static_cast<std::size_t>(row) * rowBytes, rowBytes);
    turned.insert(turned.end(), from.begin(), from.end());
  }
  return turned;
}

// A picture of the texture set as the file that a level gets, kept as long as the picture stays the
// same.
struct EncodedPicture {
  Pixels source;
  std::int32_t width = 0, height = 0;
  std::vector<std::uint8_t> file;
};

const std::vector<std::uint8_t>& EncodeOnce(const SetTexture& picture, int side, bool mipmaps,
                                            EncodedPicture& kept) {
  const bool isSame =
      kept.width == picture.width && kept.height == picture.height && kept.source == picture.rgb;
  if (isSame) return kept.file;
  Pixels scaled = picture.rgb;
  if (picture.width != side || picture.height != side) {
    scaled = ResampleRgb(picture.rgb, picture.width, picture.height, side, side);
  }
  kept.file.clear();
  if (!scaled.empty()) kept.file = EncodeDds(side, side, TurnRows(scaled, side, side), mipmaps);
  kept.source = picture.rgb;
  kept.width = picture.width;
  kept.height = picture.height;
  return kept.file;
}

void WritePicture(const SetTexture& picture, int side, bool mipmaps, EncodedPicture& kept,
                  const std::string& path) {
  if (!picture.loaded) return;
  const std::vector<std::uint8_t>& file = EncodeOnce(picture, side, mipmaps, kept);
  if (file.empty()) {
    SetGameFileError("Out of memory.");
  } else {
    SaveGameFileBytes(path, file);
  }
}

// The six faces, each with the number of its environment texture.
void WriteCubeMapDescription() {
  constexpr std::pair<const char*, int> kFaces[] = {{"PositiveX", 4}, {"NegativeX", 2},
                                                    {"PositiveY", 5}, {"NegativeY", 6},
                                                    {"PositiveZ", 3}, {"NegativeZ", 1}};
  auto file =
      GameFileOpen(FormatText("%s\\Textures\\ENVMAP_G_.rcm", editor.levelFolder.c_str()), "w");
  if (!file) return;
  const char* const level = modConfig.LevelName.c_str();
  GameFilePuts("[CubeMap]\n", *file);
  for (const auto& [face, number] : kFaces) {
    GameFilePrintf(*file, "%s = %s\\levels\\%s\\Textures\\env_%s_0%i.dds\n", face,
                   modConfig.configurationName.c_str(), level, level, number);
  }
  GameFileClose(std::move(file));
}

}  // namespace

void LoadLevelTextures(LevelTextureLoad occasion) {
  for (int row = 0; row < kMaxTiles; ++row) {
    for (int column = 0; column < kMaxTiles; ++column) LoadTile(row, column, occasion);
  }
  LoadHeightBuffer();
  LoadDetail();
}

void DeleteLevelTextures() {
  for (auto& row : levelTextures.tiles) {
    for (SurfaceTile& tile : row) {
      DeleteTexture(tile.texture);
      tile.hasTexture = false;
    }
  }
  DeleteTexture(levelTextures.detailTexture);
  levelTextures.hasDetail = false;
}

void WriteTextureSetToLevel() {
  static EncodedPicture detail;
  static std::array<EncodedPicture, kMaxEnvironmentTextures> environment;
  const char* const folder = editor.levelFolder.c_str();
  WritePicture(textureSet.detail, kDetailSide, true, detail,
               FormatText("%s\\Textures\\detail.dds", folder));
  for (std::size_t i = 0; i < environment.size(); ++i) {
    WritePicture(textureSet.environment[i], kEnvironmentSide, false, environment[i],
                 FormatText("%s\\Textures\\env_%s_0%i.dds", folder, modConfig.LevelName.c_str(),
                            static_cast<int>(i) + 1));
  }
  WriteCubeMapDescription();
}

bool ConvertTgaTileToDds(const char* baseName, int width, int height, int tileRow, int tileColumn) {
  const auto file = ReadWholeFile(FormatText("%s.tga", baseName));
  const auto rgb = file ? DecodeTga(*file, width, height) : std::nullopt;
  if (!rgb) return false;
  SaveDDS(TilePath("Textures", tileRow, tileColumn), width, height, *rgb, true);
  return true;
}

}  // namespace mw
