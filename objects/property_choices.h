// What the lists of a property sheet offer: vehicles, control points and teams.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "objects/game_modes.h"

namespace mw {

struct PropertyChoice {
  std::string text;
  std::int32_t value = 0;

  bool operator==(const PropertyChoice&) const = default;
};

// The catalogue's vehicles and stationary weapons, sorted whatever the case.
std::vector<std::string> VehicleNames();
// The same of all objects, behind an empty one for none.
std::vector<std::string> ObjectOrNoneNames();
// The control point templates that share a mode with `modes`, each with its spawn group; the second
// with "(none)", which is 0, before them.
std::vector<PropertyChoice> ControlPointChoices(GameModeMask modes);
std::vector<PropertyChoice> ControlPointOrNoneChoices(GameModeMask modes);
// "Neutral" and the teams of the level.
std::vector<PropertyChoice> TeamChoices();
// The entry of its own that a list has for a value that it does not offer.
std::string NotInList(std::string_view value);

}  // namespace mw
