#include "objects/object_store.h"

#include "objects/object_windows.h"

namespace mw {

ObjectStore objectStore;
ObjectWindows objectWindows;

void ResetObjectStore() { objectStore = ObjectStore{}; }

}  // namespace mw
