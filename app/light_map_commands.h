// The commands of the Tools menu that let the game trace shadows and light maps and bring them back
// into the level. The game's program does the work; the windows stay alive meanwhile. When the user
// cancels it, the level is what it was before.
#pragma once

namespace mw {

void GenerateTerrainShadows();
void MergeTerrainLightmaps();
void GenerateObjectLightmaps();

}  // namespace mw
