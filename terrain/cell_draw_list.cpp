#include "terrain/cell_draw_list.h"

#include <algorithm>

#include "core/camera.h"
#include "data/mod_config.h"
#include "terrain/gl_buffers.h"
#include "terrain/terrain.h"
#include "terrain/terrain_buffers.h"

namespace mw {
namespace {

// A corner may be drawn so many world units away from where it was tested, as it is raised for grid
// lines and rounded.
constexpr float kSideMargin = 0.05f, kHeightMargin = 0.01f;

// These are the places of a cell's corners in the vertex buffer.
struct Corners {
  std::uint32_t nearLeft, nearRight, farLeft, farRight;
};

// Tells whether the camera stands over the grid, and higher than all of the cell under it.
bool IsCameraAboveGround() {
  const auto [row, column] = CellOf(camera.position.x, camera.position.z);
  const int last = modConfig.MaterialSize - 1;
  if (camera.position.x < 0 || camera.position.z < 0 || row > last || column > last) return false;
  const float highest = std::max({DrawnHeight(row, column), DrawnHeight(row + 1, column),
                                  DrawnHeight(row, column + 1), DrawnHeight(row + 1, column + 1)});
  return camera.position.y > highest * modConfig.HeightScale;
}

class ListBuilder {
 public:
  ListBuilder(const CellMap& cells, CellSplit split, CellDrawList& list)
      : cells_(cells),
        split_(split),
        hidesUndersides_(IsCameraAboveGround() && !cells.HasGaps()),
        list_(list) {
    list_.indices.clear();
    list_.batches.clear();
  }

  void AddCell(int i, int j, const Corners& c) {
    if (IsHidden(i, j)) return;
    const std::uint8_t layer = cells_.At(i, j);
    CellDrawList::Parts& parts = list_.triangles[layer];
    if (parts.IsEmpty()) list_.usedLayers.push_back(layer);
    auto& out = PartOf(parts, i, j);
    // These are the triangles that a strip of the four corners would give. Where GL shades flat
    // their last vertex gives the colour, so that it has to be the cell's own corner.
    if (split_ == CellSplit::FarLeftToNearRight)
      out.insert(out.end(),
                 {c.nearLeft, c.nearRight, c.farLeft, c.farLeft, c.nearRight, c.farRight});
    else
      out.insert(out.end(),
                 {c.farRight, c.nearRight, c.nearLeft, c.farLeft, c.farRight, c.nearLeft});
  }

  // No line is listed twice, as that would only cost time: a cell adds the two that it shares with
  // its far and right neighbours, and those that no other cell draws.
  void AddGridLines(int i, int j, const Corners& c) {
    auto& out = PartOf(list_.lines, i, j);
    const bool isHidden = IsHidden(i, j);
    if (!isHidden || !IsHidden(i, j + 1)) AddLine(out, c.nearRight, c.farRight);
    if (!isHidden || !IsHidden(i - 1, j)) AddLine(out, c.farRight, c.farLeft);
    if (cells_.At(i + 1, j) == 0) AddLine(out, c.nearLeft, c.nearRight);
    if (cells_.At(i, j - 1) == 0) AddLine(out, c.farLeft, c.nearLeft);
  }

  // Puts what was added into batches: the lines, then the triangles of each layer.
  void Finish() {
    AddBatches(true, 0, list_.lines);
    for (const std::uint8_t layer : list_.usedLayers)
      AddBatches(false, layer, list_.triangles[layer]);
    list_.usedLayers.clear();
  }

 private:
  using Indices = CellDrawList::Indices;

  bool IsHidden(int i, int j) const {
    return hidesUndersides_ && cells_.IsTurnedAway(i, j, split_);
  }

  Indices& PartOf(CellDrawList::Parts& parts, int i, int j) {
    return cells_.IsInside(i, j) ? parts.whole : parts.clipped;
  }

  static void AddLine(Indices& out, std::uint32_t from, std::uint32_t to) {
    out.insert(out.end(), {from + kRaisedCopy, to + kRaisedCopy});
  }

  // What is clipped lies next to the camera, for the most part, and so comes first.
  void AddBatches(bool lines, std::uint8_t layer, CellDrawList::Parts& parts) {
    AddBatch(lines, layer, parts.clipped);
    AddBatch(lines, layer, parts.whole);
  }

