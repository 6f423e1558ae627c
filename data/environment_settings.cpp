#include "data/environment_settings.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/text.h"

namespace mw {

std::int32_t Truncated(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp(value, double{Limits::min()}, double{Limits::max()}));
}

std::optional<int> TileFactorEntry(float factor) {
  for (int entry = 0; entry < static_cast<int>(kTileFactorTexts.size()); ++entry) {
    if (factor == std::ldexp(1.0f, -entry)) return entry;
  }
  return std::nullopt;
}

float TileFactorOf(int entry) { return std::ldexp(1.0f, -entry); }

int AvailableSkies() { return std::clamp(modConfig.skyCount, 0, kMaxSkies); }

std::optional<int> CurrentSkyEntry() {
  const auto end = modConfig.skies.begin() + AvailableSkies();
  const auto current = std::find_if(modConfig.skies.begin(), end, [](const Sky& sky) {
    return EqualNoCase(sky.settings.mesh, modConfig.currentSky.mesh);
  });
  if (current == end) return std::nullopt;
  return static_cast<int>(current - modConfig.skies.begin());
}

}  // namespace mw
