// Material map generation: the material plug-in decides from the terrain what the ground is made
// of. Run by the Tools menu.
#pragma once

#include "plugins/mapwright_plugin.h"

namespace mw {

// The entry points of the material plug-in; null while no plug-in is loaded.
struct MaterialPlugin {
  decltype(&initMatMap) InitMatMap = nullptr;
  decltype(&generateMatMap) GenerateMatMap = nullptr;
};

// Replaces the level's materials, roads among them, after a question, and sets levelModified. Does
// nothing when the plug-in is missing or declines, or while there is no terrain.
void GenerateMaterialMap(const MaterialPlugin& plugin);

}  // namespace mw
