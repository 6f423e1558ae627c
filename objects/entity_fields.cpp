#include "objects/entity_fields.h"

#include <cmath>
#include <limits>

#include "data/script.h"

namespace mw {
namespace {

// Two decimals that are `limit` apart can lie further apart as floats, by half a step each.
bool IsWithin(float a, float b, double limit) {
  constexpr double kFloatStep = std::numeric_limits<float>::epsilon();
  const double left = a, right = b;
  const double rounding = std::max(std::fabs(left), std::fabs(right)) * kFloatStep;
  return std::fabs(left - right) <= limit + rounding;
}

}  // namespace

bool IsWithin(const Vector3& a, const Vector3& b, double limit) {
  return IsWithin(a.x, b.x, limit) && IsWithin(a.y, b.y, limit) && IsWithin(a.z, b.z, limit);
}

void ParseValue(Tokenizer& arguments, std::int32_t& number, ParseReport&) {
  number = ParseInt(arguments.Next(kBlankSlashOrLineFeed));
}
void ParseValue(Tokenizer& arguments, EntityName& name, ParseReport& report) {
  const auto token = arguments.Next(kBlankOrLineEnd);
  if (token && !name.Assign(*token)) report.nameWasCut = true;
}
void ParseValue(Tokenizer& arguments, Vector3& vector, ParseReport&) {
  vector = ParseVector3(arguments, kBlankSlashOrLineFeed);
}

void WriteValue(GameFile& file, std::int32_t number) { GameFilePrintf(file, "%d", number); }
void WriteValue(GameFile& file, const EntityName& name) { GameFilePuts(name, file); }
void WriteValue(GameFile& file, const Vector3& vector) {
  GameFilePrintf(file, "%f/%f/%f", static_cast<double>(vector.x), static_cast<double>(vector.y),
                 static_cast<double>(vector.z));
}

bool IsWritten(Written written, std::int32_t number) {
  switch (written) {
    case Written::Always:
      return true;
    case Written::WhenSet:
      return number != 0;
    case Written::WhenPositive:
      return number > 0;
    case Written::WhenNotNegative:
      return number >= 0;
  }
  return true;
}
bool IsWritten(Written written, const EntityName& name) {
  return written == Written::Always || !name.empty();
}
bool IsWritten(Written, const Vector3&) { return true; }

bool IsSameValue(std::int32_t a, std::int32_t b) { return a == b; }
bool IsSameValue(const EntityName& a, const EntityName& b) { return EqualNoCase(a, b); }
bool IsSameValue(const Vector3& a, const Vector3& b) { return IsWithin(a, b, kSamePosition); }

std::int32_t ParseIndex(Tokenizer& arguments) {
  return ParseInt(arguments.Next(kBlankSlashOrLineFeed));
}

void WriteCommand(GameFile& file, std::string_view command, std::int32_t index) {
  GameFilePuts(command, file);
  GameFilePuts(" ", file);
  if (index != 0) GameFilePrintf(file, "%d ", index);
}

}  // namespace mw
