// Things strewn over the ground: blades of grass drawn as tapering strokes, and stones as domes in
// a height field. Both wrap around the edges of their square. Used by the ground painters.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "assets/picture.h"

namespace mw {

// Random numbers that are the same with every standard library.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}
  // low <= result < high.
  float Between(float low, float high);

 private:
  std::mt19937 engine_;
};

struct Spot {
  float x = 0, y = 0;  // pixels
};

// About `count` spots over a square, evenly spread yet irregular, in random order.
std::vector<Spot> StrewnSpots(int side, int count, Dice& dice);

struct Blade {
  Spot root;
  float angle = 0;               // radians
  float bend = 0;                // added to the angle from root to tip
  float length = 20, width = 2;  // pixels
  Colour rootColour, tipColour;
  float shadow = 0.3f;  // strength of the shadow beside it
};
void DrawBlade(Picture& picture, const Blade& blade);

// Stones that lie over a ground. `height` is the ground before and the whole relief after.
struct StoneBed {
  explicit StoneBed(Field ground)
      : height(std::move(ground)), cover(height.side), shade(height.side) {}
  Field height;
  Field cover;  // 1 on a stone, 0 on the ground, between at its rim
  Field shade;  // 0 to 1, one value for each stone
};
struct StoneSizes {
  float smallest = 2, largest = 6;  // radius in pixels
  float flatness = 0.6f;            // height of the dome in radii
};
void ScatterStones(StoneBed& bed, int count, StoneSizes sizes, Dice& dice);

}  // namespace mw
