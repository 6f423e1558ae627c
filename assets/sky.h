// The surroundings that shining things mirror: sky, hills on the horizon and ground, as the six
// faces of a cube map that fit together because all are painted from the same directions.
#pragma once

#include <array>

#include "assets/picture.h"

namespace mw {

inline constexpr int kEnvironmentSide = 128;

// Faces in the direction order of cube maps in OpenGL and Direct3D; rows from the top.
enum class CubeFace { PositiveX, NegativeX, PositiveY, NegativeY, PositiveZ, NegativeZ };

// The face of each environment picture, in the order of the texture set's entries 0 to 5.
inline constexpr std::array<CubeFace, 6> kEnvironmentFaces{
    CubeFace::NegativeZ, CubeFace::NegativeX, CubeFace::PositiveZ,
    CubeFace::PositiveX, CubeFace::PositiveY, CubeFace::NegativeY};

Picture PaintEnvironment(CubeFace face);

struct Direction3 {
  float x = 0, y = 0, z = 0;  // y points up; length 1
};
inline float Dot(Direction3 a, Direction3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
// Colour of the sky in a direction at or above the horizon.
Colour SkyColour(Direction3 direction);

}  // namespace mw
