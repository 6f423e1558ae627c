// Gives the shell's terrain operations to the terrain tools. Called at start-up.
#pragma once

namespace mw {

class TerrainToolbar;

// Keys and mouse act on the terrain and keep the toolbar in step, which must outlive the
// operations.
void ConnectTerrainTools(TerrainToolbar& toolbar);

}  // namespace mw
