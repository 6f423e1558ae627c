#include "assets/grass.h"

#include "assets/ground.h"
#include "assets/noise.h"
#include "assets/scatter.h"

namespace mw {
namespace {

// Later layers stand higher and catch more light.
constexpr float kLayerLight[] = {0.62f, 0.82f, 1.0f, 1.14f};
constexpr int kTurfLayers = 4;

struct Turf {
  Ramp soil;
  Sward sward;
  std::uint32_t seed;
};

Picture PaintTurf(const Turf& turf) {
  Picture picture = MakePicture(kGroundSide, [&](int, int, float u, float v) {
    const float grain = Fbm(u, v, {{16, 16}, 5, 0.6f, turf.seed});
    return turf.soil.At(0.5f + 0.5f * grain);
  });
  GrowGrass(picture, turf.sward);
  return picture;
}

}  // namespace

void GrowGrass(Picture& picture, const Sward& sward) {
  Dice dice(sward.seed);
  const float side = static_cast<float>(picture.width);
  for (int layer = 0; layer < kTurfLayers; ++layer) {
    for (const Spot& spot : StrewnSpots(picture.width, sward.blades / kTurfLayers, dice)) {
      const float u = spot.x / side, v = spot.y / side;
      const float chance = dice.Between(0, 1);
      if (sward.density && chance >= sward.density(u, v)) continue;
      const float lie = 5.5f * Fbm(u, v, {{4, 4}, 2, 0.5f, sward.seed + 7});
      const float patch = Fbm(u, v, {{5, 5}, 3, 0.5f, sward.seed + 11});
      Blade blade;
      blade.root = spot;
      blade.angle = lie + dice.Between(-1, 1) * sward.disorder;
      blade.bend = dice.Between(-1.1f, 1.1f);
      blade.length = sward.length * dice.Between(0.6f, 1.3f);
      blade.width = sward.width * dice.Between(0.7f, 1.2f);
      const float age = Clamp01(0.5f + 0.55f * patch + dice.Between(-0.3f, 0.3f));
      const float light = kLayerLight[layer] * dice.Between(0.85f, 1.12f);
      blade.rootColour = sward.root * light;
      blade.tipColour = Mix(sward.young, sward.old, age) * light;
      DrawBlade(picture, blade);
    }
  }
}

Picture PaintWetGrass() {
  Sward sward;
  sward.root = Rgb(46, 66, 30);
  sward.young = Rgb(142, 168, 84);
  sward.old = Rgb(98, 132, 64);
  sward.blades = 13000;
  sward.seed = 31;
  return PaintTurf({{{0.0f, Rgb(24, 32, 16)}, {1.0f, Rgb(44, 58, 26)}}, sward, 30});
}

Picture PaintDryGrass() {
  Sward sward;
  sward.root = Rgb(92, 84, 44);
  sward.young = Rgb(158, 150, 82);
  sward.old = Rgb(206, 184, 118);
  sward.blades = 10500;
  sward.length = 26;
  sward.width = 2.0f;
  sward.disorder = 1.2f;
  sward.seed = 42;
  return PaintTurf({{{0.0f, Rgb(76, 60, 38)}, {1.0f, Rgb(122, 100, 64)}}, sward, 40});
}

}  // namespace mw
