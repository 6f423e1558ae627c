#include "objects/select_many.h"

#include <set>
#include <string>
#include <utility>

#include "core/text.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/visibility.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// Calls `act` with everything that is shown, as what it is.
template <typename Action>
void ForEachShown(Action act) {
  for (StaticObject& object : objectStore.objects) {
    if (IsShown(object)) act(object);
  }
  for (EntityTables& table : entities.tables) {
    for (const auto& instance : table.instances) {
      if (IsShown(*instance)) act(*instance);
    }
  }
}

// What is alike in all of a kind: what it is, and the name that matters.
using Kind = std::pair<int, std::string>;

Kind SelectedKindOf(const StaticObject& object) { return {-1, LowerCase(object.name)}; }

Kind SelectedKindOf(const SpawnInstance& instance) {
  const bool hasTemplates = instance.Kind() == EntityKind::ObjectSpawn;
  return {static_cast<int>(instance.Kind()),
          hasTemplates ? std::to_string(instance.templateIndex) : std::string()};
}

void FinishSelecting() {
  UpdateToolButtons(AnySelected());
  ComputePivot();
}

}  // namespace

int SelectedCount() {
  int count = 0;
  ForEachSelected([&count](const Placement&) { ++count; });
  return count;
}

void SelectAllOfThisKind() {
  std::set<Kind> kinds;
  ForEachShown([&kinds](const auto& item) {
    if (item.selected) kinds.insert(SelectedKindOf(item));
  });
  ForEachShown([&kinds](auto& item) { item.selected |= kinds.contains(SelectedKindOf(item)); });
  FinishSelecting();
}

void InvertSelection() {
  ForEachShown([](auto& item) { item.selected = !item.selected; });
  FinishSelecting();
}

void SelectInRectangle(int x0, int y0, int x1, int y1) {
  const auto isWithin = [](float value, int from, int to) {
    return value >= static_cast<float>(from) && value <= static_cast<float>(to);
  };
  ForEachShown([&](auto& item) {
    const auto shown = ViewPointOf(item.ViewPosition());
    item.selected |= shown && isWithin(shown->x, x0, x1) && isWithin(shown->y, y0, y1);
  });
  FinishSelecting();
}

}  // namespace mw
