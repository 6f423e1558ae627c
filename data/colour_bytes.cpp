#include "data/colour_bytes.h"

#include <algorithm>

namespace mw {
namespace {

constexpr float kByteStep = 1.0f / 255.0f;
// More than six decimals lose of a byte, in steps of a byte.
constexpr double kDecimalLoss = 0.001;

std::uint8_t ByteOf(float part) {
  return static_cast<std::uint8_t>(std::clamp(double{part} * 255.0 + kDecimalLoss, 0.0, 255.0));
}

}  // namespace

ColourBytes BytesOf(const Floats3& colour) {
  return {ByteOf(colour[0]), ByteOf(colour[1]), ByteOf(colour[2])};
}

Floats3 FloatsOf(const ColourBytes& colour) {
  return {static_cast<float>(colour[0]) * kByteStep, static_cast<float>(colour[1]) * kByteStep,
          static_cast<float>(colour[2]) * kByteStep};
}

}  // namespace mw
