// The Mini-Map's picture with the level's lowest ground as black and its highest as white. It keeps
// the heights of the pixels, so that an edit only reads those of its rows.
#pragma once

#include <array>
#include <cstdint>

#include "terrain/mini_map_picture.h"

namespace mw {

class StretchedMiniMap {
 public:
  // Reads the ground of these rows of the picture anew, all of them the first time. Gives the rows
  // of grey that changed: all when the lowest or the highest ground did.
  MiniMapPicture::Rows Update(MiniMapPicture::Rows changed);

  // Rows from the top, as those of MiniMapPicture. Middle grey where all is of one height.
  const std::array<std::uint8_t, kMiniMapSize * kMiniMapSize>& Grey() const { return grey_; }

 private:
  std::array<float, kMiniMapSize * kMiniMapSize> heights_{};
  std::array<std::uint8_t, kMiniMapSize * kMiniMapSize> grey_{};
  float lowest_ = 0, highest_ = -1;  // height units; before the first update no range
};

}  // namespace mw
