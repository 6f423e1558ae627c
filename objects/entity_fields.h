// What the script commands of an entity record mean. Each record has one table, in the order in
// which its commands are written, that says which field a command carries; reading, writing and
// comparing records all follow it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <type_traits>
#include <variant>

#include "core/text.h"
#include "core/vector3.h"
#include "data/game_file.h"
#include "objects/entities.h"

namespace mw {

// Whether a field has a line of its own in the file. A number is set when it is not 0, a name when
// it is not empty.
enum class Written { Always, WhenSet, WhenPositive, WhenNotNegative };

template <class Record>
struct CommandField {
  std::string_view command;
  std::variant<std::int32_t Record::*, EntityName Record::*, Vector3 Record::*> field;
  Written written = Written::Always;
  std::int32_t index = 0;  // the number that stands between command and value; 0 = none
};

// How far apart the components of two vectors may be that count as the same.
inline constexpr double kSamePosition = 0.1;  // world units
inline constexpr double kSameRotation = 1.0;  // degrees

// Whether each component of one vector is within `limit` of the other's, the limit included, as
// the numbers stand in the file: what floats make of them is allowed for.
bool IsWithin(const Vector3& a, const Vector3& b, double limit);

// A missing number is 0, a vector as ParseVector3 has it; a missing name leaves the field as it is.
// A name reaches to the next blank, so that a `/` in it survives; the report tells that it was too
// long.
void ParseValue(Tokenizer& arguments, std::int32_t& number, ParseReport& report);
void ParseValue(Tokenizer& arguments, EntityName& name, ParseReport& report);
void ParseValue(Tokenizer& arguments, Vector3& vector, ParseReport& report);

void WriteValue(GameFile& file, std::int32_t number);
void WriteValue(GameFile& file, const EntityName& name);
void WriteValue(GameFile& file, const Vector3& vector);

bool IsWritten(Written written, std::int32_t number);
bool IsWritten(Written written, const EntityName& name);
bool IsWritten(Written written, const Vector3& vector);

bool IsSameValue(std::int32_t a, std::int32_t b);
bool IsSameValue(const EntityName& a, const EntityName& b);
bool IsSameValue(const Vector3& a, const Vector3& b);

// The number that a command with an index has before its value; one that is missing is 0.
std::int32_t ParseIndex(Tokenizer& arguments);
// "<command> " or "<command> <index> ".
void WriteCommand(GameFile& file, std::string_view command, std::int32_t index);

// False when the table does not have the command. An index that the table does not have is ignored.
template <class Record, std::size_t N>
bool ParseField(const CommandField<Record> (&fields)[N], std::type_identity_t<Record>& record,
                std::string_view command, Tokenizer& arguments, ParseReport& report) {
  const auto isMeant = [&](const CommandField<Record>& row) {
    return EqualNoCase(row.command, command);
  };
  const auto* row = std::find_if(std::begin(fields), std::end(fields), isMeant);
  if (row == std::end(fields)) return false;
  if (row->index != 0) {
    const std::int32_t index = ParseIndex(arguments);
    row = std::find_if(row, std::end(fields), [&](const CommandField<Record>& candidate) {
      return candidate.index == index && isMeant(candidate);
    });
    if (row == std::end(fields)) return true;
  }
  std::visit([&](auto field) { ParseValue(arguments, record.*field, report); }, row->field);
  return true;
}

template <class Record>
void WriteField(const CommandField<Record>& row, const std::type_identity_t<Record>& record,
                GameFile& file) {
  std::visit(
      [&](auto field) {
        if (!IsWritten(row.written, record.*field)) return;
        WriteCommand(file, row.command, row.index);
        WriteValue(file, record.*field);
        GameFilePuts("\n", file);
      },
      row.field);
}

template <class Record, std::size_t N>
void WriteFields(const CommandField<Record> (&fields)[N],
                 const std::type_identity_t<Record>& record, GameFile& file) {
  for (const CommandField<Record>& row : fields) WriteField(row, record, file);
}

template <class Record, std::size_t N>
bool AreFieldsEqual(const CommandField<Record> (&fields)[N], const std::type_identity_t<Record>& a,
                    const std::type_identity_t<Record>& b) {
  return std::all_of(std::begin(fields), std::end(fields), [&](const CommandField<Record>& row) {
    return std::visit([&](auto field) { return IsSameValue(a.*field, b.*field); }, row.field);
  });
}

}  // namespace mw
