// The "Create Road" dialog: how the road along the picked points is built. Opened by the Road tool
// when its points are complete.
#pragma once

class QWidget;

namespace mw {

// Runs the dialog over `owner`, which may be null. True when it ended with OK; width, material and
// auto-material are then those chosen.
bool CreateRoadDialog(QWidget* owner);

}  // namespace mw
