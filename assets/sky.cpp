#include "assets/sky.h"

#include <cmath>
#include <numbers>

#include "assets/noise.h"
#include "core/steady_math.h"

namespace mw {
namespace {

constexpr Direction3 kSun{0.50f, 0.48f, 0.72f};
constexpr Colour kHaze = Rgb(206, 219, 226);

Direction3 Normalised(Direction3 d) {
  const float scale = 1 / std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
  return {d.x * scale, d.y * scale, d.z * scale};
}

// s and t run from -1 to 1, to the right and down; the faces lie as those of OpenGL's cube maps.
Direction3 FaceDirection(CubeFace face, float s, float t) {
  switch (face) {
    case CubeFace::PositiveX:
      return Normalised({1, -t, -s});
    case CubeFace::NegativeX:
      return Normalised({-1, -t, s});
    case CubeFace::PositiveY:
      return Normalised({s, 1, t});
    case CubeFace::NegativeY:
      return Normalised({s, -1, -t});
    case CubeFace::PositiveZ:
      return Normalised({s, -t, 1});
    case CubeFace::NegativeZ:
      return Normalised({-s, -t, -1});
  }
  return {0, 1, 0};
}

// Clouds lie on a plane overhead; its repetition is far out in the haze.
float CloudCover(Direction3 d) {
  const float reach = 0.055f / (d.y + 0.12f);
  const Place place = Warp(d.x * reach, d.z * reach, 0.01f, {{24, 24}, 3, 0.5f, 200});
  const float billows = Fbm(place.u, place.v, {{22, 22}, 6, 0.55f, 201});
  return SmoothStep(0.02f, 0.55f, billows) * SmoothStep(0.0f, 0.16f, d.y);
}

float HillHeight(Direction3 d, int hills, unsigned seed) {
  const float turn = steady::Atan2(d.z, d.x) / (2 * std::numbers::pi_v<float>);
  return 0.5f + 0.5f * Fbm(turn, 0.31f, {{hills, 1}, 5, 0.5f, seed});
}

Colour GroundColour(Direction3 d) {
  const float reach = 0.02f / (0.04f - d.y);
  const float fields = Fbm(d.x * reach, d.z * reach, {{40, 40}, 4, 0.55f, 205});
  const Colour near = Mix(Rgb(92, 98, 58), Rgb(142, 134, 88), 0.5f + 0.6f * fields);
  return Mix(near, kHaze * 0.86f, SmoothStep(-0.16f, 0.0f, d.y) * 0.65f);
}

}  // namespace

Colour SkyColour(Direction3 d) {
  static const Ramp heights{{0.0f, kHaze},
                            {0.12f, Rgb(174, 203, 224)},
                            {0.4f, Rgb(110, 160, 208)},
                            {1.0f, Rgb(52, 104, 172)}};
  const float towardsSun = std::max(0.0f, Dot(d, Normalised(kSun)));
  Colour sky = heights.At(d.y);
  sky = Mix(sky, Rgb(255, 240, 208), 0.55f * steady::Pow(towardsSun, 14.0f));
  const float cover = CloudCover(d);
  const Colour cloud =
      Mix(Rgb(196, 204, 214), Rgb(252, 250, 246), Clamp01(0.3f + 0.7f * towardsSun));
  sky = Mix(sky, cloud, 0.85f * cover);
  return Mix(sky, Rgb(255, 252, 240),
             SmoothStep(0.9955f, 0.9975f, towardsSun) * (1 - 0.6f * cover));
}

Picture PaintEnvironment(CubeFace face) {
  return MakePicture(kEnvironmentSide, [face](int, int, float u, float v) {
    const Direction3 d = FaceDirection(face, 2 * u - 1, 2 * v - 1);
    const float far = 0.03f + 0.12f * HillHeight(d, 7, 210);
    const float near = -0.005f + 0.075f * HillHeight(d, 12, 220);
    constexpr float kSoft = 0.006f;
    Colour colour = SkyColour({d.x, std::max(d.y, 0.0f), d.z});
    colour = Mix(colour, Rgb(136, 158, 172), SmoothStep(far + kSoft, far - kSoft, d.y));
    colour = Mix(colour, Rgb(92, 116, 92), SmoothStep(near + kSoft, near - kSoft, d.y));
    return Mix(colour, GroundColour({d.x, std::min(d.y, 0.0f), d.z}),
               SmoothStep(kSoft, -2 * kSoft, d.y));
  });
}

}  // namespace mw
