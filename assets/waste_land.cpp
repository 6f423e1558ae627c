// The two grounds that stand for no kind in particular: the default one, short grass over soil, and
// the heath beyond the edge of the map.

#include "assets/earth.h"
#include "assets/grass.h"
#include "assets/ground.h"
#include "assets/noise.h"

namespace mw {

Picture PaintDefaultGround() {
  Picture picture =
      PaintEarth({CrumbledSoil(10),
                  {{0.0f, Rgb(104, 86, 58)}, {0.5f, Rgb(130, 110, 76)}, {1.0f, Rgb(152, 132, 96)}},
                  {350, 1.4f, 4.0f, Rgb(120, 110, 96), Rgb(176, 166, 148)},
                  0,
                  11});
  Sward sward;
  sward.root = Rgb(62, 70, 34);
  sward.young = Rgb(124, 138, 66);
  sward.old = Rgb(150, 146, 84);
  sward.blades = 7500;
  sward.length = 15;
  sward.width = 2.0f;
  sward.disorder = 1.8f;
  sward.seed = 12;
  sward.density = [](float u, float v) {
    return SmoothStep(-0.35f, 0.25f, Fbm(u, v, {{6, 6}, 4, 0.55f, 13}));
  };
  GrowGrass(picture, sward);
  return picture;
}

Picture PaintOutsideMap() {
  Picture picture =
      PaintEarth({CrumbledSoil(100),
                  {{0.0f, Rgb(58, 52, 50)}, {0.5f, Rgb(80, 72, 68)}, {1.0f, Rgb(104, 96, 90)}},
                  {600, 1.6f, 5.5f, Rgb(88, 86, 86), Rgb(138, 134, 130)},
                  0,
                  101});
  Sward heather;
  heather.root = Rgb(46, 42, 40);
  heather.young = Rgb(140, 104, 122);
  heather.old = Rgb(120, 116, 88);
  heather.blades = 6000;
  heather.length = 13;
  heather.width = 2.2f;
  heather.disorder = 3.0f;
  heather.seed = 102;
  heather.density = [](float u, float v) {
    return SmoothStep(-0.15f, 0.25f, Fbm(u, v, {{5, 5}, 5, 0.6f, 103}));
  };
  GrowGrass(picture, heather);
  return picture;
}

}  // namespace mw
