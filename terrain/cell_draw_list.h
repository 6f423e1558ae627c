// This chooses the visible cells of the view square and builds the index list that draws them: one
// batch of triangles per layer (a texture and a colour), and the grid lines. The renderers of all
// editing modes use it.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {

// The two triangle strips in use split a cell along different diagonals.
enum class CellSplit { FarLeftToNearRight, FarRightToNearLeft };

// A draw call shows one layer: a texture (0: none) with the colours of the cells or with one of its
// own.
struct CellLayer {
  unsigned texture = 0;
  float repeats = 1;  // of the texture along the side of a surface tile
  // The texture begins at these texture coordinates. They are those of its tile's corner, so that a
  // tile's texture is met between 0 and 1 and can end at its edge; a texture that repeats begins at
  // 0.
  float originS = 0, originT = 0;
  bool ownColour = false;
  std::array<float, 4> colour{};
  friend bool operator==(const CellLayer&, const CellLayer&) = default;
};

// This holds the layer of each cell of the view square: 0 for cells that are not drawn, else 1 +
// its index in `layers`. A border of one cell around the square is never drawn, so that each cell
// of the square has neighbours to ask.
class CellMap {
 public:
  // Forgets everything; the square becomes the current view square.
  void Reset();
  // Sets the layer of every cell whose corner (i, j) passes the frustum test; layerOf(i, j) chooses
  // it.
  template <typename LayerOf>
  void ChooseVisible(LayerOf layerOf) {
    if (square_.ViewRowEnd <= square_.ViewRowStart) return;
    FindSides(square_.ViewRowStart);
    for (int i = square_.ViewRowEnd; i > square_.ViewRowStart; --i) {
      FindSides(i);
      for (int j = square_.ViewColStart; j < square_.ViewColEnd; ++j) {
        if (sides_[Place(i, j)] & kVisible) cells_[Place(i, j)] = layerOf(i, j);
      }
    }
  }
  std::uint8_t At(int i, int j) const { return cells_[Place(i, j)]; }
  // Gives a visible cell another layer; others stay undrawn.
  void Replace(int i, int j, std::uint8_t layer);
  const ViewSquare& Square() const { return square_; }

  // A visible cell is outside when it lies behind one plane of the frustum as a whole, so that
  // nothing of it can show. It is inside when it lies before all of them, so that GL has nothing to
  // clip.
  bool IsOutside(int i, int j) const { return (SidesOfCell(i, j) & kBehind) != 0; }
  bool IsInside(int i, int j) const { return (SidesOfCell(i, j) & kInside) != 0; }

  // Tells whether both triangles of the cell show the camera their lower side. Cells that are not
  // in the square do not count as such.
  bool IsTurnedAway(int i, int j, CellSplit split) const;

  // Tells whether some cell that reaches into the frustum is not visible, as its corner (i, j) lies
  // too far outside. Where the ground is steep, others may be seen through the gap.
  bool HasGaps() const;

  static bool IsCornerVisible(int i, int j);

 private:
  static constexpr int kSide = static_cast<int>(kViewSquareCells) + 4;
  // A corner's bits tell behind which planes of the frustum it lies, whether it lies before all of
  // them, and whether it passes the frustum test.
  static constexpr std::uint8_t kBehind = 0x3F, kInside = 0x40, kVisible = 0x80;

  // Fills in sides and heights of the corners of row i.
  void FindSides(int i);
  // Returns the bits that all four corners of a cell have in common.
  int SidesOfCell(int i, int j) const {
    const std::size_t nearLeft = Place(i, j), farLeft = Place(i - 1, j);
    return sides_[nearLeft] & sides_[nearLeft + 1] & sides_[farLeft] & sides_[farLeft + 1];
  }
  std::size_t Place(int i, int j) const {
    const int place = (i - square_.ViewRowStart) * kSide + j - square_.ViewColStart + 1;
    return static_cast<std::size_t>(place);
  }

  ViewSquare square_;
  std::array<std::uint8_t, std::size_t{kSide} * kSide> cells_{}, sides_{};
  std::array<float, std::size_t{kSide} * kSide> heights_{};  // world units, as drawn
};

// A batch is one draw call, either for triangles of a layer or for grid lines.
struct CellBatch {
  bool lines = false;
  std::uint8_t layer = 0;  // 1 + index in the layers
  std::uint32_t first = 0, count = 0;
};

inline constexpr int kMaxCellLayers = 64;
inline constexpr float kGridLineWidth = 2.0f;  // pixels
// glPolygonOffset gets this factor and these units for cells under grid lines. With so many units
// no pixel of a line has the depth of the ground beside it, where the order of drawing would
// decide.
inline constexpr float kGridDepthFactor = 1.0f, kGridDepthUnits = 8.0f;

struct CellDrawList {
  using Indices = std::vector<std::uint32_t>;
  Indices indices;
  std::vector<CellBatch> batches;

  // The builder's working storage is kept here so that no frame has to allocate. Cells that GL has
  // to clip are kept apart from the others, as it may take the long way for all that stands near
  // one of them.
  struct Parts {
    Indices clipped, whole;
    bool IsEmpty() const { return clipped.empty() && whole.empty(); }
  };
  std::array<Parts, kMaxCellLayers + 1> triangles;
  Parts lines;
  std::vector<std::uint8_t> usedLayers;
};

// Lists the grid lines, then the visible cells: one or two batches of each layer. Where cells meet,
// their common line is listed once. What comes first hides what need not be painted: the lines the
// ground under them, the cells next to the camera those behind. Ground that is seen from above
// leaves out the cells that are turned away, and the lines between them.
void BuildCellDrawList(const CellMap& cells, CellSplit split, bool grid, CellDrawList& list);

// Copies the list's indices to GL; makes the buffer when `indexBuffer` is 0. Context current.
void UploadCellDrawList(const CellDrawList& list, unsigned& indexBuffer);
// Draws the batches from the kept vertices, grid lines in black. With grid lines the triangles are
// drawn a little farther away, so that the lines on them show whole. Leaves texturing off, no
// buffer bound and the line width of the grid.
void DrawCellBatches(const CellDrawList& list, unsigned indexBuffer,
                     std::span<const CellLayer> layers, bool textured);

}  // namespace mw
