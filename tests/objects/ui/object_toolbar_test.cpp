#include "objects/ui/object_toolbar.h"

#include <QAction>

#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "support/golden.h"
#include "support/sandbox.h"

namespace mw {
namespace {

// A sign for each button: # is checked, o is not, - cannot be pressed.
std::string Buttons(const ObjectToolbar& toolbar) {
  std::string signs;
  for (const QAction* action : toolbar.actions()) {
    if (action->isSeparator()) {
      signs += ' ';
    } else {
      signs += action->isChecked() ? '#' : action->isEnabled() ? 'o' : '-';
    }
  }
  return signs + '\n';
}

using ObjectToolbarTest = SandboxTest;

TEST_F(ObjectToolbarTest, ButtonsGoThroughTheMapperAndShowItsState) {
  ResetObjectsState();
  ObjectToolbar toolbar(nullptr);
  std::string told = Buttons(toolbar) + "at first\n";
  for (const bool toolsEnabled : {false, true}) {
    objectStore.toolsEnabled = toolsEnabled;
    toolbar.Refresh();
    told += Buttons(toolbar) + (toolsEnabled ? "with" : "without") + " a selection\n";
    for (QAction* action : toolbar.actions()) {
      if (action->isSeparator() || !action->isEnabled()) continue;
      action->trigger();
      told += Buttons(toolbar) + action->toolTip().toStdString() + '\n';
    }
  }
  objectStore.tool = ObjectTool::Translate;  // by its key
  toolbar.Refresh();
  ExpectGolden("objects/object_toolbar.txt", told + Buttons(toolbar) + "a key\n");
  ResetObjectsState();
}

}  // namespace
}  // namespace mw
