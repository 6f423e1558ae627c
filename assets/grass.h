// Swards of grass, drawn blade by blade over a painted ground. Used by the grass painters and by
// those that let some grass grow (paths, waste land).
#pragma once

#include <cstdint>
#include <functional>

#include "assets/picture.h"

namespace mw {

struct Sward {
  Colour root, young, old;          // blades run from root to a mix of young and old
  int blades = 9000;                // over the whole square
  float length = 24, width = 2.4f;  // pixels, of a mean blade
  float disorder = 0.9f;            // radians around the lie of the grass
  std::uint32_t seed = 1;
  // Share of the blades that grow at a place, 0 to 1; none means everywhere.
  std::function<float(float u, float v)> density;
};
void GrowGrass(Picture& picture, const Sward& sward);

}  // namespace mw
