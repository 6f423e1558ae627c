// What a step changes of the ground: blocks of heights and materials, kept as they were before the
// step first touched them. Whoever writes into the grids says so here first.
#pragma once

#include <cstddef>

#include "core/editor_state.h"
#include "terrain/terrain.h"

namespace mw {

inline constexpr int kHistoryBlock = 8;  // cells per side

inline bool IsKept(const LastKept& last, int i, int j) {
  return last.row == i / kHistoryBlock && last.column == j / kHistoryBlock &&
         last.moment == editor.history.moment;
}
void KeepHeightBlock(int i, int j);
void KeepMaterialBlock(int i, int j);

// Before the height of vertex (i, j) or the material of cell (i, j) changes; both lie in the grids.
// Nothing is kept while no step is open.
inline void KeepHeight(int i, int j) {
  if (!IsKept(terrain.keptHeights, i, j)) KeepHeightBlock(i, j);
}
inline void KeepMaterial(int i, int j) {
  if (!IsKept(terrain.keptMaterials, i, j)) KeepMaterialBlock(i, j);
}
// The same for whole grids.
void KeepAllHeights();
void KeepAllMaterials();
// What the grids of the level have at most to keep, in bytes.
std::size_t WholeGroundBytes();
// Whether the whole ground may be replaced: it can be undone, or the user agrees that it cannot.
bool MayReplaceGround();

}  // namespace mw
