// The steps of program start and end that need no window.
#pragma once

#include <string_view>

#include "terrain/material_generation.h"
#include "terrain/surface_maps.h"

namespace mw {

// "1.04.000" gives 1.04: the text up to its first "." and everything after it without further dots,
// as a number; 0 when it is none.
float ParseGameVersion(std::string_view text);
// The installed game's version from the settings store ("1.01.100" when unreadable) into `editor`.
void ReadInstalledVersion();

// Loads the two plug-in modules, the surface maps' first. Shows a message and returns false when
// one is missing or lacks an entry point.
bool LoadPlugins();
void UnloadPlugins();
// The entry points of the surface plug-in; null while it is not loaded.
SurfacePlugin LoadedSurfacePlugin();
// The entry points of the material plug-in; null while it is not loaded.
MaterialPlugin LoadedMaterialPlugin();

// Lets the houses below reach the objects.
void ConnectHooks();
// The shared flags that start-up sets after the mod is chosen, and the seed of the random numbers.
void SetInitialValues();
// The view commands sent before the first level: Fly, Wireframe, Object Mapper, Textured Mesh.
void SendStartCommands();
// Camera x and z to half the world size.
void CentreCamera();
// Shows the welcome dialog until a level is open (true) or the user closes the application (false).
bool RunWelcomeLoop();

}  // namespace mw
