// The dialog of Save Picture...: what the picture shows, how large it is, and where it goes.
#pragma once

class QWidget;

namespace mw {

class GlWidget;

// Draws what was chosen off the screen, in the view's context, and writes it as a PNG file, wholly
// or not at all. Tells where it is, or why it could not be made.
void SavePictureDialog(QWidget* owner, GlWidget& view);

}  // namespace mw
