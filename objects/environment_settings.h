// The values of the environment dialogs: colours as bytes, tile factors as list entries, the skies
// that can be chosen, and storing what the user changed.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/editor_state.h"
#include "core/fixed_string.h"
#include "data/mod_config.h"

namespace mw {

using ByteColour = std::array<std::uint8_t, 3>;  // red, green, blue

// Colours of 0..1 as bytes, cut, and limited to what a byte can hold. A colour that came from bytes
// gives the same bytes again, also after it was written into a script with six decimals.
ByteColour BytesOf(const Floats3& colour);
Floats3 FloatsOf(const ByteColour& colour);

// Cut toward zero, and limited to what the integer can hold.
std::int32_t Truncated(float value);

// How often a water texture repeats: entry k is 1 / 2^k.
inline constexpr std::array<const char*, 5> kTileFactorTexts{"1", "1/2", "1/4", "1/8", "1/16"};
// The entry that is exactly this factor, if there is one.
std::optional<int> TileFactorEntry(float factor);
// The factor of a list's entry; one beyond the known entries is read from its text.
float TileFactorOf(int entry, std::string_view text);

// The skies of the mod configuration that have room in its table.
int AvailableSkies();
// The entry with the current mesh, whatever the case; else the first.
int CurrentSkyEntry();

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
