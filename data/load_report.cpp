#include "data/load_report.h"

#include <algorithm>
#include <utility>

#include "data/open_level.h"

namespace mw {

namespace {

LoadReport::Part& RecordOf(LevelPart part) {
  return openLevel.loadReport.parts[static_cast<std::size_t>(part)];
}

}  // namespace

void BeginLoadReport() {
  openLevel.loadReport = {};
  openLevel.loadReport.loading = true;
}

void EndLoadReport() {
  openLevel.loadReport.loading = false;
  openLevel.loadReport.filesRead.clear();
}

void ClearLoadReport() { openLevel.loadReport = {}; }

void NoteAtLoad(std::string line) {
  if (!openLevel.loadReport.loading || std::ranges::count(openLevel.loadReport.lines, line) > 0)
    return;
  openLevel.loadReport.lines.push_back(std::move(line));
}

void NoteDamagedFile(std::string line) {
  if (!openLevel.loadReport.loading) return;
  openLevel.loadReport.readWhole = false;
  auto& damage = openLevel.loadReport.damage;
  if (std::ranges::count(damage, line) == 0) damage.push_back(line);
  NoteAtLoad(std::move(line));
}

void NoteDamagedPart(LevelPart part, std::string line, DamagedPart then) {
  if (!openLevel.loadReport.loading) return;
  NoteDamagedFile(std::move(line));
  RecordOf(part).damaged = true;
  if (RecordOf(part).then == DamagedPart::Ask) RecordOf(part).then = then;
}

void NoteMissingPart(LevelPart part, std::string line) {
  if (!openLevel.loadReport.loading) return;
  NoteDamagedPart(part, std::move(line));
  RecordOf(part).missing = true;
}

bool MayWrite(LevelPart part) {
  return !RecordOf(part).damaged || RecordOf(part).then == DamagedPart::Replace;
}

void SetReplaced(LevelPart part, bool replaced) {
  RecordOf(part).then = replaced ? DamagedPart::Replace : DamagedPart::Keep;
}

const char* NameOf(LevelPart part) {
  constexpr std::array<const char*, static_cast<std::size_t>(LevelPart::Count)> kNames = {
      "height map",
      "material map",
      "settings script init.con",
      "settings script init/terrain.con",
      "settings script init/skyandsun.con",
      "static objects",
      "Conquest entities",
      "Capture The Flag entities",
      "Team DeathMatch entities"};
  return kNames[static_cast<std::size_t>(part)];
}

}  // namespace mw
