// What was found while a level was opened: lines for the one message after opening, and the parts
// that could not be read whole. Such a part stays as it is on disk at every save, until the user
// agrees to replace it. Readers of the level's files note what they find; saving asks here.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "core/text.h"

namespace mw {

// What saving writes, each part for itself.
enum class LevelPart : std::size_t {
  HeightMap,
  MaterialMap,
  InitScript,
  TerrainScript,
  SkyScript,
  StaticObjects,
  ConquestEntities,
  CaptureTheFlagEntities,
  TeamDeathMatchEntities,
  Count
};

// What becomes of a part that was not read whole. A settings script is always kept: what could not
// be read of it would be lost.
enum class DamagedPart { Ask, Keep, Replace };

struct LoadReport {
  struct Part {
    bool damaged = false;
    bool missing = false;  // no archive holds it
    DamagedPart then = DamagedPart::Ask;
  };
  std::array<Part, static_cast<std::size_t>(LevelPart::Count)> parts;
  std::vector<std::string> lines;   // each once
  std::vector<std::string> damage;  // those of them that tell of a damaged or missing file
  std::map<std::string, bool, LessNoCase> filesRead;  // members, with `/`: whether they were whole
  bool readWhole = true;  // false when a file of the level is damaged or missing
  bool loading = false;   // only then something is noted
};

// A level is about to be read: empties the report and takes notes from now on.
void BeginLoadReport();
// It has been read; what is read again later is not noted.
void EndLoadReport();
// No level is open.
void ClearLoadReport();

// A line for the message that is no damage of the level: something that it names is not there.
void NoteAtLoad(std::string line);
// A file of the level that saving does not write is damaged or missing.
void NoteDamagedFile(std::string line);
// The part was not read whole. The first `then` that is not Ask stays.
void NoteDamagedPart(LevelPart part, std::string line, DamagedPart then = DamagedPart::Ask);
// The same for one that is not there at all.
void NoteMissingPart(LevelPart part, std::string line);

// Whether saving may write the part.
bool MayWrite(LevelPart part);
// The user's answer, until the level is closed. Whoever replaces the whole of a map may call it
// too.
void SetReplaced(LevelPart part, bool replaced = true);
// "height map", "settings script init.con", "Conquest entities".
const char* NameOf(LevelPart part);

}  // namespace mw
