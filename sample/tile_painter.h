// Paints the ground of a sample level as seen from above: the surface tiles and the overview
// pictures.
#pragma once

#include "assets/picture.h"
#include "sample/landscape.h"

namespace mw::sample {

class GroundPainter {
 public:
  // The landscape must outlive the painter and have its materials.
  explicit GroundPainter(const Landscape& land);

  // A square of the ground: `corner` is its south-west corner, the picture's first pixel. Columns
  // run east and rows north, the way textures lie on a level's ground.
  Picture Paint(Point corner, float unitsPerPixel, int pixels) const;

 private:
  Colour GroundColour(Point at) const;
  Colour MaterialColour(Material material, Point at) const;
  Colour BlendedMaterials(Point at) const;
  Colour OverlayRoad(Colour ground, Point at) const;
  float Grain(Point at, float unitsPerTexel) const;
  Material MaterialAt(int column, int row) const;

  const Landscape& land_;
  RoadIndex roads_;
  Grid light_;   // how bright sun and sky make the ground, about 0.4 ... 1.2
  Grid mottle_;  // broad patches, -1 ... 1
  Grid grain_;   // fine grain, -1 ... 1; one sample per pixel of the finest pictures
};

}  // namespace mw::sample
