// StaticObjects.con, the script that places the static objects of a level.
#include <algorithm>
#include <string_view>
#include <utility>

#include "core/text.h"
#include "data/load_report.h"
#include "data/open_level.h"
#include "data/script.h"
#include "objects/entity_scripts.h"
#include "objects/static_object_records.h"
#include "objects/static_objects.h"

namespace mw {
namespace {

constexpr std::string_view kFileName = "/StaticObjects.con";

std::string ScriptPath() { return openLevel.folder.String() + std::string(kFileName); }

// Missing components keep their values.
void ReadVector(Tokenizer& arguments, Vector3& vector) {
  for (float* const component : {&vector.x, &vector.y, &vector.z}) {
    const auto token = arguments.Next(kBlankOrSlash);
    if (!token) return;
    *component = ParseFloat(token);
  }
}

// What a record cannot hold must not be written back in part.
void NoteCutName() {
  NoteDamagedPart(LevelPart::StaticObjects,
                  FormatText("Some names in StaticObjects.con are longer than %zu characters and "
                             "were cut.",
                             decltype(StaticObject::name)::kCapacity));
}

void CreateObject(std::string_view name) {
  StaticObject object = NewStaticObject(name);
  if (name.size() > object.name.kCapacity) NoteCutName();
  FindMesh(object);
  AppendStaticObject(object);
}

void ReadField(std::string_view command, Tokenizer& arguments, StaticObject& object) {
  if (EqualNoCase(command, "Object.absolutePosition")) {
    ReadVector(arguments, object.position);
  } else if (EqualNoCase(command, "Object.rotation")) {
    ReadVector(arguments, object.rotation);
  } else if (EqualNoCase(command, "Object.geometry.scale")) {
    ReadVector(arguments, object.scale);
    object.scaleGiven = true;
  } else if (EqualNoCase(command, "Object.geometry.color")) {
    ReadVector(arguments, object.colour);
    object.colorGiven = true;
  }
}

// False when the line asks for one more object than the table can hold. `hasObject`: whether lines
// belong to the last object. Those before the first, those after a create line without a name
// (which a zero byte ends), and those behind a gap, whose object was in it, belong to none.
bool ReadObjectLine(std::string_view line, bool& hasObject) {
  Tokenizer tokens(line);
  const auto command = tokens.Next(kBlankOrSlash);
  if (!command) return true;
  if (IsGap(*command)) {
    hasObject = false;
  } else if (EqualNoCase(*command, "Object.create")) {
    const auto name = tokens.Next(kBlankOrSlash);
    hasObject = name && name->front() != '\0';
    if (!hasObject) return true;
    if (ObjectTableIsFull()) return false;
    CreateObject(*name);
  } else if (hasObject) {
    ReadField(*command, tokens, objectStore.objects.back());
  }
  return true;
}

void NoteLoss(const char* reason) {
  NoteDamagedPart(LevelPart::StaticObjects,
                  FormatText("Could not load all objects - %s! (%zu were loaded.)", reason,
                             objectStore.objects.size()));
}

// False, with the entities noted as not loaded, when the file holds more objects than the table.
bool ReadObjectScript() {
  const auto file = GameFileOpen(ScriptPath(), "r");
  if (!file) {
    NoteDamagedFile("StaticObjects.con is missing: the level opens without static objects.");
    return true;
  }
  bool overflowed = false, hasObject = false;
  ForEachLine(*file, kEntityLineBuffer, [&](std::string_view line) {
    overflowed = overflowed || !ReadObjectLine(line, hasObject);
  });
  if (!IsWhole(*file)) NoteLoss("StaticObjects.con is damaged");
  if (!overflowed) return true;
  NoteLoss("Maximum number of objects exceeded");
  NoteEntitiesNotRead();
  return false;
}

void PrintVector(GameFile& file, const char* command, const Vector3& vector) {
  GameFilePrintf(file, "%s %.4f/%.4f/%.4f\n", command, static_cast<double>(vector.x),
                 static_cast<double>(vector.y), static_cast<double>(vector.z));
}

void WriteObject(GameFile& file, const StaticObject& object) {
  GameFilePuts("rem\nrem ***  ***\nrem\n", file);
  GameFilePrintf(file, "Object.create %s\n", object.name.c_str());
  PrintVector(file, "Object.absolutePosition", object.position);
  PrintVector(file, "Object.rotation", object.rotation);
  if (object.scaleGiven) PrintVector(file, "Object.geometry.scale", object.scale);
  if (object.colorGiven) PrintVector(file, "Object.geometry.color", object.colour);
}

bool WriteObjectScript() {
  auto file = GameFileOpen(ScriptPath(), "w");
  if (!file) return false;
  GameFilePuts("rem StaticObjects created by Mapwright\n", *file);
  for (const StaticObject& object : objectStore.objects) WriteObject(*file, object);
  return GameFileClose(std::move(file));
}

}  // namespace

void LoadStaticObjects() {
  if (ReadObjectScript()) ReadGameModeFiles();
}

bool SaveStaticObjects() {
  bool written = !MayWrite(LevelPart::StaticObjects) || WriteObjectScript();
  written &= WriteGameModeFiles();
  return written;
}

}  // namespace mw
