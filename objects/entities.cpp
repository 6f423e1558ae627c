#include "objects/entities.h"

#include <limits>

namespace mw {

void KeepSpawnIdFree(std::int32_t spawnId) {
  if (spawnId < entities.nextSpawnId) return;
  entities.nextSpawnId = spawnId + (spawnId < std::numeric_limits<std::int32_t>::max() ? 1 : 0);
}

SpawnTemplate* TemplateOf(const SpawnInstance& instance) {
  const auto& templates = entities.Of(instance.Kind()).templates;
  const auto index = static_cast<std::size_t>(instance.templateIndex);
  return instance.templateIndex >= 0 && index < templates.size() ? templates[index].get() : nullptr;
}

ControlPointTemplate* ControlPointTemplateOf(const SpawnInstance& instance) {
  if (instance.Kind() != EntityKind::ControlPoint) return nullptr;
  return static_cast<ControlPointTemplate*>(TemplateOf(instance));
}

SpawnInstance* HoveredInstance() {
  const auto& instances = entities.Of(entities.hovered.kind).instances;
  const auto index = static_cast<std::size_t>(entities.hovered.index);
  return entities.hovered.index >= 0 && index < instances.size() ? instances[index].get() : nullptr;
}

}  // namespace mw
