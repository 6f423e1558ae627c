#include "platform/settings_store.h"

#include "platform/qt/settings_values.h"

namespace mw {
namespace {

constexpr std::size_t kMaxEditorValueBytes = 65535;

QSettings EditorSettings() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, "Mapwright", "Mapwright");
}

}  // namespace

std::optional<std::string> ReadEditorSetting(std::string_view name) {
  return ReadValue(EditorSettings(), name, kMaxEditorValueBytes);
}

bool WriteEditorSetting(std::string_view name, std::string_view value) {
  QSettings settings = EditorSettings();
  return WriteValue(settings, name, value);
}

}  // namespace mw
