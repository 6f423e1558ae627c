#include "terrain/shadow_work.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "core/text.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/disk.h"
#include "terrain/surface_assignments.h"
#include "terrain/terrain.h"

namespace mw {

namespace {

constexpr int kMergedTileSide = 1024;  // pixels
constexpr std::string_view kLightDirection = "raytracer.light.direction";
constexpr const char* kTerrainScript = "terrainLightmap.con";
constexpr const char* kObjectsScript = "objectsLightmap.con";
constexpr const char* kShadowBits = "Textures\\LightmapShadowBits.lsb";

bool& Selected(std::int64_t tileRow, std::int64_t tileColumn) {
  return terrain.shadowSettings
      .ShadowSelected[static_cast<std::size_t>(tileRow)][static_cast<std::size_t>(tileColumn)];
}

std::string ScratchLevelFolder() {
  return FormatText("%sShadowWork\\varnhold\\levels\\%s", modConfig.GamePath.c_str(),
                    modConfig.LevelName.c_str());
}

std::string LevelFile(const char* name) {
  return FormatText("%s\\%s", openLevel.folder.c_str(), name);
}

std::string SunDirectionLine() {
  const auto [x, y, z] = modConfig.currentSky.sunDirection;
  return FormatText("raytracer.light.direction %f/%f/%f\n", static_cast<double>(x),
                    static_cast<double>(y), static_cast<double>(z));
}

// The new text of a line of a template, or nothing to copy it.
class TerrainLightingLines {
 public:
  std::optional<std::string> Replace(std::string_view line) {
    Tokenizer words(line);
    const std::string_view command = words.Next(" ").value_or("");
    if (EqualNoCase(command, "GeometryTemplate.shadowPrecision")) {
      return FormatText("GeometryTemplate.shadowPrecision %f\n",
                        static_cast<double>(terrain.shadowSettings.ShadowPrecision));
    }
    // The first light that does not shine from straight above is the sun.
    if (EqualNoCase(command, kLightDirection) && !sunWritten_ && words.Next(" ") != "0/1/0") {
      sunWritten_ = true;
      return SunDirectionLine();
    }
    return std::nullopt;
  }

