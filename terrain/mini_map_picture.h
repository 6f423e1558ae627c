// The grey picture of the height field that the Mini-Map shows: 128 x 128 bytes, rows from the top.
// Terrain edits set single pixels; the Mini-Map draws it with every frame.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace mw {

inline constexpr int kMiniMapSize = 128;

struct MiniMapPicture {
  std::array<std::uint8_t, kMiniMapSize * kMiniMapSize> grey;
  // Rows that changed since who draws the picture last looked; none when last < first.
  struct Rows {
    int first = 0, last = kMiniMapSize - 1;
  } changed;

  MiniMapPicture() { grey.fill(127); }
  // Sets pixel (128 - x, 128 - y), x and y in picture units counted from the level's origin; a
  // pixel outside the picture is ignored.
  void SetPixel(int x, int y, std::uint8_t value) {
    const int column = kMiniMapSize - x, row = kMiniMapSize - y;
    if (column < 0 || column >= kMiniMapSize || row < 0 || row >= kMiniMapSize) return;
    grey[row * kMiniMapSize + column] = value;
    changed = {std::min(changed.first, row), std::max(changed.last, row)};
  }
};

}  // namespace mw
