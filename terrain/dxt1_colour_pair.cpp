#include "terrain/dxt1_colour_pair.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "core/little_endian.h"
#include "terrain/dxt1_encoder.h"

namespace mw {
namespace {

int Expand(int value, int bits) { return value << (8 - bits) | value >> (2 * bits - 8); }

// The end points of a channel of so many bits, one in each half of the number. Of those that come
// equally near the closest are taken: decoders differ in how they mix.
std::uint32_t NearestPair(int wanted, int bits) {
  constexpr int kWidest = 4;  // steps between the end points; wider pairs come no nearer
  constexpr int kPerThird = 100, kPerStep = 3;
  const int most = (1 << bits) - 1;
  std::uint32_t nearest = 0;
  int least = INT32_MAX;
  for (int first = 0; first <= most; ++first) {
    for (int second = std::max(0, first - kWidest); second <= std::min(most, first + kWidest);
         ++second) {
      const int mixed = 2 * Expand(first, bits) + Expand(second, bits);
      const int error =
          std::abs(mixed - 3 * wanted) * kPerThird + std::abs(first - second) * kPerStep;
      if (error >= least) continue;
      least = error;
      nearest = static_cast<std::uint32_t>(second << 16 | first);
    }
  }
  return nearest;
}

}  // namespace

const Dxt1ColourPairs& ColourPairs() {
  static const Dxt1ColourPairs pairs = [] {
    Dxt1ColourPairs made;
    for (int value = 0; value < 256; ++value) {
      const std::uint32_t five = NearestPair(value, 5);
      made.red[value] = five << 11;
      made.green[value] = NearestPair(value, 6) << 5;
      made.blue[value] = five;
    }
    return made;
  }();
  return pairs;
}

void EncodeOneColour(std::uint32_t colour, std::uint8_t* block) {
  // The indices of two thirds of the first end point, and of one third, for all pixels.
  constexpr std::uint32_t kTwoThirds = 0xAAAAAAAA, kOneThird = 0xFFFFFFFF;
  const Dxt1ColourPairs& pairs = ColourPairs();
  const std::uint32_t pair =
      pairs.red[colour & 255] | pairs.green[colour >> 8 & 255] | pairs.blue[colour >> 16 & 255];
  const std::uint32_t first = pair & 0xFFFF, second = pair >> 16;
  // The larger one comes first: the order that says that a block has four opaque colours.
  const bool inOrder = first > second;
  const std::span<std::uint8_t> out(block, kDxt1BlockSize);
  StoreU32(out, 0, inOrder ? pair : first << 16 | second);
  StoreU32(out, 4, first == second ? 0 : inOrder ? kTwoThirds : kOneThird);
}

}  // namespace mw
