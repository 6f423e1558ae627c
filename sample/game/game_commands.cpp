#include "sample/game/game_commands.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

#include "assets/picture.h"
#include "core/text.h"
#include "data/image.h"
#include "platform/disk.h"
#include "sample/game/shadow_tracer.h"

namespace mw::sample {
namespace {

namespace fs = std::filesystem;

constexpr int kTileSide = 1024;              // pixels of a surface tile in the scratch folder
constexpr float kSamplesPerPrecision = 256;  // light samples per tile side at precision 1
constexpr int kObjectMapSide = 16;           // pixels
constexpr float kObjectMapSpan = 16;         // world units
constexpr std::size_t kTgaHeader = 18;

struct Tile {
  int row = 0, column = 0;
};

int Fail(const std::string& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  return 1;
}

std::string TexturesFolder(const fs::path& workFolder, const std::string& level) {
  return NativePath((workFolder / "varnhold" / "levels" / level / "textures").string()).string();
}

std::string TilePath(const std::string& folder, const Tile& tile, const char* suffix) {
  return FormatText("%s/Tx%02ix%02i%s.tga", folder.c_str(), tile.row, tile.column, suffix);
}

std::optional<std::vector<Tile>> ReadTileList(const std::string& folder) {
  const auto bytes = ReadWholeFile(folder + "/lmList.dat");
  if (!bytes) return std::nullopt;
  std::vector<Tile> tiles;
  for (std::size_t i = 0; i + 1 < bytes->size(); i += 2)
    tiles.push_back({(*bytes)[i], (*bytes)[i + 1]});
  return tiles;
}

// Brightness as a grey picture.
std::vector<std::uint8_t> Grey(const std::vector<float>& light) {
  std::vector<std::uint8_t> rgb;
  rgb.reserve(light.size() * 3);
  for (const float value : light) {
    rgb.insert(rgb.end(), 3, static_cast<std::uint8_t>(std::lround(Clamp01(value) * 255)));
  }
  return rgb;
}

// The pixels of a 24-bit TGA file as they are stored (blue, green, red, rows from the bottom).
std::optional<std::vector<std::uint8_t>> ReadTgaPixels(const std::string& path, int* side) {
  const auto file = ReadWholeFile(path);
  if (!file || file->size() < kTgaHeader) return std::nullopt;
  const int width = (*file)[12] + 256 * (*file)[13], height = (*file)[14] + 256 * (*file)[15];
  const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3;
  if (width != height || width == 0 || file->size() < kTgaHeader + size) return std::nullopt;
  *side = width;
  return std::vector<std::uint8_t>(file->begin() + kTgaHeader,
                                   file->begin() + static_cast<std::ptrdiff_t>(kTgaHeader + size));
}

bool TraceOne(const GameLevel& level, const std::string& folder, const Tile& tile) {
  const float samples = kSamplesPerPrecision * level.terrainLighting.precision;
  const int side = static_cast<int>(std::clamp(samples, 16.0f, static_cast<float>(kTileSide)));
  const std::vector<float> light =
      TraceTile(*level.height, level.terrainLighting, tile.row, tile.column, side);
  return WriteTga(TilePath(folder, tile, "_shadow"), side, side, Grey(light));
}

bool WriteShadowBits(const GameLevel& level, const std::string& folder) {
  const Grid& height = *level.height;
  const auto& lights = level.terrainLighting.lights;
  const Vector3 sun = lights.empty() ? Vector3{0, 1, 0} : lights.front().direction;
  const auto side = static_cast<std::size_t>(height.Side());
  std::vector<std::uint8_t> bits(side * side / 8);
  for (std::size_t i = 0; i < side * side; ++i) {
    const Point at = PositionOf(static_cast<int>(i % side), static_cast<int>(i / side));
    const bool lit = LightAt(height, at, height.Sample(at), sun) >= 0.5f;
    if (lit) bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | (1 << (i % 8)));
  }
  return WriteWholeFile(folder + "/LightmapShadowBits.lsb", bits);
}

bool MergeOne(const std::string& folder, const Tile& tile, float contrast, float shadow) {
  int side = 0, shadowSide = 0;
  auto pixels = ReadTgaPixels(TilePath(folder, tile, ""), &side);
  const auto grey = ReadTgaPixels(TilePath(folder, tile, "_shadow"), &shadowSide);
  if (!pixels || !grey) return false;
  const std::vector<std::uint8_t> light = ResampleRgb(*grey, shadowSide, shadowSide, side, side);
  if (light.size() != pixels->size()) return false;
  for (std::size_t i = 0; i < pixels->size(); ++i) {
    const float bright =
        shadow + (1 - shadow) * std::pow(static_cast<float>(light[i]) / 255, contrast);
    (*pixels)[i] =
        static_cast<std::uint8_t>(std::lround(bright * static_cast<float>((*pixels)[i])));
  }
  // As they are stored: the file's writer turns the rows and the colours itself.
  SwapRedAndBlue(*pixels);
  std::vector<std::uint8_t> fromTop(pixels->size());
  const std::size_t row = static_cast<std::size_t>(side) * 3;
  for (std::size_t y = 0; y < static_cast<std::size_t>(side); ++y) {
    std::copy_n(pixels->end() - static_cast<std::ptrdiff_t>((y + 1) * row), row,
                fromTop.begin() + static_cast<std::ptrdiff_t>(y * row));
  }
  return WriteTga(TilePath(folder + "/merged", tile, ""), side, side, fromTop);
}

bool TraceObject(const GameLevel& level, const ObjectOnGround& object, const std::string& path) {
  const auto& lights = level.objectLighting.lights;
  const Vector3 sun = lights.empty() ? Vector3{0, 1, 0} : lights.front().direction;
  std::vector<float> light;
  constexpr float kSpacing = kObjectMapSpan / kObjectMapSide;
  for (int row = 0; row < kObjectMapSide; ++row) {
    for (int column = 0; column < kObjectMapSide; ++column) {
      const Point at{
          object.position.x - kObjectMapSpan / 2 + (static_cast<float>(column) + 0.5f) * kSpacing,
          object.position.z - kObjectMapSpan / 2 + (static_cast<float>(row) + 0.5f) * kSpacing};
      const float y = std::max(object.position.y, level.height->Sample(at));
      light.push_back(LightAt(*level.height, at, y, sun));
    }
  }
  return WriteTga(path, kObjectMapSide, kObjectMapSide, Grey(light));
}

std::optional<GameLevel> LoadWithHeights(const fs::path& gameFolder, const std::string& name) {
  std::optional<GameLevel> level = LoadGameLevel(gameFolder, name);
  if (level && level->height) return level;
  if (level) Fail("The level " + name + " has no height map that can be read.");
  return std::nullopt;
}

}  // namespace

