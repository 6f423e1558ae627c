// The vertices of the height field in a GL buffer that is kept between frames, and what is known of
// each cell. Edits mark the vertices they touched; only those are written again before the next
// frame. Used by the renderers of all editing modes.
#pragma once

#include <array>
#include <cstdint>

namespace mw {

using ByteColour = std::array<std::uint8_t, 4>;  // red, green, blue, alpha

// The colours that the vertices carry. Vertex (i, j) has the colour of the cell with this corner;
// in a relief it has that of the ground around it.
struct CellColours {
  ByteColour ground{255, 255, 255, 255};
  ByteColour steep = ground;
  bool relief = false;  // both colours become darker where the ground is steeper
  friend bool operator==(const CellColours&, const CellColours&) = default;
};

// Brings buffer and cell flags up to date with the grid. Every vertex carries its colour, so other
// colours than before rebuild all of it. The view's context must be current. False when there is no
// terrain to draw.
bool SyncTerrainBuffers(const CellColours& colours);
// A number that grows whenever SyncTerrainBuffers changed something, so that whoever keeps a list
// of cells sees that it is out of date.
unsigned TerrainBufferVersion();

// Binds the buffer and points GL's vertex array, and on request its texture coordinates, into it.
// The coordinates count surface tiles: (MaterialSize - row) / MaterialSize x terrain.tilesPerSide,
// then columns.
void BindTerrainVertices(bool textured);
void UnbindTerrainVertices();
// Frees the buffer; the context must be current.
void ReleaseTerrainVertices();

// The place of vertex (i, j) in the buffer. A copy that is raised for grid lines follows each
// vertex.
std::uint32_t TerrainVertexIndex(int i, int j);
inline constexpr std::uint32_t kRaisedCopy = 1;
// How many places vertex (i, j) lies behind vertex (i, 0).
inline std::uint32_t TerrainVertexPlace(int j) { return static_cast<std::uint32_t>(j) * 2; }

// Whether the cell with corner (i, j), spanning rows i - 1 ... i and columns j ... j + 1, rises or
// falls steeply along its edges from that corner.
bool IsSteepCell(int i, int j);

}  // namespace mw
