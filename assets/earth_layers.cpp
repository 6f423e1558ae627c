#include <array>
#include <cmath>

#include "assets/grass.h"
#include "assets/ground.h"
#include "assets/landscape.h"
#include "assets/noise.h"
#include "assets/scatter.h"
#include "assets/sky.h"

namespace mw {
namespace {

struct Layer {
  float top;  // share of the picture's height
  Picture (*paint)();
  float light;  // dimmed, because text stands on it
};

constexpr float kGroundLine = 0.215f;
constexpr std::array<Layer, 6> kLayers{{
    {kGroundLine, PaintWetDirt, 0.80f},
    {0.34f, PaintDryDirt, 0.52f},
    {0.47f, PaintGravel, 0.45f},
    {0.58f, PaintDrySand, 0.42f},
    {0.70f, PaintRockSurface, 0.46f},
    {0.87f, PaintWaterGround, 0.72f},
}};

// Where the upper edge of a layer runs, as a share of the picture's height.
float LayerEdge(std::size_t layer, float across) {
  return kLayers[layer].top +
         0.006f * Fbm(across, 0.2f, {{3, 1}, 5, 0.55f, 500 + static_cast<unsigned>(layer)});
}

Colour SkyBehindCredits(float across, float down) {
  const float up = 1.1f * (kGroundLine - down) / kGroundLine;
  const Direction3 ray{(across - 0.5f) * 0.7f, up, 1};
  const float scale = 1 / std::sqrt(ray.x * ray.x + ray.y * ray.y + 1);
  return SkyColour({ray.x * scale, std::max(0.0f, ray.y * scale), scale}) * 0.86f;
}

void PlantTurf(Picture& picture) {
  Dice dice(510);
  const float side = static_cast<float>(picture.width);
  for (int i = 0; i < 5 * picture.width; ++i) {
    Blade blade;
    blade.root.x = dice.Between(2, side - 3);
    const float edge = LayerEdge(0, blade.root.x / side) * static_cast<float>(picture.height);
    blade.root.y = edge + dice.Between(-2, 6);
    blade.angle = -1.5708f + dice.Between(-0.5f, 0.5f);
    blade.bend = dice.Between(-0.9f, 0.9f);
    blade.length = dice.Between(6, 17);
    blade.width = 1.8f;
    const float light = dice.Between(0.6f, 1.05f);
    blade.rootColour = Rgb(44, 68, 30) * light;
    blade.tipColour = Mix(Rgb(136, 166, 76), Rgb(92, 132, 58), dice.Between(0, 1)) * light;
    blade.shadow = 0;
    DrawBlade(picture, blade);
  }
}

}  // namespace

Picture PaintEarthLayers(int width, int height) {
  std::vector<Picture> grounds;
  grounds.reserve(kLayers.size());
  for (const Layer& layer : kLayers) grounds.push_back(Halved(layer.paint()));
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const float across = (static_cast<float>(x) + 0.5f) / static_cast<float>(width);
      const float down = (static_cast<float>(y) + 0.5f) / static_cast<float>(height);
      Colour colour = SkyBehindCredits(across, down);
      for (std::size_t i = 0; i < kLayers.size(); ++i) {
        const float below = (down - LayerEdge(i, across)) * static_cast<float>(height);
        const Colour ground = grounds[i].Wrapped(x, y) * kLayers[i].light;
        const float rim = 1 - 0.35f * SmoothStep(22, 0, below);
        colour = Mix(colour, ground * rim, SmoothStep(-0.8f, 0.8f, below));
      }
      picture.At(x, y) = colour;
    }
  }
  PlantTurf(picture);
  return picture;
}

}  // namespace mw
