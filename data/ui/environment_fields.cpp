#include "data/ui/environment_fields.h"

#include <QString>
#include <QVariant>

#include "core/text.h"
#include "data/level_settings_lines.h"

namespace mw {
namespace {

// Kept by the box: the text that it showed, and the number that this stood for.
constexpr const char* kShownText = "shownText";
constexpr const char* kShownNumber = "shownNumber";

void Show(QLineEdit& box, const QString& text, double number) {
  box.setText(text);
  box.setProperty(kShownText, text);
  box.setProperty(kShownNumber, number);
}

}  // namespace

void ShowFloat(QLineEdit& box, double value) {
  Show(box, QString::fromStdString(FormatText("%.3f", value)), value);
}

double NumberIn(const QLineEdit& box) {
  if (box.text() == box.property(kShownText).toString()) {
    return box.property(kShownNumber).toDouble();
  }
  return double{ParseFloat(box.text().toStdString())};
}

void ShowInteger(QLineEdit& box, std::int32_t value) { box.setText(QString::number(value)); }

std::int32_t IntegerIn(const QLineEdit& box) { return ParseInt(box.text().toStdString()); }

void DisableWhatIsNotKept(const std::vector<SettingControl>& controls) {
  if (!editor.levelLoaded) return;
  const SettingsPlaces places = FindSettingsPlaces();
  for (const auto& [control, command] : controls) {
    const std::string reason = WhyNotKept(places, command);
    if (reason.empty()) continue;
    control->setEnabled(false);
    control->setToolTip(QString::fromStdString(reason));
  }
}

}  // namespace mw
