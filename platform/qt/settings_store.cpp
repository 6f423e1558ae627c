#include "platform/settings_store.h"

#include <QSettings>

namespace mw {
namespace {

constexpr std::size_t kMaxGameValueBytes = 31, kMaxEditorValueBytes = 65535;

QString TextFrom(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<std::string> ReadValue(const QSettings& settings, std::string_view name,
                                     std::size_t maxBytes) {
  const QVariant value = settings.value(TextFrom(name));
  if (!value.isValid()) return std::nullopt;
  // An unquoted comma makes a list of the value.
  std::string text = value.toStringList().join(',').toStdString();
  if (text.size() > maxBytes) return std::nullopt;
  return text;
}

QSettings GameSettings() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, "Quorrin", "Varnhold");
}

QSettings EditorSettings() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, "Mapwright", "Mapwright");
}

bool WriteValue(QSettings& settings, std::string_view name, std::string_view value) {
  settings.setValue(TextFrom(name), TextFrom(value));
  settings.sync();
  return settings.status() == QSettings::NoError;
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

std::optional<std::string> ReadEditorSetting(std::string_view name) {
  return ReadValue(EditorSettings(), name, kMaxEditorValueBytes);
}

bool WriteEditorSetting(std::string_view name, std::string_view value) {
  QSettings settings = EditorSettings();
  return WriteValue(settings, name, value);
}

}  // namespace mw
