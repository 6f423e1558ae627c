#include "objects/property_choices.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

#include "core/text.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_store.h"

namespace mw {
namespace {

constexpr std::array<std::string_view, 4> kVehicleCategories{"STATIONARY_WEAPONS", "VEHICLES_AIR",
                                                             "VEHICLES_LAND", "VEHICLES_SEA"};

void AddControlPoints(GameModeMask modes, std::vector<PropertyChoice>& choices) {
  for (const auto& entry : entities.Of(EntityKind::ControlPoint).templates) {
    if (!(entry->modes & modes)) continue;
    const auto& controlPoint = static_cast<const ControlPointTemplate&>(*entry);
    PropertyChoice choice{controlPoint.name.String(), controlPoint.spawnGroupId};
    if (std::find(choices.begin(), choices.end(), choice) == choices.end()) {
      choices.push_back(std::move(choice));
    }
  }
}

std::string TeamName(std::int32_t team) {
  if (team < 0 || team >= kMaxTeams) return {};
  return modConfig.teams[static_cast<std::size_t>(team)].name.String();
}

}  // namespace

std::vector<std::string> VehicleNames() {
  const ObjectCatalogue& catalogue = objectStore.catalogue;
  std::vector<std::string> names;
  for (int i = 0; i < catalogue.entryCount; ++i) {
    const std::string_view category = catalogue.CategoryOf(i);
    if (std::find(kVehicleCategories.begin(), kVehicleCategories.end(), category) ==
        kVehicleCategories.end()) {
      continue;
    }
    names.push_back(catalogue.entries[static_cast<std::size_t>(i)].name.String());
  }
  std::sort(names.begin(), names.end(), LessNoCase());
  return names;
}

std::vector<std::string> ObjectOrNoneNames() {
  const ObjectCatalogue& catalogue = objectStore.catalogue;
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(catalogue.entryCount) + 1);
  for (int i = 0; i < catalogue.entryCount; ++i) {
    names.push_back(catalogue.entries[static_cast<std::size_t>(i)].name.String());
  }
  std::sort(names.begin(), names.end(), LessNoCase());
  names.insert(names.begin(), std::string());
  return names;
}

std::vector<PropertyChoice> ControlPointChoices(GameModeMask modes) {
  std::vector<PropertyChoice> choices;
  AddControlPoints(modes, choices);
  return choices;
}

std::vector<PropertyChoice> ControlPointOrNoneChoices(GameModeMask modes) {
  std::vector<PropertyChoice> choices{{"(none)", 0}};
  AddControlPoints(modes, choices);
  return choices;
}

std::vector<PropertyChoice> TeamChoices() {
  return {{"Neutral", 0},
          {TeamName(modConfig.chosenTeam[0]), 1},
          {TeamName(modConfig.chosenTeam[1]), 2}};
}

std::string NotInList(std::string_view value) {
  return value.empty() ? "(none)" : "(not in the list: " + std::string(value) + ")";
}

}  // namespace mw
