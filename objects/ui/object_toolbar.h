// The Object Mapper's toolbar: what is shown and how, the tools, and snapping to the ground. What
// its buttons do comes from keys, too; the toolbar then shows the new state.
#pragma once

#include <QToolBar>
#include <span>

#include "objects/object_controls.h"

class QComboBox;

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
  void AddSteps();
  // A list of texts for these steps.
  QComboBox* AddList(ObjectControl control, const char* toolTip, std::span<const int> steps,
                     const QString& format, void (*choose)(int));

  QComboBox *gridSteps_ = nullptr, *turnSteps_ = nullptr;
};

}  // namespace mw
