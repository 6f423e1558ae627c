// The vertices of the height field in a GL buffer that is kept between frames, and what is known of
// each cell. Edits mark the vertices they touched; only those are written again before the next
// frame. Used by the renderers of all editing modes.
#pragma once

#include <cstdint>

namespace mw {

// Brings buffer and cell flags up to date with the grid. Needs the GL context. False when there is
// no terrain to draw.
bool SyncTerrainBuffers();
// Grows whenever SyncTerrainBuffers changed something.
unsigned TerrainBufferVersion();

// Binds the buffer and points GL's vertex array, and on request its texture coordinates, into it.
// The coordinates count surface tiles: (MaterialSize - row) / MaterialSize x TilesPerSide, then
// columns.
void BindTerrainVertices(bool textured);
void UnbindTerrainVertices();
// Frees the buffer; the context must be current.
void ReleaseTerrainVertices();

// Place of vertex (i, j) in the buffer; a copy that is raised for grid lines follows each vertex.
std::uint32_t TerrainVertexIndex(int i, int j);
inline constexpr std::uint32_t kRaisedCopy = 1;

// Whether the cell with corner (i, j), spanning rows i - 1 ... i and columns j ... j + 1, rises or
// falls steeply along its edges from that corner.
bool IsSteepCell(int i, int j);

}  // namespace mw
