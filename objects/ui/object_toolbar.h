// The Object Mapper's toolbar: what is shown and how, the tools, and snapping to the ground. What
// its buttons do comes from keys, too; the toolbar then shows the new state.
#pragma once

#include <QToolBar>

#include "objects/object_controls.h"

namespace mw {

class ObjectToolbar : public QToolBar {
 public:
  explicit ObjectToolbar(QWidget* parent);

  // What a click on the button does; nothing when it is disabled.
  void Press(ObjectControl control);
  // Shows the switches, the view mode and the tools as they are now.
  void Refresh();

 private:
  void AddButtons();
};

}  // namespace mw
