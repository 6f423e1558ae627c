#include "objects/entity_scripts.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text.h"
#include "data/game_file.h"
#include "data/load_report.h"
#include "data/open_level.h"
#include "data/script.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/entity_fields.h"

namespace mw {
namespace {

struct ModeFolder {
  const char* name;
  GameModeMask mode;
  LevelPart part;
};
constexpr std::array kModeFolders{
    ModeFolder{"conquest", kModeConquest, LevelPart::ConquestEntities},
    ModeFolder{"ctf", kModeCaptureTheFlag, LevelPart::CaptureTheFlagEntities},
    ModeFolder{"tdm", kModeTeamDeathMatch, LevelPart::TeamDeathMatchEntities}};

// A script that every mode's folder has: what it is called and what its records are.
struct EntityFile {
  const char* name;
  std::string_view createCommand;
  const char* records;  // in messages
  std::size_t capacity;
  const char* preamble = "";
};

constexpr std::array kTemplateFiles{EntityFile{"SoldierSpawnTemplates.con", "ObjectTemplate.create",
                                               "soldier spawn templates", kMaxTemplates},
                                    EntityFile{"ObjectSpawnTemplates.con", "ObjectTemplate.create",
                                               "object spawn templates", kMaxTemplates},
                                    EntityFile{"ControlPointTemplates.con", "ObjectTemplate.create",
                                               "control point templates", kMaxTemplates,
                                               "NetworkableInfo.createNewInfo ControlPointInfo\n"
                                               "NetworkableInfo.setPredictionMode PMNone\n"
                                               "NetworkableInfo.setBasePriority c_NIGhostAlways\n"
                                               "\n"}};
constexpr std::array kInstanceFiles{
    EntityFile{"SoldierSpawns.con", "Object.create", "soldier spawns", kMaxInstances},
    EntityFile{"ObjectSpawns.con", "Object.create", "object spawns", kMaxInstances},
    EntityFile{"ControlPoints.con", "Object.create", "control points", kMaxInstances}};
constexpr EntityFile kSpawnGroupFile{"spawnPointManagerSettings.con", "spawnPointManager.group",
                                     "spawn groups", kMaxSpawnGroups};

const EntityFile& TemplateFileOf(EntityKind kind) {
  return kTemplateFiles[static_cast<std::size_t>(kind)];
}
const EntityFile& InstanceFileOf(EntityKind kind) {
  return kInstanceFiles[static_cast<std::size_t>(kind)];
}

std::string PathOf(const EntityFile& file, const ModeFolder& folder) {
  return FormatText("%s/%s/%s", openLevel.folder.c_str(), folder.name, file.name);
}

// Reading

using OnCommand = std::function<void(std::string_view command, Tokenizer& arguments)>;

// Passes on every command outside comment blocks, which end with the file.
void ReadCommands(GameFile& script, const OnCommand& onCommand) {
  bool inComment = false;
  ForEachLine(script, kEntityLineBuffer, [&](std::string_view line) {
    Tokenizer tokens(line);
    const auto command = tokens.Next(kBlankSlashOrLineFeed);
    if (!command) return;
    if (EqualNoCase(*command, "beginrem")) {
      inComment = true;
    } else if (EqualNoCase(*command, "endrem")) {
      inComment = false;
    } else if (!inComment || IsGap(*command)) {
      onCommand(*command, tokens);
    }
  });
}

// What is left out in memory must stay in the files of the modes that it belongs to.
void NoteFull(const EntityFile& file, GameModeMask modes) {
  std::string line;
  for (const ModeFolder& folder : kModeFolders) {
    if (!(modes & folder.mode)) continue;
    if (line.empty()) {  // modes are read in the order of their bits
      line = FormatText("Too many %s in %s/%s: only the first %zu were loaded.", file.records,
                        folder.name, file.name, file.capacity);
    }
    NoteDamagedPart(folder.part, line);
  }
}

void NoteDamage(const EntityFile& file, const ModeFolder& folder, std::size_t loaded) {
  NoteDamagedPart(folder.part, FormatText("The file %s/%s is damaged: not all of its %s could be "
                                          "loaded (%zu were).",
                                          folder.name, file.name, file.records, loaded));
}

void NoteCutNames(const EntityFile& file, const ModeFolder& folder) {
  NoteDamagedPart(folder.part,
                  FormatText("Some names in %s/%s are longer than %zu characters and were cut.",
                             folder.name, file.name, EntityName::kCapacity));
}

bool AreCopies(const SpawnTemplate& a, const SpawnTemplate& b) { return a.Equals(b); }
bool AreCopies(const SpawnInstance& a, const SpawnInstance& b) { return a.Equals(b); }
bool AreCopies(const SpawnGroup& a, const SpawnGroup& b) {
  return a.id == b.id && a.team == b.team && a.status == b.status && EqualNoCase(a.icon, b.icon);
}

template <class Record>
using Records = std::vector<std::unique_ptr<Record>>;

// Each record, from the last to the second, goes into the nearest one below that is its copy.
template <class Record>
void MergeCopies(Records<Record>& records) {
  for (std::size_t i = records.size(); i-- > 1;) {
    for (std::size_t below = i; below-- > 0;) {
      if (!AreCopies(*records[below], *records[i])) continue;
      records[below]->modes |= records[i]->modes;
      records[i].reset();
      break;
    }
  }
  std::erase(records, nullptr);
}

// The records of a file in one mode's folder, behind those of the modes before. A current record
// ends with its file. The modes of records for which there is no room are added to `tooMany`.
template <class Record, class Make>
void ReadRecordsOf(const EntityFile& file, const ModeFolder& folder, const Make& make,
                   Records<Record>& records, GameModeMask& tooMany) {
  const std::unique_ptr<GameFile> script = GameFileOpen(PathOf(file, folder), "r");
  if (!script) return;
  // Before they are merged, there can be a copy in each folder.
  const std::size_t limit = file.capacity * kModeFolders.size();
  const std::size_t before = records.size();
  ParseReport report;
  Record* current = nullptr;
  ReadCommands(*script, [&](std::string_view command, Tokenizer& arguments) {
    if (IsGap(command)) {
      current = nullptr;
    } else if (!EqualNoCase(command, file.createCommand)) {
      if (current) current->ParseLine(command, arguments, report);
    } else {
      std::unique_ptr<Record> record = make(arguments, folder, report);
      current = nullptr;
      if (record && records.size() < limit) {
        record->modes = folder.mode;
        current = records.emplace_back(std::move(record)).get();
      } else if (record) {
        tooMany |= folder.mode;
      }
    }
  });
  if (!IsWhole(*script)) NoteDamage(file, folder, records.size() - before);
  if (report.nameWasCut) NoteCutNames(file, folder);
}

// The records of a file in all mode folders, copies merged. `make` gives the record that a create
// command starts, or null for one to leave out.
template <class Record, class Make>
Records<Record> ReadRecords(const EntityFile& file, const Make& make) {
  Records<Record> records;
  GameModeMask tooMany = 0;
  for (const ModeFolder& folder : kModeFolders) {
    ReadRecordsOf(file, folder, make, records, tooMany);
  }
  MergeCopies(records);
  for (std::size_t i = file.capacity; i < records.size(); ++i) tooMany |= records[i]->modes;
  if (records.size() > file.capacity) records.resize(file.capacity);
  NoteFull(file, tooMany);
  return records;
}

std::unique_ptr<SpawnTemplate> EmptyTemplate(EntityKind kind) {
  if (kind == EntityKind::SoldierSpawn) return std::make_unique<SoldierSpawnTemplate>();
  if (kind == EntityKind::ObjectSpawn) return std::make_unique<ObjectSpawnTemplate>();
  return std::make_unique<ControlPointTemplate>();
}

std::unique_ptr<SpawnInstance> EmptyInstance(EntityKind kind) {
  if (kind == EntityKind::SoldierSpawn) return std::make_unique<SoldierSpawn>();
  if (kind == EntityKind::ObjectSpawn) return std::make_unique<ObjectSpawn>();
  return std::make_unique<ControlPoint>();
}

// The first template of that name in that mode, or -1.
int FindTemplate(EntityKind kind, std::string_view name, GameModeMask mode) {
  const auto& templates = entities.Of(kind).templates;
  const auto found = std::find_if(templates.begin(), templates.end(), [&](const auto& candidate) {
    return (candidate->modes & mode) != 0 && EqualNoCase(candidate->name, name);
  });
  return found == templates.end() ? -1 : static_cast<int>(found - templates.begin());
}

void ReadTemplates(EntityKind kind) {
  const auto make = [kind](Tokenizer& arguments, const ModeFolder&, ParseReport& report) {
    std::unique_ptr<SpawnTemplate> made = EmptyTemplate(kind);
    arguments.Next(kBlankSlashOrLineFeed);  // the type, which the file's name tells already
    ParseValue(arguments, made->name, report);
    return made;
  };
  auto& templates = entities.Of(kind).templates;
  templates = ReadRecords<SpawnTemplate>(TemplateFileOf(kind), make);
  for (const auto& read : templates) read->UpdateTreeItem(kind);
}

using CountByMode = std::array<std::size_t, kModeFolders.size()>;

void NoteLeftOut(EntityKind kind, const CountByMode& leftOut) {
  const EntityFile& file = InstanceFileOf(kind);
  for (std::size_t i = 0; i < leftOut.size(); ++i) {
    if (leftOut[i] == 0) continue;
    const ModeFolder& folder = kModeFolders[i];
    NoteDamagedPart(folder.part, FormatText("Of the %s in %s/%s, %zu without a template were left "
                                            "out.",
                                            file.records, folder.name, file.name, leftOut[i]));
  }
}

bool Exists(const EntityFile& file, const ModeFolder& folder) {
  return GameFileOpen(PathOf(file, folder), "rb") != nullptr;
}

// A mode has the templates of a kind and the placed ones, or neither.
void NoteMissingFile(const EntityFile& file, const EntityFile& other) {
  for (const ModeFolder& folder : kModeFolders) {
    if (Exists(file, folder) || !Exists(other, folder)) continue;
    NoteDamagedPart(folder.part, FormatText("The file %s/%s is missing.", folder.name, file.name));
  }
}

// Soldiers spawn in groups. Nothing of what is on disk would be lost, so the mode can be saved.
void NoteMissingGroups() {
  for (const ModeFolder& folder : kModeFolders) {
    if (Exists(kSpawnGroupFile, folder)) continue;
    if (!Exists(TemplateFileOf(EntityKind::SoldierSpawn), folder)) continue;
    NoteDamagedFile(FormatText("The file %s/%s is missing.", folder.name, kSpawnGroupFile.name));
  }
}

// Instances without a template are left out.
void ReadInstances(EntityKind kind) {
  const auto& templates = entities.Of(kind).templates;
  CountByMode leftOut{};
  const auto make = [&](Tokenizer& arguments, const ModeFolder& folder, ParseReport&) {
    const EntityName name = arguments.Next(kBlankOrLineEnd).value_or(std::string_view());
    const int index = FindTemplate(kind, name, folder.mode);
    if (index < 0) {
      ++leftOut[static_cast<std::size_t>(&folder - kModeFolders.data())];
      return std::unique_ptr<SpawnInstance>();
    }
    const SpawnTemplate& from = *templates[static_cast<std::size_t>(index)];
    std::unique_ptr<SpawnInstance> made = EmptyInstance(kind);
    made->name = from.name;
    made->templateIndex = index;
    return made;
  };
  auto& instances = entities.Of(kind).instances;
  instances = ReadRecords<SpawnInstance>(InstanceFileOf(kind), make);
  NoteLeftOut(kind, leftOut);
  for (const auto& read : instances) read->UpdateTreeItem();
}

void ReadSpawnGroups() {
  const auto make = [](Tokenizer& arguments, const ModeFolder&, ParseReport&) {
    auto made = std::make_unique<SpawnGroup>();
    made->id = ParseInt(arguments.Next(kBlankSlashOrLineFeed));
    return made;
  };
  entities.spawnGroups.clear();
  for (const auto& read : ReadRecords<SpawnGroup>(kSpawnGroupFile, make)) {
    entities.spawnGroups.push_back(*read);
  }
}

// Writing

const SpawnGroup& RecordIn(const SpawnGroup& group) { return group; }
template <class Record>
const Record& RecordIn(const std::unique_ptr<Record>& record) {
  return *record;
}

std::string TitleOf(const SpawnTemplate& record) { return record.name.String(); }
std::string TitleOf(const SpawnInstance& record) { return record.name.String(); }
std::string TitleOf(const SpawnGroup& group) { return FormatText("group %d", group.id); }

template <class Record>
void WriteRecord(const Record& record, GameFile& script) {
  constexpr std::string_view kRule = "rem ----------------------------------------- \n";
  GameFilePuts(kRule, script);
  GameFilePrintf(script, "rem ---  %s  ---\n", TitleOf(record).c_str());
  GameFilePuts(kRule, script);
  record.Write(script);
  GameFilePuts("\n", script);
}

// The file in all mode folders, with or without records.
template <class Table>
bool WriteRecords(const EntityFile& file, const Table& records) {
  bool written = true;
  for (const ModeFolder& folder : kModeFolders) {
    if (!MayWrite(folder.part)) continue;
    const std::string path = PathOf(file, folder);
    std::unique_ptr<GameFile> script = GameFileOpen(path, "w");
    written &= script != nullptr;
    if (!script) continue;
    GameFilePrintf(*script, "rem %s created by Mapwright\n", file.name);
    GameFilePrintf(*script, "rem (%s)\n\n", path.c_str());
    GameFilePuts(file.preamble, *script);
    for (const auto& entry : records) {
      if (RecordIn(entry).modes & folder.mode) WriteRecord(RecordIn(entry), *script);
    }
    GameFilePuts("rem EndOfFile\n", *script);
    written &= GameFileClose(std::move(script));
  }
  return written;
}

}  // namespace

void ReadGameModeFiles() {
  ClearAllEntities();
  ReadSpawnGroups();
  for (const EntityKind kind : kEntityKinds) {
    ReadTemplates(kind);
    ReadInstances(kind);
    NoteMissingFile(TemplateFileOf(kind), InstanceFileOf(kind));
    NoteMissingFile(InstanceFileOf(kind), TemplateFileOf(kind));
  }
  NoteMissingGroups();
  RemoveUnusedTemplates();
}

void NoteEntitiesNotRead() {
  for (const ModeFolder& folder : kModeFolders) {
    NoteDamagedPart(folder.part, "The level's entities were not loaded.", DamagedPart::Keep);
  }
}

bool WriteGameModeFiles() {
  bool written = true;
  for (const EntityKind kind : kEntityKinds) {
    written &= WriteRecords(TemplateFileOf(kind), entities.Of(kind).templates);
    written &= WriteRecords(InstanceFileOf(kind), entities.Of(kind).instances);
  }
  written &= WriteRecords(kSpawnGroupFile, entities.spawnGroups);
  return written;
}

}  // namespace mw
