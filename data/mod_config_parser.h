// The text of a mod's configuration file, apart from where it lies: used by ParseModConfig and by
// what feeds it texts that are no files. docs/formats.md describes the format.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "data/mod_config.h"

namespace mw {

// Bytes of the line buffer, its terminating zero included: longer lines are read in pieces, each as
// a line of its own.
inline constexpr std::size_t kConfigLineBuffer = 255;

// Applies every line of `text` to the record and sets its counts. Shows "Error in format of cfg
// file" for a team or sky line that lacks a text; one message each (naming `fileName` and the keys)
// for tables that are full, for texts that are too long, which stay empty, and for a MaterialSize
// beyond kMaxMaterialSize, which is not taken over.
void ApplyModConfigText(std::string_view text, std::string_view fileName, ModConfig& config);

// The game folder that a configuration's text names; empty when it names none. Shows nothing.
std::string GamePathIn(std::string_view text);

}  // namespace mw
