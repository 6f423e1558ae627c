#include "data/level_size.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "core/text.h"
#include "data/game_file.h"
#include "data/game_path.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"

namespace mw {
namespace {

constexpr std::array kMaterialSizes = {256, 512, 1024};
constexpr int kUnitsPerSample = 4;  // of new levels
constexpr std::uint32_t kBytesPerHeight = 2;

bool IsMaterialSize(int size) {
  return std::ranges::find(kMaterialSizes, size) != kMaterialSizes.end();
}

// What the length of the height map in the archives says.
std::optional<int> SizeByHeightMap() {
  const auto name = NormalGamePath(openLevel.folder.String() + "/heightmap.raw");
  Archive* const archive = name ? archives.FindHolding(*name, false) : nullptr;
  if (!archive) return std::nullopt;
  for (const int size : kMaterialSizes) {
    const auto side = static_cast<std::uint32_t>(size);
    if (archive->Find(*name)->size == side * side * kBytesPerHeight) return size;
  }
  return std::nullopt;
}

}  // namespace

bool HasSupportedTerrainSize() {
  return IsMaterialSize(modConfig.MaterialSize) && modConfig.WorldSize >= modConfig.MaterialSize;
}

void CheckTerrainSize(const SizeLines& read, bool terrainScriptIsWhole) {
  const bool isStated = terrainScriptIsWhole || (read.materialSize && read.worldSize);
  if (isStated && HasSupportedTerrainSize()) return;
  const bool samplesAreKnown = read.materialSize && IsMaterialSize(modConfig.MaterialSize);
  const std::optional<int> byHeightMap = SizeByHeightMap();
  if (!samplesAreKnown && !byHeightMap) return;
  if (isStated) {
    NoteDamagedPart(LevelPart::TerrainScript,
                    FormatText("The terrain size in the scripts, %i samples over %i units, is not "
                               "supported.",
                               modConfig.MaterialSize, modConfig.WorldSize));
  }
  if (!samplesAreKnown) modConfig.MaterialSize = *byHeightMap;
  if (!read.worldSize || modConfig.WorldSize < modConfig.MaterialSize) {
    modConfig.WorldSize = modConfig.MaterialSize * kUnitsPerSample;
  }
  NoteAtLoad(FormatText("The level's size was taken from its %s: %i samples over %i units.",
                        samplesAreKnown ? "number of samples" : "height map",
                        modConfig.MaterialSize, modConfig.WorldSize));
}

}  // namespace mw
