// The levels in an archive, read part by part as the editor opens them.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "core/text.h"
#include "data/archive.h"

namespace mw {

struct CheckedLevel {
  std::string folder;               // "varnhold/levels/Harbour_Point"
  std::vector<std::string> damage;  // sentences, as the editor shows them
};

struct LevelCheck {
  std::vector<CheckedLevel> levels;
  std::set<std::string, LessNoCase> membersReadWhole;
};

// The archive is one of `archives`, whose name says whether it is a patch: what a patch lacks is in
// the archive before it, so its levels are not looked at.
LevelCheck CheckLevels(const Archive& archive);

}  // namespace mw
