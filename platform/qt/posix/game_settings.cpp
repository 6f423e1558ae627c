#include "platform/qt/settings_values.h"
#include "platform/settings_store.h"

namespace mw {
namespace {

QSettings GameSettings() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, "Quorrin", "Varnhold");
}

}  // namespace

std::optional<std::string> ReadGameSetting(std::string_view name) {
  // The user's own file first, then the machine's.
  return ReadValue(GameSettings(), name, kMaxGameValueBytes);
}

bool WriteGameSetting(std::string_view name, std::string_view value) {
  QSettings settings = GameSettings();
  return WriteValue(settings, name, value);
}

}  // namespace mw
