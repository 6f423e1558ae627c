#include "objects/property_sheet.h"

#include <utility>

namespace mw {

bool SetField(PropertySheet& sheet, int index, FieldVariable value, std::int32_t count,
              FieldType type, std::string_view label) {
  if (index < 0 || index >= kMaxPropertyFields) return false;
  sheet.fields[static_cast<std::size_t>(index)] = {label, type, 0,    std::move(value),
                                                   count, true, false};
  return true;
}

PropertyField* AddField(PropertySheet& sheet, FieldVariable value, std::int32_t count,
                        FieldType type, std::string_view label) {
  if (!SetField(sheet, sheet.fieldCount, std::move(value), count, type, label)) return nullptr;
  return &sheet.fields[static_cast<std::size_t>(sheet.fieldCount++)];
}

}  // namespace mw
