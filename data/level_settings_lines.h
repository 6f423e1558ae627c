// Which lines a save adds to a level's settings scripts: those of settings that the user changed
// and that no script has a line for. Used when the scripts are written, and by the dialogs, which
// do not offer what no script could keep.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/script.h"

namespace mw {

// In the order in which they are read and written.
enum class SettingsScript : std::size_t { Init, Terrain, Sky, Count };
inline constexpr auto kSettingsScripts = static_cast<std::size_t>(SettingsScript::Count);
// "init/terrain.con"
std::string_view FileOf(SettingsScript script);
// The script of the open level.
std::string PathOf(SettingsScript script);
// What the load report calls it.
LevelPart PartOf(SettingsScript script);

// The open level's scripts, as far as their own lines decide where a line may be added.
struct SettingsPlaces {
  struct Script {
    bool exists = false;
    bool isWritten = false;  // by a save; else nothing is added
    std::size_t lineCount = 0;
    std::optional<std::size_t> endOfTemplate;  // lines up to where the template's own lines end
  };
  std::array<Script, kSettingsScripts> scripts;
  std::set<std::string> present;  // commands that have a line, in lower case; those of teams
                                  // with their numbers: "game.setkit 1 0"
  std::array<std::int32_t, 2> team{0, 1};  // the entry of the team table that they choose

  const Script& operator[](SettingsScript script) const {
    return scripts[static_cast<std::size_t>(script)];
  }
};
SettingsPlaces FindSettingsPlaces();
// Whether the user has chosen another team for the side than the scripts do.
bool IsTeamChanged(const SettingsPlaces& places, std::int32_t side);

// Why the scripts cannot keep a change of this setting: they have no line for it, and no place for
// one. Empty when they can.
std::string WhyNotKept(const SettingsPlaces& places, std::string_view command);

// Fills openLevel.settingsDefaults, before the scripts of a level are read.
void RememberSettingsDefaults();
// What differs from `before` was changed by another mod or a guess, and not by the user.
void AdoptSettingsDefaults(const ModConfig& before);

struct MissingLines {
  std::array<std::vector<AddedLine>, kSettingsScripts> added;  // in the order of their places
  std::vector<std::string> withoutPlace;  // commands whose lines no script has a place for
};
MissingLines FindMissingLines(const SettingsPlaces& places);

}  // namespace mw
