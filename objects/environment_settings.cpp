#include "objects/environment_settings.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/text.h"

namespace mw {
namespace {

constexpr float kByteStep = 1.0f / 255.0f;
// More than six decimals lose of a byte, in steps of a byte.
constexpr double kDecimalLoss = 0.001;

std::uint8_t ByteOf(float part) {
  return static_cast<std::uint8_t>(std::clamp(double{part} * 255.0 + kDecimalLoss, 0.0, 255.0));
}

}  // namespace

ByteColour BytesOf(const Floats3& colour) {
  return {ByteOf(colour[0]), ByteOf(colour[1]), ByteOf(colour[2])};
}

Floats3 FloatsOf(const ByteColour& colour) {
  return {static_cast<float>(colour[0]) * kByteStep, static_cast<float>(colour[1]) * kByteStep,
          static_cast<float>(colour[2]) * kByteStep};
}

std::int32_t Truncated(float value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp(double{value}, double{Limits::min()}, double{Limits::max()}));
}

std::optional<int> TileFactorEntry(float factor) {
  for (int entry = 0; entry < static_cast<int>(kTileFactorTexts.size()); ++entry) {
    if (factor == std::ldexp(1.0f, -entry)) return entry;
  }
  return std::nullopt;
}

float TileFactorOf(int entry, std::string_view text) {
  const bool isKnown = entry >= 0 && entry < static_cast<int>(kTileFactorTexts.size());
  return isKnown ? std::ldexp(1.0f, -entry) : ParseFloat(text);
}

int AvailableSkies() { return std::clamp(modConfig.skyCount, 0, kMaxSkies); }

int CurrentSkyEntry() {
  const auto end = modConfig.skies.begin() + AvailableSkies();
  const auto current = std::find_if(modConfig.skies.begin(), end, [](const Sky& sky) {
    return EqualNoCase(sky.settings.mesh, modConfig.currentSky.mesh);
  });
  return current == end ? 0 : static_cast<int>(current - modConfig.skies.begin());
}

}  // namespace mw
