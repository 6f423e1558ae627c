#include "objects/object_history.h"

#include <array>
#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/editor_state.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_hover.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/object_store.h"
#include "objects/record_history.h"
#include "objects/static_object_records.h"
#include "objects/visibility.h"

namespace mw {
namespace {

// By their bits: 0 and -0 are two numbers in a file.
bool IsSame(const Vector3& a, const Vector3& b) {
  using Bits = std::array<std::uint32_t, 3>;
  return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

bool IsSamePlacement(const Placement& a, const Placement& b) {
  return IsSame(a.position, b.position) && IsSame(a.rotation, b.rotation);
}

struct ObjectRules {
  static StaticObject CopyOf(const StaticObject& object) { return object; }
  static bool IsSame(const StaticObject& a, const StaticObject& b) {
    return IsSamePlacement(a, b) && a.name == b.name && a.scaleGiven == b.scaleGiven &&
           a.colorGiven == b.colorGiven && mw::IsSame(a.scale, b.scale) &&
           mw::IsSame(a.colour, b.colour);
  }
  static std::size_t BytesOf(const StaticObject&) { return 0; }
};

struct GroupRules {
  static SpawnGroup CopyOf(const SpawnGroup& group) { return group; }
  static bool IsSame(const SpawnGroup& a, const SpawnGroup& b) {
    return a.id == b.id && a.team == b.team && a.icon == b.icon && a.status == b.status &&
           a.modes == b.modes;
  }
  static std::size_t BytesOf(const SpawnGroup&) { return 0; }
};

// Calls act(made) with the record as what it is.
template <typename First, typename... Others, typename Base, typename Act>
auto AsMade(const Base& record, Act act) {
  if constexpr (sizeof...(Others) > 0) {
    if (!dynamic_cast<const First*>(&record)) return AsMade<Others...>(record, act);
  }
  return act(static_cast<const First&>(record));
}

// How records of a base and its kinds are copied and measured.
template <typename Base, typename... Made>
struct MadeRules {
  using Record = std::unique_ptr<Base>;
  template <typename Act>
  static auto As(const Record& record, Act act) {
    return AsMade<Made...>(*record, act);
  }
  static Record CopyOf(const Record& record) {
    return As(record, [](const auto& made) -> Record {
      return std::make_unique<std::decay_t<decltype(made)>>(made);
    });
  }
  static std::size_t BytesOf(const Record& record) {
    return As(record, [](const auto& made) { return sizeof made; });
  }
};

struct TemplateRules
    : MadeRules<SpawnTemplate, SoldierSpawnTemplate, ObjectSpawnTemplate, ControlPointTemplate> {
  // The item in the tree is no matter of the level.
  static bool IsSame(const Record& a, const Record& b) {
    return As(a, [&b](const auto& made) {
      using Made = std::decay_t<decltype(made)>;
      Made other = static_cast<const Made&>(*b);
      other.treeItem = made.treeItem;
      other.unfolded = made.unfolded;
      if constexpr (std::is_same_v<Made, ControlPointTemplate>) {
        if (!mw::IsSame(made.relativePosition, other.relativePosition)) return false;
      }
      return made == other;
    });
  }
};

struct InstanceRules : MadeRules<SpawnInstance, SoldierSpawn, ObjectSpawn, ControlPoint> {
  static bool IsSame(const Record& a, const Record& b) {
    return As(a, [&b](const auto& made) {
      const auto& other = static_cast<decltype(made)>(*b);
      if constexpr (std::is_same_v<std::decay_t<decltype(made)>, ObjectSpawn>) {
        if (made.osId != other.osId || made.team != other.team) return false;
      }
      return IsSamePlacement(made, other) && made.name == other.name &&
             made.templateIndex == other.templateIndex && made.modes == other.modes;
    });
  }
};

// What the tree and the selection have to know of a record that was taken out.
struct TakenItem {
  bool selected = false, isBack = false;
};
using TakenItems = std::unordered_map<TreeItem, TakenItem>;

// A record that is back after a change keeps its item, and is selected if it is now.
void TakeItemOver(TakenItems& taken, TreeItem& item, bool* selected) {
  const auto found = taken.find(item);
  if (found == taken.end()) {
    if (!levelTree.items.contains(item)) item = 0;
    return;
  }
  found->second.isBack = true;
  if (selected) *selected = found->second.selected;
}

class ObjectsPart final : public HistoryPart {
 public:
  void Keep() {
    if (std::exchange(isKept_, true)) return;
    ForEachTable([](auto& kept, const auto& table) { kept.Keep(table); });
  }

  bool Close() override {
    bool changed = false;
    ForEachTable([&changed](auto& kept, const auto& table) { changed |= kept.Close(table); });
    return changed;
  }

  void Reopen() override {
    ForEachTable([](auto& kept, const auto& table) { kept.Reopen(table); });
  }

  void Exchange() override {
    const bool notified = std::exchange(levelTree.notificationsEnabled, false);
    const bool suppressed = std::exchange(levelTree.suppressObjectSelection, true);
    ExchangeObjects();
    groups_.Exchange(entities.spawnGroups);
    for (std::size_t k = 0; k < kinds_.size(); ++k) {
      ExchangeRecords(kinds_[k].templates, entities.tables[k].templates);
      ExchangeRecords(kinds_[k].instances, entities.tables[k].instances);
    }
    RefreshTreeItems();
    FollowSelection();
    levelTree.suppressObjectSelection = suppressed;
    levelTree.notificationsEnabled = notified;
  }

  std::size_t Bytes() const override {
    std::size_t bytes = sizeof(*this) + objects_.Bytes() + groups_.Bytes();
    for (const Kind& kind : kinds_) bytes += kind.templates.Bytes() + kind.instances.Bytes();
    return bytes;
  }

  std::optional<Vector3> Place() const override {
    if (!objects_.Places().empty())
      return objectStore.objects[objects_.Places().front()].ViewPosition();
    for (std::size_t k = 0; k < kinds_.size(); ++k) {
      if (!kinds_[k].instances.Places().empty())
        return entities.tables[k].instances[kinds_[k].instances.Places().front()]->ViewPosition();
    }
    if (!objects_.Records().empty()) return objects_.Records().front().record.ViewPosition();
    for (const Kind& kind : kinds_) {
      if (!kind.instances.Records().empty())
        return kind.instances.Records().front().record->ViewPosition();
    }
    return std::nullopt;
  }

 private:
  struct Kind {
    RecordHistory<std::unique_ptr<SpawnTemplate>, TemplateRules> templates;
    RecordHistory<std::unique_ptr<SpawnInstance>, InstanceRules> instances;
  };

  template <typename Act>
  void ForEachTable(Act act) {
    act(objects_, objectStore.objects);
    act(groups_, entities.spawnGroups);
    for (std::size_t k = 0; k < kinds_.size(); ++k) {
      act(kinds_[k].templates, entities.tables[k].templates);
      act(kinds_[k].instances, entities.tables[k].instances);
    }
  }

  static void DeleteItemsOf(const TakenItems& taken) {
    for (const auto& [item, state] : taken) {
      if (!state.isBack) DeleteItem(item);
    }
  }

  void ExchangeObjects() {
    auto& objects = objectStore.objects;
    const auto& places = objects_.Exchange(objects);
    TakenItems taken;
    for (const auto& kept : objects_.Records())
      taken[kept.record.treeItem] = {kept.record.selected, false};
    for (const std::size_t place : places) {
      StaticObject& object = objects[place];
      TakeItemOver(taken, object.treeItem, &object.selected);
      // Catalogue and meshes may have been read again since.
      FindEntry(object);
      FindMesh(object);
    }
    DeleteItemsOf(taken);
    ShowInTree(places);
  }

  template <typename Records, typename Table>
  static void ExchangeRecords(Records& records, Table& table) {
    const auto& places = records.Exchange(table);
    TakenItems taken;
    for (const auto& kept : records.Records())
      taken[kept.record->treeItem] = {SelectedOf(*kept.record), false};
    for (const std::size_t place : places)
      TakeItemOver(taken, table[place]->treeItem, SelectionOf(*table[place]));
    DeleteItemsOf(taken);
  }

  static bool SelectedOf(const SpawnInstance& instance) { return instance.selected; }
  static bool SelectedOf(const SpawnTemplate&) { return false; }
  static bool* SelectionOf(SpawnInstance& instance) { return &instance.selected; }
  static bool* SelectionOf(SpawnTemplate&) { return nullptr; }

  // Indices into the tables mean other records now.
  static void FollowSelection() {
    objectStore.hoveredObject = objectStore.lastHoveredObject = -1;
    entities.hovered = {};
    ForgetNamed();
    DeselectHidden();
    ComputePivot();
    if (AnySelected() == objectStore.toolsEnabled) {
      ShowSelectionInTree();
    } else {
      UpdateToolButtons(AnySelected());
    }
  }

  bool isKept_ = false;
  RecordHistory<StaticObject, ObjectRules> objects_;
  RecordHistory<SpawnGroup, GroupRules> groups_;
  std::array<Kind, kEntityKinds.size()> kinds_;
};

}  // namespace

void KeepObjects() {
  if (editor.history.IsRecording()) editor.history.PartOf<ObjectsPart>().Keep();
}

}  // namespace mw
