// The game-mode scripts of a sample level: which entities each mode has, and the scripts that run
// them.
#pragma once

#include <vector>

#include "sample/archive_writer.h"
#include "sample/levels.h"

namespace mw::sample {

// `levelFolder` is the level's folder as a member name, without a trailing separator.
std::vector<Member> EntityMembers(const Level& level, const std::string& levelFolder);

}  // namespace mw::sample
