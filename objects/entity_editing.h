// What the user does with entities: creating by drag and drop, deleting, editing, choosing which
// game modes are shown.
#pragma once

#include "core/vector3.h"
#include "objects/entities.h"

namespace mw {

// A new soldier spawn or control point, with a template of its own, at the CursorPoint. When one of
// the kind's tables is full it is refused with a message, and nothing is made.
void DropNewEntity(EntityKind kind);
// A new object spawn of the template with this item (or index) at the CursorPoint. False when there
// is no such template or, after a message, no room.
bool DropTemplate(TreeItem templateItem);
bool DropTemplateAt(int templateIndex);
// A new object spawn template, if its dialog ends with OK.
void AddObjectSpawnTemplate();

void DeleteInstance(EntityKind kind, int index);
// Deletes the instance or the unused template with this item.
void DeleteByTreeItem(TreeItem item);
void DeleteTemplate(EntityKind kind, int index);
// Whether an instance was made from the template.
bool IsTemplateUsed(EntityKind kind, int index);
// Those of soldier spawns and control points. An object spawn's template is in the tree, where it
// waits for its first spawn.
void RemoveUnusedTemplates();
void ClearAllEntities();

// Shows what the mode filter lets through.
void RefreshTreeItems();
void SetModeFilter(GameModeMask modes);

// True when the item was an entity's or an object spawn template's.
bool EditByTreeItem(TreeItem item);
// Selects the instance with this item and moves the camera to it. False for any other item.
bool SelectFromTree(TreeItem item);

// Index of the object spawn template with this item, or -1.
int FindObjectSpawnTemplate(TreeItem item);
// "Soldier Spawn: <name> ( CQ CTF )" for the status bar.
std::string StatusTextOf(const SpawnInstance& instance);
// The base and the first number, from 1, that makes it a new name among the kind's templates. A
// base that leaves no room for the number is cut.
EntityName UniqueTemplateName(EntityKind kind, std::string_view base);
// Every character that is neither a digit nor an ASCII letter becomes '_'.
void CleanName(EntityName& name);
// Gives the template another name if one that shares a mode has it: of two in one mode's file, only
// one would be found by its instances when the level is read again.
void MakeNameUnique(SpawnTemplate& renamed, EntityKind kind);
// The modes of all instances that its template has.
GameModeMask ModesWithSiblings(const SpawnInstance& instance);
// After a change of the instance's modes or its template's name: the template has all of them, a
// name that is its alone there, and the tree shows that.
void FinishEntityEdit(SpawnInstance& instance);
// The instance's template takes the modes of all its instances too.
void WidenTemplateModes(const SpawnInstance& instance);

}  // namespace mw
