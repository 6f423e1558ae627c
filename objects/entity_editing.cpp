#include "objects/entity_editing.h"

#include <algorithm>

#include "core/editor_state.h"
#include "objects/object_hover.h"
#include "objects/spawn_groups.h"

namespace mw {
namespace {

void ClearTable(EntityTables& tables) {
  while (!tables.instances.empty()) {
    DeleteItem(tables.instances.back()->treeItem);
    tables.instances.pop_back();
  }
  while (!tables.templates.empty()) {
    DeleteItem(tables.templates.back()->treeItem);
    tables.templates.pop_back();
  }
}

std::string_view TitleOf(EntityKind kind) {
  switch (kind) {
    case EntityKind::SoldierSpawn:
      return "Soldier Spawn";
    case EntityKind::ObjectSpawn:
      return "Object Spawn";
    case EntityKind::ControlPoint:
      return "Control Point";
  }
  return {};
}

bool IsLetterOrDigit(char c) {
  const unsigned char lower = LowerByte(c);
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9');
}

}  // namespace

void DeleteInstance(EntityKind kind, int index) {
  auto& instances = entities.Of(kind).instances;
  if (index < 0 || static_cast<std::size_t>(index) >= instances.size()) return;
  const auto deleted = instances.begin() + index;
  if (kind == EntityKind::ControlPoint) DeleteSpawnGroupsOf(**deleted);
  DeleteItem((*deleted)->treeItem);
  const int templateIndex = (*deleted)->templateIndex;
  instances.erase(deleted);
  entities.hovered = {};
  ForgetNamed();
  editor.levelModified = true;
  if (kind != EntityKind::ObjectSpawn && !IsTemplateUsed(kind, templateIndex)) {
    DeleteTemplate(kind, templateIndex);
  }
}

void DeleteTemplate(EntityKind kind, int index) {
  EntityTables& tables = entities.Of(kind);
  if (index < 0 || static_cast<std::size_t>(index) >= tables.templates.size()) return;
  const auto deleted = tables.templates.begin() + index;
  DeleteItem((*deleted)->treeItem);
  tables.templates.erase(deleted);
  for (const auto& instance : tables.instances) {
    if (instance->templateIndex >= index) --instance->templateIndex;
  }
  editor.levelModified = true;
}

bool IsTemplateUsed(EntityKind kind, int index) {
  return std::ranges::any_of(entities.Of(kind).instances, [index](const auto& instance) {
    return instance->templateIndex == index;
  });
}

void RemoveUnusedTemplates() {
  for (const EntityKind kind : {EntityKind::SoldierSpawn, EntityKind::ControlPoint}) {
    for (int i = static_cast<int>(entities.Of(kind).templates.size()); i-- > 0;) {
      if (!IsTemplateUsed(kind, i)) DeleteTemplate(kind, i);
    }
  }
}

void ClearAllEntities() {
  for (EntityTables& tables : entities.tables) ClearTable(tables);
  entities.spawnGroups.clear();
  entities.hovered = {};
}

std::string StatusTextOf(const SpawnInstance& instance) {
  return std::string(TitleOf(instance.Kind())) + ": " + instance.name.String() + " ( " +
         ModesForStatus(instance.modes) + ")";
}

void CleanName(EntityName& name) {
  std::string text = name.String();
  std::ranges::replace_if(
      text, [](char c) { return !IsLetterOrDigit(c); }, '_');
  name = text;
}

void MakeNameUnique(SpawnTemplate& renamed, EntityKind kind) {
  const auto clashes = [&renamed](const auto& other) {
    return other.get() != &renamed && (other->modes & renamed.modes) != 0 &&
           EqualNoCase(other->name, renamed.name);
  };
  if (std::ranges::any_of(entities.Of(kind).templates, clashes)) {
    renamed.name = UniqueTemplateName(kind, renamed.name);
  }
}

GameModeMask ModesWithSiblings(const SpawnInstance& instance) {
  GameModeMask modes = 0;
  for (const auto& sibling : entities.Of(instance.Kind()).instances) {
    if (sibling->templateIndex == instance.templateIndex) modes |= sibling->modes;
  }
  return modes;
}

void WidenTemplateModes(const SpawnInstance& instance) {
  if (SpawnTemplate* widened = TemplateOf(instance)) widened->modes |= ModesWithSiblings(instance);
}

}  // namespace mw
