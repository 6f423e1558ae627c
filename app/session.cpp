#include "app/session.h"

#include "app/shell.h"
#include "data/data_state.h"
#include "objects/objects_state.h"
#include "terrain/terrain_state.h"

namespace mw {

Session session;

void ResetAppState() {
  shell = ShellWithoutWindows();
  session = Session{};
}

void ResetProgramState() {
  ResetCoreState();
  ResetDataState();
  ResetTerrainState();
  ResetObjectsState();
  ResetAppState();
}

}  // namespace mw
