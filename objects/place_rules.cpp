// Rules about where entities and static objects stand.
#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <tuple>

#include "core/text.h"
#include "data/mod_config.h"
#include "objects/object_store.h"
#include "objects/rules.h"

namespace mw {
namespace {

// World units. Objects are sunk into slopes on purpose; who appears under the ground falls out of
// the level.
constexpr float kEntityDepth = 2, kObjectDepth = 8, kWadingDepth = 2;
constexpr float kFarAbove = 30;
constexpr float kSamePlace = 0.1f;

RuleFinds WrongEntities(
    const std::function<std::optional<std::string>(const SpawnInstance&)>& judge) {
  RuleFinds finds;
  for (const EntityTables& tables : entities.tables) {
    for (const auto& instance : tables.instances) {
      if (const auto detail = judge(*instance)) finds.push_back(FindOf(*instance, *detail));
    }
  }
  return finds;
}

RuleFinds WrongObjects(
    const std::function<std::optional<std::string>(const StaticObject&)>& judge) {
  RuleFinds finds;
  for (const StaticObject& object : objectStore.objects) {
    if (const auto detail = judge(object)) finds.push_back(FindOf(object, *detail));
  }
  return finds;
}

std::string Units(float distance) {
  return FormatText("%.0f units", static_cast<double>(distance));
}

std::optional<std::string> OutOfLevel(const Placement& item) {
  if (IsInLevel(item.position)) return std::nullopt;
  return FormatText("at %g, %g", static_cast<double>(item.position.x),
                    static_cast<double>(item.position.z));
}

std::optional<std::string> UnderGround(const Placement& item, float tolerated) {
  const auto ground = GroundAround(item.position);
  if (!ground || !(item.position.y < ground->lowest - tolerated)) return std::nullopt;
  return Units(ground->lowest - item.position.y);
}

// What floats on the water stands on it.
std::optional<std::string> AboveGround(const Placement& item) {
  const auto ground = GroundAround(item.position);
  if (!ground) return std::nullopt;
  const float base = std::max(ground->highest, modConfig.WaterLevel);
  if (item.position.y <= base + kFarAbove) return std::nullopt;
  return Units(item.position.y - base);
}

// Nothing when the ground is dry there.
std::optional<std::string> UnderWater(const Placement& item) {
  const auto ground = GroundAround(item.position);
  const float depth = modConfig.WaterLevel - item.position.y;
  if (!ground || ground->lowest >= modConfig.WaterLevel || depth <= kWadingDepth) {
    return std::nullopt;
  }
  return Units(depth);
}

bool IsSamePlace(const Vector3& a, const Vector3& b) {
  return std::abs(a.x - b.x) < kSamePlace && std::abs(a.y - b.y) < kSamePlace &&
         std::abs(a.z - b.z) < kSamePlace;
}

bool IsParatrooper(const SpawnInstance& instance) {
  if (instance.Kind() != EntityKind::SoldierSpawn) return false;
  const auto* const from = static_cast<const SoldierSpawnTemplate*>(TemplateOf(instance));
  return from && from->spawnAsParaTrooper != 0;
}

}  // namespace

RuleFinds EntitiesInNoMode() {
  return WrongEntities([](const SpawnInstance& instance) {
    return instance.modes & kAllModes ? std::nullopt : std::optional(std::string());
  });
}

RuleFinds EntitiesOutOfLevel() { return WrongEntities(OutOfLevel); }

RuleFinds EntitiesUnderGround() {
  return WrongEntities(
      [](const SpawnInstance& instance) { return UnderGround(instance, kEntityDepth); });
}

RuleFinds EntitiesAboveGround() {
  return WrongEntities([](const SpawnInstance& instance) {
    return IsParatrooper(instance) ? std::nullopt : AboveGround(instance);
  });
}

RuleFinds EntitiesUnderWater() {
  return WrongEntities([](const SpawnInstance& instance) {
    // Under the ground it is another rule's.
    return UnderGround(instance, kEntityDepth) ? std::nullopt : UnderWater(instance);
  });
}

RuleFinds EntitiesTwice() {
  RuleFinds finds;
  for (const EntityTables& tables : entities.tables) {
    const auto& instances = tables.instances;
    for (std::size_t i = 1; i < instances.size(); ++i) {
      const bool isTwin =
          std::any_of(instances.begin(), instances.begin() + static_cast<std::ptrdiff_t>(i),
                      [&](const auto& other) {
                        return (other->modes & instances[i]->modes) != 0 &&
                               IsSamePlace(other->position, instances[i]->position);
                      });
      if (isTwin) finds.push_back(FindOf(*instances[i]));
    }
  }
  return finds;
}

// One line for each name, at the first of its objects.
RuleFinds UnknownObjects() {
  if (objectStore.catalogue.entryCount == 0) return {};
  std::map<std::string, std::pair<const StaticObject*, int>> byName;
  for (const StaticObject& object : objectStore.objects) {
    if (!object.unknown) continue;
    auto& [first, count] = byName[object.name.String()];
    if (count++ == 0) first = &object;
  }
  RuleFinds finds;
  for (const auto& [name, of] : byName) {
    finds.push_back(FindOf(*of.first, of.second > 1 ? FormatText("%i of them", of.second) : ""));
  }
  return finds;
}

RuleFinds ObjectsOutOfLevel() { return WrongObjects(OutOfLevel); }

RuleFinds ObjectsUnderGround() {
  return WrongObjects([](const StaticObject& object) { return UnderGround(object, kObjectDepth); });
}

RuleFinds ObjectsAboveGround() { return WrongObjects(AboveGround); }

RuleFinds ObjectsTwice() {
  // Sorted by place, only neighbours need to be compared.
  const auto orderOf = [](const StaticObject* object) {
    return std::tuple(object->name.View(), object->position.x, object->position.z);
  };
  std::vector<const StaticObject*> sorted;
  for (const StaticObject& object : objectStore.objects) sorted.push_back(&object);
  std::ranges::stable_sort(sorted, {}, orderOf);
  RuleFinds finds;
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    const StaticObject &before = *sorted[i - 1], &object = *sorted[i];
    if (before.name == object.name.View() && before.rotation == object.rotation &&
        IsSamePlace(before.position, object.position)) {
      finds.push_back(FindOf(object));
    }
  }
  return finds;
}

RuleFinds ObjectsWithoutSize() {
  return WrongObjects([](const StaticObject& object) {
    const Vector3& scale = object.scale;
    const bool isNothing = scale.x == 0 || scale.y == 0 || scale.z == 0;
    return isNothing ? std::optional(std::string()) : std::nullopt;
  });
}

}  // namespace mw
