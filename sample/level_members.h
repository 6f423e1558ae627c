// Everything that a sample level's archive holds.
#pragma once

#include <functional>
#include <vector>

#include "sample/archive_writer.h"
#include "sample/levels.h"

namespace mw::sample {

// Scripts, maps and pictures of the level, named as members of its archive. Tiles have `tileSide`
// pixels per side, a power of two. `advance` is called after each tile, with the part of them that
// is done; one call at a time, but not always from the same thread.
std::vector<Member> LevelMembers(
    const Level& level, int tileSide,
    const std::function<void(double part)>& advance = [](double) {});

}  // namespace mw::sample
