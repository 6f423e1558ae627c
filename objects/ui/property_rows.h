// The rows of the "Edit Properties" dialog: each field becomes a label and the controls of its
// type.
#pragma once

#include <QRect>
#include <functional>

#include "objects/property_sheet.h"

class QWidget;

namespace mw {

inline constexpr int kFirstRowTop = 20, kRowPitch = 24;  // layout pixels

// Where a row stands. Layout pixels are those of a screen of 96 dots per inch with a font of the
// usual size; a larger font scales them.
struct RowPlace {
  QWidget* page;
  int row;       // from the top
  double scale;  // real pixels per layout pixel

  // In real pixels, of the row's full height.
  QRect At(int x, int width) const;
};

// What the user did not change is never lacking and never stored: a value that the controls show
// rounded, or cannot show, stays what it is.
struct PropertyControls {
  // The control that lacks its value, or null.
  std::function<QWidget*()> lacking = [] { return nullptr; };
  // Puts what the controls show into the field's variables.
  std::function<void()> store = [] {};
};

struct PropertyRow {
  const PropertyField* field;
  PropertyControls controls;
};

// Makes the controls of the field on the page. The field must outlive them.
PropertyRow AddPropertyRow(const RowPlace& place, const PropertyField& field);

}  // namespace mw
