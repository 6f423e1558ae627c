#include "app/undo.h"

#include <optional>
#include <string>

#include "app/recovery.h"
#include "app/session.h"
#include "app/shell.h"
#include "core/camera.h"
#include "core/editor_state.h"
#include "core/history.h"
#include "core/text.h"
#include "objects/placement.h"
#include "platform/prompts.h"

namespace mw {
namespace {

bool IsOnScreen(const Vector3& place) {
  return camera.IsPointVisible(place.x, place.y, place.z, 0) &&
         camera.position.DistanceTo(place) < kFarPlane;
}

// The coordinates are those of the property sheets.
std::string TextOf(const char* done, const HistoryNews& news) {
  std::string text = done + news.name;
  if (!news.place || IsOnScreen(*news.place)) return text;
  return text + FormatText(", out of sight at %.0f / %.0f", double{MirrorX(news.place->x)},
                           double{news.place->z});
}

bool IsUsable() {
  return editor.levelLoaded && !editor.leftHeld && !editor.rightHeld && session.undoPauses == 0;
}

void Run(std::optional<HistoryNews> (*take)(), const char* done) {
  if (!IsUsable() || !shell.mainWindowActive()) return;
  const auto news = take();
  if (!news) return;
  // What the recovery file holds is no longer wanted.
  if (!editor.levelModified) ForgetRecovery();
  SetStatusText(1, TextOf(done, *news));
  shell.renderFrameNow();
}

}  // namespace

void UndoStep() { Run(Undo, "Undone: "); }

void RedoStep() { Run(Redo, "Redone: "); }

void ShowUndoSteps() { shell.showUndoSteps(NextUndo(), NextRedo(), IsUsable()); }

UndoPause::UndoPause() {
  ++session.undoPauses;
  ShowUndoSteps();
}

UndoPause::~UndoPause() {
  --session.undoPauses;
  ShowUndoSteps();
}

void ConnectUndo() {
  editor.history.changed = ShowUndoSteps;
  ShowUndoSteps();
}

}  // namespace mw
