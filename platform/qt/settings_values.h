// Values of Qt's settings as texts.
#pragma once

#include <QSettings>
#include <optional>
#include <string>
#include <string_view>

namespace mw {

inline QString TextFrom(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::optional<std::string> ReadValue(const QSettings& settings, std::string_view name,
                                            std::size_t maxBytes) {
  const QVariant value = settings.value(TextFrom(name));
  if (!value.isValid()) return std::nullopt;
  // An unquoted comma makes a list of the value.
  std::string text = value.toStringList().join(',').toStdString();
  if (text.size() > maxBytes) return std::nullopt;
  return text;
}

inline bool WriteValue(QSettings& settings, std::string_view name, std::string_view value) {
  settings.setValue(TextFrom(name), TextFrom(value));
  settings.sync();
  return settings.status() == QSettings::NoError;
}

}  // namespace mw
