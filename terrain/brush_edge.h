// How strong the brush of the sculpting tools is at a distance from its centre: whole up to its
// edge with a hard one; with the others whole in its core, and fading from there to nothing at its
// edge.
#pragma once

#include "terrain/brush_way.h"
#include "terrain/terrain.h"

namespace mw {

inline constexpr float kBrushCore = 0.5f;  // of the radius

// 0 ... 1. Distance and radius in the same unit.
float StrengthAt(BrushEdge edge, float distance, float radius);
// The distance within which the brush is at least so strong, 0 ... 1.
float RadiusOfStrength(BrushEdge edge, float strength, float radius);

// The mean of the strength at (x, z) over a way of the brush's centre, and the greatest that it has
// there.
float MeanStrength(BrushEdge edge, const BrushWay& way, float x, float z, float radius);
float GreatestStrength(BrushEdge edge, const BrushWay& way, float x, float z, float radius);

}  // namespace mw
