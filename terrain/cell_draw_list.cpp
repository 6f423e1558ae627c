#include "terrain/cell_draw_list.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>

#include "core/camera.h"
#include "data/mod_config.h"
#include "terrain/terrain.h"
#include "terrain/terrain_buffers.h"

namespace mw {
namespace {

// Places of a cell's corners in the vertex buffer.
struct Corners {
  Corners(int i, int j)
      : nearLeft(TerrainVertexIndex(i, j)),
        nearRight(TerrainVertexIndex(i, j + 1)),
        farLeft(TerrainVertexIndex(i - 1, j)),
        farRight(TerrainVertexIndex(i - 1, j + 1)) {}
  std::uint32_t nearLeft, nearRight, farLeft, farRight;
};

class ListBuilder {
 public:
  ListBuilder(const CellMap& cells, CellSplit split, CellDrawList& list)
      : cells_(cells), split_(split), list_(list) {
    list_.indices.clear();
    list_.batches.clear();
  }

  void AddCell(int i, int j) {
    const std::uint8_t layer = cells_.At(i, j);
    if (layer == 0) return;
    auto& out = list_.triangles[layer];
    if (out.empty()) list_.usedLayers.push_back(layer);
    const Corners c(i, j);
    // The triangles that a strip of the four corners gives. Where GL shades flat, their last vertex
    // gives the colour: it is the cell's own corner.
    if (split_ == CellSplit::FarLeftToNearRight)
      out.insert(out.end(),
                 {c.nearLeft, c.nearRight, c.farLeft, c.farLeft, c.nearRight, c.farRight});
    else
      out.insert(out.end(),
                 {c.farRight, c.nearRight, c.nearLeft, c.farLeft, c.farRight, c.nearLeft});
  }

  // Each line once: the two that the cell shares with cells drawn later, and those that no other
  // draws.
  void AddGridLines(int i, int j) {
    if (cells_.At(i, j) == 0) return;
    const Corners c(i, j);
    AddLine(c.nearRight, c.farRight);
    AddLine(c.farRight, c.farLeft);
    if (cells_.At(i + 1, j) == 0) AddLine(c.nearLeft, c.nearRight);
    if (cells_.At(i, j - 1) == 0) AddLine(c.farLeft, c.nearLeft);
  }

  // Moves what was added since the last call into batches: the triangles of each layer, then the
  // lines.
  void EndStep() {
    for (const std::uint8_t layer : list_.usedLayers)
      AddBatch(false, layer, list_.triangles[layer]);
    list_.usedLayers.clear();
    AddBatch(true, 0, list_.lines);
  }

 private:
  void AddLine(std::uint32_t from, std::uint32_t to) {
    list_.lines.insert(list_.lines.end(), {from + kRaisedCopy, to + kRaisedCopy});
  }

  void AddBatch(bool lines, std::uint8_t layer, std::vector<std::uint32_t>& indices) {
    if (indices.empty()) return;
    list_.batches.push_back({lines, layer, static_cast<std::uint32_t>(list_.indices.size()),
                             static_cast<std::uint32_t>(indices.size())});
    list_.indices.insert(list_.indices.end(), indices.begin(), indices.end());
    indices.clear();
  }

  const CellMap& cells_;
  CellSplit split_;
  CellDrawList& list_;
};

// Rows and columns, inclusive; may be empty.
struct CellBlock {
  int firstRow, lastRow, firstColumn, lastColumn;
};

void AddCells(const CellBlock& block, ListBuilder& builder) {
  for (int i = block.lastRow; i >= block.firstRow; --i) {
    for (int j = block.firstColumn; j <= block.lastColumn; ++j) builder.AddCell(i, j);
  }
  builder.EndStep();
}

// From the corner of the last row and the first column on, one diagonal per step.
void AddDiagonals(const CellBlock& block, ListBuilder& builder) {
  const int rows = block.lastRow - block.firstRow + 1;
  const int columns = block.lastColumn - block.firstColumn + 1;
  if (rows <= 0 || columns <= 0) return;
  for (int diagonal = 0; diagonal < rows + columns - 1; ++diagonal) {
    const int first = std::max(0, diagonal - rows + 1), last = std::min(diagonal, columns - 1);
    for (int column = first; column <= last; ++column) {
      const int i = block.lastRow - (diagonal - column), j = block.firstColumn + column;
      builder.AddCell(i, j);
      builder.AddGridLines(i, j);
    }
    builder.EndStep();
  }
}

// Changes only the GL state that differs from the batch before.
class LayerSwitch {
 public:
  explicit LayerSwitch(bool textured) : textured_(textured) {
    if (textured_) glBindTexture(GL_TEXTURE_2D, texture_);
  }

