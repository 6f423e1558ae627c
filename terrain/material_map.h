// What each ground cell is made of: the grid of material indices and its file materialmap.raw.
// Painted in the Material Mapper, set by roads and by the random terrain.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/vector3.h"
#include "data/textures.h"
#include "terrain/terrain.h"

namespace mw {

// As the lists show them, in material order.
extern const std::array<const char*, kMaterialCount> kMaterialNames;

// A binary interface: plug-in modules get it whole. Cell (i, j) is the one whose corner is vertex
// (i, j); data rows are 1 ... MaterialSize, data columns 0 ... MaterialSize - 1.
using MaterialGrid = LargeGrid<std::uint32_t>;

struct MaterialMapper {
  MaterialGrid grid = MaterialGrid::Zeroed();
  std::uint8_t painting = 0;          // the left button is held over the view
  HeldStep step;                      // of the history: what is being painted
  std::uint32_t currentMaterial = 0;  // 0 ... kMaterialCount - 1
  std::uint32_t brushSize = 1;        // half-width plus one, 1 ... 9 cells
  bool SurfaceView = false;           // the texture set's pictures instead of the icons
  float materialCellSize = 0;         // world units
  Vector3 pick;                       // point of the ground under the cursor
  bool pickMissed = false;            // no ground is under it; pick is an earlier place
  std::vector<Cell> brushCells;       // in the brush
  std::vector<Cell> paintedCells;     // by the brush, not drawn yet
  unsigned edits = 0;                 // grows when the grid changed otherwise than by the brush
};

// The one material mapper, created with the view; null before.
extern std::unique_ptr<MaterialMapper> materialMapper;

void CreateMaterialMapper();
void DestroyMaterialMapper();

// Reads "%s\materialmap.raw" of the level folder into the grid; bytes above the last material are
// kept, cells that the file lacks become 0, all of the level's when no archive holds it. What is
// wrong with it is noted in the load report.
void LoadMaterialMap();
// Writes the same file from the grid: of each index the low byte of its absolute value. False
// when it cannot be written, or when there is no grid of a usable size.
[[nodiscard]] bool SaveMaterialMap();
// For those who write into the grid themselves: the whole of it is drawn anew.
void MarkMaterialsChanged();
// Stores one cell; indices outside the grid are ignored.
void SetMaterial(std::uint32_t material, int i, int j);

}  // namespace mw
