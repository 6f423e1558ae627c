// The game's multiplayer modes as sets of bits: templates, placed entities and spawn groups each
// belong to some of them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

using GameModeMask = std::uint32_t;

inline constexpr GameModeMask kModeConquest = 1, kModeCaptureTheFlag = 2, kModeSinglePlayer = 4,
                              kModeTeamDeathMatch = 8;
// The modes whose entities have files of their own.
inline constexpr GameModeMask kAllModes = kModeConquest | kModeCaptureTheFlag | kModeTeamDeathMatch;

inline constexpr int kGameModeCount = 4;
// In bit order.
inline constexpr std::array<std::string_view, kGameModeCount> kGameModeLabels{"CQ", "CTF", "SP",
                                                                              "TDM"};

// One check box of a "Game Modes" field.
struct GameModeChoice {
  bool checked = false, enabled = true;
  std::string_view label;
  bool mixed = false;  // neither: several things differ, and stay as they are

  bool operator==(const GameModeChoice&) const = default;
};
using GameModeChoices = std::array<GameModeChoice, kGameModeCount>;

// Four rows in bit order; single player cannot be chosen.
GameModeChoices ChoicesOf(GameModeMask modes);
GameModeMask ModesOf(const GameModeChoices& choices);

// "<name> (CQ,CTF)": how templates and placed entities are called in the level tree.
std::string NameWithModes(std::string_view name, GameModeMask modes);
// "CQ CTF ": as the status bar lists them.
std::string ModesForStatus(GameModeMask modes);

}  // namespace mw