  void AddBatch(bool lines, std::uint8_t layer, Indices& indices) {
    if (indices.empty()) return;
    list_.batches.push_back({lines, layer, static_cast<std::uint32_t>(list_.indices.size()),
                             static_cast<std::uint32_t>(indices.size())});
    list_.indices.insert(list_.indices.end(), indices.begin(), indices.end());
    indices.clear();
  }

  const CellMap& cells_;
  CellSplit split_;
  // From above one sees the lower side of no ground that has no gaps.
  bool hidesUndersides_;
  CellDrawList& list_;
};

// The vertices' texture coordinates count surface tiles. The texture matrix turns them into those
// of the layer, so that one buffer of vertices serves all layers.
void UseTextureCoordinates(const CellLayer& layer) {
  glMatrixMode(GL_TEXTURE);
  glLoadIdentity();
  if (layer.originS != 0 || layer.originT != 0) glTranslatef(-layer.originS, -layer.originT, 0);
  if (layer.repeats != 1) glScalef(layer.repeats, layer.repeats, 1);
  glMatrixMode(GL_MODELVIEW);
}

void SelectLayer(const CellLayer& layer, bool textured) {
  if (textured) {
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, layer.texture);
    UseTextureCoordinates(layer);
  }
  // Cells without texture have one colour each; those of textures, if any, go over into each other.
  glShadeModel(textured && !layer.ownColour ? GL_SMOOTH : GL_FLAT);
  if (layer.ownColour) {
    glDisableClientState(GL_COLOR_ARRAY);
    glColor4fv(layer.colour.data());
  } else {
    glEnableClientState(GL_COLOR_ARRAY);
  }
}

// Grid lines are black, so that textures have to be off: they would lighten them.
void SelectGridLines() {
  glDisable(GL_TEXTURE_2D);
  glDisableClientState(GL_COLOR_ARRAY);
  glColor4f(0, 0, 0, 0);
  glLineWidth(kGridLineWidth);
}

// Calls act for first ... last, beginning with those next to the middle.
template <typename Act>
void ForEachOutwards(int first, int last, int middle, Act act) {
  if (last < first) return;
  middle = std::clamp(middle, first, last);
  for (int k = middle; k <= last; ++k) act(k);
  for (int k = middle - 1; k >= first; --k) act(k);
}

bool HasGridLines(const CellDrawList& list) {
  return !list.batches.empty() && list.batches.front().lines;
}

}  // namespace

void CellMap::Reset() {
  square_ = terrain.viewSquare;
  cells_.fill(0);
}

void CellMap::Replace(int i, int j, std::uint8_t layer) {
  if (i <= square_.ViewRowStart || i > square_.ViewRowEnd) return;
  if (j < square_.ViewColStart || j >= square_.ViewColEnd) return;
  std::uint8_t& cell = cells_[Place(i, j)];
  if (cell != 0) cell = layer;
}

void CellMap::FindSides(int i) {
  const int size = modConfig.MaterialSize, first = square_.ViewColStart;
  const int count = square_.ViewColEnd - first + 1;
  std::array<float, kSide> x, y, z;
  for (int k = 0; k < count; ++k) {
    const TerrainVertex& vertex = terrain.grid[i][first + k];
    x[k] = vertex.x;
    y[k] = terrain.grid[i == 0 ? size : i][first + k == size ? 0 : first + k].h *
           modConfig.HeightScale;
    z[k] = vertex.z;
  }
  std::array<std::int32_t, kSide> sides;
  sides.fill(kInside | kVisible);
  std::int32_t behind = 1;
  for (const Plane& plane : camera.frustum) {
    for (int k = 0; k < count; ++k) {
      const float distance = plane.a * x[k] + plane.b * y[k] + plane.c * z[k] + plane.d;
      sides[k] |= distance < -kSideMargin ? behind : 0;
      sides[k] &= distance > kSideMargin ? ~0 : ~kInside;
      sides[k] &= distance > kCullMargin ? ~0 : ~kVisible;
    }
    behind *= 2;
  }
  const auto place = static_cast<std::ptrdiff_t>(Place(i, first));
  std::copy_n(sides.begin(), count, sides_.begin() + place);
  std::copy_n(y.begin(), count, heights_.begin() + place);
}

