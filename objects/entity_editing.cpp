#include "objects/entity_editing.h"

namespace mw {

void DropNewEntity(EntityKind) {}
bool DropTemplate(TreeItem) { return false; }
bool DropTemplateAt(int) { return false; }
void AddObjectSpawnTemplate() {}
void DeleteInstance(EntityKind, int) {}
void DeleteByTreeItem(TreeItem) {}
void DeleteTemplate(EntityKind, int) {}
void RemoveUnusedTemplates() {}
void ClearAllEntities() {}
void RefreshTreeItems() {}
void SetModeFilter(GameModeMask) {}
bool EditByTreeItem(TreeItem) { return false; }
bool SelectFromTree(TreeItem) { return false; }
int NearestControlPoint(const Vector3&) { return 1; }
int FindObjectSpawnTemplate(TreeItem) { return -1; }
std::string StatusTextOf(const SpawnInstance&) { return {}; }
void CleanName(EntityName&) {}
void WidenTemplateModes(const SpawnInstance&) {}

}  // namespace mw
