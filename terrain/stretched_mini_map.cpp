#include "terrain/stretched_mini_map.h"

#include <algorithm>
#include <cstddef>

#include "data/mod_config.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr std::uint8_t kFlatGrey = 127, kWhite = 255;

// Height units of the ground that the pixel shows. The top row, for which there is no ground left,
// shows that of the row below it.
float HeightOfPixel(int column, int row, int samplesPerPixel) {
  const int x = kMiniMapSize - column, y = kMiniMapSize - std::max(row, 1);
  return terrain.grid[x * samplesPerPixel][y * samplesPerPixel].h;
}

}  // namespace

MiniMapPicture::Rows StretchedMiniMap::Update(MiniMapPicture::Rows changed) {
  const int samplesPerPixel = modConfig.MaterialSize / kMiniMapSize;
  if (!HasUsableTerrain() || samplesPerPixel < 1) {
    grey_.fill(kFlatGrey);
    highest_ = lowest_ - 1;
    return {0, kMiniMapSize - 1};
  }
  if (highest_ < lowest_) changed = {0, kMiniMapSize - 1};
  if (changed.first <= 1) changed.first = 0;
  for (int row = changed.first; row <= changed.last; ++row) {
    for (int column = 0; column < kMiniMapSize; ++column) {
      heights_[static_cast<std::size_t>(row * kMiniMapSize + column)] =
          HeightOfPixel(column, row, samplesPerPixel);
    }
  }
  const auto [lowest, highest] = std::ranges::minmax(heights_);
  if (lowest != lowest_ || highest != highest_) changed = {0, kMiniMapSize - 1};
  lowest_ = lowest;
  highest_ = highest;
  const float scale = highest > lowest ? kWhite / (highest - lowest) : 0;
  const auto first = static_cast<std::size_t>(changed.first) * kMiniMapSize;
  const auto end = static_cast<std::size_t>(changed.last + 1) * kMiniMapSize;
  for (std::size_t at = first; at < end; ++at) {
    grey_[at] =
        scale == 0 ? kFlatGrey : static_cast<std::uint8_t>((heights_[at] - lowest) * scale + 0.5f);
  }
  return changed;
}

}  // namespace mw
