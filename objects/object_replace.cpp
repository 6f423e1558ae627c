#include "objects/object_replace.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/editor_state.h"
#include "core/text.h"
#include "objects/object_browser.h"
#include "objects/object_history.h"
#include "objects/object_hover.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/static_object_records.h"
#include "objects/visibility.h"
#include "platform/prompts.h"

namespace mw {
namespace {

void Replace(StaticObject& object, std::string_view name) {
  object.name = name;
  FindEntry(object);
  object.lists = {};
  object.meshIndex = -1;
  FindMesh(object);
  ShowKindOf(object);
  editor.levelModified = true;
}

void ReplaceSelectedBy(std::string_view name) {
  std::vector<std::size_t> replaced;
  std::size_t index = 0;
  for (StaticObject& object : objectStore.objects) {
    if (object.selected && object.name != name) {
      Replace(object, name);
      replaced.push_back(index);
    }
    ++index;
  }
  ShowInTree(replaced);
}

}  // namespace

int SelectedObjects() {
  return static_cast<int>(std::ranges::count(objectStore.objects, true, &StaticObject::selected));
}

bool ReplaceSelected(int entry) {
  const ObjectCatalogue& catalogue = objectStore.catalogue;
  if (entry < 0 || entry >= catalogue.entryCount) return false;
  const std::string name = LowerCase(catalogue.entries[static_cast<std::size_t>(entry)].name);
  const ObjectStep step("Replace");
  const bool isLoaded = OfferEntry(entry);
  if (isLoaded) {
    ForgetNamed();
    ReplaceSelectedBy(name);
    SetStatusText(kProgressPart, FormatText("%i replaced by %s.", SelectedObjects(), name.c_str()));
  } else {
    SetStatusText(kProgressPart, FormatText("Could not load %s.", name.c_str()));
  }
  KeepToolFor(AnySelected());  // the entry's mesh was chosen in the tree
  return isLoaded;
}

}  // namespace mw
