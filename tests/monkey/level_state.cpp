#include "tests/monkey/level_state.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "app/level.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/archive.h"
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

// Each by the command that it is saved as.
void TakeSettings(LevelState& state) {
  const ModConfig& config = modConfig;
  auto& settings = state.settings;
  settings["GeometryTemplate.materialSize"] = {static_cast<float>(config.MaterialSize)};
  settings["GeometryTemplate.worldSize"] = {static_cast<float>(config.WorldSize)};
  settings["GeometryTemplate.yScale"] = {config.HeightScale};
  settings["GeometryTemplate.waterLevel"] = {config.WaterLevel};
  settings["renderer.vertexFogEnable"] = {static_cast<float>(config.VertexFogEnable)};
  settings["renderer.fogstart"] = {static_cast<float>(config.fogStart)};
  settings["renderer.fogend"] = {static_cast<float>(config.fogEnd)};
  settings["shadow.shadowColor"] = {config.ShadowColor};
  const std::pair<const char*, const Floats3&> colours[] = {
      {"renderer.fogColorVec", config.FogColor},
      {"renderer.ambientColor", config.AmbientColor},
      {"renderer.diffuseColor", config.DiffuseColor},
      {"renderer.specularColor", config.SpecularColor},
      {"renderer.globalAmbientColor", config.GlobalAmbientColor},
      {"water.color", config.WaterColor},
      {"water.deepColor", config.WaterDeepColor}};
  for (const auto& [command, colour] : colours) settings[command] = {colour.begin(), colour.end()};
}

void TakeCounts(LevelState& state) {
  state.counts["objects"] = std::ssize(objectStore.objects);
  for (const EntityKind kind : kEntityKinds) {
    state.counts["entities of kind " + std::to_string(static_cast<int>(kind))] =
        static_cast<std::ptrdiff_t>(entities.Of(kind).instances.size());
  }
}

// A setting that the level's scripts do not mention is not saved.
bool IsMentioned(const std::string& command, const LevelState& saved) {
  const std::string lower = LowerCase(command + ' ');
  return std::ranges::any_of(saved.members, [&](const auto& member) {
    const auto& [name, bytes] = member;
    return name.ends_with(".con") &&
           LowerCase(std::string(bytes.begin(), bytes.end())).find(lower) != std::string::npos;
  });
}

// Files hold some digits only.
bool IsNear(float a, float b) { return std::abs(a - b) <= 0.001f + 1e-4f * std::abs(a); }

void CompareSettings(const LevelState& saved, const LevelState& read,
                     std::vector<std::string>& found) {
  for (const auto& [command, values] : saved.settings) {
    const auto& others = read.settings.at(command);
    if (!std::ranges::equal(values, others, IsNear) && IsMentioned(command, saved)) {
      found.push_back(FormatText("%s was %g ... and is %g ...", command.c_str(),
                                 static_cast<double>(values[0]), static_cast<double>(others[0])));
    }
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
bool IsSameScript(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b) {
  const auto sortedLines = [](const auto& bytes) {
    std::istringstream text(std::string(bytes.begin(), bytes.end()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    std::ranges::sort(lines);
    return lines;
  };
  return sortedLines(a) == sortedLines(b);
}

// From where the contents part, as far as the line goes.
std::string FirstDifference(const std::vector<std::uint8_t>& a,
                            const std::vector<std::uint8_t>& b) {
  constexpr std::ptrdiff_t kContext = 40;
  const auto line = [](const auto& bytes, std::ptrdiff_t at) {
    const auto size = static_cast<std::ptrdiff_t>(bytes.size());
    std::string text(bytes.begin() + std::clamp<std::ptrdiff_t>(at - kContext, 0, size),
                     bytes.begin() + std::min(at + kContext, size));
    std::ranges::replace_if(
        text, [](char c) { return c < ' '; }, ' ');
    return text;
  };
  const auto at = std::ranges::mismatch(a, b).in1 - a.begin();
  return ": '" + line(a, at) + "' and '" + line(b, at) + "'";
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
    } else if (other->second != bytes &&
               !(name.ends_with(".con") && IsSameScript(bytes, other->second))) {
      found.push_back(name + " differs" +
                      (name.ends_with(".con") ? FirstDifference(bytes, other->second) : ""));
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
  CompareSettings(saved, read, found);
  CompareCells(saved.heights, read.heights, "heights", found);
  CompareCells(saved.materials, read.materials, "materials", found);
  return found;
}

}  // namespace mw::monkey
