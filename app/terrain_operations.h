// Fills in the operations that the terrain house performs: its tools, its files, its generators.
// Called once at start-up.
#pragma once

namespace mw {

void ConnectTerrainOperations();

}  // namespace mw
