// A landscape to draw without a level: hills with steep cells, tiles of many colours, and cameras.
// For tests and benchmarks of everything that draws terrain.
#pragma once

#include <cstdint>

namespace mw {

// Puts the terrain's own records back to what they are at program start and makes a terrain of this
// many samples, 4 world units apart, with hills, valleys below water level and some steep cells.
void MakeLandscape(int materialSize);
void RemoveLandscape();

// Gives every tile of the level but one, the "no surface" picture, the water and the materials, as
// icon and in the texture set, a texture of their own. Needs the GL context, as all that follows.
void MakeLandscapeTextures();
void DeleteLandscapeTextures();

struct SceneCamera {
  float x = 0, y = 0, z = 0;   // world units
  float pitch = 0, yaw = 180;  // degrees
};
// Sets the view's fixed GL state and the matrices as a frame of the 3D view has them, clears the
// picture and brings the view square up to date.
void BeginScene(const SceneCamera& from, int width, int height);

}  // namespace mw
