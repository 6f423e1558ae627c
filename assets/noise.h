// Periodic noise for pictures that tile: every function repeats with period 1 in u and v, so the
// left edge of a painted square meets the right one, and the top meets the bottom. Used by all
// painters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace mw {

std::uint32_t Hash(int x, int y, std::uint32_t seed);
// 0 <= result < 1.
float HashUnit(int x, int y, std::uint32_t seed);

// Lattice cells per period in each direction. Unequal numbers stretch the pattern.
struct Lattice {
  int across = 8;
  int down = 8;
};

// Gradient noise (Perlin, "Improving Noise", 2002), about -1 to 1.
float GradientNoise(float u, float v, Lattice lattice, std::uint32_t seed);

// The same for lines of equal u at the same places v: what depends on v alone is worked out once,
// and several places at a time.
class NoiseLines {
 public:
  NoiseLines(std::span<const float> v, Lattice lattice);
  // GradientNoise at as many places of the line as `noise` has room for, from number `first` on.
  // Always the same bits as there.
  void Along(float u, std::uint32_t seed, std::size_t first, std::span<float> noise) const;

 private:
  struct Run {
    int cell = 0;         // of the lattice, down
    std::size_t end = 0;  // number of the place after its last
  };
  Lattice lattice_;
  std::vector<Run> runs_;
  std::vector<float> fromCell_;  // how far below its cell's edge each place lies, 0 ... 1
  std::vector<float> fade_;
};

struct Octaves {
  Lattice lattice;  // of the first octave; each further one doubles it
  int count = 5;
  float gain = 0.5f;
  std::uint32_t seed = 1;
};

// Sum of octaves of gradient noise, about -1 to 1.
float Fbm(float u, float v, const Octaves& octaves);
// Sum of octaves folded at zero: sharp crests near 1, valleys near 0.
float Ridged(float u, float v, const Octaves& octaves);

// Cellular noise (Worley, "A Cellular Texture Basis Function", 1996). Distances are in lattice
// cells.
struct CellPoint {
  float nearest = 0;     // distance to the nearest feature point
  float second = 0;      // distance to the second nearest
  float dx = 0, dy = 0;  // from the nearest feature point to the place asked for
  std::uint32_t id = 0;  // of the nearest feature point, the same all over its cell
  float Border() const { return second - nearest; }  // 0 on the border between two cells
};
CellPoint Worley(float u, float v, Lattice lattice, std::uint32_t seed);

// A place moved by noise, to bend straight patterns. Amount in periods.
struct Place {
  float u = 0, v = 0;
};
Place Warp(float u, float v, float amount, const Octaves& octaves);

}  // namespace mw
