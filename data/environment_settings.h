// The values of the environment dialogs: tile factors as list entries, the skies that can be
// chosen, and storing what the user changed.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/editor_state.h"
#include "core/fixed_string.h"
#include "data/mod_config.h"

namespace mw {

// Cut toward zero, and limited to what the integer can hold.
std::int32_t Truncated(double value);

// How often a water texture repeats: entry k is 1 / 2^k.
inline constexpr std::array<const char*, 5> kTileFactorTexts{"1", "1/2", "1/4", "1/8", "1/16"};
// The entry that is exactly this factor, if there is one.
std::optional<int> TileFactorEntry(float factor);
// The factor of one of these entries.
float TileFactorOf(int entry);

// The skies of the mod configuration that have room in its table.
int AvailableSkies();
// The entry with the current mesh, whatever the case, if there is one.
std::optional<int> CurrentSkyEntry();

// Puts a value that the user chose into a setting. A change is one that the open level must save.
template <typename T>
void ChangeSetting(T& setting, const T& value) {
  if (setting == value) return;
  setting = value;
  if (editor.levelLoaded) editor.levelModified = true;
}

template <std::size_t N>
void ChangeSetting(FixedString<N>& setting, std::string_view value) {
  const FixedString<N> bounded(value);
  if (setting == bounded.View()) return;
  setting = bounded;
  if (editor.levelLoaded) editor.levelModified = true;
}

}  // namespace mw
