// What a story of edits tells after each step: tools, flags, camera, what stands where, the level
// tree, and the ground that the view shows.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "app/command_table.h"
#include "objects/level_tree.h"

namespace mw {

// In lines, of which a story tells those that are new.
std::vector<std::string> DescribeEditor(const std::map<CommandId, bool>& enabled);
// Each with a space before it.
std::string TextsOf(const std::vector<TreeItem>& items);

}  // namespace mw
