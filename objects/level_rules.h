// What would go wrong in the game with the open level, and what its maker may have forgotten: a
// table of rules, one line each. Used by the Check Level window and by the command that verifies
// archives.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/vector3.h"
#include "objects/level_tree.h"

namespace mw {

enum class Gravity { Error, Warning, Note };
// "error", "warning", "note".
const char* NameOf(Gravity gravity);

// Something in the level that a rule is about.
struct RuleFind {
  std::string what;              // begins the sentence: "Soldier spawn Base_Spawn1"
  std::string detail;            // stands behind it in brackets; empty for none
  TreeItem item = 0;             // of the level tree; 0 for what is not there
  std::optional<Vector3> place;  // level coordinates, world units
};
using RuleFinds = std::vector<RuleFind>;

struct LevelRule {
  const char* name;  // for scripts; does not change
  Gravity gravity;
  const char* text;  // what is said of each find
  RuleFinds (*find)();
};
std::span<const LevelRule> LevelRules();

struct LevelFind {
  const LevelRule* rule;
  std::string text;  // a sentence without its full stop
  TreeItem item = 0;
  std::optional<Vector3> place;
};
// What all rules find in the level that is open, the gravest first. Rules that need to know what
// the mod offers find nothing where no mod is known.
std::vector<LevelFind> CheckRules();

}  // namespace mw
