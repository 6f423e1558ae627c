#include "app/ui/height_operations.h"

#include "app/operations.h"
#include "terrain/height_exchange.h"
#include "terrain/random_terrain.h"
#include "terrain/ui/random_terrain_dialog.h"
#include "terrain/ui/sample_bits_dialog.h"

namespace mw {

void ConnectHeightOperations(QWidget& owner) {
  const auto askBits = [&owner](const char* title) { return SampleBitsDialog(&owner, title); };
  operations.importHeightmap = [askBits] { ImportHeightmap(askBits); };
  operations.exportHeightmap = [askBits] { ExportHeightmap(askBits); };
  operations.randomTerrain = [&owner](bool askFirst) {
    return RandomTerrain(askFirst, [&owner] { return RandomTerrainDialog(&owner); });
  };
}

}  // namespace mw
