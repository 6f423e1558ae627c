// The levels in an archive, read part by part as the editor opens them.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/text.h"
#include "data/archive.h"
#include "data/mod_config.h"
#include "objects/level_rules.h"

namespace mw {

struct CheckedLevel {
  std::string folder;               // "varnhold/levels/Harbour_Point"
  std::vector<std::string> damage;  // sentences, as the editor shows them
  std::vector<LevelFind> finds;     // of the editor's Check Level
};

struct LevelCheck {
  std::vector<CheckedLevel> levels;
  std::set<std::string, LessNoCase> membersReadWhole;
};

// The configuration of a mod, with its object list as a path from here. Nothing when the file
// cannot be read.
std::optional<ModConfig> ReadModForCheck(const std::string& file);

// The archive is one of `archives`, whose name says whether it is a patch: what a patch lacks is in
// the archive before it, so its levels are not looked at.
// Without a mod, nothing is said of what it would have to offer.
LevelCheck CheckLevels(const Archive& archive, const std::optional<ModConfig>& mod);

}  // namespace mw