bool CellMap::HasGaps() const {
  const int count = square_.ViewColEnd - square_.ViewColStart;
  int gaps = 0;
  for (int i = square_.ViewRowStart + 1; i <= square_.ViewRowEnd; ++i) {
    const std::uint8_t* const nearCells = &sides_[Place(i, square_.ViewColStart)];
    const std::uint8_t* const farCells = &sides_[Place(i - 1, square_.ViewColStart)];
    for (int k = 0; k < count; ++k) {
      const int common = nearCells[k] & nearCells[k + 1] & farCells[k] & farCells[k + 1];
      gaps |= (nearCells[k] & kVisible) == 0 && (common & kBehind) == 0 ? 1 : 0;
    }
  }
  return gaps != 0;
}

bool CellMap::IsTurnedAway(int i, int j, CellSplit split) const {
  if (i <= square_.ViewRowStart || j >= square_.ViewColEnd) return false;
  const std::size_t nearCells = Place(i, j), farCells = Place(i - 1, j);
  const float nearLeft = heights_[nearCells], nearRight = heights_[nearCells + 1],
              farLeft = heights_[farCells], farRight = heights_[farCells + 1];
  // The camera is compared with the triangles' planes at its own place, which lies so many cells
  // behind the near row and to the right of the left column.
  const float behind = camera.position.x / terrain.cellSize - static_cast<float>(i);
  const float right = camera.position.z / terrain.cellSize - static_cast<float>(j);
  const float y = camera.position.y + kHeightMargin;
  if (split == CellSplit::FarLeftToNearRight)
    return y < nearLeft + behind * (nearLeft - farLeft) + right * (nearRight - nearLeft) &&
           y < farRight + (behind + 1) * (nearRight - farRight) +
                   (right - 1) * (farRight - farLeft);
  return y < nearRight + behind * (nearRight - farRight) + (right - 1) * (nearRight - nearLeft) &&
         y < farLeft + (behind + 1) * (nearLeft - farLeft) + right * (farRight - farLeft);
}

bool CellMap::IsCornerVisible(int i, int j) {
  const TerrainVertex& vertex = terrain.grid[i][j];
  return camera.IsPointVisible(vertex.x, vertex.h * modConfig.HeightScale, vertex.z, kCullMargin);
}

void BuildCellDrawList(const CellMap& cells, CellSplit split, bool grid, CellDrawList& list) {
  const ViewSquare& square = cells.Square();
  const Cell middle = CellOf(camera.position.x, camera.position.z);
  ListBuilder builder(cells, split, list);
  ForEachOutwards(square.ViewRowStart + 1, square.ViewRowEnd, middle.i, [&](int i) {
    const std::uint32_t nearRow = TerrainVertexIndex(i, 0), farRow = TerrainVertexIndex(i - 1, 0);
    ForEachOutwards(square.ViewColStart, square.ViewColEnd - 1, middle.j, [&](int j) {
      if (cells.At(i, j) == 0 || cells.IsOutside(i, j)) return;
      const std::uint32_t left = TerrainVertexPlace(j), right = TerrainVertexPlace(j + 1);
      const Corners corners{nearRow + left, nearRow + right, farRow + left, farRow + right};
      builder.AddCell(i, j, corners);
      if (grid) builder.AddGridLines(i, j, corners);
    });
  });
  builder.Finish();
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
  glDisable(GL_TEXTURE_2D);
  if (HasGridLines(list)) glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(kGridDepthFactor, kGridDepthUnits);
  glShadeModel(GL_FLAT);
  for (const CellBatch& batch : list.batches) {
    if (batch.lines)
      SelectGridLines();
    else
      SelectLayer(layers[batch.layer - 1u], textured);
    glDrawElements(batch.lines ? GL_LINES : GL_TRIANGLES, static_cast<GLsizei>(batch.count),
                   GL_UNSIGNED_INT, BufferOffset(batch.first * sizeof(std::uint32_t)));
  }
  glShadeModel(GL_SMOOTH);
  glDisable(GL_POLYGON_OFFSET_FILL);
  glDisable(GL_TEXTURE_2D);
  UseTextureCoordinates({});
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
  UnbindTerrainVertices();
}

}  // namespace mw
