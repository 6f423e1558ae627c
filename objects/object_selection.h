// What can be selected, and what is: static objects and entities alike. For the parts of the Object
// Mapper.
#pragma once

#include <vector>

#include "objects/entities.h"
#include "objects/object_store.h"

namespace mw {

// Calls `act` with every static object, then with every entity, kind by kind.
template <typename Action>
void ForEachPlacement(Action act) {
  for (StaticObject& object : objectStore.objects) act(static_cast<Placement&>(object));
  for (EntityTables& table : entities.tables) {
    for (const auto& instance : table.instances) act(static_cast<Placement&>(*instance));
  }
}

// The same for what is selected.
template <typename Action>
void ForEachSelected(Action act) {
  ForEachPlacement([&act](Placement& item) {
    if (item.selected) act(item);
  });
}

bool AnySelected();
// Selects what these items of the tree stand for, and nothing else: objects and entities, and all
// objects of a mesh. False, and the selection stays, when they stand for nothing.
bool SelectByTreeItems(const std::vector<TreeItem>& items);
// The items of all that is selected are the selected ones in the tree.
void ShowSelectionInTree();
// Selects the item besides what is selected, and its item in the tree.
void Select(Placement& item, TreeItem treeItem);
// The object under the mouse, or null.
StaticObject* HoveredObject();
// From the SelectionPivot, as it was when ComputePivot ran; view coordinates.
Vector3 PivotOffset(const Placement& item);

}  // namespace mw
