// What static objects and game-mode entities have in common: where they stand in the level, and
// what the Object Mapper remembers of them.
#pragma once

#include "core/vector3.h"

namespace mw {

// Level coordinates are the game's own: their X axis runs opposite to the view's, so that an object
// at level X is drawn at WorldSize - X. The same function goes both ways.
float MirrorX(float x);

// The camera looks at a place given in level coordinates, from above it.
void FocusCameraOn(float x, float y, float z);

struct Placement {
  Vector3 position;        // level coordinates, y up
  Vector3 rotation;        // degrees: about the vertical axis, about X, about Z
  Vector3 pivotDirection;  // unit vector from the SelectionPivot, view coordinates
  float pivotDistance = 0;
  bool selected = false;

  Vector3 ViewPosition() const { return {MirrorX(position.x), position.y, position.z}; }
};

}  // namespace mw
