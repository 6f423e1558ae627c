// Pictures of the running editor for the help pages.
#pragma once

#include <QString>

#include "tools/help_tour/page.h"

namespace mw::help {

// Saves what `step` shows as `file`: the window, dialog or part that its `data-of` names, of it
// only the rectangle `data-part` ("x y width height") when it has one. Throws TourError when there
// is no such thing to be seen.
void TakePicture(const Step& step, const QString& file);
// Of the whole screen, to see why a tour failed.
void TakeScreen(const QString& file);

}  // namespace mw::help
