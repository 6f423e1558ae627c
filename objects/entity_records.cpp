#include "data/script.h"
#include "objects/entities.h"
#include "objects/entity_fields.h"

namespace mw {
namespace {

constexpr CommandField<SoldierSpawnTemplate> kSoldierSpawnTemplateFields[] = {
    {"ObjectTemplate.setSpawnId", &SoldierSpawnTemplate::spawnId},
    {"ObjectTemplate.setGroup", &SoldierSpawnTemplate::group},
    {"ObjectTemplate.setAIEnterOnSpawn", &SoldierSpawnTemplate::aiEnterOnSpawn,
     Written::WhenPositive},
    {"ObjectTemplate.setSpawnAsParaTroper", &SoldierSpawnTemplate::spawnAsParaTrooper,
     Written::WhenPositive},
};

constexpr CommandField<ObjectSpawnTemplate> kObjectSpawnTemplateFields[] = {
    {"ObjectTemplate.setObjectTemplate", &ObjectSpawnTemplate::team1Object, Written::WhenSet, 1},
    {"ObjectTemplate.setObjectTemplate", &ObjectSpawnTemplate::team2Object, Written::WhenSet, 2},
    {"ObjectTemplate.MinSpawnDelay", &ObjectSpawnTemplate::minSpawnDelay},
    {"ObjectTemplate.MaxSpawnDelay", &ObjectSpawnTemplate::maxSpawnDelay},
    {"ObjectTemplate.SpawnDelayAtStart", &ObjectSpawnTemplate::spawnDelayAtStart},
    {"ObjectTemplate.TimeToLive", &ObjectSpawnTemplate::timeToLive},
    {"ObjectTemplate.Distance", &ObjectSpawnTemplate::distance},
    {"ObjectTemplate.DamageWhenLost", &ObjectSpawnTemplate::damageWhenLost},
    {"ObjectTemplate.MaxNrOfObjectSpawned", &ObjectSpawnTemplate::maxNrOfObjectSpawned,
     Written::WhenSet},
};

constexpr CommandField<ControlPointTemplate> kControlPointTemplateFields[] = {
    {"ObjectTemplate.setControlPointName", &ControlPointTemplate::controlPointName},
    {"ObjectTemplate.radius", &ControlPointTemplate::radius},
    {"ObjectTemplate.team", &ControlPointTemplate::team},
    {"ObjectTemplate.spawnGroupId", &ControlPointTemplate::spawnGroupId},
    {"ObjectTemplate.objectSpawnerId", &ControlPointTemplate::objectSpawnerId},
    {"ObjectTemplate.areaValue", &ControlPointTemplate::areaValue},
    {"ObjectTemplate.timeToGetControl", &ControlPointTemplate::timeToGetControl},
    {"ObjectTemplate.timeToLoseControl", &ControlPointTemplate::timeToLoseControl},
    {"ObjectTemplate.disableIfEnemyInsideRadius",
     &ControlPointTemplate::disableIfEnemyInsideRadius},
    {"ObjectTemplate.disableWhenLosingControl", &ControlPointTemplate::disableWhenLosingControl},
    {"ObjectTemplate.loseControlWhenEnemyClose", &ControlPointTemplate::loseControlWhenEnemyClose},
    {"ObjectTemplate.loseControlWhenNotClose", &ControlPointTemplate::loseControlWhenNotClose},
    {"ObjectTemplate.unableToChangeTeam", &ControlPointTemplate::unableToChangeTeam,
     Written::WhenSet},
    {"ObjectTemplate.geometry", &ControlPointTemplate::geometry},
    {"ObjectTemplate.hasCollisionPhysics", &ControlPointTemplate::hasCollisionPhysics},
    {"ObjectTemplate.addTemplate", &ControlPointTemplate::addTemplate},
    {"ObjectTemplate.setPosition", &ControlPointTemplate::relativePosition},
    {"ObjectTemplate.setTeamGeometry", &ControlPointTemplate::teamGeometry1, Written::Always, 1},
    {"ObjectTemplate.setTeamGeometry", &ControlPointTemplate::teamGeometry2, Written::Always, 2},
};

constexpr CommandField<SpawnInstance> kPositionField{"Object.absolutePosition",
                                                     &SpawnInstance::position};
constexpr CommandField<SpawnInstance> kPlacementFields[] = {
    kPositionField,
    {"Object.rotation", &SpawnInstance::rotation},
};

constexpr CommandField<ObjectSpawn> kObjectSpawnFields[] = {
    {"Object.setOSId", &ObjectSpawn::osId, Written::WhenSet},
    {"Object.setTeam", &ObjectSpawn::team},
};

constexpr CommandField<SpawnGroup> kSpawnGroupFields[] = {
    {"spawnPointManager.groupTeam", &SpawnGroup::team},
    {"spawnPointManager.groupStatus", &SpawnGroup::status, Written::WhenNotNegative},
    {"spawnPointManager.groupIcon", &SpawnGroup::icon},
};

void WriteCreateTemplate(const char* type, const SpawnTemplate& spawnTemplate, GameFile& file) {
  GameFilePrintf(file, "ObjectTemplate.create %s %s\n", type, spawnTemplate.name.c_str());
}

void WriteCreateInstance(const SpawnInstance& instance, GameFile& file) {
  GameFilePrintf(file, "Object.create %s\n", instance.name.c_str());
}

}  // namespace

bool SpawnTemplate::Equals(const SpawnTemplate& other) const {
  return group == other.group && EqualNoCase(name, other.name);
}

bool SoldierSpawnTemplate::ParseLine(std::string_view command, Tokenizer& arguments,
                                     ParseReport& report) {
  if (!ParseField(kSoldierSpawnTemplateFields, *this, command, arguments, report)) return false;
  KeepSpawnIdFree(spawnId);
  return true;
}
void SoldierSpawnTemplate::Write(GameFile& file) const {
  WriteCreateTemplate("SpawnPoint", *this, file);
  WriteFields(kSoldierSpawnTemplateFields, *this, file);
}
bool SoldierSpawnTemplate::Equals(const SpawnTemplate& other) const {
  return SpawnTemplate::Equals(other) &&
         AreFieldsEqual(kSoldierSpawnTemplateFields, *this,
                        static_cast<const SoldierSpawnTemplate&>(other));
}

bool ObjectSpawnTemplate::ParseLine(std::string_view command, Tokenizer& arguments,
                                    ParseReport& report) {
  // One delay that is both the shortest and the longest.
  if (EqualNoCase(command, "ObjectTemplate.spawnDelay")) {
    if (const auto delay = arguments.Next(kBlankSlashOrLineFeed)) {
      minSpawnDelay = maxSpawnDelay = ParseInt(delay);
    }
    return true;
  }
  return ParseField(kObjectSpawnTemplateFields, *this, command, arguments, report);
}
void ObjectSpawnTemplate::Write(GameFile& file) const {
  WriteCreateTemplate("ObjectSpawner", *this, file);
  WriteFields(kObjectSpawnTemplateFields, *this, file);
}
bool ObjectSpawnTemplate::Equals(const SpawnTemplate& other) const {
  return SpawnTemplate::Equals(other) &&
         AreFieldsEqual(kObjectSpawnTemplateFields, *this,
                        static_cast<const ObjectSpawnTemplate&>(other));
}

bool ControlPointTemplate::ParseLine(std::string_view command, Tokenizer& arguments,
                                     ParseReport& report) {
  if (!ParseField(kControlPointTemplateFields, *this, command, arguments, report)) return false;
  group = spawnGroupId;
  return true;
}
void ControlPointTemplate::Write(GameFile& file) const {
  WriteCreateTemplate("ControlPoint", *this, file);
  GameFilePuts("ObjectTemplate.networkableInfo ControlPointInfo\n", file);
  WriteFields(kControlPointTemplateFields, *this, file);
}
bool ControlPointTemplate::Equals(const SpawnTemplate& other) const {
  return SpawnTemplate::Equals(other) &&
         AreFieldsEqual(kControlPointTemplateFields, *this,
                        static_cast<const ControlPointTemplate&>(other));
}

bool SpawnInstance::ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) {
  return ParseField(kPlacementFields, *this, command, arguments, report);
}
void SpawnInstance::Write(GameFile& file) const {
  WriteCreateInstance(*this, file);
  WriteFields(kPlacementFields, *this, file);
}
bool SpawnInstance::Equals(const SpawnInstance& other) const {
  return templateIndex == other.templateIndex &&
         IsWithin(position, other.position, kSamePosition) &&
         IsWithin(rotation, other.rotation, kSameRotation) && EqualNoCase(name, other.name);
}

bool ObjectSpawn::ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) {
  return ParseField(kObjectSpawnFields, *this, command, arguments, report) ||
         SpawnInstance::ParseLine(command, arguments, report);
}
void ObjectSpawn::Write(GameFile& file) const {
  SpawnInstance::Write(file);
  WriteFields(kObjectSpawnFields, *this, file);
}
bool ObjectSpawn::Equals(const SpawnInstance& other) const {
  return SpawnInstance::Equals(other) &&
         AreFieldsEqual(kObjectSpawnFields, *this, static_cast<const ObjectSpawn&>(other));
}

// A flag has no direction.
void ControlPoint::Write(GameFile& file) const {
  WriteCreateInstance(*this, file);
  WriteField(kPositionField, *this, file);
}

bool SpawnGroup::ParseLine(std::string_view command, Tokenizer& arguments, ParseReport& report) {
  return ParseField(kSpawnGroupFields, *this, command, arguments, report);
}
void SpawnGroup::Write(GameFile& file) const {
  GameFilePrintf(file, "spawnPointManager.group %d\n", id);
  WriteFields(kSpawnGroupFields, *this, file);
}

}  // namespace mw