 private:
  bool sunWritten_ = false;
};

std::optional<std::string> ObjectLightingLine(std::string_view line) {
  const auto command = Tokenizer(line).Next(" ");
  if (EqualNoCase(command.value_or(""), kLightDirection)) return SunDirectionLine();
  return std::nullopt;
}

template <typename Replace>
bool WriteFromTemplate(const char* name, const Replace& replace) {
  const std::string path = FormatText("scripts\\%s", name);
  std::string reason;
  const auto bytes = ReadWholeFile(path, &reason);
  if (!bytes) {
    SetGameFileError("The template " + SystemPath(path) + " could not be read: " + reason + ".");
    return false;
  }
  std::unique_ptr<GameFile> file = GameFileOpen(LevelFile(name), "w");
  if (!file) return false;
  std::string_view rest(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  while (!rest.empty()) {
    const std::size_t lineFeed = rest.find('\n');
    std::string_view line = rest.substr(0, lineFeed);
    rest.remove_prefix(lineFeed == std::string_view::npos ? rest.size() : lineFeed + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    GameFilePuts(replace(line).value_or(std::string(line) + "\n"), *file);
  }
  return GameFileClose(std::move(file));
}

}  // namespace

float ShadowDetailValue(int index) { return 0.5f * static_cast<float>(index + 1); }

int ShadowDetailIndex() {
  for (int index = 0; index < static_cast<int>(kShadowDetails.size()); ++index) {
    if (ShadowDetailValue(index) == terrain.shadowSettings.ShadowPrecision) return index;
  }
  return 0;
}

bool ToggleShadowSelection(int column, int row) {
  const AssignmentCell cell = AssignmentCellAt(column, row);
  if (!HoldsTileOfLevel(cell)) return false;
  bool& selected = Selected(cell.tileRow, cell.tileColumn);
  selected = !selected;
  return true;
}

bool IsShadowSelected(int column, int row) {
  const AssignmentCell cell = AssignmentCellAt(column, row);
  return HoldsTileOfLevel(cell) && Selected(cell.tileRow, cell.tileColumn);
}

void SelectAllShadows(bool selected) {
  for (auto& row : terrain.shadowSettings.ShadowSelected) row.fill(selected);
}

std::vector<TileIndex> AssignedTiles() {
  std::vector<TileIndex> tiles;
  for (int column = 0; column < kMaxTiles; ++column) {
    for (int row = 0; row < kMaxTiles; ++row) {
      if (levelTextures
              .SurfaceAssigned[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]) {
        tiles.push_back({row, column});
      }
    }
  }
  return tiles;
}

bool IsAnyShadowSelected() {
  return std::ranges::any_of(terrain.shadowSettings.ShadowSelected, [](const auto& row) {
    return std::ranges::find(row, true) != row.end();
  });
}

std::vector<TileIndex> TilesToTrace() {
  std::vector<TileIndex> tiles = AssignedTiles();
  std::erase_if(tiles, [](const TileIndex& tile) { return !Selected(tile.row, tile.column); });
  return tiles;
}

std::string DescribeTilesToTrace() {
  const std::vector<TileIndex> tiles = TilesToTrace();
  std::string text = FormatText("%i %s selected", static_cast<int>(tiles.size()),
                                tiles.size() == 1 ? "tile" : "tiles");
  const char* separator = ": ";
  for (const TileIndex& tile : tiles) {
    text += FormatText("%s%ix%i", separator, tile.row, tile.column);
    separator = ", ";
  }
  return text;
}

std::string ScratchTexturesFolder() { return ScratchLevelFolder() + "\\textures"; }

std::string ScratchMergedFolder() { return ScratchTexturesFolder() + "\\merged"; }

std::string ScratchObjectLightMapsFolder() { return ScratchLevelFolder() + "\\ObjectLightMaps"; }

bool MakeScratchFolder(std::string_view path) {
  // The game folder itself is not made: without it there is no game.
  for (std::size_t end = path.find('\\', modConfig.GamePath.size());;
       end = path.find('\\', end + 1)) {
    if (CreateFolder(path.substr(0, end)) == FolderResult::Failed) {
      SetGameFileError("The folder " + SystemPath(path.substr(0, end)) + " could not be created.");
      return false;
    }
    if (end == std::string_view::npos) return true;
  }
}

bool WriteTileList() {
  std::vector<std::uint8_t> bytes;
  for (const TileIndex& tile : TilesToTrace()) {
    bytes.push_back(static_cast<std::uint8_t>(tile.row));
    bytes.push_back(static_cast<std::uint8_t>(tile.column));
  }
  if (!MakeScratchFolder(ScratchTexturesFolder())) return false;
  const std::string path = ScratchTexturesFolder() + "\\lmList.dat";
  std::string reason;
  if (WriteWholeFile(path, bytes, &reason)) return true;
  SetGameFileError("The file " + SystemPath(path) + " could not be written: " + reason + ".");
  return false;
}

bool WriteLightingScripts() {
  TerrainLightingLines terrainLines;
  bool written = WriteFromTemplate(
      kTerrainScript, [&](std::string_view line) { return terrainLines.Replace(line); });
  written &= WriteFromTemplate(kObjectsScript, ObjectLightingLine);
  return written;
}

LightingScripts ReadLightingScripts() {
  LightingScripts scripts;
  for (const char* const name : {kTerrainScript, kObjectsScript}) {
    const std::string path = LevelFile(name);
    if (!IsInWritableArchive(path)) {
      scripts.emplace_back(path, std::nullopt);
    } else if (const auto file = GameFileOpen(path, "rb")) {
      scripts.emplace_back(path, std::move(file->data));
    }
  }
  return scripts;
}

bool RestoreLightingScripts(const LightingScripts& scripts) {
  bool written = true;
  for (const auto& [path, content] : scripts) {
    written &= content ? SaveGameFileBytes(path, *content) : RemoveGameFile(path);
  }
  return written;
}

TileTaken TakeMergedTile(const TileIndex& tile) {
  const std::string name =
      FormatText("%s\\Tx%02ix%02i", ScratchMergedFolder().c_str(), tile.row, tile.column);
  return ConvertTgaTileToDds(name.c_str(), kMergedTileSide, kMergedTileSide, tile.row, tile.column);
}

bool HasShadowBits() { return IsInWritableArchive(LevelFile(kShadowBits)); }

bool HasObjectLightMaps() { return IsFolderInWritableArchive(LevelFile("ObjectLightMaps\\")); }

bool TakeShadowBits() {
  const std::string path = ScratchTexturesFolder() + "\\LightmapShadowBits.lsb";
  return !FileExists(path) || ImportDiskFile(path, LevelFile(kShadowBits));
}

bool TakeObjectLightMaps() {
  const std::string folder = ScratchObjectLightMapsFolder();
  bool written = true;
  for (const std::string& name : ListFiles(folder, "")) {
    written &=
        ImportDiskFile(folder + "\\" + name, LevelFile(("ObjectLightMaps\\" + name).c_str()));
  }
  return written;
}

}  // namespace mw
