// Identifiers of the controls on the Terrain Mapper's toolbar; those of buttons are also the
// commands that keys send.
#pragma once

namespace mw {

enum class TerrainControl : int {
  PointManipulation = 2000,
  Carving = 2001,
  Raising = 2002,
  Smoothing = 2003,
  AutoSmoothing = 2004,
  SmoothingRange = 2005,
  BrushSize = 2006,
  Flatten = 2007,
  Power = 2008,
  Road = 2009,
  BrushEdge = 2010
};

}  // namespace mw
