// The straight way that a brush takes over the ground between two picks, and which vertices and
// cells it reaches on it. Used by the tools of the mappers, so that a fast stroke has no gaps.
#pragma once

#include "core/vector3.h"
#include "terrain/terrain.h"

namespace mw {

// From and to a position of the brush's centre, world units; both are the same while it stands.
struct BrushWay {
  float fromX = 0, fromZ = 0, toX = 0, toZ = 0;

  static BrushWay At(float x, float z) { return {x, z, x, z}; }
  static BrushWay Between(const Vector3& from, const Vector3& to) {
    return {from.x, from.z, to.x, to.z};
  }
  float Length() const;
  // The part of it between two shares, 0 ... 1 each.
  BrushWay Section(float first, float last) const;
};

// A part of a way, 0 ... 1 each; none when last <= first.
struct Shares {
  float first = 0, last = 1;
};
// That on which (x, z) is nearer to the brush's centre than the radius.
Shares SharesWithin(const BrushWay& way, float x, float z, float radius);
// How much of the way that is, 0 ... 1.
float ShareWithin(const BrushWay& way, float x, float z, float radius);

// Where the brush's centre has to be, on one axis, for the brush to reach something: low <= centre
// < high.
struct Reach {
  float low = 0, high = 0;
};
// Whether the centre is in reach of both axes at once at the end of the way or for some of it.
bool Reaches(const BrushWay& way, const Reach& x, const Reach& z);

// The vertices with data within so many cells of the way's bounds.
VertexBlock BlockAround(const BrushWay& way, int cells);

// Calls act(i, j) for them, column by column.
template <typename Act>
void ForVerticesAlong(const BrushWay& way, int cells, Act act) {
  const VertexBlock block = BlockAround(way, cells);
  for (int j = block.firstColumn; j <= block.lastColumn; ++j) {
    for (int i = block.firstRow; i <= block.lastRow; ++i) act(i, j);
  }
}

}  // namespace mw
