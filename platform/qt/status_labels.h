// Where the status texts go: the main window hands its status bar's labels over, and SetStatusText
// writes into them.
#pragma once

class QLabel;

namespace mw {

// The labels of part 1 (progress and results), part 2 (frame rate) and part 3 (what is under the
// cursor). Texts set before are lost; labels that have been deleted are passed over.
void UseStatusLabels(QLabel* progress, QLabel* frameRate, QLabel* reading);

}  // namespace mw
