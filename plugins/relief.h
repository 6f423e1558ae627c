// What the shape of the terrain says about each cell. Measured once per material map, read by the
// material rules.
#pragma once

#include <cstdint>

#include "plugins/mapwright_plugin.h"
#include "plugins/plane.h"

namespace mw::plugin {

struct Relief {
  explicit Relief(int side)
      : aboveWater(side), slope(side), hollow(side), toWater(side), openWater(side) {}

  Plane<float> aboveWater;  // world units
  Plane<float> slope;       // rise over run
  Plane<float> hollow;      // depth below the surroundings over their reach: valleys above 0
  Plane<float> toWater;     // distance to the nearest cell under water, in cells
  Plane<float> openWater;   // share of water in the wide surroundings, 0 ... 1
  float frostLine = 0;      // world units above the water level
  float range = 0;          // from low to high ground, world units
};

// `size` data rows and columns, 1 ... MAPWRIGHT_MAX_SIZE.
Relief MeasureRelief(int size, const MapwrightVertex* vertices, float waterLevel,
                     float heightScale);

}  // namespace mw::plugin
