#include "objects/object_replace.h"

#include <algorithm>
#include <string>

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

constexpr int kProgressPart = 1;  // of the status bar

void Replace(StaticObject& object, std::string_view name) {
  if (object.name == name) return;
  object.name = name;
  FindEntry(object);
  object.lists = {};
  object.meshIndex = -1;
  FindMesh(object);
  ShowInTree(object);
  ShowKindOf(object);
  editor.levelModified = true;
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
    for (StaticObject& object : objectStore.objects) {
      if (object.selected) Replace(object, name);
    }
    SetStatusText(kProgressPart, FormatText("%i replaced by %s.", SelectedObjects(), name.c_str()));
  } else {
    SetStatusText(kProgressPart, FormatText("Could not load %s.", name.c_str()));
  }
  KeepToolFor(AnySelected());  // the entry's mesh was chosen in the tree
  return isLoaded;
}

}  // namespace mw
