// The surface-map plug-in: paints the colour picture of a surface tile from materials and textures.
#include <new>

#include "plugins/mapwright_plugin.h"
#include "plugins/tile_painter.h"

using namespace mw::plugin;

namespace {

constexpr std::int32_t kMaxTile = 1 << 16;  // tiles and offsets beyond it are no tiles

SurfaceMap surfaceMap;
std::vector<Rgb8> tilePixels;

bool IsTileNumber(std::int32_t number) { return number > -kMaxTile && number < kMaxTile; }

}  // namespace

bool initSurfaceMap(const std::uint32_t* materials, std::int32_t materialSize,
                    std::int32_t texOffsetX, std::int32_t texOffsetY) {
  surfaceMap.materials = nullptr;
  if (!materials || materialSize < 1 || materialSize > MAPWRIGHT_MAX_SIZE) return false;
  if (!IsTileNumber(texOffsetX) || !IsTileNumber(texOffsetY)) return false;
  try {
    for (std::size_t m = 0; m < surfaceMap.grounds.size(); ++m) {
      surfaceMap.grounds[m] = PlainGround(static_cast<Material>(m));
    }
  } catch (const std::bad_alloc&) {
    return false;
  }
  surfaceMap.materials = materials;
  surfaceMap.size = materialSize;
  surfaceMap.offsetRows = MAPWRIGHT_TILE_CELLS * texOffsetX;
  surfaceMap.offsetColumns = MAPWRIGHT_TILE_CELLS * texOffsetY;
  return true;
}

void initSurfaceBmp(std::int32_t slot, const MapwrightTextureSlot* texture) {
  if (slot < 0 || slot >= MAPWRIGHT_MATERIALS || !texture) return;
  try {
    const auto number = static_cast<std::size_t>(slot);
    surfaceMap.grounds[number] = MakeGround(*texture, static_cast<Material>(slot));
  } catch (const std::bad_alloc&) {
    // The material keeps its plain colour.
  }
}

const std::uint8_t* generateSurfaceMap(std::int32_t size, std::int32_t tileRow,
                                       std::int32_t tileCol) {
  if (!surfaceMap.materials || size != kTileSide) return nullptr;
  if (!IsTileNumber(tileRow) || !IsTileNumber(tileCol)) return nullptr;
  try {
    PaintTile(surfaceMap, tileRow, tileCol, tilePixels);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
  return tilePixels.front().data();
}
