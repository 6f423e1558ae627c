#include "app/selection_commands.h"

#include <algorithm>
#include <optional>

#include "app/camera_places.h"
#include "app/commands.h"
#include "app/shell.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "objects/edit_selected.h"
#include "objects/object_clipboard.h"
#include "objects/object_replace.h"
#include "objects/object_selection.h"
#include "objects/select_many.h"
#include "platform/prompts.h"

namespace mw {
namespace {

bool HasSelection() {
  if (AnySelected()) return true;
  SetStatusText(kProgressPart, "Nothing is selected.");
  return false;
}

void GoToObjectMapper() {
  if (!IsEditMode(EditMode::ObjectMapper)) RunCommand(kCommandObjectMapper);
}

// For a command that changes the selection or what is selected.
bool GoToSelection() {
  if (!HasSelection()) return false;
  GoToObjectMapper();
  return true;
}

struct Extent {
  Vector3 lowest, highest;  // view coordinates

  Vector3 Middle() const { return (lowest + highest) * 0.5f; }
  float Radius() const { return static_cast<float>(lowest.DistanceTo(highest)) / 2; }
};

// Of what is selected, of which there must be something.
Extent SelectedExtent() {
  std::optional<Extent> extent;
  ForEachSelected([&extent](const Placement& item) {
    const Vector3 place = item.ViewPosition();
    if (!extent) extent = Extent{place, place};
    for (float Vector3::*axis : {&Vector3::x, &Vector3::y, &Vector3::z}) {
      extent->lowest.*axis = std::min(extent->lowest.*axis, place.*axis);
      extent->highest.*axis = std::max(extent->highest.*axis, place.*axis);
    }
  });
  return *extent;
}

void LookDownOn(const Vector3& middle, float distance) {
  const float height = std::max(camera.position.y, middle.y + distance);
  camera.position.Set(middle.x, height, middle.z);
}

// From behind, as a click in the level tree does, or from the other side where the level ends.
void LookAt(const Vector3& middle, float distance) {
  FocusCameraOn(MirrorX(middle.x), middle.y, middle.z);
  Vector3 way = camera.position - middle;
  way = way * std::max(1.0f, distance / static_cast<float>(way.Length()));
  if (middle.z + way.z > static_cast<float>(modConfig.WorldSize) && way.z < middle.z) {
    way.z = -way.z;
    camera.yaw = 180;
  }
  if (editor.cameraMode == CameraMode::OnTerrain) camera.pitch = 0;
  camera.position = middle + way;
  camera.UpdateDirection();
}

}  // namespace

void DuplicateOnCommand() {
  if (GoToSelection()) DuplicateSelected();
}

void ReplaceOnCommand() {
  if (!GoToSelection()) return;
  if (SelectedObjects() == 0) {
    SetStatusText(kProgressPart, "Only static objects can be replaced, and none is selected.");
    return;
  }
  if (const auto entry = shell.replaceDialog()) ReplaceSelected(*entry);
}

void EditSelectedOnCommand() {
  if (GoToSelection()) EditSelected();
}

void SelectKindOnCommand() {
  if (GoToSelection()) SelectAllOfThisKind();
}

void InvertOnCommand() {
  GoToObjectMapper();
  InvertSelection();
}

void ShowSelection() {
  if (!HasSelection()) return;
  constexpr float kNear = 20, kMargin = 1.2f;  // world units around one thing; share beside several
  const Extent extent = SelectedExtent();
  const float radius = std::max(extent.Radius() * kMargin, kNear);
  // What is farther away than the far plane is not drawn.
  const float farthest = static_cast<float>(kFarPlane) - kNear;
  const float distance = std::min(DistanceToSee(radius), farthest);
  if (editor.cameraMode == CameraMode::TopDown) {
    LookDownOn(extent.Middle(), distance);
  } else {
    LookAt(extent.Middle(), distance);
  }
  hooks.invalidateMiniMap();
}

}  // namespace mw
