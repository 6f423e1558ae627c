// The textures of the sample game's objects and water, painted by code.
#pragma once

#include <string>
#include <vector>

#include "assets/picture.h"

namespace mw::sample {

inline constexpr int kObjectTextureSide = 256;  // pixels

// What an object's face is made of. A material is both a texture's name and a shader's.
struct ObjectMaterial {
  const char* name;
  Colour (*paint)(int x, int y);  // seamless over kObjectTextureSide pixels
};
const std::vector<ObjectMaterial>& ObjectMaterials();

Picture PaintMaterial(const ObjectMaterial& material);

// A texture of the water, 1 ... 8, and a normal map of its waves, 1 ... 2.
Picture PaintWater(int number);
Picture PaintWaveNormals(int number);

}  // namespace mw::sample
