// How the environment dialogs show settings in their controls and read them back. What cannot be
// read as a number is 0.
#pragma once

#include <QLineEdit>
#include <QString>

#include "core/text.h"
#include "objects/ui/colour_swatch.h"

namespace mw {

inline void ShowFloat(QLineEdit& box, float value) {
  box.setText(QString::fromStdString(FormatText("%.3f", double{value})));
}
inline float FloatIn(const QLineEdit& box) { return ParseFloat(box.text().toStdString()); }

inline void ShowInteger(QLineEdit& box, std::int32_t value) { box.setText(QString::number(value)); }
inline std::int32_t IntegerIn(const QLineEdit& box) { return ParseInt(box.text().toStdString()); }

inline void ShowColour(ColourSwatch& swatch, const Floats3& colour) {
  swatch.SetColour(BytesOf(colour));
}
inline Floats3 ColourIn(const ColourSwatch& swatch) { return FloatsOf(swatch.Colour()); }

}  // namespace mw
