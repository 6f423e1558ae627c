// Pairs of colours for blocks that have one colour, or nearly so. Used by the DXT1
// encoders and the writer of .dds files.
#pragma once

#include <cstdint>

namespace mw {

// For each value of a channel the end points whose mixture, two thirds of the first and one third
// of the second, comes nearest. Joined by `|`, the numbers of the three channels of a colour are
// its pair: the first end point in the low half, the second in the high half, each as a 5-6-5
// colour.
struct Dxt1ColourPairs {
  std::uint32_t red[256], green[256], blue[256];
};

const Dxt1ColourPairs& ColourPairs();

// Writes the block of a colour, 0x00BBGGRR.
void EncodeOneColour(std::uint32_t colour, std::uint8_t* block);

}  // namespace mw
