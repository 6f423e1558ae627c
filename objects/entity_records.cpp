#include "objects/entities.h"

namespace mw {

bool SpawnTemplate::Equals(const SpawnTemplate&) const { return false; }
bool SoldierSpawnTemplate::ParseLine(std::string_view, Tokenizer&) { return false; }
void SoldierSpawnTemplate::Write(GameFile&) const {}
bool SoldierSpawnTemplate::Equals(const SpawnTemplate&) const { return false; }
bool ObjectSpawnTemplate::ParseLine(std::string_view, Tokenizer&) { return false; }
void ObjectSpawnTemplate::Write(GameFile&) const {}
bool ObjectSpawnTemplate::Equals(const SpawnTemplate&) const { return false; }
bool ControlPointTemplate::ParseLine(std::string_view, Tokenizer&) { return false; }
void ControlPointTemplate::Write(GameFile&) const {}
bool ControlPointTemplate::Equals(const SpawnTemplate&) const { return false; }
bool SpawnInstance::ParseLine(std::string_view, Tokenizer&) { return false; }
void SpawnInstance::Write(GameFile&) const {}
bool SpawnInstance::Equals(const SpawnInstance&) const { return false; }
bool ObjectSpawn::ParseLine(std::string_view, Tokenizer&) { return false; }
void ObjectSpawn::Write(GameFile&) const {}
bool ObjectSpawn::Equals(const SpawnInstance&) const { return false; }
void ControlPoint::Write(GameFile&) const {}
bool SpawnGroup::ParseLine(std::string_view, Tokenizer&) { return false; }
void SpawnGroup::Write(GameFile&) const {}

}  // namespace mw