int HostGame(const fs::path& gameFolder, const std::string& mod) {
  const std::string list = (gameFolder / "Mods" / mod / "Settings" / "maplist.con").string();
  const auto bytes = ReadWholeFile(list);
  if (!bytes) return Fail("The map list " + list + " cannot be read.");
  const std::string text(bytes->begin(), bytes->end());
  Tokenizer lines(text);
  std::string current;
  while (const auto line = lines.Next("\r\n")) {
    Tokenizer words(*line);
    const auto command = words.Next(" ");
    if (command && EqualNoCase(*command, "game.setCurrentLevel")) {
      current = std::string(words.Next(" ").value_or(""));
    }
  }
  const std::optional<GameLevel> level = LoadGameLevel(gameFolder, current);
  if (!level) return 1;
  std::printf("Varnhold hosts %s of %s: %zu files, %zu objects, ground %s.\n", current.c_str(),
              mod.c_str(), level->memberCount, level->objects.size(),
              level->height ? "complete" : "missing");
  for (const std::string& mode : level->gameModes) std::printf("  game mode %s\n", mode.c_str());
  return 0;
}

int TraceTerrainShadows(const fs::path& gameFolder, const fs::path& workFolder,
                        const std::string& name) {
  const std::optional<GameLevel> level = LoadWithHeights(gameFolder, name);
  if (!level) return 1;
  const std::string folder = TexturesFolder(workFolder, name);
  const auto tiles = ReadTileList(folder);
  if (!tiles) return Fail("There is no list of tiles in " + folder + ".");
  for (const Tile& tile : *tiles) {
    if (!TraceOne(*level, folder, tile)) return Fail("A shadow could not be written.");
    std::printf("shadows of tile %ix%i\n", tile.row, tile.column);
  }
  return WriteShadowBits(*level, folder) ? 0 : Fail("The shadow bits could not be written.");
}

int MergeTerrainShadows(const fs::path& workFolder, const std::string& name, float contrast,
                        float shadow) {
  const std::string folder = TexturesFolder(workFolder, name);
  const auto tiles = ReadTileList(folder);
  if (!tiles) return Fail("There is no list of tiles in " + folder + ".");
  if (CreateFolder(folder + "/merged") == FolderResult::Failed)
    return Fail("No folder for the merged tiles.");
  int exitCode = 0;
  for (const Tile& tile : *tiles) {
    if (MergeOne(folder, tile, contrast, shadow)) {
      std::printf("merged tile %ix%i\n", tile.row, tile.column);
    } else {
      exitCode = Fail(FormatText("Tile %ix%i or its shadow is missing.", tile.row, tile.column));
    }
  }
  return exitCode;
}

int TraceObjectShadows(const fs::path& gameFolder, const fs::path& workFolder,
                       const std::string& name) {
  const std::optional<GameLevel> level = LoadWithHeights(gameFolder, name);
  if (!level) return 1;
  const std::string folder =
      NativePath((workFolder / "varnhold" / "levels" / name / "ObjectLightMaps").string()).string();
  for (std::size_t i = 0; i < level->objects.size(); ++i) {
    const std::string path =
        FormatText("%s/%s_%04zu.tga", folder.c_str(), level->objects[i].name.c_str(), i);
    if (!TraceObject(*level, level->objects[i], path)) return Fail(path + " could not be written.");
  }
  std::printf("light maps of %zu objects\n", level->objects.size());
  return 0;
}

}  // namespace mw::sample
