// The "Add File To Archive" dialog: copies a file of the user's into the level archive. Opened by
// the Tools menu.
#pragma once

class QWidget;

namespace mw {

// Runs the dialog over `owner`, which may be null.
void AddFileDialog(QWidget* owner);

}  // namespace mw
