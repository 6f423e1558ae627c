// Game-mode entities: control points, soldier spawns and object spawns, each placed from a template
// of its kind, and the spawn groups that tie soldier spawns to control points. The records, and the
// tables that own them.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "core/fixed_string.h"
#include "core/text.h"
#include "core/vector3.h"
#include "data/game_file.h"
#include "objects/game_modes.h"
#include "objects/level_tree.h"
#include "objects/placement.h"

namespace mw {

inline constexpr std::size_t kMaxTemplates = 1024, kMaxInstances = 1024;  // of each kind
inline constexpr std::size_t kMaxControlPointTemplates = 8;               // made by the user
inline constexpr std::size_t kMaxSpawnGroups = 48;

enum class EntityKind : std::int32_t { SoldierSpawn = 0, ObjectSpawn = 1, ControlPoint = 2 };
inline constexpr std::array kEntityKinds{EntityKind::SoldierSpawn, EntityKind::ObjectSpawn,
                                         EntityKind::ControlPoint};

using EntityName = FixedString<48>;

// What could not be taken over as it stands, of the lines that were parsed with it.
struct ParseReport {
  bool nameWasCut = false;  // longer than its record can hold
};

struct SpawnInstance;

struct SpawnTemplate {
  EntityName name;
  GameModeMask modes = 0;
  std::int32_t group = 0;
  TreeItem treeItem = 0;
  bool unfolded = false;  // its item, or was when the mode filter hid it

  virtual ~SpawnTemplate() = default;
  // Takes one script command, whose arguments follow in the tokenizer. False when it is not one of
  // this kind's.
  virtual bool ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) = 0;
  // Writes the commands of this template.
  virtual void Write(GameFile& file) const = 0;
  // Whether two mode folders hold the same template.
  virtual bool Equals(const SpawnTemplate& other) const;
  // An instance with the template's name and modes, shown in the tree. The caller places it and
  // appends it.
  virtual std::unique_ptr<SpawnInstance> CreateInstance(int templateIndex) = 0;
  // Opens the edit dialog; true on OK. Nothing changes otherwise.
  virtual bool Edit(EntityKind kind);
  // Shows, renames or removes the item, as the mode filter has it.
  virtual void UpdateTreeItem(EntityKind kind);
  // Whether nothing is different, down to the letters' case.
  bool operator==(const SpawnTemplate&) const = default;
};

struct SoldierSpawnTemplate : SpawnTemplate {
  std::int32_t spawnId = 0, aiEnterOnSpawn = 0, spawnAsParaTrooper = 0;

  bool operator==(const SoldierSpawnTemplate&) const = default;
  bool ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) override;
  void Write(GameFile& file) const override;
  bool Equals(const SpawnTemplate& other) const override;
  std::unique_ptr<SpawnInstance> CreateInstance(int templateIndex) override;
};

struct ObjectSpawnTemplate : SpawnTemplate {
  EntityName team1Object, team2Object;                // catalogue names; empty for none
  std::int32_t minSpawnDelay = 0, maxSpawnDelay = 0;  // seconds
  std::int32_t spawnDelayAtStart = 0, timeToLive = 0, distance = 0, damageWhenLost = 0;
  std::int32_t maxNrOfObjectSpawned = 0;

  bool operator==(const ObjectSpawnTemplate&) const = default;
  bool ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) override;
  void Write(GameFile& file) const override;
  bool Equals(const SpawnTemplate& other) const override;
  std::unique_ptr<SpawnInstance> CreateInstance(int templateIndex) override;
  bool Edit(EntityKind kind) override;
};

struct ControlPointTemplate : SpawnTemplate {
  EntityName controlPointName;
  std::int32_t radius = 0;  // world units
  std::int32_t team = 0;    // 0 neutral, 1, 2
  std::int32_t spawnGroupId = 0, objectSpawnerId = 0, areaValue = 0;
  std::int32_t timeToGetControl = 0, timeToLoseControl = 0;  // seconds
  std::int32_t disableIfEnemyInsideRadius = 0, disableWhenLosingControl = 0;
  std::int32_t loseControlWhenEnemyClose = 0, loseControlWhenNotClose = 0;
  std::int32_t unableToChangeTeam = 0;
  EntityName geometry;
  std::int32_t hasCollisionPhysics = 0;
  EntityName addTemplate, teamGeometry1, teamGeometry2;
  Vector3 relativePosition;

  bool operator==(const ControlPointTemplate&) const = default;
  bool ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) override;
  void Write(GameFile& file) const override;
  bool Equals(const SpawnTemplate& other) const override;
  std::unique_ptr<SpawnInstance> CreateInstance(int templateIndex) override;
};

struct SpawnInstance : Placement {
  EntityName name;                  // its template's
  std::int32_t templateIndex = -1;  // in its kind's templates
  GameModeMask modes = 0;
  TreeItem treeItem = 0;

  virtual ~SpawnInstance() = default;
  virtual EntityKind Kind() const = 0;
  virtual bool ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report);
  virtual void Write(GameFile& file) const;
  virtual bool Equals(const SpawnInstance& other) const;
  virtual bool Edit() = 0;
  virtual void UpdateTreeItem();
};

struct SoldierSpawn : SpawnInstance {
  EntityKind Kind() const override { return EntityKind::SoldierSpawn; }
  bool Edit() override;
};

struct ObjectSpawn : SpawnInstance {
  std::int32_t osId = 0;  // number of a control point; 0 = none
  std::int32_t team = 0;

  EntityKind Kind() const override { return EntityKind::ObjectSpawn; }
  bool ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) override;
  void Write(GameFile& file) const override;
  bool Equals(const SpawnInstance& other) const override;
  bool Edit() override;
};

struct ControlPoint : SpawnInstance {
  EntityKind Kind() const override { return EntityKind::ControlPoint; }
  void Write(GameFile& file) const override;
  bool Edit() override;
};

struct SpawnGroup {
  std::int32_t id = 0;
  std::int32_t team = 0;
  EntityName icon;
  std::int32_t status = -1;  // -1 = not set
  GameModeMask modes = 0;

  bool ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report);
  void Write(GameFile& file) const;
};

struct EntityTables {
  std::vector<std::unique_ptr<SpawnTemplate>> templates;  // at most kMaxTemplates
  std::vector<std::unique_ptr<SpawnInstance>> instances;  // at most kMaxInstances
};

struct HoveredEntity {
  EntityKind kind = EntityKind::SoldierSpawn;
  int index = -1;  // none
};

struct Entities {
  std::array<EntityTables, kEntityKinds.size()> tables;
  std::vector<SpawnGroup> spawnGroups;  // at most kMaxSpawnGroups
  GameModeMask ModeFilter = kAllModes;  // the modes that are shown
  std::int32_t nextSpawnId = 1;         // never reset
  HoveredEntity hovered;

  EntityTables& Of(EntityKind kind) { return tables[static_cast<std::size_t>(kind)]; }
};

extern Entities entities;

// The ids of new soldier spawns come after this one, too.
void KeepSpawnIdFree(std::int32_t spawnId);

// The template that an instance was made from, or null.
SpawnTemplate* TemplateOf(const SpawnInstance& instance);
ControlPointTemplate* ControlPointTemplateOf(const SpawnInstance& instance);
// The instance under the mouse, or null.
SpawnInstance* HoveredInstance();

}  // namespace mw
