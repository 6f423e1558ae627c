// Everything that a sample level's archive holds.
#pragma once

#include <vector>

#include "sample/archive_writer.h"
#include "sample/levels.h"

namespace mw::sample {

// Scripts, maps and pictures of the level, named as members of its archive. Tiles have `tileSide`
// pixels per side, a power of two.
std::vector<Member> LevelMembers(const Level& level, int tileSide);

}  // namespace mw::sample
