// The object catalogue: what can be placed in a level, as the mod's object list names it.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/fixed_string.h"
#include "core/vector3.h"

namespace mw {

inline constexpr int kMaxCatalogueEntries = 512, kMaxCategories = 32;

enum class MeshKind : std::int32_t { StandardMesh = 0, TreeMesh = 1 };

struct CatalogueEntry {
  NameText name;  // lower case
  NameText meshName;
  std::int32_t category = -1;  // index into the categories; -1 before the first heading
  MeshKind meshKind = MeshKind::StandardMesh;
  Vector3 boxA, boxB;       // bounding box of the mesh, known once it was loaded
  bool meshFailed = false;  // the mesh could not be loaded; not tried again before ClearMeshes
};

struct ObjectCatalogue {
  std::array<CatalogueEntry, kMaxCatalogueEntries> entries;
  int entryCount = 0;
  std::array<NameText, kMaxCategories> categories;
  int categoryCount = 0;

  // The entry's category; empty when it has none or there is no such entry.
  std::string_view CategoryOf(int entry) const;
};

// The catalogue that the text of an object list describes. What is beyond its capacities is left
// out.
ObjectCatalogue ParseObjectList(std::string_view text);
// Reads the object list that ModConfig names (a file on disk), in place of the catalogue, and looks
// the entries of the placed objects up again. Without a list nothing happens; one that cannot be
// opened leaves the catalogue empty, and the status bar says so.
void LoadObjectCatalogue();
// The entry with this name or mesh name, whatever the case; -1 when there is none.
int FindCatalogueEntry(std::string_view name);

}  // namespace mw
