// The "Edit Properties" dialog, in which all objects and entities are edited: one row for each
// field of a property sheet.
#pragma once

#include "objects/property_sheet.h"

class QWidget;

namespace mw {

// Runs the dialog over `owner`, which may be null. OK puts the fields that the user changed into
// the sheet's variables. A field without a value, or with a text that is no number, is named in a
// message and keeps the dialog open, with nothing stored. False when the user cancels, then or at
// once.
bool RunPropertySheet(QWidget* owner, PropertySheet& sheet);

}  // namespace mw
