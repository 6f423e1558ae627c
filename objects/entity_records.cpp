#include "objects/entities.h"

namespace mw {

bool SpawnTemplate::Equals(const SpawnTemplate&) const { return false; }
bool SpawnTemplate::Edit(EntityKind) { return false; }
void SpawnTemplate::UpdateTreeItem(EntityKind) {}
bool SoldierSpawnTemplate::ParseLine(std::string_view, Tokenizer&) { return false; }
void SoldierSpawnTemplate::Write(GameFile&) const {}
bool SoldierSpawnTemplate::Equals(const SpawnTemplate&) const { return false; }
std::unique_ptr<SpawnInstance> SoldierSpawnTemplate::CreateInstance(int) { return nullptr; }
bool ObjectSpawnTemplate::ParseLine(std::string_view, Tokenizer&) { return false; }
void ObjectSpawnTemplate::Write(GameFile&) const {}
bool ObjectSpawnTemplate::Equals(const SpawnTemplate&) const { return false; }
std::unique_ptr<SpawnInstance> ObjectSpawnTemplate::CreateInstance(int) { return nullptr; }
bool ObjectSpawnTemplate::Edit(EntityKind) { return false; }
bool ControlPointTemplate::ParseLine(std::string_view, Tokenizer&) { return false; }
void ControlPointTemplate::Write(GameFile&) const {}
bool ControlPointTemplate::Equals(const SpawnTemplate&) const { return false; }
std::unique_ptr<SpawnInstance> ControlPointTemplate::CreateInstance(int) { return nullptr; }
bool SpawnInstance::ParseLine(std::string_view, Tokenizer&) { return false; }
void SpawnInstance::Write(GameFile&) const {}
bool SpawnInstance::Equals(const SpawnInstance&) const { return false; }
void SpawnInstance::UpdateTreeItem() {}
bool SoldierSpawn::Edit() { return false; }
bool ObjectSpawn::ParseLine(std::string_view, Tokenizer&) { return false; }
void ObjectSpawn::Write(GameFile&) const {}
bool ObjectSpawn::Equals(const SpawnInstance&) const { return false; }
bool ObjectSpawn::Edit() { return false; }
void ControlPoint::Write(GameFile&) const {}
bool ControlPoint::Edit() { return false; }
bool SpawnGroup::ParseLine(std::string_view, Tokenizer&) { return false; }
void SpawnGroup::Write(GameFile&) const {}

}  // namespace mw
