#include "objects/object_browser.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/camera.h"
#include "core/editor_state.h"
#include "objects/object_store.h"

namespace mw {

namespace {

// As object lists head them, in the order of BrowserCategory from Structures on.
constexpr std::array<std::string_view, 3> kCategoryNames{"STRUCTURES", "PROPS", "VEGETATION"};

bool IsInCategory(int entry, BrowserCategory category) {
  const std::string_view name = objectStore.catalogue.CategoryOf(entry);
  if (category == BrowserCategory::All) {
    return std::ranges::find(kCategoryNames, name) != kCategoryNames.end();
  }
  return name == kCategoryNames[static_cast<std::size_t>(category) - 1];
}

const CatalogueEntry* FindEntry(int entry) {
  const ObjectCatalogue& catalogue = objectStore.catalogue;
  if (entry < 0 || entry >= catalogue.entryCount) return nullptr;
  return &catalogue.entries[static_cast<std::size_t>(entry)];
}

void FreePreview() {
  PreviewMesh& preview = objectStore.preview;
  if (preview.loaded) FreeMesh(preview.mesh);
  preview.loaded = false;
}

}  // namespace

std::vector<int> BrowserEntries(const BrowserFilter& filter) {
  const ObjectCatalogue& catalogue = objectStore.catalogue;
  std::vector<int> listed;
  for (int entry = 0; entry < catalogue.entryCount; ++entry) {
    const std::string_view name = FindEntry(entry)->name;
    if (IsInCategory(entry, filter.category) && name.find(filter.text) != std::string_view::npos) {
      listed.push_back(entry);
    }
  }
  return listed;
}

void BeginPreview() {
  objectStore.preview.cameraBefore = camera;
  camera.pitch = camera.yaw = camera.roll = 0;
  camera.UpdateDirection();
  editor.browserPreviewActive = true;
}

bool PreviewEntry(int index) {
  FreePreview();
  const CatalogueEntry* const entry = FindEntry(index);
  if (!entry) return false;
  PreviewMesh& preview = objectStore.preview;
  preview.loaded = entry->meshKind == MeshKind::TreeMesh ? LoadTreeMesh(index, preview.mesh)
                                                         : LoadStandardMesh(index, preview.mesh);
  preview.boxA = entry->boxA;
  preview.boxB = entry->boxB;
  return preview.loaded;
}

void EndPreview() {
  FreePreview();
  camera = objectStore.preview.cameraBefore;
  editor.browserPreviewActive = false;
}

bool OfferEntry(int index) {
  const CatalogueEntry* const entry = FindEntry(index);
  if (!entry) return false;
  std::vector<CachedMesh>& meshes = objectStore.meshes;
  // Another object may share the mesh under a name of its own; it has an item of its own, too.
  auto cached = std::ranges::find_if(
      meshes, [&](const CachedMesh& mesh) { return mesh.name == entry->name.View(); });
  if (cached == meshes.end()) {
    StaticObject nextObject;
    const std::size_t count = meshes.size();
    CacheMeshForObject(index, nextObject);
    if (meshes.size() == count) return false;
    cached = meshes.end() - 1;
  }
  SelectItem(cached->treeItem);
  return true;
}

}  // namespace mw
