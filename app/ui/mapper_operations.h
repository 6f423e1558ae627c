// Gives the shell's terrain and material operations to their tools. Called at start-up.
#pragma once

namespace mw {

class MainWindow;
class MaterialToolbar;
class TerrainToolbar;

// Keys and mouse act on the terrain and keep the toolbar in step, which must outlive the
// operations.
void ConnectTerrainTools(TerrainToolbar& toolbar);
// The same for the ground materials.
void ConnectMaterialTools(MaterialToolbar& toolbar);
// The Surface Map Assignments and Generate Terrain Shadows dialogs, and what follows from them.
void ConnectSurfaceDialogs(MainWindow& window);

}  // namespace mw
