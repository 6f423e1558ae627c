// Property sheets: a list of typed fields, each pointing at the variable that it edits, from which
// one generic dialog is built. Objects and entities describe their edit dialogs with them.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <variant>

#include "core/fixed_string.h"
#include "objects/game_modes.h"

namespace mw {

inline constexpr int kMaxPropertyFields = 32, kMaxFieldControls = 5;

enum class FieldType : std::int32_t {
  Text = 0,                // a text; read-only when not editable
  Integers = 1,            // `count` integers side by side
  Floats = 2,              // `count` floats side by side
  Vehicle = 3,             // a text, chosen among the vehicle objects of the catalogue
  ControlPoint = 4,        // an integer: spawnGroupId of a control point template
  ControlPointOrNone = 5,  // the same, 0 for "(none)"
  Team = 6,                // an integer: 0 neutral, 1, 2
  GameModes = 7,           // `count` check boxes
  Heading = 8,             // no value
  CatalogueObject = 9      // a text, chosen among all objects of the catalogue, or empty
};

// A bounded text of any size.
struct TextVariable {
  std::function<std::string()> read;
  std::function<void(std::string_view)> write;
};

template <std::size_t N>
TextVariable TextOf(FixedString<N>& text) {
  return {[&text] { return text.String(); }, [&text](std::string_view value) { text = value; }};
}

// Numbers of a field that may be empty which show as such.
inline constexpr float kNoFloat = std::numeric_limits<float>::quiet_NaN();
inline constexpr std::int32_t kNoInteger = std::numeric_limits<std::int32_t>::min();

using FieldVariable =
    std::variant<std::monostate, TextVariable, std::int32_t*, float*, GameModeChoice*>;

struct PropertyField {
  FixedString<128> label;
  FieldType type = FieldType::Heading;
  GameModeMask filterModes = 0;  // types 4 and 5 offer the templates that share one of these modes
  FieldVariable value;
  std::int32_t count = 0;  // longest text (types 0, 3 and 9), or number of values (types 1, 2, 7)
  bool editable = false;
  // Numbers may be left empty, and stay what they are then. kNoFloat and kNoInteger are shown so.
  bool mayBeEmpty = false;
};

struct PropertySheet {
  std::string title;
  std::int32_t fieldCount = 0;
  std::array<PropertyField, kMaxPropertyFields> fields;
};

// Defines field `index` and makes it editable. False, with nothing changed, for an index that the
// sheet does not have. fieldCount is the caller's.
bool SetField(PropertySheet& sheet, int index, FieldVariable value, std::int32_t count,
              FieldType type, std::string_view label);

// Appends a field; null when the sheet is full.
PropertyField* AddField(PropertySheet& sheet, FieldVariable value, std::int32_t count,
                        FieldType type, std::string_view label);

}  // namespace mw
