// What the editor must hold of an open level, piece by piece.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace mw::bench {

// Names and megabytes: grids, buffers, textures, meshes, as large as they are. On the thread of the
// windows.
std::vector<std::pair<std::string, double>> HeldByLevel();

}  // namespace mw::bench
