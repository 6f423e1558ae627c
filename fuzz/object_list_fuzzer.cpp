// Any bytes as an object list: every entry that it gives can be found and has a sound category.
#include <cstdint>

#include "fuzz/require.h"
#include "objects/object_store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  mw::ObjectCatalogue& catalogue = mw::objectStore.catalogue;
  catalogue = mw::ParseObjectList({reinterpret_cast<const char*>(data), size});
  for (int entry = 0; entry < catalogue.entryCount; ++entry) {
    catalogue.CategoryOf(entry);
    const int found =
        mw::FindCatalogueEntry(catalogue.entries[static_cast<std::size_t>(entry)].name);
    Require(found >= 0 && found <= entry);
  }
  return 0;
}
