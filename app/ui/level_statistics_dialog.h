// The "Level Statistics" dialog: how large the open level is, and how much of what it can hold is
// used.
#pragma once

class QWidget;

namespace mw {

// Runs the dialog over `owner`, which may be null.
void LevelStatisticsDialog(QWidget* owner);

}  // namespace mw
