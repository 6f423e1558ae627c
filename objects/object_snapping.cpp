#include "objects/object_snapping.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "objects/object_selection.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

const Placement* FirstSelected() {
  const Placement* first = nullptr;
  ForEachSelected([&first](const Placement& item) {
    if (!first) first = &item;
  });
  return first;
}

float Snapped(float value, int step) {
  const auto unit = static_cast<float>(step);
  return std::round(value / unit) * unit;
}

template <typename Steps>
void SetStep(int& step, int wanted, const Steps& steps) {
  if (std::ranges::find(steps, wanted) == steps.end()) return;
  step = wanted;
  hooks.refreshObjectToolbar();
}

template <typename Steps>
int StepAfter(int step, const Steps& steps) {
  const auto found = std::ranges::find(steps, step);
  return found == steps.end() || found + 1 == steps.end() ? steps.front() : *(found + 1);
}

}  // namespace

void SetGridStep(int step) { SetStep(objectStore.gridStep, step, kGridSteps); }
void SetTurnStep(int step) { SetStep(objectStore.turnStep, step, kTurnSteps); }
void NextGridStep() { SetGridStep(StepAfter(objectStore.gridStep, kGridSteps)); }
void NextTurnStep() { SetTurnStep(StepAfter(objectStore.turnStep, kTurnSteps)); }

Vector3 PivotOnGrid(const Vector3& place) {
  const Placement* const first = FirstSelected();
  if (objectStore.gridStep == 0 || !first) return place;
  const Vector3 offset = PivotOffset(*first);
  const float x = MirrorX(place.x + offset.x), z = place.z + offset.z;
  return {MirrorX(Snapped(x, objectStore.gridStep)) - offset.x, place.y,
          Snapped(z, objectStore.gridStep) - offset.z};
}

Vector3 PointOnGrid(const Vector3& point) {
  if (objectStore.gridStep == 0) return point;
  const float x = MirrorX(point.x);
  const float gridX = Snapped(x, objectStore.gridStep),
              gridZ = Snapped(point.z, objectStore.gridStep);
  return {MirrorX(gridX), point.y + HeightAt(gridX, gridZ) - HeightAt(x, point.z), gridZ};
}

float TurnInSteps(float Vector3::*axis, float degrees) {
  const Placement* const first = FirstSelected();
  if (!editor.shiftHeld || !first) {
    objectStore.turnRest = 0;
    return degrees;
  }
  objectStore.turnRest += degrees;
  const float now = first->rotation.*axis;
  const float change = Snapped(now + objectStore.turnRest, objectStore.turnStep) - now;
  objectStore.turnRest -= change;
  return change;
}

}  // namespace mw
