#include "tests/monkey/level_state.h"

#include <algorithm>
#include <sstream>

#include "app/level.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/level_settings_commands.h"
#include "data/level_settings_lines.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw::monkey {
namespace {

void TakeMembers(LevelState& state) {
  const Archive* const archive = LevelArchive();
  Archive onDisk;
  if (!archive || !onDisk.Open(archive->Path(), false)) return;
  for (const auto& [name, entry] : onDisk.Entries()) {
    state.members[std::string(name)] =
        onDisk.ReadMember(name).value_or(std::vector<std::uint8_t>());
  }
}

void TakeGround(LevelState& state) {
  constexpr int kLargest = 65535;
  if (!HasUsableTerrain()) return;
  for (int i = 1; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j < modConfig.MaterialSize; ++j) {
      const auto row = static_cast<std::size_t>(i), column = static_cast<std::size_t>(j);
      const float height = terrain.grid[row][column].h * 256;
      state.heights.push_back(std::min(static_cast<int>(height), kLargest));
      state.materials.push_back(materialMapper->grid[row][column]);
    }
  }
}

void TakeSettings(LevelState& state) {
  const SettingsPlaces places = FindSettingsPlaces();
  for (const SettingsCommand& command : SettingsCommands()) {
    if (!command.value || !places.present.contains(LowerCase(command.name))) continue;
    state.settings[std::string(command.name)] = command.value(modConfig);
  }
}

void TakeCounts(LevelState& state) {
  state.counts["objects"] = std::ssize(objectStore.objects);
  for (const EntityKind kind : kEntityKinds) {
    state.counts["entities of kind " + std::to_string(static_cast<int>(kind))] =
        static_cast<std::ptrdiff_t>(entities.Of(kind).instances.size());
  }
}

template <typename T>
void CompareCells(const std::vector<T>& saved, const std::vector<T>& read, const char* what,
                  std::vector<std::string>& found) {
  if (saved.size() != read.size()) {
    found.push_back(FormatText("another number of %s", what));
    return;
  }
  std::size_t count = 0;
  for (std::size_t i = 0; i < saved.size(); ++i) count += saved[i] != read[i];
  if (count > 0) found.push_back(FormatText("%zu of %zu %s differ", count, saved.size(), what));
}

// Entities that belong to several game modes are read with the first of these, so the next save may
// write the others of a mode in another order.
std::vector<std::string> SortedLines(const std::vector<std::uint8_t>& script) {
  std::istringstream text(std::string(script.begin(), script.end()));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  std::ranges::sort(lines);
  lines.emplace_back();  // so that there is one where the other is longer
  return lines;
}

// Empty when they say the same, else the first lines that one of them has not.
std::string ScriptDifference(const std::vector<std::uint8_t>& a,
                             const std::vector<std::uint8_t>& b) {
  const auto first = SortedLines(a), second = SortedLines(b);
  const auto [one, other] = std::ranges::mismatch(first, second);
  if (one == first.end() && other == second.end()) return {};
  const auto shown = [](const auto& at, const auto& lines) {
    return at == lines.end() ? std::string() : *at;
  };
  return "'" + shown(one, first) + "' and '" + shown(other, second) + "'";
}

// Empty when they are the same.
std::string MemberDifference(const std::string& name, const std::vector<std::uint8_t>& a,
                             const std::vector<std::uint8_t>& b) {
  if (name.ends_with(".con")) return ScriptDifference(a, b);
  return a == b ? "" : FormatText("%zu and %zu bytes", a.size(), b.size());
}

}  // namespace

LevelState TakeLevelState() {
  LevelState state;
  TakeMembers(state);
  TakeGround(state);
  TakeSettings(state);
  TakeCounts(state);
  return state;
}

std::vector<std::string> DifferentMembers(const LevelState& before, const LevelState& after) {
  std::vector<std::string> found;
  if (before.members.empty()) found.push_back("nothing was saved");
  for (const auto& [name, bytes] : before.members) {
    const auto other = after.members.find(name);
    if (other == after.members.end()) {
      found.push_back(name + " is gone");
    } else if (const auto difference = MemberDifference(name, bytes, other->second);
               !difference.empty()) {
      found.push_back(name + " differs: " + difference);
    }
  }
  if (after.members.size() > before.members.size()) found.push_back("there are new members");
  return found;
}

std::vector<std::string> Differences(const LevelState& saved, const LevelState& read) {
  std::vector<std::string> found = DifferentMembers(saved, read);
  for (const auto& [name, count] : saved.counts) {
    const std::ptrdiff_t other = read.counts.at(name);
    if (count != other)
      found.push_back(FormatText("%td %s became %td", count, name.c_str(), other));
  }
  for (const auto& [command, value] : saved.settings) {
    const auto other = read.settings.find(command);
    const std::string now = other == read.settings.end() ? "nothing" : other->second;
    if (now != value) found.push_back(command + " was " + value + " and is " + now);
  }
  CompareCells(saved.heights, read.heights, "heights", found);
  CompareCells(saved.materials, read.materials, "materials", found);
  return found;
}

}  // namespace mw::monkey
