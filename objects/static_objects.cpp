#include "objects/static_objects.h"

namespace mw {

void LoadStaticObjects() {}
void SaveStaticObjects() {}
void ClearAllObjects() {}
bool AddStaticObjectFromCache(int) { return false; }
bool PlaceStaticObject(std::string_view, float, float, const Vector3&) { return false; }
void DeleteStaticObject(int) {}
bool EditStaticObject(int) { return false; }
void SnapAllToGround() {}
int FindObjectByTreeItem(TreeItem) { return -1; }
void FindObjectEntriesAgain() {}

}  // namespace mw
