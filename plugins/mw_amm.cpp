// The material-map plug-in: chooses a ground material for every cell from heights and water level.
#include <new>

#include "plugins/map_cleaning.h"
#include "plugins/mapwright_plugin.h"
#include "plugins/material_rules.h"

using namespace mw::plugin;

bool initMatMap() { return true; }

void generateMatMap(std::int32_t materialSize, std::uint32_t* materials,
                    const MapwrightVertex* vertices, float waterLevel, float heightScale) {
  if (materialSize < 1 || materialSize > MAPWRIGHT_MAX_SIZE || !materials || !vertices) return;
  try {
    Plane<Material> map =
        ChooseMaterials(MeasureRelief(materialSize, vertices, waterLevel, heightScale));
    CleanMap(map);
    for (int row = 0; row < materialSize; ++row) {
      for (int column = 0; column < materialSize; ++column) {
        materials[(row + 1) * MAPWRIGHT_GRID_ROW + column] =
            static_cast<std::uint32_t>(map.At(row, column));
      }
    }
  } catch (const std::bad_alloc&) {
    // Without memory the map stays as it was.
  }
}
