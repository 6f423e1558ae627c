#include "app/mini_map.h"

#include <algorithm>

#include "core/camera.h"
#include "core/hooks.h"
#include "data/mod_config.h"

namespace mw {
namespace {

constexpr int kMarkerCentre = 10;
constexpr int kSquareFirst = 8, kSquareLast = 13;  // marker pixels of the square
constexpr int kLineStart = 11, kLineLength = 10;   // marker pixels

// World units that one picture pixel covers; 0 while no level size is known.
float WorldUnitsPerPixel() {
  const int samplesPerPixel = modConfig.MaterialSize / kMiniMapSize;
  if (samplesPerPixel < 1) return 0;
  return static_cast<float>(modConfig.WorldSize) / static_cast<float>(modConfig.MaterialSize) *
         static_cast<float>(samplesPerPixel);
}

void SetYellow(MiniMapPixels& pixels, int column, int row) {
  if (column < 0 || column >= kMiniMapSize || row < 0 || row >= kMiniMapSize) return;
  std::uint8_t* pixel = &pixels[static_cast<std::size_t>(row * kMiniMapSize + column) * 3];
  pixel[0] = pixel[1] = 255;
  pixel[2] = 0;
}

void DrawMarker(MiniMapPixels& pixels, int left, int top) {
  for (int row = kSquareFirst; row <= kSquareLast; ++row) {
    for (int column = kSquareFirst; column <= kSquareLast; ++column) {
      SetYellow(pixels, left + column, top + row);
    }
  }
  for (int i = 0; i < kLineLength; ++i) {
    const auto along = [i](float part) {
      return static_cast<int>(static_cast<float>(kLineStart) - static_cast<float>(i) * part);
    };
    SetYellow(pixels, left + along(camera.direction.x), top + along(camera.direction.z));
  }
}

}  // namespace

void PaintMiniMap(MiniMapPixels& pixels) {
  for (std::size_t i = 0; i < miniMapPicture.grey.size(); ++i) {
    std::fill_n(&pixels[i * 3], 3, miniMapPicture.grey[i]);
  }
  const float unitsPerPixel = WorldUnitsPerPixel();
  if (unitsPerPixel <= 0) return;
  const auto corner = [unitsPerPixel](float world) {
    return static_cast<int>(kMiniMapSize - world / unitsPerPixel - kMarkerCentre);
  };
  DrawMarker(pixels, corner(camera.position.x), corner(camera.position.z));
}

void MoveCameraToMiniMapPixel(int x, int y) {
  const float unitsPerPixel = WorldUnitsPerPixel();
  const auto world = [unitsPerPixel](int pixel) {
    return static_cast<float>(std::clamp(kMiniMapSize - pixel, 0, kMiniMapSize)) * unitsPerPixel;
  };
  camera.position.x = world(x);
  camera.position.z = world(y);
  hooks.invalidateMiniMap();
}

}  // namespace mw
