#include "platform/settings_store.h"

#include <QSettings>

namespace mw {

std::optional<std::string> ReadGameSetting(std::string_view name) {
  constexpr std::size_t kMaxValueBytes = 31;
  // The user's own file first, then the machine's.
  const QSettings settings(QSettings::NativeFormat, QSettings::UserScope, "Quorrin", "Varnhold");
  const QVariant value =
      settings.value(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
  if (!value.isValid()) return std::nullopt;
  // An unquoted comma makes a list of the value.
  std::string text = value.toStringList().join(',').toStdString();
  if (text.size() > kMaxValueBytes) return std::nullopt;
  return text;
}

}  // namespace mw
