#include "terrain/level_textures.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/text.h"
#include "data/dds.h"
#include "data/game_file.h"
#include "data/image.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "data/script.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "platform/gl_context.h"
#include "terrain/dds_writer.h"
#include "terrain/terrain.h"

namespace mw {

namespace {

constexpr int kDetailSide = 512, kEnvironmentSide = 128;  // pixels, as the game expects them

using Pixels = std::vector<std::uint8_t>;

std::string TilePath(const char* folder, int tileRow, int tileColumn) {
  return FormatText("%s/%s/Tx0%ix0%i.dds", openLevel.folder.c_str(), folder, tileRow, tileColumn);
}

void DeleteTexture(unsigned& texture) {
  if (texture != 0 && MakeViewContextCurrent()) glDeleteTextures(1, &texture);
  texture = 0;
}

// Nothing when no archive holds the file. One that cannot be read whole is noted.
std::optional<CompressedImage> LoadPicture(const std::string& path) {
  const auto file = GameFileOpen(path, "rb");
  if (!file) return std::nullopt;
  auto image = DecodeDds(std::move(file->data));
  const std::string name = path.substr(path.find_last_of("\\/") + 1);
  if (!image) {
    NoteDamagedFile(FormatText("The texture %s is damaged: it cannot be shown.", name.c_str()));
  } else if (!IsWhole(*file) || image->data.size() < image->topLevelSize) {
    NoteDamagedFile(
        FormatText("The texture %s is damaged: it could be read in part.", name.c_str()));
  }
  return image;
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

// Keeps the revision of the file that is read next.
bool IsToBeRead(const std::string& path, LevelTextureLoad occasion, std::uint32_t& revision) {
  const std::uint32_t before = std::exchange(revision, GameFileRevision(path));
  return occasion == LevelTextureLoad::Opening || revision != before;
}

void LoadTile(int tileRow, int tileColumn, LevelTextureLoad occasion) {
  const auto row = static_cast<std::size_t>(tileRow), column = static_cast<std::size_t>(tileColumn);
  SurfaceTile& tile = levelTextures.tiles[row][column];
  const std::string path = TilePath("textures", tileRow, tileColumn);
  if (!IsToBeRead(path, occasion, tile.revision)) return;
  DeleteTexture(tile.texture);
  const auto image = LoadPicture(path);
  tile.hasTexture = image && MakeTexture(*image, tile.texture);
  if (tile.hasTexture) EndTextureAtItsEdges();
  if (occasion == LevelTextureLoad::Opening) {
    levelTextures.SurfaceAssigned[row][column] = image.has_value();
  }
}

void LoadDetail(LevelTextureLoad occasion) {
  const std::string path = FormatText("%s\\textures\\detail.dds", openLevel.folder.c_str());
  if (!IsToBeRead(path, occasion, levelTextures.detailRevision)) return;
  DeleteTexture(levelTextures.detailTexture);
  const auto image = LoadPicture(path);
  if (!image) NoteAtLoad("The level has no detail texture (textures/detail.dds).");
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

bool WritePicture(const SetTexture& picture, int side, bool mipmaps, EncodedPicture& kept,
                  const std::string& path) {
  if (!picture.loaded) return true;
  const std::vector<std::uint8_t>& file = EncodeOnce(picture, side, mipmaps, kept);
  if (!file.empty()) return SaveGameFileBytes(path, file);
  SetGameFileError("Out of memory.");
  return false;
}

// The six faces, each with the number of its environment texture.
bool WriteCubeMapDescription() {
  constexpr std::pair<const char*, int> kFaces[] = {{"PositiveX", 4}, {"NegativeX", 2},
                                                    {"PositiveY", 5}, {"NegativeY", 6},
                                                    {"PositiveZ", 3}, {"NegativeZ", 1}};
  auto file =
      GameFileOpen(FormatText("%s\\Textures\\ENVMAP_G_.rcm", openLevel.folder.c_str()), "w");
  if (!file) return false;
  const char* const level = modConfig.LevelName.c_str();
  GameFilePuts("[CubeMap]\n", *file);
  for (const auto& [face, number] : kFaces) {
    GameFilePrintf(*file, "%s = %s\\levels\\%s\\Textures\\env_%s_0%i.dds\n", face,
                   modConfig.configurationName.c_str(), level, level, number);
  }
  return GameFileClose(std::move(file));
}

}  // namespace

void LoadLevelTextures(LevelTextureLoad occasion) {
  if (occasion == LevelTextureLoad::Opening) levelTextures.textureSetChosen = false;
  for (int row = 0; row < kMaxTiles; ++row) {
    for (int column = 0; column < kMaxTiles; ++column) LoadTile(row, column, occasion);
  }
  if (occasion == LevelTextureLoad::Opening) LoadHeightBuffer();
  LoadDetail(occasion);
}

void DeleteLevelTextures() {
  for (auto& row : levelTextures.tiles) {
    for (SurfaceTile& tile : row) {
      DeleteTexture(tile.texture);
      tile = {};
    }
  }
  DeleteTexture(levelTextures.detailTexture);
  levelTextures.hasDetail = false;
  levelTextures.detailRevision = 0;
}

bool WriteTextureSetToLevel() {
  if (!levelTextures.textureSetChosen) return true;
  // A cache: encoding takes longer than all the rest of a save.
  static EncodedPicture detail;
  static std::array<EncodedPicture, kMaxEnvironmentTextures> environment;
  const char* const folder = openLevel.folder.c_str();
  bool written = WritePicture(textureSet.detail, kDetailSide, true, detail,
                              FormatText("%s\\Textures\\detail.dds", folder));
  for (std::size_t i = 0; i < environment.size(); ++i) {
    written &= WritePicture(textureSet.environment[i], kEnvironmentSide, false, environment[i],
                            FormatText("%s\\Textures\\env_%s_0%i.dds", folder,
                                       modConfig.LevelName.c_str(), static_cast<int>(i) + 1));
  }
  written &= WriteCubeMapDescription();
  return written;
}

TileTaken ConvertTgaTileToDds(const char* baseName, int width, int height, int tileRow,
                              int tileColumn) {
  const auto file = ReadWholeFile(FormatText("%s.tga", baseName));
  const auto rgb = file ? DecodeTga(*file, width, height) : std::nullopt;
  if (!rgb) return TileTaken::Missing;
  const std::string path = TilePath("Textures", tileRow, tileColumn);
  return SaveDDS(path, width, height, *rgb, true) ? TileTaken::Yes : TileTaken::NotWritten;
}

}  // namespace mw
