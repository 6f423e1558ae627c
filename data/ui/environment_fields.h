// How the environment dialogs show settings in their controls and read them back. What cannot be
// read as a number is 0; a box that nobody edited gives exactly the number that it was to show.
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <vector>

#include "data/environment_settings.h"
#include "data/ui/colour_swatch.h"

namespace mw {

void ShowFloat(QLineEdit& box, double value);
double NumberIn(const QLineEdit& box);
inline float FloatIn(const QLineEdit& box) { return static_cast<float>(NumberIn(box)); }

void ShowInteger(QLineEdit& box, std::int32_t value);
std::int32_t IntegerIn(const QLineEdit& box);

inline void ShowColour(ColourSwatch& swatch, const Floats3& colour) {
  swatch.SetColour(BytesOf(colour));
}
inline Floats3 ColourIn(const ColourSwatch& swatch) { return FloatsOf(swatch.Colour()); }

// A control, and the command of the level's scripts that keeps its setting.
struct SettingControl {
  QWidget* control;
  const char* command;
};
// Disables the controls whose settings the open level's scripts have no place for; their tool tips
// say why.
void DisableWhatIsNotKept(const std::vector<SettingControl>& controls);

// Runs a dialog with this form over `owner`, which may be null: show(form) puts the settings into
// its controls, and on OK store(form) takes them out. False when the user cancels.
template <typename Form, typename Show, typename Store>
bool RunSettingsDialog(QWidget* owner, Show show, Store store) {
  QDialog dialog(owner);
  Form form;
  form.setupUi(&dialog);
  show(form);
  if (dialog.exec() != QDialog::Accepted) return false;
  store(form);
  return true;
}

}  // namespace mw