  void Select(const CellLayer& layer) {
    if (textured_ && texture_ != layer.texture) {
      texture_ = layer.texture;
      glBindTexture(GL_TEXTURE_2D, layer.texture);
    }
    if (layer.ownColour) glColor4fv(layer.colour.data());
    SetOwnColour(layer.ownColour);
  }

  // Else the vertices' colours.
  void SetOwnColour(bool own) {
    if (own == ownColour_) return;
    ownColour_ = own;
    if (own)
      glDisableClientState(GL_COLOR_ARRAY);
    else
      glEnableClientState(GL_COLOR_ARRAY);
  }

 private:
  bool textured_;
  bool ownColour_ = false;
  unsigned texture_ = 0;
};

}  // namespace

void CellMap::Reset() {
  square_ = viewSquare;
  cells_.fill(0);
}

void CellMap::Replace(int i, int j, std::uint8_t layer) {
  if (i <= square_.ViewRowStart || i > square_.ViewRowEnd) return;
  if (j < square_.ViewColStart || j >= square_.ViewColEnd) return;
  std::uint8_t& cell = cells_[Place(i, j)];
  if (cell != 0) cell = layer;
}

bool CellMap::IsCornerVisible(int i, int j) {
  const TerrainVertex& vertex = terrain->grid[i][j];
  return camera.IsPointVisible(vertex.x, vertex.h * modConfig.HeightScale, vertex.z, kCullMargin);
}

void BuildCellDrawList(const CellMap& cells, CellSplit split, bool grid, CellOrder order,
                       CellDrawList& list) {
  const ViewSquare& square = cells.Square();
  const int side = order == CellOrder::TileByTile && grid ? kTileCells : kMaxMaterialSize;
  ListBuilder builder(cells, split, list);
  // Blocks start at row 1 and column 0, where the tiles do; later ones are drawn later.
  for (int rowBlock = (square.ViewRowEnd - 1) / side; rowBlock >= 0; --rowBlock) {
    const int lastRow = std::min(square.ViewRowEnd, (rowBlock + 1) * side);
    const int firstRow = std::max(square.ViewRowStart, rowBlock * side) + 1;
    for (int column = square.ViewColStart; column < square.ViewColEnd;) {
      const int end = std::min(square.ViewColEnd, (column / side + 1) * side);
      const CellBlock block{firstRow, lastRow, column, end - 1};
      if (grid)
        AddDiagonals(block, builder);
      else
        AddCells(block, builder);
      column = end;
    }
  }
}

void UploadCellDrawList(const CellDrawList& list, unsigned& indexBuffer) {
  if (!indexBuffer) glGenBuffers(1, &indexBuffer);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indexBuffer);
  glBufferData(GL_ELEMENT_ARRAY_BUFFER,
               static_cast<GLsizeiptr>(list.indices.size() * sizeof(std::uint32_t)),
               list.indices.data(), GL_STREAM_DRAW);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

void DrawCellBatches(const CellDrawList& list, unsigned indexBuffer,
                     std::span<const CellLayer> layers, bool textured) {
  BindTerrainVertices(textured);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indexBuffer);
  glLineWidth(kGridLineWidth);
  if (textured)
    glEnable(GL_TEXTURE_2D);
  else
    glDisable(GL_TEXTURE_2D);
  glShadeModel(GL_FLAT);
  LayerSwitch layerSwitch(textured);
  for (const CellBatch& batch : list.batches) {
    if (batch.lines)
      layerSwitch.SetOwnColour(false);
    else
      layerSwitch.Select(layers[batch.layer - 1u]);
    glDrawElements(batch.lines ? GL_LINES : GL_TRIANGLES, static_cast<GLsizei>(batch.count),
                   GL_UNSIGNED_INT,
                   reinterpret_cast<const void*>(batch.first * sizeof(std::uint32_t)));
  }
  glShadeModel(GL_SMOOTH);
  glDisable(GL_TEXTURE_2D);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
  UnbindTerrainVertices();
}

}  // namespace mw
