// A property sheet as a text for golden files.
#pragma once

#include <sstream>
#include <string>

#include "objects/property_sheet.h"

namespace mw {

// A line of it: label, type, most values or characters, and what stands in it.
inline std::string Described(const PropertyField& field) {
  std::ostringstream line;
  line << "  " << field.label.c_str() << " | type " << static_cast<int>(field.type) << " x "
       << field.count << (field.editable ? "" : " read-only");
  if (field.filterModes != 0) line << " modes " << field.filterModes;
  line << " |";
  if (const auto* text = std::get_if<TextVariable>(&field.value)) line << ' ' << text->read();
  for (int i = 0; i < field.count; ++i) {
    if (auto* const* number = std::get_if<std::int32_t*>(&field.value)) line << ' ' << (*number)[i];
    if (auto* const* real = std::get_if<float*>(&field.value)) line << ' ' << (*real)[i];
    if (auto* const* mode = std::get_if<GameModeChoice*>(&field.value))
      line << ' ' << (*mode)[i].label << (*mode)[i].checked << ((*mode)[i].enabled ? "" : "(grey)")
           << ((*mode)[i].mixed ? "(mixed)" : "");
  }
  return line.str() + '\n';
}

inline std::string Described(const PropertySheet& sheet) {
  std::string text = sheet.title + '\n';
  for (int i = 0; i < sheet.fieldCount; ++i)
    text += Described(sheet.fields[static_cast<std::size_t>(i)]);
  return text;
}

}  // namespace mw
