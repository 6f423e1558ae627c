#include "objects/game_modes.h"

namespace mw {
namespace {

constexpr GameModeMask Bit(std::size_t row) { return GameModeMask{1} << row; }

}  // namespace

GameModeChoices ChoicesOf(GameModeMask modes) {
  GameModeChoices choices;
  for (std::size_t row = 0; row < choices.size(); ++row) {
    choices[row] = {(modes & Bit(row)) != 0, Bit(row) != kModeSinglePlayer, kGameModeLabels[row],
                    false};
  }
  return choices;
}

GameModeMask ModesOf(const GameModeChoices& choices) {
  GameModeMask modes = 0;
  for (std::size_t row = 0; row < choices.size(); ++row) {
    if (choices[row].checked) modes |= Bit(row);
  }
  return modes;
}

std::string NameWithModes(std::string_view name, GameModeMask modes) {
  std::string text = std::string(name) + " (";
  std::string_view separator;
  for (std::size_t row = 0; row < kGameModeLabels.size(); ++row) {
    if (!(modes & Bit(row))) continue;
    text.append(separator).append(kGameModeLabels[row]);
    separator = ",";
  }
  return text + ")";
}

std::string ModesForStatus(GameModeMask modes) {
  std::string text;
  for (std::size_t row = 0; row < kGameModeLabels.size(); ++row) {
    if (modes & Bit(row)) text.append(kGameModeLabels[row]).append(" ");
  }
  return text;
}

}  // namespace mw
