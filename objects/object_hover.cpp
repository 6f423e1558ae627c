#include "objects/object_hover.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include "objects/entity_editing.h"
#include "objects/entity_render.h"
#include "objects/object_body.h"
#include "objects/object_marker.h"
#include "objects/object_selection.h"
#include "objects/object_sight.h"
#include "objects/static_objects.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr float kMarkRadius = 0.75f, kMarkHeight = 1.75f;  // world units
// From a body, in world units: depths are read to a few hundredths of one far away.
constexpr float kBodyReach = 0.25f;

bool TouchesMark(const Vector3& place, const CatalogueEntry& entry) {
  const Vector3& cursor = objectStore.CursorPoint;
  const float foot = place.y + entry.boxB.y;
  return std::abs(cursor.x - place.x) <= kMarkRadius &&
         std::abs(cursor.z - place.z) <= kMarkRadius && cursor.y >= foot &&
         cursor.y <= foot + kMarkHeight;
}

// An entity's marker is drawn over an object's.
std::string NameOfHovered() {
  if (const SpawnInstance* const entity = HoveredInstance()) return StatusTextOf(*entity);
  if (const StaticObject* const object = HoveredObject()) return StatusTextOf(*object);
  return {};
}

bool IsInSight(const StaticObject& object) { return EntryInSight(object, object.ViewPosition()); }

bool TouchesDrawnMarker(const Vector3& place, const CatalogueEntry& entry) {
  return IsOnMarker(objectStore.CursorPoint, MarkerAt(place, entry));
}

// The first object in sight that is touched, but a selected one before others: a copy may stand on
// its original.
template <typename Touches>
std::int32_t FirstObject(Touches touches) {
  std::int32_t found = -1, index = -1;
  for (const StaticObject& object : objectStore.objects) {
    ++index;
    if (found >= 0 && !object.selected) continue;
    const CatalogueEntry* const entry = EntryOf(object);
    if (!entry || !touches(object.ViewPosition(), *entry) || !IsInSight(object)) continue;
    if (object.selected) return index;
    found = index;
  }
  return found;
}

// The nearest one, and of those equally near the first, but a selected one before others.
std::int32_t ObjectOfBody() {
  std::int32_t nearest = -1, index = -1;
  float reach = kBodyReach;
  bool isSelected = false;
  for (const StaticObject& object : objectStore.objects) {
    ++index;
    const CatalogueEntry* const entry = EntryOf(object);
    if (!entry) continue;
    const auto distance = DistanceToBody(object, *entry, objectStore.CursorPoint, reach);
    if (!distance) continue;
    const bool isNext = nearest < 0 || *distance < reach || (object.selected && !isSelected);
    if (!isNext || !IsInSight(object)) continue;
    nearest = index;
    isSelected = object.selected;
    reach = *distance;
  }
  return nearest;
}

}  // namespace

void FindHovered() {
  std::int32_t& hovered = objectStore.hoveredObject;
  hovered = FirstObject(TouchesMark);
  FindHoveredEntity();
  if (hovered < 0 && !HoveredInstance()) {
    hovered = ObjectOfBody();
    if (hovered < 0) hovered = FirstObject(TouchesDrawnMarker);
  }
  objectStore.lastHoveredObject = hovered;
}

void ForgetHovered() {
  objectStore.hoveredObject = objectStore.lastHoveredObject = -1;
  entities.hovered = {};
  NameHovered();
}

void NameHovered() {
  const std::string name = NameOfHovered();
  if (name.empty()) {
    if (objectStore.namedIsHovered) ForgetNamed();
    return;
  }
  if (name != objectStore.named) NameInStatusBar(name);
  objectStore.namedIsHovered = true;
}

void NameInStatusBar(const std::string& text) {
  SetStatusText(kProgressPart, text);
  objectStore.named = text;
  objectStore.namedIsHovered = false;
}

void ForgetNamed() {
  if (!objectStore.named.empty()) ClearStatusText(kProgressPart, objectStore.named);
  objectStore.named.clear();
  objectStore.namedIsHovered = false;
}

}  // namespace mw
