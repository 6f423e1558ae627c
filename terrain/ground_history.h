// What a step changes of the ground: blocks of heights and materials, kept as they were before the
// step first touched them. Whoever writes into the grids says so here first.
#pragma once

#include <cstddef>

#include "core/editor_state.h"
#include "terrain/terrain.h"

namespace mw {

inline bool IsKept(const LastKept& last, int i, int j) {
  const VertexBlock& block = last.block;
  return block.firstRow <= i && i <= block.lastRow && block.firstColumn <= j &&
         j <= block.lastColumn && last.moment == editor.history.moment;
}

// Before vertices of the block change their heights, or cells their materials; the block lies in
// the grids. Nothing is kept while no step is open.
void KeepHeights(const VertexBlock& block);
void KeepMaterials(const VertexBlock& block);
// The same for one of them.
inline void KeepHeight(int i, int j) {
  if (!IsKept(terrain.keptHeights, i, j)) KeepHeights({i, i, j, j});
}
inline void KeepMaterial(int i, int j) {
  if (!IsKept(terrain.keptMaterials, i, j)) KeepMaterials({i, i, j, j});
}
// The same for whole grids.
void KeepAllHeights();
void KeepAllMaterials();
// What the grids of the level have at most to keep, in bytes.
std::size_t WholeGroundBytes();
// Whether the whole ground may be replaced: it can be undone, or the user agrees that it cannot.
bool MayReplaceGround();

}  // namespace mw
