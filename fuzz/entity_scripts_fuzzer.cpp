// Entity scripts of any content: up to two bytes 0xFF cut the input into the modes' parts, and each
// part is every file of its mode; an empty one has no files. Tables keep their bounds, every
// instance has its template, and from the second time on opening and saving makes the same bytes.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>

#include "fuzz/level_sandbox.h"
#include "fuzz/require.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/entity_scripts.h"
#include "objects/object_store.h"
#include "platform/scripted/script.h"

namespace {

constexpr std::uint8_t kModeSeparator = 0xFF;

void PutMode(LevelSandbox& level, const std::string& mode, std::span<const std::uint8_t> script) {
  if (script.empty()) return;
  for (const char* file :
       {"SoldierSpawnTemplates.con", "SoldierSpawns.con", "ObjectSpawnTemplates.con",
        "ObjectSpawns.con", "ControlPointTemplates.con", "ControlPoints.con",
        "spawnPointManagerSettings.con"}) {
    level.Put(mode + "/" + file, script);
  }
}

void CheckTables() {
  for (const mw::EntityKind kind : mw::kEntityKinds) {
    const mw::EntityTables& tables = mw::entities.Of(kind);
    Require(tables.templates.size() <= mw::kMaxTemplates);
    Require(tables.instances.size() <= mw::kMaxInstances);
    for (const auto& instance : tables.instances) {
      const mw::SpawnTemplate* const from = mw::TemplateOf(*instance);
      Require(from && instance->modes != 0 && instance->name == from->name.View());
    }
  }
  Require(mw::entities.spawnGroups.size() <= mw::kMaxSpawnGroups);
}

void Open() {
  mw::scripted::ResetScript();
  mw::ReadGameModeFiles();
  CheckTables();
}

std::string OpenAndSave(LevelSandbox& level) {
  Open();
  Require(mw::WriteGameModeFiles());
  return level.Everything();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LevelSandbox level;
  mw::ClearAllEntities();  // with their items in the tree
  mw::entities = mw::Entities{};
  const auto* const end = data + size;
  for (const char* mode : {"conquest", "ctf", "tdm"}) {
    const auto* const cut = std::find(data, end, kModeSeparator);
    PutMode(level, mode, {data, cut});
    data = cut == end ? end : std::next(cut);
  }
  // Many small files: saving them, and opening them again, is for some inputs only.
  if (size % 4 != 0) {
    Open();
    return 0;
  }
  OpenAndSave(level);
  const std::string second = OpenAndSave(level);
  Require(OpenAndSave(level) == second);
  return 0;
}
